#pragma once
// The vlib subcommands. Each takes the words after its name, writes its report to `out` and
// returns the process exit code; failures are thrown (UsageError for wrong use, anything
// else for a failed operation) and reported by main().
#include <iosfwd>
#include <string>
#include <vector>

namespace vlib {

using Words = std::vector<std::string>;

int createCommand(const Words& args, std::ostream& out);
int infoCommand(const Words& args, std::ostream& out);
int listCommand(const Words& args, std::ostream& out);
int showCommand(const Words& args, std::ostream& out);
int checkCommand(const Words& args, std::ostream& out);
int copyCommand(const Words& args, std::ostream& out);
int recoverCommand(const Words& args, std::ostream& out);
int demoCommand(const Words& args, std::ostream& out);
int exportCommand(const Words& args, std::ostream& out);
int importCommand(const Words& args, std::ostream& out);
int importCardsCommand(const Words& args, std::ostream& out);
int importProfilesCommand(const Words& args, std::ostream& out);
int exportProfilesCommand(const Words& args, std::ostream& out);
int psetsCommand(const Words& args, std::ostream& out);

void printUsage(std::ostream& out);
// Runs the subcommand named by the first word.
int dispatch(const Words& words, std::ostream& out);

}  // namespace vlib

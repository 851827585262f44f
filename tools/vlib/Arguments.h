#pragma once
// Command-line parsing shared by the vlib subcommands: positional words plus "--name" switches
// and "--name value" options, each subcommand declaring which it accepts.
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace vlib {

// Wrong use of the command line; main() reports it with the usage text and exit code 2.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class Arguments {
public:
    // `switches` take no value, `options` take the next word as their value; an option given
    // twice keeps every value in order.
    Arguments(const std::vector<std::string>& words, const std::set<std::string>& switches,
              const std::set<std::string>& options);

    const std::vector<std::string>& positional() const { return m_positional; }
    // Exactly `count` positional words, or at least `count` when `orMore`; `names` describes
    // them in the error message.
    void requirePositional(size_t count, const char* names, bool orMore = false) const;

    bool has(const std::string& name) const;
    // The last value of an option, or `fallback` when it was not given.
    std::string value(const std::string& name, const std::string& fallback = std::string()) const;
    std::vector<std::string> values(const std::string& name) const;

private:
    std::vector<std::string> m_positional;
    std::set<std::string> m_switches;
    std::map<std::string, std::vector<std::string>> m_options;
};

}  // namespace vlib

// The display start of the test programs that open windows, seen from outside: the UI test
// program is started against a display that is not there yet, or never comes.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "TestSupport.h"

namespace {

// A display number that no server holds now (no lock file, no socket).
int unusedDisplayNumber() {
    for (int number = 300 + ::getpid() % 300;; ++number) {
        struct stat info;
        const std::string lock = "/tmp/.X" + std::to_string(number) + "-lock";
        const std::string socket = "/tmp/.X11-unix/X" + std::to_string(number);
        if (::stat(lock.c_str(), &info) != 0 && ::stat(socket.c_str(), &info) != 0)
            return number;
    }
}

struct ShellRun {
    int exitCode = -1;
    std::string err;
};

ShellRun runShell(const std::string& script, const TempFolder& folder) {
    const std::string errFile = folder.file("stderr.txt").utf8_string();
    const int status = std::system(("(" + script + ") 2>'" + errFile + "'").c_str());
    ShellRun run;
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    std::ifstream in(errFile);
    std::stringstream text;
    text << in.rdbuf();
    run.err = text.str();
    return run;
}

const std::string kUiTests = std::string(VL_BIN_DIR) + "/test_host_ui --gtest_filter=MainThread.WorkerActionRunsLaterOnTheMainThread";

}  // namespace

// The server starts only once the program has been refused: the retry must find it.
TEST(DisplayStart, ProgramWaitsForADisplayThatComesUpLate) {
    TempFolder folder;
    const std::string display = std::to_string(unusedDisplayNumber());
    const std::string log = folder.file("ui.txt").utf8_string();
    const ShellRun run = runShell("DISPLAY=:" + display + " " + kUiTests + " >'" + log + "' 2>&1 & program=$!\n"
                             "for i in $(seq 1000); do grep -q 'retrying' '" + log + "' && break; sleep 0.01; done\n"
                             "Xvfb :" + display + " -noreset -nolisten tcp >/dev/null 2>&1 & server=$!\n"
                             "wait $program; code=$?\n"
                             "kill $server; wait $server; cat '" + log + "' >&2; exit $code",
                             folder);
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_NE(run.err.find("retrying"), std::string::npos) << "the first attempt was refused: " << run.err;
    EXPECT_NE(run.err.find("[  PASSED  ] 1 test"), std::string::npos) << run.err;
}

TEST(DisplayStart, NoDisplayAtAllFailsTheProgramWithTheReason) {
    TempFolder folder;
    const ShellRun run = runShell("DISPLAY=:" + std::to_string(unusedDisplayNumber()) + " " + kUiTests + " >&2", folder);
    EXPECT_NE(run.exitCode, 0);
    EXPECT_NE(run.err.find("No display after"), std::string::npos) << run.err;
    EXPECT_EQ(run.err.find("SKIPPED"), std::string::npos) << run.err;
}

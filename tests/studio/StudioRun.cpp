#include "StudioRun.h"

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

std::string quoted(const std::string& text) {
    std::string result = "'";
    for (char c : text) {
        if (c == '\'')
            result += "'\\''";
        else
            result += c;
    }
    return result + "'";
}

std::string readAll(const std::string& path) {
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

}  // namespace

StudioRunner::StudioRunner() {
    char pattern[] = "/tmp/vlstudio-test-XXXXXX";
    m_folder = mkdtemp(pattern);
}

StudioRunner::~StudioRunner() {
    std::error_code ignored;
    std::filesystem::remove_all(m_folder, ignored);
}

StudioResult StudioRunner::run(const std::vector<std::string>& args) const {
    const char* display = std::getenv("DISPLAY");
    return runWith(display && *display ? "" : "xvfb-run -a ", args);
}

StudioResult StudioRunner::runWithoutDisplay(const std::vector<std::string>& args) const {
    return runWith("env -u DISPLAY -u WAYLAND_DISPLAY ", args);
}

StudioResult StudioRunner::runWith(const std::string& launcher, const std::vector<std::string>& args) const {
    std::string command = "VL_CONFIG_DIR=" + quoted(m_folder) + " VL_PROMPT_STDERR=1 " + launcher;
    command += quoted(std::string(VL_BIN_DIR) + "/vlstudio");
    for (const std::string& arg : args)
        command += " " + quoted(arg);
    const std::string outFile = file("stdout.txt");
    const std::string errFile = file("stderr.txt");
    command += " >" + quoted(outFile) + " 2>" + quoted(errFile);

    StudioResult result;
    const int status = std::system(command.c_str());
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.out = readAll(outFile);
    result.err = readAll(errFile);
    return result;
}

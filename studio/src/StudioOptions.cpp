#include "StudioOptions.h"

#include <cstring>

const char* StudioOptions::usage() {
    return "Usage: vlstudio [OPTIONS] [DRAWING]\n"
           "Opens DRAWING (.vldwg) and offers the library module's commands.\n"
           "\n"
           "Options:\n"
           "  --command NAME     run the command NAME once the main window is up\n"
           "  --screenshot FILE  write a PNG of the active window (the dialog, when a command\n"
           "                     shows one) once it is idle, then close the studio\n"
           "  --list-commands    print the names of all commands, one per line, and exit\n"
           "  --central FILE     use FILE as the default central library for this run\n"
           "  --lang CODE        user-interface language (for example de, fr)\n"
           "  --help             show this help\n"
           "\n"
           "Environment: VL_CONFIG_DIR (settings folder), VL_MODULE_DIR (module folder),\n"
           "VL_PROMPT_STDERR=1 (copy command-line output to stderr).\n";
}

bool StudioOptions::parse(int argc, char** argv, std::string& error) {
    for (int i = 1; i < argc; ++i) {
        const char* arg = argv[i];
        auto value = [&](std::string& target) {
            if (i + 1 >= argc) {
                error = std::string("Option ") + arg + " needs a value.";
                return false;
            }
            target = argv[++i];
            return true;
        };
        if (!std::strcmp(arg, "--help") || !std::strcmp(arg, "-h")) {
            help = true;
        } else if (!std::strcmp(arg, "--list-commands")) {
            listCommands = true;
        } else if (!std::strcmp(arg, "--command")) {
            if (!value(command))
                return false;
        } else if (!std::strcmp(arg, "--screenshot")) {
            if (!value(screenshot))
                return false;
        } else if (!std::strcmp(arg, "--central")) {
            if (!value(central))
                return false;
        } else if (!std::strcmp(arg, "--lang")) {
            if (!value(lang))
                return false;
        } else if (arg[0] == '-' && arg[1] != '\0') {
            error = std::string("Unknown option ") + arg + ".";
            return false;
        } else if (drawing.empty()) {
            drawing = arg;
        } else {
            error = std::string("Only one drawing can be opened; extra argument ") + arg + ".";
            return false;
        }
    }
    return true;
}

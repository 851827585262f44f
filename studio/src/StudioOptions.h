#pragma once
// The studio's command line.
#include <string>

struct StudioOptions {
    std::string drawing;     // drawing to open at start, may be empty
    std::string command;     // command to run once the window is up
    std::string screenshot;  // PNG to write of the active window, then exit
    std::string central;     // central library for this run (both default-library preferences)
    std::string lang;        // user-interface language, e.g. "de"
    bool listCommands = false;
    bool help = false;

    // Fills the options; false with `error` set for an unknown option or a missing value.
    bool parse(int argc, char** argv, std::string& error);
    static const char* usage();
};

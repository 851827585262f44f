#pragma once
// Progress of long work on a terminal: one line on standard error, rewritten in place. Says
// nothing when standard error is not a terminal (a script or a test reads the report only)
// or when the work is short.
#include <cstddef>
#include <string>

namespace vlib {

class TerminalProgress {
public:
    explicit TerminalProgress(std::string what);
    ~TerminalProgress();
    TerminalProgress(const TerminalProgress&) = delete;
    TerminalProgress& operator=(const TerminalProgress&) = delete;

    void operator()(size_t done, size_t total);

private:
    std::string m_what;
    bool m_terminal;
    bool m_shown = false;
};

}  // namespace vlib

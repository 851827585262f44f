#include "Progress.h"

#include <cstdio>

#include <unistd.h>

namespace vlib {

namespace {
// Work on fewer objects ends before a line would be worth reading.
constexpr size_t kShownFrom = 2000;
}  // namespace

TerminalProgress::TerminalProgress(std::string what) : m_what(std::move(what)), m_terminal(isatty(STDERR_FILENO) == 1) {}

TerminalProgress::~TerminalProgress() {
    if (m_shown)
        std::fputc('\n', stderr);
}

void TerminalProgress::operator()(size_t done, size_t total) {
    if (!m_terminal || total < kShownFrom)
        return;
    std::fprintf(stderr, "\r%s: %zu of %zu objects (%zu%%)", m_what.c_str(), done, total, done * 100 / total);
    std::fflush(stderr);
    m_shown = true;
}

}  // namespace vlib

#pragma once
// Command-line output of the host: every line goes to the studio's command-line pane (through
// the installed sink) and to an in-memory log; with VL_PROMPT_STDERR=1 also to stderr.
#include <functional>

#include <wx/arrstr.h>
#include <wx/string.h>

namespace ca {

// printf-style with a wide format (%ls for wide text). Safe from any thread: the sink runs on
// the main thread.
void promptf(const wchar_t* format, ...);
void prompt(const wxString& line);

wxArrayString promptLog();
void clearPromptLog();

// The receiver of prompt lines, or an empty function to drop it.
void setPromptSink(std::function<void(const wxString&)> sink);

}  // namespace ca

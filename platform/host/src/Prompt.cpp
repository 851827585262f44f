#include "Prompt.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>

#include <wx/app.h>

#include "OdString.h"
#include "OdStringWx.h"
#include "UtFile.h"

namespace ca {

namespace {

struct PromptState {
    std::mutex mutex;
    wxArrayString log;
    std::function<void(const wxString&)> sink;
};

PromptState& state() {
    static PromptState instance;
    return instance;
}

bool echoToStderr() {
    const char* value = std::getenv("VL_PROMPT_STDERR");
    return value && std::strcmp(value, "1") == 0;
}

void deliver(const wxString& line) {
    std::function<void(const wxString&)> sink;
    {
        std::lock_guard<std::mutex> lock(state().mutex);
        sink = state().sink;
    }
    if (sink)
        sink(line);
}

}  // namespace

void prompt(const wxString& line) {
    {
        std::lock_guard<std::mutex> lock(state().mutex);
        state().log.push_back(line.Clone());
    }
    if (echoToStderr()) {
        std::fputs(line.utf8_str(), stderr);
        std::fputc('\n', stderr);
    }
    // The pane is a window: only the main thread may touch it.
    if (ut::isMainThread())
        deliver(line);
    else if (wxTheApp)
        wxTheApp->CallAfter([copy = line.Clone()] { deliver(copy); });
}

void promptf(const wchar_t* format, ...) {
    if (!format)
        return;
    OdString text;
    va_list args;
    va_start(args, format);
    text.formatV(format, args);
    va_end(args);
    prompt(toWx(text));
}

wxArrayString promptLog() {
    std::lock_guard<std::mutex> lock(state().mutex);
    wxArrayString copy;
    for (const wxString& line : state().log)
        copy.push_back(line.Clone());
    return copy;
}

void clearPromptLog() {
    std::lock_guard<std::mutex> lock(state().mutex);
    state().log.clear();
}

void setPromptSink(std::function<void(const wxString&)> sink) {
    std::lock_guard<std::mutex> lock(state().mutex);
    state().sink = std::move(sink);
}

}  // namespace ca

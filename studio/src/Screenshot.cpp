#include "Screenshot.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <wx/dcmemory.h>
#include <wx/dcscreen.h>
#include <wx/dialog.h>
#include <wx/filename.h>
#include <wx/image.h>
#include <wx/toplevel.h>

#include "ScreenRect.h"

namespace {
constexpr int kTickMs = 200;
constexpr int kStableTicksNeeded = 4;  // the same window for this long counts as idle and painted
constexpr int kGiveUpTicks = 150;      // 30 s
constexpr int kClosingGiveUpTicks = 50;
}  // namespace

namespace {

// The window's pixels as the screen shows them: anything lying over it comes along.
wxImage screenPicture(wxTopLevelWindow* window, wxString& error) {
    window->Raise();
    window->Update();
    const wxRect rect = onScreenRect(window);
    if (rect.width <= 0 || rect.height <= 0) {
        error = "the window has no area";
        return wxImage();
    }
    wxBitmap picture(rect.width, rect.height, 24);
    {
        wxScreenDC screen;
        wxMemoryDC memory(picture);
        if (!memory.Blit(0, 0, rect.width, rect.height, &screen, rect.x, rect.y)) {
            error = "the screen could not be read";
            return wxImage();
        }
    }
    return picture.ConvertToImage();
}

}  // namespace

bool saveWindowPicture(wxTopLevelWindow* window, const wxString& path, wxString& error) {
    // The window draws itself into the picture; only where the toolkit cannot is the screen read.
    wxImage image = renderedWindow(window);
    if (!image.IsOk())
        image = screenPicture(window, error);
    if (!image.IsOk())
        return false;
    const wxString folder = wxFileName(path).GetPath();
    if (!folder.empty() && !wxFileName::DirExists(folder)) {
        error = "the folder " + folder + " does not exist";
        return false;
    }
    if (!image.SaveFile(path, wxBITMAP_TYPE_PNG)) {
        error = "the file could not be written";
        return false;
    }
    return true;
}

ScreenshotTaker::ScreenshotTaker(const wxString& path, wxTopLevelWindow* mainWindow, std::function<void(int)> finished)
    : m_path(path), m_mainWindow(mainWindow), m_finished(std::move(finished)) {}

void ScreenshotTaker::start() { Start(kTickMs); }

int ModalDialogTracker::Enter(wxDialog* dialog) {
    m_running.push_back(dialog);
    return wxID_NONE;  // let the dialog run
}

void ModalDialogTracker::Exit(wxDialog* dialog) {
    m_running.erase(std::remove(m_running.begin(), m_running.end(), dialog), m_running.end());
}

wxTopLevelWindow* ScreenshotTaker::activeWindow() const {
    wxDialog* dialog = m_modals.innermost();
    if (dialog)
        return dialog->IsShown() ? dialog : nullptr;
    if (m_commandRunning)
        return nullptr;
    return m_mainWindow && m_mainWindow->IsShown() ? m_mainWindow : nullptr;
}

void ScreenshotTaker::Notify() {
    if (m_closing) {
        closeEverything();
        return;
    }
    ++m_ticks;
    wxTopLevelWindow* window = activeWindow();
    if (window != m_candidate) {
        m_candidate = window;
        m_stableTicks = 0;
    } else if (window) {
        ++m_stableTicks;
    }
    if (m_ticks > kGiveUpTicks) {
        std::fprintf(stderr, "vlstudio: no window to capture appeared\n");
        m_finished(1);
        m_closing = true;
        return;
    }
    if (!window || m_stableTicks < kStableTicksNeeded)
        return;
    wxString error;
    if (saveWindowPicture(window, m_path, error)) {
        m_finished(0);
    } else {
        std::fprintf(stderr, "vlstudio: the screenshot %s was not written: %s\n", static_cast<const char*>(m_path.utf8_str()),
                     static_cast<const char*>(error.utf8_str()));
        m_finished(1);
    }
    m_closing = true;
    closeEverything();
}

void ScreenshotTaker::closeEverything() {
    // Modal dialogs first: a command may still be waiting in ShowModal.
    ++m_closingTicks;
    bool endedDialog = false;
    if (wxDialog* dialog = m_modals.innermost()) {
        dialog->EndModal(wxID_CANCEL);
        endedDialog = true;
        // A command may ask many questions in turn; only a command that stops making
        // progress is given up on.
        m_closingTicks = 0;
    }
    // The main window closes only once the command has returned from its dialogs; closing it
    // under a running modal loop would leave that loop without a window.
    if (endedDialog || m_commandRunning) {
        if (m_closingTicks > kClosingGiveUpTicks) {
            std::fprintf(stderr, "vlstudio: the command did not end after its dialog was closed\n");
            std::fflush(stderr);
            std::_Exit(1);
        }
        return;
    }
    Stop();
    if (m_mainWindow)
        m_mainWindow->Close(true);
}

#pragma once
// --screenshot: once the active top-level window (a command's modal dialog, else the main
// window) is shown and the event loop has been idle for a moment, writes it to a PNG, then
// ends any modal dialog and closes the main window.
#include <functional>
#include <vector>

#include <wx/modalhook.h>
#include <wx/timer.h>

class wxTopLevelWindow;

// Follows the modal dialogs that are running, native ones (file dialogs) included: they all pass
// through wxWidgets' modal dialog hook, while not all of them are listed as top-level windows.
class ModalDialogTracker : public wxModalDialogHook {
public:
    ModalDialogTracker() { Register(); }
    ~ModalDialogTracker() override { Unregister(); }
    // The innermost running modal dialog, or null.
    wxDialog* innermost() const { return m_running.empty() ? nullptr : m_running.back(); }

protected:
    int Enter(wxDialog* dialog) override;
    void Exit(wxDialog* dialog) override;

private:
    std::vector<wxDialog*> m_running;
};

class ScreenshotTaker : public wxTimer {
public:
    // `finished` receives 0 when the picture was written, 1 otherwise.
    ScreenshotTaker(const wxString& path, wxTopLevelWindow* mainWindow, std::function<void(int)> finished);
    void start();
    // While a command runs, only its modal dialog is captured; a command that shows none is
    // captured as the main window once it has returned.
    void setCommandRunning(bool running) { m_commandRunning = running; }

private:
    void Notify() override;
    wxTopLevelWindow* activeWindow() const;
    bool capture(wxTopLevelWindow* window);
    void closeEverything();

    wxString m_path;
    wxTopLevelWindow* m_mainWindow;
    ModalDialogTracker m_modals;
    std::function<void(int)> m_finished;
    wxTopLevelWindow* m_candidate = nullptr;
    int m_stableTicks = 0;
    int m_ticks = 0;
    bool m_closing = false;
    bool m_commandRunning = false;
    int m_closingTicks = 0;
};

// Writes the window's pixels, as they are on screen, to a PNG file.
bool saveWindowPicture(wxTopLevelWindow* window, const wxString& path, wxString& error);

#include "MainWindow.h"

#include <wx/app.h>
#include <wx/window.h>

namespace wxg {

namespace {
wxWindow* g_mainWindow = nullptr;
}

void setMainWindow(wxWindow* window) { g_mainWindow = window; }

wxWindow* mainWindow() {
    if (g_mainWindow && !g_mainWindow->IsBeingDeleted())
        return g_mainWindow;
    return wxTheApp ? wxTheApp->GetTopWindow() : nullptr;
}

}  // namespace wxg

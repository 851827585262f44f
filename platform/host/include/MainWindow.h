#pragma once
// The host's main window: the parent of module dialogs and the place of notification balloons.
class wxWindow;

namespace wxg {

void setMainWindow(wxWindow* window);
// The registered main window, else the application's top window (null when there is none).
wxWindow* mainWindow();

}  // namespace wxg

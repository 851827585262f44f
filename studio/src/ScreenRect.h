#pragma once
#include <wx/gdicmn.h>

class wxTopLevelWindow;

// Where a top-level window is on screen, as the windowing system has it. Native dialogs (the
// GTK file chooser) size themselves without telling wxWidgets, so their wx rectangle is wrong.
wxRect onScreenRect(wxTopLevelWindow* window);

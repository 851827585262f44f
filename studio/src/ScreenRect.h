#pragma once
#include <wx/gdicmn.h>
#include <wx/image.h>

class wxTopLevelWindow;

// Where a top-level window is on screen, as the windowing system has it. Native dialogs (the
// GTK file chooser) size themselves without telling wxWidgets, so their wx rectangle is wrong.
wxRect onScreenRect(wxTopLevelWindow* window);

// The window as it draws itself, whatever covers it on screen (other programs' windows share
// the display while tests run): the toolkit renders it into a picture of its own. An invalid
// image when the toolkit cannot.
wxImage renderedWindow(wxTopLevelWindow* window);

#pragma once
// The one way the module tells a user that an operation failed: every handler catches at its
// boundary and hands the exception here, so the text and the caption are the same everywhere.
#include <exception>

#include <wx/string.h>

class wxWindow;

namespace vl_app {

// Caption of the module's message boxes.
wxString bimCaption();

// The user's text of any exception: a library file that stopped taking writes or was replaced
// in the user's words, another library failure's message, a drawing SDK error's description,
// otherwise the exception's own text.
wxString errorText(const std::exception& error);

// Shows the text of `error` in a message box with the module's caption, centred on `parent`.
// `context`, when given, is a whole translated sentence with one %s for the error text.
void showError(wxWindow* parent, const std::exception& error, const wxString& context = wxString());

// True for failures after which the library is open for reading only.
bool madeLibraryReadOnly(const std::exception& error);

// A message of the module's own (a warning or a notice) with the module's caption.
void showMessage(wxWindow* parent, const wxString& message, long iconStyle = 0);

}  // namespace vl_app

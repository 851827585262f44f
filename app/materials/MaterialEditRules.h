#pragma once
// Rules of the materials dialog that need no window: validation of the identity page, the
// names of new materials, and the texts that report validation and removal problems.
#include <functional>
#include <vector>

#include <wx/string.h>

namespace vl_app {

// Validation state of a material's name: 0 valid, 1 empty, 2 taken by another material.
// `selName` is the name last loaded or saved; typing it back is always valid.
unsigned nameStatus(const wxString& name, const wxString& selName, bool usedInLibrary);
// Validation state of a typed class: 0 valid, 3 empty, 4 not a class of the library.
unsigned classStatus(const wxString& className, bool classExists);
// The text of the error line for a validation state; empty for 0.
wxString statusText(unsigned status, const wxString& className);

// `base` without its trailing numeral, then "<stem>-2", "<stem>-3", ... until `used` says
// no; `base` itself when it is free.
wxString uniqueName(const wxString& base, const std::function<bool(const wxString&)>& used);

// The message for materials that could not be removed; empty when every one was removed.
wxString removalMessage(const std::vector<wxString>& keptNames);

}  // namespace vl_app

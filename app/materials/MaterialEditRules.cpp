#include "app/materials/MaterialEditRules.h"

#include <wx/intl.h>

#include "app/common/Helpers.h"

namespace vl_app {

unsigned nameStatus(const wxString& name, const wxString& selName, bool usedInLibrary) {
    if (name.empty())
        return 1;
    // The exact comparison lets the user change only the letter case of the current name.
    if (name != selName && usedInLibrary)
        return 2;
    return 0;
}

unsigned classStatus(const wxString& className, bool classExists) {
    if (className.empty())
        return 3;
    return classExists ? 0 : 4;
}

wxString statusText(unsigned status, const wxString& className) {
    switch (status) {
    case 1:
        return _("Please enter a name");
    case 2:
        return _("Invalid name: a material with that name already exists in the library");
    case 3:
        return _("Please select a class");
    case 4:
        return wxString::Format(_("Class '%ls' does not exist in the library"), className);
    default:
        return wxString();
    }
}

wxString uniqueName(const wxString& base, const std::function<bool(const wxString&)>& used) {
    const wxString stem = stripNumeral(base);
    wxString candidate = base;
    // The first alternative carries the number 2: "New", "New-2", "New-3" ...
    for (int counter = 1; used(candidate);)
        candidate = wxString::Format(L"%ls-%d", stem, ++counter);
    return candidate;
}

wxString removalMessage(const std::vector<wxString>& keptNames) {
    if (keptNames.empty())
        return wxString();
    if (keptNames.size() == 1)
        return wxString::Format(_("Couldn't remove material '%ls'.\nIt is referenced in one or more compositions."),
                                keptNames.front());
    wxString message = _("Some materials couldn't be removed.\nThese are referenced in one or more compositions:");
    for (const wxString& name : keptNames)
        message << L"\n    " << name;
    return message;
}

}  // namespace vl_app

#include "app/common/ErrorMessages.h"

#include <wx/intl.h>
#include <wx/msgdlg.h>

#include <OdError.h>
#include <OdStringWx.h>

#include <vantlib/Exception.h>

namespace vl_app {

wxString bimCaption() { return _("BIM"); }

wxString errorText(const std::exception& error) {
    // The file troubles a user can act on are told in the user's language.
    if (const auto* replaced = dynamic_cast<const vantlib::FileReplaced*>(&error))
        return wxString::Format(_("The library file %s was deleted or replaced while it was open. The change was not "
                                  "saved; the library stays open for reading only."),
                                toWx(replaced->path()));
    if (const auto* refused = dynamic_cast<const vantlib::WriteRefused*>(&error))
        return wxString::Format(_("The library file %s can no longer be written. The change was not saved; the "
                                  "library stays open for reading only."),
                                toWx(refused->path()));
    if (const auto* libraryError = dynamic_cast<const vantlib::Exception*>(&error))
        return toWx(libraryError->message());
    if (const auto* sdkError = dynamic_cast<const OdError*>(&error))
        return toWx(sdkError->description());
    return wxString::FromUTF8(error.what());
}

void showError(wxWindow* parent, const std::exception& error, const wxString& context) {
    const wxString text = errorText(error);
    wxMessageBox(context.empty() ? text : wxString::Format(context, text), bimCaption(), wxOK | wxICON_ERROR | wxCENTRE,
                 parent);
}

bool madeLibraryReadOnly(const std::exception& error) {
    return dynamic_cast<const vantlib::ReadOnly*>(&error) != nullptr;
}

void showMessage(wxWindow* parent, const wxString& message, long iconStyle) {
    wxMessageBox(message, bimCaption(), wxOK | wxCENTRE | iconStyle, parent);
}

}  // namespace vl_app

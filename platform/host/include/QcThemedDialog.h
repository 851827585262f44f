#pragma once
// Base of the module's dialogs: loads its layout from the XRC resources by name and keeps its
// window rectangle in the settings store.
#include <wx/dialog.h>

namespace wxg {

class QcThemedDialog : public wxDialog {
public:
    // Two-step construction: call loadLayout() afterwards.
    QcThemedDialog() = default;
    // Throws OdError when no loaded layout has a dialog of that name.
    QcThemedDialog(wxWindow* parent, const wxString& resourceName);

    // Creates this dialog from the layout `resourceName`; false when it is not loaded.
    bool loadLayout(wxWindow* parent, const wxString& resourceName);
    const wxString& resourceName() const { return m_resourceName; }

    // Window rectangle under `key` (the resource name when empty).
    void restoreWindowRect(wxSize defaultSize = wxDefaultSize, const wxString& key = wxString());
    void saveWindowRect(const wxString& key = wxString()) const;

private:
    wxString m_resourceName;
};

}  // namespace wxg

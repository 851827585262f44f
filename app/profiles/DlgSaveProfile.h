#pragma once
// Tells the user, before a profile is stored, that the library already holds it: either an
// identical profile (OK only, nothing is stored) or one of the same geometry (Save stores the
// profile anyway, Cancel does not).
#include <QcThemedDialog.h>

namespace vl_app {

class DlgSaveProfile : public wxg::QcThemedDialog {
public:
    // `fullName` names the profile already in the library; `askToSave` offers Save and Cancel
    // for a profile of the same geometry, otherwise OK alone for an identical one. Without a
    // parent the host's main window is the parent.
    DlgSaveProfile(wxWindow* parent, const wxString& fullName, bool askToSave);

    const wxString& question() const { return m_question; }
    bool askToSave() const { return m_askToSave; }

private:
    void onInitDialog(wxInitDialogEvent& event);
    void onSave(wxCommandEvent& event);
    void onCancel(wxCommandEvent& event);
    void onOk(wxCommandEvent& event);

    wxString m_question;
    bool m_askToSave;

    wxDECLARE_EVENT_TABLE();
};

}  // namespace vl_app

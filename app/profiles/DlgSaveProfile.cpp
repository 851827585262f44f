#include "app/profiles/DlgSaveProfile.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/xrc/xmlres.h>

#include <MainWindow.h>
#include <OdError.h>
#include <OdString.h>

namespace vl_app {

// clang-format off
wxBEGIN_EVENT_TABLE(DlgSaveProfile, wxg::QcThemedDialog)
    EVT_INIT_DIALOG(DlgSaveProfile::onInitDialog)
    EVT_BUTTON(wxID_SAVE, DlgSaveProfile::onSave)
    EVT_BUTTON(wxID_CANCEL, DlgSaveProfile::onCancel)
    EVT_BUTTON(wxID_OK, DlgSaveProfile::onOk)
wxEND_EVENT_TABLE()
// clang-format on

DlgSaveProfile::DlgSaveProfile(wxWindow* parent, const wxString& fullName, bool askToSave)
    : m_askToSave(askToSave) {
    if (!loadLayout(parent ? parent : wxg::mainWindow(), "DLG_PROFILE_SAVE"))
        throw OdError(eKeyNotFound, OdString(L"The dialog layout \"DLG_PROFILE_SAVE\" is not loaded."));
    // The user answers with a button; the close box would leave the answer open.
    EnableCloseButton(false);
    m_question = askToSave
                     ? wxString::Format(_("The profile library already contains profile \"%s\" with the same geometry. "
                                          "Do you want to save it anyway?"),
                                        fullName)
                     : wxString::Format(_("Profile \"%s\" already exists in profile library"), fullName);
}

void DlgSaveProfile::onInitDialog(wxInitDialogEvent& event) {
    event.Skip();
    auto* text = XRCCTRL(*this, "TEXT_QUESTION", wxStaticText);
    text->SetLabel(m_question);
    text->Wrap(text->GetMinSize().GetWidth() > 0 ? text->GetMinSize().GetWidth() : 380);
    FindWindow(wxID_SAVE)->SetLabel(_("Save"));
    FindWindow(wxID_OK)->SetLabel(_("OK"));
    FindWindow(wxID_CANCEL)->SetLabel(_("Cancel"));
    FindWindow(wxID_SAVE)->Show(m_askToSave);
    FindWindow(wxID_CANCEL)->Show(m_askToSave);
    FindWindow(wxID_OK)->Show(!m_askToSave);
    if (auto* button = dynamic_cast<wxButton*>(FindWindow(m_askToSave ? wxID_SAVE : wxID_OK)))
        button->SetDefault();
    SetEscapeId(m_askToSave ? wxID_CANCEL : wxID_OK);
    GetSizer()->Fit(this);
    Layout();
}

void DlgSaveProfile::onSave(wxCommandEvent&) { EndModal(wxID_SAVE); }
void DlgSaveProfile::onCancel(wxCommandEvent&) { EndModal(wxID_CANCEL); }
void DlgSaveProfile::onOk(wxCommandEvent&) { EndModal(wxID_OK); }

}  // namespace vl_app

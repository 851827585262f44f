#include "AboutDialog.h"

#include <wx/artprov.h>
#include <wx/intl.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>

#include "CaApp.h"

AboutDialog::AboutDialog(wxWindow* parent, const ca::CaApp& app)
    : wxDialog(parent, wxID_ANY, wxString::Format(_("About %s"), ca::appName()), wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE, "VL_ABOUT") {
    const int gap = FromDIP(14);
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(new wxStaticBitmap(this, wxID_ANY, wxArtProvider::GetBitmap(wxART_INFORMATION, wxART_MESSAGE_BOX)), 0,
             wxALIGN_TOP | wxRIGHT, gap);

    auto* texts = new wxBoxSizer(wxVERTICAL);
    auto* name = new wxStaticText(this, wxID_ANY, ca::appName());
    wxFont big = name->GetFont().Bold();
    big.SetPointSize(big.GetPointSize() + 4);
    name->SetFont(big);
    texts->Add(name, 0, wxBOTTOM, FromDIP(6));
    auto* purpose = new wxStaticText(this, wxID_ANY,
                                     _("Opens a drawing and runs the commands of the building-information library "
                                       "modules."));
    purpose->Wrap(FromDIP(360));
    texts->Add(purpose, 0, wxBOTTOM, FromDIP(10));

    wxString modules;
    for (const wxString& module : {wxString("vantlib_db"), wxString("vantlib_app")})
        modules += wxString::Format(app.isDrxLoaded(module) ? _("%s: loaded") : _("%s: not available"), module) + "\n";
    modules += wxString::Format(_("Module folder: %s"), app.moduleDir());
    auto* moduleText = new wxStaticText(this, wxID_ANY, modules);
    moduleText->Wrap(FromDIP(360));
    texts->Add(moduleText, 0);
    row->Add(texts, 1, wxEXPAND);

    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(row, 1, wxEXPAND | wxALL, gap);
    column->Add(CreateSeparatedButtonSizer(wxOK), 0, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, gap);
    SetSizerAndFit(column);
    CentreOnParent();
}

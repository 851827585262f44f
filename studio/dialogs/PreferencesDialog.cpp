#include "PreferencesDialog.h"

#include <algorithm>

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/editlbox.h>
#include <wx/filepicker.h>
#include <wx/intl.h>
#include <wx/sizer.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/settings.h>
#include <wx/textctrl.h>

#include <CaPreferences.h>
#include <OdEdSettingsManager.h>
#include <OdStringWx.h>

#include "StudioProfilesInfo.h"

namespace {

const wchar_t* const kProfileStandardsSetting = L"BIMPROFILESTANDARDS";

// The settings store keeps the clash answer as 0 to 3; the choice shows them in that order.
constexpr unsigned kClashAnswers = 4;

}  // namespace

// ---- Values

OdString formatProfileStandards(const std::vector<OdString>& standards) {
    // An entry may itself hold several standards that the user typed with separators.
    wxString joined;
    for (const OdString& entry : standards)
        joined += toWx(entry) + ";";
    wxString text;
    for (const OdString& standard : profileStandardList(toOd(joined))) {
        if (!text.empty())
            text += "; ";
        text += toWx(standard);
    }
    return toOd(text);
}

StudioPreferences StudioPreferences::read() {
    const ca::Preferences& preferences = ca::preferences();
    StudioPreferences values;
    values.metricLibrary = preferences.DefaultVantlibMetric();
    values.imperialLibrary = preferences.DefaultVantlibImperial();
    values.clashAnswer = std::min(preferences.VantlibDefaultClashAnswer(), kClashAnswers - 1);
    values.searchPaths = preferences.ReferenceSearchPaths();
    values.profileStandards = profileStandardList(OdEdSettingsManager::instance().getString(kProfileStandardsSetting));
    return values;
}

void StudioPreferences::write(const StudioPreferences& before) const {
    ca::Preferences& preferences = ca::preferences();
    if (metricLibrary != before.metricLibrary)
        preferences.set_DefaultVantlibMetric(metricLibrary);
    if (imperialLibrary != before.imperialLibrary)
        preferences.set_DefaultVantlibImperial(imperialLibrary);
    if (clashAnswer != before.clashAnswer)
        preferences.set_VantlibDefaultClashAnswer(clashAnswer);
    if (searchPaths != before.searchPaths)
        preferences.set_ReferenceSearchPaths(searchPaths);
    if (profileStandards != before.profileStandards)
        OdEdSettingsManager::instance().setString(kProfileStandardsSetting, formatProfileStandards(profileStandards));
}

// ---- Dialog

PreferencesDialog::PreferencesDialog(wxWindow* parent)
    : wxDialog(parent, wxID_ANY, _("Preferences"), wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER, "VL_PREFERENCES") {
    auto* top = new wxBoxSizer(wxVERTICAL);

    auto* libraries = new wxStaticBoxSizer(wxVERTICAL, this, _("Libraries"));
    wxWindow* librariesBox = libraries->GetStaticBox();
    auto* grid = new wxFlexGridSizer(2, wxSize(8, 6));
    grid->AddGrowableCol(1);
    const wxString wildcard = _("Libraries (*.vlib)|*.vlib|All files (*)|*");
    auto addPicker = [&](const wxString& label, const char* name) {
        grid->Add(new wxStaticText(librariesBox, wxID_ANY, label), wxSizerFlags().CenterVertical());
        auto* picker = new wxFilePickerCtrl(librariesBox, wxID_ANY, wxString(), _("Choose a central library"), wildcard,
                                            wxDefaultPosition, wxSize(420, -1), wxFLP_OPEN | wxFLP_USE_TEXTCTRL,
                                            wxDefaultValidator, name);
        grid->Add(picker, wxSizerFlags().Expand());
        return picker;
    };
    m_metric = addPicker(_("Central library for metric drawings:"), "VL_PREF_METRIC");
    m_imperial = addPicker(_("Central library for imperial drawings:"), "VL_PREF_IMPERIAL");
    grid->Add(new wxStaticText(librariesBox, wxID_ANY, _("When a copied object's name is taken:")),
              wxSizerFlags().CenterVertical());
    m_clash = new wxChoice(librariesBox, wxID_ANY, wxDefaultPosition, wxDefaultSize, 0, nullptr, 0, wxDefaultValidator,
                           "VL_PREF_CLASH");
    m_clash->Append(_("Ask each time"));
    m_clash->Append(_("Keep the library's object"));
    m_clash->Append(_("Replace it with the copy"));
    m_clash->Append(_("Rename the copy"));
    grid->Add(m_clash, wxSizerFlags().Left());
    grid->Add(new wxStaticText(librariesBox, wxID_ANY, _("Folders searched for referenced files:")),
              wxSizerFlags().CenterVertical());
    m_searchPaths = new wxTextCtrl(librariesBox, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, 0,
                                   wxDefaultValidator, "VL_PREF_SEARCH_PATHS");
    m_searchPaths->SetToolTip(_("Separate folders with ';'."));
    grid->Add(m_searchPaths, wxSizerFlags().Expand());
    libraries->Add(grid, wxSizerFlags().Expand().Border(wxALL, 4));
    auto* note = new wxStaticText(librariesBox, wxID_ANY, _("The central libraries take effect for drawings opened afterwards."));
    note->SetForegroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_GRAYTEXT));
    libraries->Add(note, wxSizerFlags().Border(wxLEFT | wxRIGHT | wxBOTTOM, 4));
    top->Add(libraries, wxSizerFlags().Expand().Border(wxALL, 10));

    auto* profiles = new wxStaticBoxSizer(wxVERTICAL, this, _("Profiles"));
    m_standards = new wxEditableListBox(profiles->GetStaticBox(), wxID_ANY,
                                        _("Standards the profile lists offer (none listed: every standard)"),
                                        wxDefaultPosition, wxSize(-1, 170),
                                        wxEL_ALLOW_NEW | wxEL_ALLOW_EDIT | wxEL_ALLOW_DELETE, "VL_PREF_STANDARDS");
    profiles->Add(m_standards, wxSizerFlags(1).Expand().Border(wxALL, 4));
    top->Add(profiles, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, 10));

    top->Add(CreateSeparatedButtonSizer(wxOK | wxCANCEL), wxSizerFlags().Expand().Border(wxALL, 10));
    SetSizerAndFit(top);
    SetMinSize(GetSize());
    CentreOnParent();

    m_initial = StudioPreferences::read();
    setValues(m_initial);
}

StudioPreferences PreferencesDialog::values() const {
    StudioPreferences result;
    result.metricLibrary = toOd(m_metric->GetPath());
    result.imperialLibrary = toOd(m_imperial->GetPath());
    result.clashAnswer = unsigned(std::max(0, m_clash->GetSelection()));
    result.searchPaths = toOd(m_searchPaths->GetValue().Trim().Trim(false));
    wxArrayString standards;
    m_standards->GetStrings(standards);
    std::vector<OdString> entries;
    for (const wxString& standard : standards)
        entries.push_back(toOd(standard));
    result.profileStandards = profileStandardList(formatProfileStandards(entries));
    return result;
}

void PreferencesDialog::setValues(const StudioPreferences& values) {
    m_metric->SetPath(toWx(values.metricLibrary));
    m_imperial->SetPath(toWx(values.imperialLibrary));
    m_clash->SetSelection(int(std::min(values.clashAnswer, kClashAnswers - 1)));
    m_searchPaths->SetValue(toWx(values.searchPaths));
    wxArrayString standards;
    for (const OdString& standard : values.profileStandards)
        standards.Add(toWx(standard));
    m_standards->SetStrings(standards);
}

bool PreferencesDialog::TransferDataFromWindow() {
    values().write(m_initial);
    return true;
}

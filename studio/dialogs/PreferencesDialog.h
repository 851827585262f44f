#pragma once
// The studio's preferences: the central libraries for new drawings, the standing answer to name
// clashes, the reference search paths and the profile standards the profile lists offer.
#include <vector>

#include <wx/dialog.h>

#include <OdString.h>

class wxChoice;
class wxEditableListBox;
class wxFilePickerCtrl;
class wxTextCtrl;

// The values the dialog edits, read from and written to the host's settings store.
struct StudioPreferences {
    OdString metricLibrary;
    OdString imperialLibrary;
    // 0 ask, 1 skip, 2 overwrite, 3 rename.
    unsigned clashAnswer = 0;
    OdString searchPaths;
    // Standards of the BIMPROFILESTANDARDS setting, in the user's order; empty: every standard.
    std::vector<OdString> profileStandards;

    static StudioPreferences read();
    // Writes the values that differ from `before`, so that a value given for this run only
    // (the --central option) is not made permanent by an unrelated change.
    void write(const StudioPreferences& before) const;
};

// The setting's text of a list of standards ("EN 10365; DIN 1025"); profileStandardList reads
// it back.
OdString formatProfileStandards(const std::vector<OdString>& standards);

class PreferencesDialog : public wxDialog {
public:
    explicit PreferencesDialog(wxWindow* parent);

    // The values as the controls show them.
    StudioPreferences values() const;
    void setValues(const StudioPreferences& values);

    bool TransferDataFromWindow() override;

private:
    StudioPreferences m_initial;
    wxFilePickerCtrl* m_metric = nullptr;
    wxFilePickerCtrl* m_imperial = nullptr;
    wxChoice* m_clash = nullptr;
    wxTextCtrl* m_searchPaths = nullptr;
    wxEditableListBox* m_standards = nullptr;
};

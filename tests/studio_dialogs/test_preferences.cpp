// The preferences dialog as a user changes it, and what the rest of the studio reads back.
#include <gtest/gtest.h>
#include <wx/choice.h>
#include <wx/editlbox.h>
#include <wx/filepicker.h>

#include <CaPreferences.h>
#include <OdEdSettingsManager.h>
#include <WxgConfig.h>

#include "PreferencesDialog.h"
#include "StudioProfilesInfo.h"

namespace {

using Standards = std::vector<OdString>;

TEST(ProfileStandardsSetting, ListKeepsTheUsersOrderWithoutRepeatsOrBlanks) {
    EXPECT_EQ(profileStandardList(L" EN 10365; DIN 1025,, en 10365 ;AISC ; "),
              (Standards{L"EN 10365", L"DIN 1025", L"AISC"}));
    EXPECT_TRUE(profileStandardList(L" ; , ").empty());
    // An entry typed with separators of its own becomes several standards.
    EXPECT_EQ(formatProfileStandards({L"EN 10365", L" DIN 1025, AISC", L"", L"aisc"}), OdString(L"EN 10365; DIN 1025; AISC"));
    EXPECT_EQ(profileStandardList(formatProfileStandards({L"BS 4", L"JIS G 3192"})), (Standards{L"BS 4", L"JIS G 3192"}));
}

class PreferencesDialogTest : public ::testing::Test {
protected:
    void SetUp() override { OdEdSettingsManager::instance().setString(L"BIMPROFILESTANDARDS", L"EN 10365;DIN 1025"); }
    void TearDown() override {
        OdEdSettingsManager::instance().setString(L"BIMPROFILESTANDARDS", OdString());
        ca::preferences().set_DefaultVantlibMetric(OdString());
        ca::preferences().set_DefaultVantlibImperial(OdString());
    }

    template <class T>
    T* control(wxWindow& dialog, const char* name) {
        T* found = dynamic_cast<T*>(dialog.FindWindow(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
};

TEST_F(PreferencesDialogTest, OkWritesTheStandardsTheProfileServiceThenAllows) {
    PreferencesDialog dialog(nullptr);
    auto* standards = control<wxEditableListBox>(dialog, "VL_PREF_STANDARDS");
    ASSERT_NE(standards, nullptr);
    wxArrayString shown;
    standards->GetStrings(shown);
    EXPECT_EQ(shown, wxArrayString(2, std::vector<wxString>{"EN 10365", "DIN 1025"}.data()));

    shown.Add("AISC");
    standards->SetStrings(shown);
    ASSERT_TRUE(dialog.TransferDataFromWindow());
    EXPECT_EQ(OdEdSettingsManager::instance().getString(L"BIMPROFILESTANDARDS"), OdString(L"EN 10365; DIN 1025; AISC"));
    std::set<OdString> allowed;
    StudioProfilesInfo().getAllowedProfileStandards(allowed);
    EXPECT_EQ(allowed, (std::set<OdString>{L"AISC", L"DIN 1025", L"EN 10365"}));

    // An emptied list allows every standard again.
    PreferencesDialog again(nullptr);
    control<wxEditableListBox>(again, "VL_PREF_STANDARDS")->SetStrings(wxArrayString());
    ASSERT_TRUE(again.TransferDataFromWindow());
    StudioProfilesInfo().getAllowedProfileStandards(allowed);
    EXPECT_TRUE(allowed.empty());
}

TEST_F(PreferencesDialogTest, ALibraryGivenForThisRunIsNotMadePermanentByAnotherChange) {
    ca::preferences().set_DefaultVantlibImperial(L"/libraries/imperial.vlib");
    ca::preferences().overrideDefaultLibraries(L"/tmp/for-this-run.vlib");
    PreferencesDialog dialog(nullptr);
    EXPECT_EQ(control<wxFilePickerCtrl>(dialog, "VL_PREF_METRIC")->GetPath(), "/tmp/for-this-run.vlib");
    control<wxChoice>(dialog, "VL_PREF_CLASH")->SetSelection(3);
    ASSERT_TRUE(dialog.TransferDataFromWindow());
    EXPECT_EQ(ca::preferences().VantlibDefaultClashAnswer(), 3u);
    EXPECT_EQ(wxg::WxgConfig::readString("/Preferences/DefaultVantlibMetric"), wxString());
    EXPECT_EQ(wxg::WxgConfig::readString("/Preferences/DefaultVantlibImperial"), "/libraries/imperial.vlib");

    // A library the user chooses is kept.
    PreferencesDialog chosen(nullptr);
    control<wxFilePickerCtrl>(chosen, "VL_PREF_METRIC")->SetPath("/libraries/metric.vlib");
    ASSERT_TRUE(chosen.TransferDataFromWindow());
    EXPECT_EQ(wxg::WxgConfig::readString("/Preferences/DefaultVantlibMetric"), "/libraries/metric.vlib");
    ca::preferences().set_VantlibDefaultClashAnswer(0);
}

}  // namespace

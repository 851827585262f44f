// The settings store: window rectangles, preferences and the SDK's settings, across restarts.
#include <gtest/gtest.h>

#include <wx/ffile.h>

#include "CaPreferences.h"
#include "OdEdSettingsManager.h"
#include "OdStringWx.h"
#include "TestSupport.h"
#include "WxgConfig.h"

namespace {
wxString storeText() {
    wxString text;
    wxFFile(wxg::WxgConfig::storePath()).ReadAll(&text);
    return text;
}
}  // namespace

TEST(WxgConfig, StoreLivesInTheConfiguredFolder) {
    FreshSettings settings;
    EXPECT_EQ(wxg::WxgConfig::storePath(), settings.folder().file("vlstudio.ini"));
}

TEST(WxgConfig, WindowRectanglesSurviveARestart) {
    FreshSettings settings;
    wxRect rect;
    EXPECT_FALSE(wxg::WxgConfig::loadWindowRect("DlgMaterials", rect, wxSize(-1, 600)));
    EXPECT_EQ(rect.GetSize(), wxSize(-1, 600)) << "the default size when nothing is stored";

    wxg::WxgConfig::saveWindowRect("DlgMaterials", wxRect(10, 20, 800, 600));
    wxg::WxgConfig::saveWindowRect("DlgProfiles", wxRect(5, 6, 1000, 700));
    settings.restart();
    ASSERT_TRUE(wxg::WxgConfig::loadWindowRect("DlgMaterials", rect));
    EXPECT_EQ(rect, wxRect(10, 20, 800, 600));
    ASSERT_TRUE(wxg::WxgConfig::loadWindowRect("DlgProfiles", rect));
    EXPECT_EQ(rect, wxRect(5, 6, 1000, 700));
}

TEST(WxgConfig, DamagedRectanglesFallBackToTheDefault) {
    FreshSettings settings;
    wxRect rect;
    for (const char* stored : {"1,2,x,4", "1,2,3", "1,2,3,4,5", "1,2,0,400", ""}) {
        wxg::WxgConfig::writeString("/WindowRects/Dlg", stored);
        EXPECT_FALSE(wxg::WxgConfig::loadWindowRect("Dlg", rect, wxSize(300, 200))) << stored;
        EXPECT_EQ(rect.GetSize(), wxSize(300, 200)) << stored;
    }
}

TEST(Preferences, LibraryDefaultsAndClashAnswerPersist) {
    FreshSettings settings;
    ca::Preferences& prefs = ca::preferences();
    prefs.set_DefaultVantlibMetric(L"/libraries/metric.vlib");
    prefs.set_DefaultVantlibImperial(L"/libraries/imperial.vlib");
    prefs.set_VantlibDefaultClashAnswer(3);
    prefs.set_RoamableRootFolder(L"/home/user/roaming");
    settings.restart();
    EXPECT_EQ(prefs.DefaultVantlibMetric(), L"/libraries/metric.vlib");
    EXPECT_EQ(prefs.DefaultVantlibImperial(), L"/libraries/imperial.vlib");
    EXPECT_EQ(prefs.VantlibDefaultClashAnswer(), 3u);
    EXPECT_EQ(oa::appPreferences().RoamableRootFolder(), L"/home/user/roaming");
}

TEST(Preferences, SessionOverrideIsNotWrittenAndYieldsToAnExplicitSetting) {
    FreshSettings settings;
    ca::Preferences& prefs = ca::preferences();
    prefs.set_DefaultVantlibMetric(L"/stored/metric.vlib");
    prefs.overrideDefaultLibraries(L"/demo/central.vlib");
    EXPECT_EQ(prefs.DefaultVantlibMetric(), L"/demo/central.vlib");
    EXPECT_EQ(prefs.DefaultVantlibImperial(), L"/demo/central.vlib");
    EXPECT_FALSE(storeText().Contains("/demo/central.vlib"));
    prefs.set_DefaultVantlibImperial(L"/chosen/imperial.vlib");
    EXPECT_EQ(prefs.DefaultVantlibImperial(), L"/chosen/imperial.vlib");
    prefs.set_DefaultVantlibMetric(L"/stored/metric.vlib");
    EXPECT_EQ(prefs.DefaultVantlibMetric(), L"/stored/metric.vlib");
}

TEST(Preferences, ReferenceSearchPathsSplitAtSemicolons) {
    FreshSettings settings;
    oa::appPreferences().set_ReferenceSearchPaths(L" /a ;; /b/c;");
    const std::vector<OdString> paths = oa::appPreferences().referenceSearchPathList();
    ASSERT_EQ(paths.size(), 2u);
    EXPECT_EQ(paths[0], L"/a");
    EXPECT_EQ(paths[1], L"/b/c");
}

TEST(SdkSettings, ValuesGoToTheHostStoreAndSurviveARestart) {
    FreshSettings settings;
    wxg::WxgConfig::connectSdkSettings();
    OdEdSettingsManager* manager = OdEdSettingsManager::get();
    manager->setInt(L"ProfileOffsetBehavior", 2);
    manager->setString(L"BIMPROFILESTANDARDS", L"EN;AISC");
    manager->setDouble(L"Odd/Name%With/Slashes", 0.25);
    settings.restart();
    EXPECT_EQ(manager->getInt(L"ProfileOffsetBehavior"), 2);
    EXPECT_EQ(manager->getString(L"BIMPROFILESTANDARDS"), L"EN;AISC");
    EXPECT_EQ(manager->getDouble(L"Odd/Name%With/Slashes"), 0.25);
    const std::vector<OdString> names = manager->store()->names();
    EXPECT_NE(std::find(names.begin(), names.end(), OdString(L"Odd/Name%With/Slashes")), names.end());
    manager->remove(L"ProfileOffsetBehavior");
    settings.restart();
    EXPECT_FALSE(manager->has(L"ProfileOffsetBehavior"));
    EXPECT_TRUE(storeText().Contains("BIMPROFILESTANDARDS"));
}

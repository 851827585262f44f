// Loading the vantlib_db module into a host application: the services it installs, the
// drawings it binds and what it leaves behind at shut-down.
#include <unistd.h>

#include <filesystem>

#include <gtest/gtest.h>
#include <wx/init.h>
#include <wx/utils.h>

#include <CaApp.h>
#include <CaPreferences.h>
#include <OaApp.h>
#include <OdDbDatabase.h>
#include <Prompt.h>

#include <vantlib/vantlib.h>

#include <vl_db/DbPreferencesProvider.h>
#include <vl_db/DocumentLibraries.h>
#include <vl_db/LibraryReactor.h>

namespace {

namespace fs = std::filesystem;

class HostEnvironment : public ::testing::Environment {
public:
    void SetUp() override {
        ASSERT_TRUE(wxInitialize());
        m_dir = fs::temp_directory_path() / ("vantlib_db_module_" + std::to_string(::getpid()));
        fs::create_directories(m_dir / "config");
        wxSetEnv("VL_CONFIG_DIR", (m_dir / "config").string());
    }
    void TearDown() override {
        wxUninitialize();
        fs::remove_all(m_dir);
    }
    static fs::path dir() { return m_dir; }

private:
    static fs::path m_dir;
};
fs::path HostEnvironment::m_dir;

::testing::Environment* const g_host = ::testing::AddGlobalTestEnvironment(new HostEnvironment);

bool promptContains(const wxString& text) {
    for (const wxString& line : ca::promptLog())
        if (line.Contains(text))
            return true;
    return false;
}

// Modules stay mapped for the life of the process, so the whole story is one test.
TEST(VantlibDbModule, InstallsItsServicesBindsActiveDrawingsAndWithdrawsEverything) {
    const fs::path central = HostEnvironment::dir() / "central.vlib";
    vantlib::Library::create(OdString(central.wstring()), OdDb::kUnitsMillimeters)
        ->save(vantlib::Material::create(L"Concrete"));
    const fs::path drawingFile = HostEnvironment::dir() / "house.vldwg";
    auto db = OdDbDatabase::create(OdString(drawingFile.wstring()), OdDb::kUnitsMillimeters);
    vantlib::Library::create(db->fileName(), OdDb::kUnitsMillimeters);

    ca::clearPromptLog();
    ca::preferences().overrideDefaultLibraries(OdString(central.wstring()));
    oa::OaApp app;
    app.setModuleDir(VL_MODULE_DIR);
    ASSERT_TRUE(app.loadDrx("vantlib_db", true)) << wxJoin(ca::promptLog(), '\n');
    EXPECT_TRUE(promptContains("Library manager ready"));

    vl_db::DbPreferencesProvider* preferences = vl_db::DbPreferencesProvider::instance();
    ASSERT_NE(preferences, nullptr);
    EXPECT_EQ(preferences->defaultMetricLibrary(), OdString(central.wstring()));
    ASSERT_NE(vl_db::LibraryReactor::current(), nullptr) << "a default reactor guards removals";
    ASSERT_TRUE(app.hasLibraryInfoProvider());

    app.setActiveDatabase(db.get());
    ASSERT_EQ(vl_db::openDocLibs().size(), 1u);
    vl_db::DocumentLibraries* libs = vl_db::openDocLibs().front();
    EXPECT_EQ(libs->database(), db.get());
    EXPECT_TRUE(libs->isPrimaryEmbedded());
    ASSERT_NE(libs->secondary(), nullptr);
    const wxString info = app.libraryInfo(db.get());
    EXPECT_TRUE(info.Contains("embedded")) << info;
    EXPECT_TRUE(info.Contains(central.string())) << info;

    // The studio deactivates a drawing before it closes it.
    app.setActiveDatabase(nullptr);
    EXPECT_TRUE(vl_db::openDocLibs().empty());

    app.uninitAll();
    EXPECT_EQ(vl_db::DbPreferencesProvider::instance(), nullptr);
    EXPECT_EQ(vantlib::LibraryManager::instance()->reactor(), nullptr);
    EXPECT_FALSE(app.hasLibraryInfoProvider());
}

}  // namespace

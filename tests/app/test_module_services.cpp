// Start-up and shut-down, and the services the module installs into the library modules.
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include <wx/translation.h>

#include <CaApp.h>
#include <OdError.h>

#include <vantlib/Translations.h>

#include <vl_db/DbPreferencesProvider.h>
#include <vl_db/DbVantLibManager.h>
#include <vl_db/DocumentLibraries.h>
#include <vl_db/FileFinder.h>

#include "AppTestSupport.h"
#include "app/DbPreferencesProvider.h"
#include "app/FileFinder.h"
#include "app/LibraryReactor.h"
#include "app/Module.h"
#include "app/VantlibAppModule.h"
#include "app/VantlibTranslations.h"

using app_test::od;
using app_test::ProjectFixture;

TEST_F(ProjectFixture, TransmittalTakesAnExternalProjectLibraryOnlyWithItsAbsolutePath) {
    vl_app::VantlibAppModule module;
    ca::TransmittalFiles files;
    module.onDatabaseAddedToEtransmit(drawing.get(), files);
    EXPECT_TRUE(files.empty()) << "an embedded library travels inside the drawing";
    module.onDatabaseAddedToEtransmit(nullptr, files);
    EXPECT_TRUE(files.empty());

    std::filesystem::create_directories(path("libs"));
    vantlib::Library::create(od(path("libs/project.vlib")), OdDb::kUnitsMillimeters);
    vl_db::docLibs(drawing.get())->attachPrimary(od(path("libs/project.vlib")));
    module.onDatabaseAddedToEtransmit(drawing.get(), files);
    ASSERT_EQ(files.size(), 1u);
    EXPECT_EQ(files[0].first, od(path("libs/project.vlib")));
    EXPECT_EQ(files[0].second, ca::TransmittalGraphNode::kLibraryFile);
}

TEST_F(ProjectFixture, FileFinderFallsBackToTheBareNameBesideTheDrawing) {
    std::ofstream(path("central.vlib").string()) << "";
    vl_app::FileFinder finder;
    OdString found(L"unchanged");
    EXPECT_FALSE(finder.findFile(found, nullptr, drawing.get()));
    EXPECT_FALSE(finder.findFile(found, L"central.vlib", nullptr));
    EXPECT_TRUE(finder.findFile(found, L"/moved/away/central.vlib", drawing.get()));
    EXPECT_EQ(found, od(path("central.vlib")));
    EXPECT_FALSE(finder.findFile(found, L"missing.vlib", drawing.get()));
    EXPECT_FALSE(finder.findFile(found, L"/moved/away/missing.vlib", drawing.get()));
}

TEST(ModuleServices, TranslationsComeFromTheLoadedCatalogue) {
    vl_app::VantlibTranslations translations;
    OdString out(L"unchanged");
    wxTranslations::Set(nullptr);
    EXPECT_FALSE(translations.translate(out, OdString(L"Wall"))) << "no translations installed";

    wxFileTranslationsLoader::AddCatalogLookupPathPrefix(VL_LOCALE_DIR);
    auto* german = new wxTranslations;
    wxTranslations::Set(german);
    german->SetLanguage("de");
    ASSERT_TRUE(german->AddCatalog("vantlib_app"));
    EXPECT_TRUE(translations.translate(out, OdString(L"Wall")));
    EXPECT_EQ(out, OdString(L"Wand"));
    EXPECT_FALSE(translations.translate(out, OdString(L"No such text anywhere")));
    EXPECT_EQ(out, OdString(L"Wand")) << "left as it was";
    wxTranslations::Set(nullptr);
}

TEST(ModuleServices, InitialisationInstallsOnceAndShutdownWithdrawsEverything) {
    ca::CaApp app;
    app.setModuleDir(VL_MODULE_DIR);
    vl_app::initModule(&app);
    vl_app::VantlibAppModule* module = vl_app::appModule();
    ASSERT_NE(module, nullptr);
    EXPECT_TRUE(app.isDrxLoaded("vantlib_db"));
    vl_app::initModule(&app);
    EXPECT_EQ(vl_app::appModule(), module) << "a second initialisation changes nothing";
    EXPECT_TRUE(app.hasAppReactor(module));
    EXPECT_EQ(vl_db::FileFinder::instance(), vl_app::fileFinder());
    EXPECT_EQ(vl_db::DbPreferencesProvider::instance(), vl_app::preferencesProvider());
    EXPECT_EQ(vantlib::Translations::get(), vl_app::translations());
    EXPECT_EQ(vantlib::LibraryManager::instance()->reactor(), vl_app::LibraryReactor::instance())
        << "the drawing-side manager keeps the module's reactor";
    EXPECT_NE(app.findCommand("copy-central-to-project"), nullptr);

    vl_app::uninitModule(&app);
    EXPECT_EQ(vl_app::appModule(), nullptr);
    EXPECT_FALSE(app.hasAppReactor(module));
    EXPECT_EQ(vl_db::FileFinder::instance(), nullptr);
    EXPECT_EQ(vl_db::DbPreferencesProvider::instance(), nullptr);
    EXPECT_EQ(vantlib::Translations::get(), nullptr);
    EXPECT_EQ(app.findCommand("copy-central-to-project"), nullptr);
    vl_app::uninitModule(&app);
    app.uninitAll();
    EXPECT_EQ(vantlib::LibraryManager::instance()->reactor(), vl_app::LibraryReactor::instance());
}

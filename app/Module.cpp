#include "app/Module.h"

#include <wx/image.h>
#include <wx/intl.h>

#include <CaApp.h>
#include <Prompt.h>

#include <vantlib/Translations.h>

#include <vl_resources.h>

#include "app/DbPreferencesProvider.h"
#include "app/FileFinder.h"
#include "app/LibraryReactor.h"
#include "app/ModuleCommands.h"
#include "app/VantlibAppModule.h"
#include "app/VantlibTranslations.h"

namespace vl_app {

namespace {
// The application module doubles as the flag that the module is initialised.
VantlibAppModule* g_appModule = nullptr;
FileFinder* g_fileFinder = nullptr;
DbPreferencesProvider* g_preferences = nullptr;
VantlibTranslations* g_translations = nullptr;

void registerResources() {
    // The embedded pictures are PNG files; a host without the handler could not decode them.
    if (!wxImage::FindHandler(wxBITMAP_TYPE_PNG))
        wxImage::AddHandler(new wxPNGHandler);
    InitVantlibXmlResource();
}
}  // namespace

void initModule(ca::CaApp* app) {
    if (g_appModule || !app)
        return;
    // The drawing-side manager first: its services exist before ours replace them.
    app->loadDrx("vantlib_db", true);
    registerResources();

    g_appModule = new VantlibAppModule();
    app->addAppReactor(g_appModule, ca::kApplicationEvents);

    auto* finder = new FileFinder();
    delete g_fileFinder;
    g_fileFinder = finder;
    vl_db::FileFinder::setInstance(g_fileFinder);

    auto* preferences = new DbPreferencesProvider();
    delete g_preferences;
    g_preferences = preferences;
    vl_db::DbPreferencesProvider::setInstance(g_preferences);

    auto* translations = new VantlibTranslations();
    delete g_translations;
    g_translations = translations;
    vantlib::Translations::set(g_translations);

    // The drawing-side manager hooks the balloons of whichever reactor was installed when it
    // started; when it was loaded before this module that was its own, so ours is hooked here.
    LibraryReactor::instance()->initBalloonNotificationHandler();
    registerModuleCommands(app);
    ca::prompt(_("Library dialogs ready: layouts, reactor and services installed."));
}

void uninitModule(ca::CaApp* app) {
    if (!g_appModule || !app)
        return;
    unregisterModuleCommands(app);

    vantlib::Translations::set(nullptr);
    delete g_translations;
    g_translations = nullptr;

    vl_db::DbPreferencesProvider::setInstance(nullptr);
    delete g_preferences;
    g_preferences = nullptr;

    vl_db::FileFinder::setInstance(nullptr);
    delete g_fileFinder;
    g_fileFinder = nullptr;

    app->removeAppReactor(g_appModule);
    delete g_appModule;
    g_appModule = nullptr;
}

VantlibAppModule* appModule() { return g_appModule; }
FileFinder* fileFinder() { return g_fileFinder; }
DbPreferencesProvider* preferencesProvider() { return g_preferences; }
VantlibTranslations* translations() { return g_translations; }

}  // namespace vl_app

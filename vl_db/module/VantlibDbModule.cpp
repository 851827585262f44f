// Start-up and shut-down of the vantlib_db module: hooks the drawing-side library manager into
// the studio. The user-interface module replaces the services installed here with its own.
#include <exception>

#include <CaApp.h>
#include <Prompt.h>

#include <wx/intl.h>

#include <vantlib/LibraryManager.h>

#include <vl_db/DbPreferencesProvider.h>
#include <vl_db/DocumentLibraries.h>
#include <vl_db/LibraryReactor.h>

#include "HostPreferencesProvider.h"
#include "LibraryInfo.h"

VL_MODULE_INTERFACE_EXPORT

namespace {

// Binds a drawing's libraries when it becomes active, so that broken library files are
// reported as the drawing opens, and lets them go when it is deactivated: the studio
// deactivates a drawing just before it closes it, and the registry must not outlive it.
class DrawingTracker : public ca::CAppReactor {
public:
    void onActivate(OdDbDatabase* db) override {
        if (!db)
            return;
        try {
            vl_db::docLibs(db);
        } catch (const std::exception& e) {
            ca::promptf(L"The libraries of the drawing could not be bound: %ls", OdString::fromUtf8(e.what()).c_str());
        }
    }
    void onDeactivate(OdDbDatabase* db) override { vl_db::closeDocLibs(db); }
};

DrawingTracker* g_tracker = nullptr;

// Services this module installed itself, deleted again at shut-down.
vl_db::HostPreferencesProvider* g_preferences = nullptr;
vl_db::LibraryReactor* g_reactor = nullptr;

void initModule(ca::CaApp* app) {
    if (!vl_db::DbPreferencesProvider::instance()) {
        g_preferences = new vl_db::HostPreferencesProvider();
        vl_db::DbPreferencesProvider::setInstance(g_preferences);
    }
    // Without a reactor nothing would keep an object that a drawing uses from being removed.
    if (!vantlib::LibraryManager::instance()->reactor()) {
        g_reactor = new vl_db::LibraryReactor();
        vantlib::LibraryManager::instance()->setReactor(g_reactor);
    }
    if (vl_db::LibraryReactor* reactor = vl_db::LibraryReactor::current())
        reactor->initBalloonNotificationHandler();
    app->setLibraryInfoProvider(vl_db::describeLibraries);
    g_tracker = new DrawingTracker();
    app->addAppReactor(g_tracker, ca::kDocumentEvents);
    if (OdDbDatabase* active = app->activeDatabase())
        g_tracker->onActivate(active);
    ca::prompt(_("Library manager ready: project libraries in drawings, central library from the preferences."));
}

void uninitModule(ca::CaApp* app) {
    app->setLibraryInfoProvider({});
    if (g_tracker) {
        app->removeAppReactor(g_tracker);
        delete g_tracker;
        g_tracker = nullptr;
    }
    for (vl_db::DocumentLibraries* libs : vl_db::openDocLibs())
        vl_db::closeDocLibs(libs->database());
    if (vl_db::LibraryReactor* reactor = vl_db::LibraryReactor::current())
        reactor->unInitBalloonNotificationHandler();
    if (g_reactor) {
        if (vantlib::LibraryManager::instance()->reactor() == g_reactor)
            vantlib::LibraryManager::instance()->setReactor(nullptr);
        delete g_reactor;
        g_reactor = nullptr;
    }
    if (g_preferences) {
        if (vl_db::DbPreferencesProvider::instance() == g_preferences)
            vl_db::DbPreferencesProvider::setInstance(nullptr);
        delete g_preferences;
        g_preferences = nullptr;
    }
}

const ca::CAppInitializer g_initializer(initModule, uninitModule);

}  // namespace

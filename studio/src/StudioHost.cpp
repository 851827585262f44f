#include "StudioHost.h"

#include <cstdio>

#include <wx/app.h>
#include <wx/filename.h>
#include <wx/image.h>
#include <wx/init.h>
#include <wx/xrc/xmlres.h>

#include "BuiltinCommands.h"
#include "CaPreferences.h"
#include "DrawingSession.h"
#include "MainThread.h"
#include "MainWindow.h"
#include "OaApp.h"
#include "OdStringWx.h"
#include "OutlinePickDialog.h"
#include "PatternCatalogue.h"
#include "Prompt.h"
#include "StudioProfilesInfo.h"
#include "StudioPropertySets.h"
#include "Translations.h"
#include "WxgConfig.h"

StudioHost::StudioHost(const StudioOptions& options) {
    wxTheApp->SetAppName("vlstudio");
    wxTheApp->SetAppDisplayName(ca::appName());
    wxInitAllImageHandlers();
    // Modules bring their dialogs as XRC layouts; the host provides the handlers.
    wxXmlResource::Get()->InitAllHandlers();
    ca::installMainThreadDispatcher();
    wxg::WxgConfig::connectSdkSettings();
    setupTranslations(wxString::FromUTF8(options.lang));
    // Custom hatch patterns are support files: .pat files along the reference search paths.
    ca::PatternCatalogue::instance().setSearchFolders(ca::preferences().referenceSearchPathList());

    m_app = std::make_unique<oa::OaApp>();
    m_session = std::make_unique<DrawingSession>(*m_app);
    registerBuiltinCommands(*m_app, *m_session, m_frame);
    if (!options.central.empty()) {
        // A path given on the command line is meant relative to where the studio was started,
        // not to the roamable root folder that relative preference paths use.
        wxFileName central(wxString::FromUTF8(options.central));
        central.MakeAbsolute();
        ca::preferences().overrideDefaultLibraries(toOd(central.GetFullPath()));
    }
    m_profilesInfo = std::make_unique<StudioProfilesInfo>();
    m_profilesInfo->setOutlinePicker([this] {
        OdDbDatabase* db = m_session->database();
        return db ? pickOutline(wxg::mainWindow(), *db) : std::vector<OdDbObjectId>();
    });
    m_app->setService(kProfilesInfoService, m_profilesInfo.get());
    m_propertySets = std::make_unique<StudioPropertySets>();
    m_app->setService(vl_app::kPropertySetsHostService, m_propertySets.get());
    loadModules();
}

StudioHost::~StudioHost() { shutDown(); }

void StudioHost::loadModules() {
    // The drawing-side library manager first: the user-interface module builds on it.
    for (const wxString& module : {wxString("vantlib_db"), wxString("vantlib_app")})
        if (m_app->loadDrx(module, true))
            ca::prompt(wxString::Format(_("Module %s loaded."), module));
}

void StudioHost::shutDown() {
    if (!m_app)
        return;
    m_session->close();
    m_app->uninitAll();
    m_app->setService(kProfilesInfoService, nullptr);
    m_app->setService(vl_app::kPropertySetsHostService, nullptr);
    ca::uninstallMainThreadDispatcher();
    m_session.reset();
    m_app.reset();
}

namespace {
// wx started without the toolkit: no window, so no display.
class ConsoleApp : public wxAppConsole {
public:
    int OnRun() override { return 0; }
};
}  // namespace

int listCommandsWithoutDisplay(const StudioOptions& options) {
    // An application object of our own, or wx would make the studio's GUI one.
    wxApp::SetInstance(new ConsoleApp);
    wxInitializer console;
    if (!console.IsOk()) {
        std::fprintf(stderr, "vlstudio: wxWidgets could not start.\n");
        return 1;
    }
    StudioHost host(options);
    for (const ca::Command& command : host.app().commands())
        std::printf("%s\n", static_cast<const char*>(command.name.utf8_str()));
    return 0;
}

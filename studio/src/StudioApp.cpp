#include "StudioApp.h"

#include <cstdio>

#include <wx/filename.h>
#include <wx/image.h>
#include <wx/xrc/xmlres.h>

#include "BuiltinCommands.h"
#include "CaPreferences.h"
#include "DrawingSession.h"
#include "MainFrame.h"
#include "MainThread.h"
#include "OaApp.h"
#include "OdStringWx.h"
#include "PatternCatalogue.h"
#include "Prompt.h"
#include "Screenshot.h"
#include "Translations.h"
#include "WxgConfig.h"

int StudioApp::s_exitCode = -1;

StudioApp::StudioApp() = default;
StudioApp::~StudioApp() = default;

bool StudioApp::OnInit() {
    SetAppName("vlstudio");
    SetAppDisplayName(ca::appName());
    wxInitAllImageHandlers();
    // Modules bring their dialogs as XRC layouts; the host provides the handlers.
    wxXmlResource::Get()->InitAllHandlers();
    ca::installMainThreadDispatcher();
    wxg::WxgConfig::connectSdkSettings();
    setupTranslations(wxString::FromUTF8(m_options.lang));
    // Custom hatch patterns are support files: .pat files along the reference search paths.
    ca::PatternCatalogue::instance().setSearchFolders(ca::preferences().referenceSearchPathList());

    m_host = std::make_unique<oa::OaApp>();
    m_session = std::make_unique<DrawingSession>(*m_host);
    registerBuiltinCommands(*m_host, *m_session, m_frame);
    if (!m_options.central.empty()) {
        // A path given on the command line is meant relative to where the studio was started,
        // not to the roamable root folder that relative preference paths use.
        wxFileName central(wxString::FromUTF8(m_options.central));
        central.MakeAbsolute();
        ca::preferences().overrideDefaultLibraries(toOd(central.GetFullPath()));
    }
    loadModules();

    if (m_options.listCommands) {
        for (const ca::Command& command : m_host->commands())
            std::printf("%s\n", static_cast<const char*>(command.name.utf8_str()));
        s_exitCode = 0;
        shutDownHost();
        return false;
    }
    const wxString command = wxString::FromUTF8(m_options.command);
    if (!command.empty() && !m_host->findCommand(command)) {
        std::fprintf(stderr, "vlstudio: unknown command \"%s\"; --list-commands shows the commands.\n",
                     m_options.command.c_str());
        s_exitCode = 2;
        shutDownHost();
        return false;
    }

    m_frame = new MainFrame(*m_host, *m_session);
    m_frame->Show();
    SetTopWindow(m_frame);
    if (!m_options.drawing.empty())
        m_frame->openDrawing(wxString::FromUTF8(m_options.drawing));

    // Started before the command, so that it also fires while the command waits in ShowModal.
    if (!m_options.screenshot.empty()) {
        m_screenshot = std::make_unique<ScreenshotTaker>(wxString::FromUTF8(m_options.screenshot), m_frame,
                                                         [](int code) { s_exitCode = code; });
        m_screenshot->start();
    }
    if (!command.empty()) {
        if (m_screenshot)
            m_screenshot->setCommandRunning(true);
        CallAfter([this, command] {
            m_host->runCommand(command);
            if (m_screenshot)
                m_screenshot->setCommandRunning(false);
        });
    }
    return true;
}

void StudioApp::loadModules() {
    // The drawing-side library manager first: the user-interface module builds on it.
    for (const wxString& module : {wxString("vantlib_db"), wxString("vantlib_app")})
        if (m_host->loadDrx(module, true))
            ca::promptf(L"Module %ls loaded.", module.wc_str());
}

int StudioApp::OnExit() {
    shutDownHost();
    return wxApp::OnExit();
}

void StudioApp::shutDownHost() {
    if (m_screenshot) {
        m_screenshot->Stop();
        m_screenshot.reset();
    }
    if (m_session)
        m_session->close();
    if (m_host)
        m_host->uninitAll();
    ca::uninstallMainThreadDispatcher();
    m_session.reset();
    m_host.reset();
}

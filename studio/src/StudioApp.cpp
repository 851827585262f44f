#include "StudioApp.h"

#include <cstdio>

#include <wx/log.h>

#include "MainFrame.h"
#include "OaApp.h"
#include "Screenshot.h"
#include "StudioHost.h"

int StudioApp::s_exitCode = -1;

StudioApp::StudioApp() = default;
StudioApp::~StudioApp() = default;

bool StudioApp::OnInit() {
    // The toolkit is up: messages go to wx's usual target again (message boxes).
    delete wxLog::SetActiveTarget(nullptr);
    m_host = std::make_unique<StudioHost>(m_options);
    const wxString command = wxString::FromUTF8(m_options.command);
    if (!command.empty() && !m_host->app().findCommand(command.BeforeFirst(' '))) {
        std::fprintf(stderr, "vlstudio: unknown command \"%s\"; --list-commands shows the commands.\n",
                     m_options.command.c_str());
        s_exitCode = 2;
        shutDownHost();
        return false;
    }

    m_frame = new MainFrame(m_host->app(), m_host->session());
    m_host->setFrame(m_frame);
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
            m_host->app().runCommand(command);
            if (m_screenshot)
                m_screenshot->setCommandRunning(false);
        });
    }
    return true;
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
    m_host.reset();
}

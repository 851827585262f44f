#pragma once
// The studio's wx application: sets up the host services, loads the library modules, shows
// the main window and carries out the command-line options.
#include <memory>

#include <wx/app.h>

#include "StudioOptions.h"

class MainFrame;
class ScreenshotTaker;
class StudioHost;

class StudioApp : public wxApp {
public:
    StudioApp();
    ~StudioApp() override;

    void setOptions(const StudioOptions& options) { m_options = options; }
    bool OnInit() override;
    int OnExit() override;

    // The process exit code the studio chose; -1 when it chose none.
    static int s_exitCode;

private:
    void shutDownHost();

    StudioOptions m_options;
    std::unique_ptr<StudioHost> m_host;
    std::unique_ptr<ScreenshotTaker> m_screenshot;
    MainFrame* m_frame = nullptr;
};

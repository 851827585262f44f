#pragma once
// The studio without its window: host services, the drawing session, the built-in commands and
// the library modules. It needs wx started but no display, so that --list-commands also works
// where there is none.
#include <memory>

#include "StudioOptions.h"

class DrawingSession;
class StudioProfilesInfo;
class StudioPropertySets;
class MainFrame;

namespace oa { class OaApp; }

class StudioHost {
public:
    explicit StudioHost(const StudioOptions& options);
    ~StudioHost();
    StudioHost(const StudioHost&) = delete;
    StudioHost& operator=(const StudioHost&) = delete;

    oa::OaApp& app() { return *m_app; }
    DrawingSession& session() { return *m_session; }
    // The main window, once there is one; built-in commands that need it read it when they run.
    void setFrame(MainFrame* frame) { m_frame = frame; }
    // Closes the drawing and runs the modules' shut-down; the destructor does it otherwise.
    void shutDown();

private:
    void loadModules();

    std::unique_ptr<oa::OaApp> m_app;
    std::unique_ptr<DrawingSession> m_session;
    // Section geometry and drawing bookkeeping for the profiles editor.
    std::unique_ptr<StudioProfilesInfo> m_profilesInfo;
    // Element categories, visibility and structure for the property sets editor.
    std::unique_ptr<StudioPropertySets> m_propertySets;
    MainFrame* m_frame = nullptr;
};

// --list-commands: starts wx without a display, prints every command name on its own line and
// returns the exit code.
int listCommandsWithoutDisplay(const StudioOptions& options);

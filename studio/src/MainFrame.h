#pragma once
// The studio's main window: the open drawing's file, units and libraries, the Library menu of
// the modules' commands, the command line and the notification balloons.
#include <wx/frame.h>

#include "CaApp.h"

class wxInfoBar;
class wxMenu;
class wxStaticText;
class CommandLinePane;
class DrawingSession;

namespace oa { class OaApp; }

class MainFrame : public wxFrame {
public:
    MainFrame(oa::OaApp& app, DrawingSession& session);
    ~MainFrame() override;

    // Opens a drawing; a failure is shown in the window and leaves the current drawing open.
    bool openDrawing(const wxString& path);
    void chooseAndOpenDrawing();
    void closeDrawing();
    void refreshDrawingInfo();
    void rebuildLibraryMenu();
    // True when a loaded module provides the command of that name.
    bool hasCommand(const wxString& name) const;
    void showError(const wxString& message);

private:
    // Follows document activation, which modules may also cause.
    struct ActivationReactor : ca::CAppReactor {
        explicit ActivationReactor(MainFrame& frame) : frame(frame) {}
        void onActivate(OdDbDatabase*) override { frame.refreshDrawingInfo(); }
        void onDeactivate(OdDbDatabase*) override { frame.refreshDrawingInfo(); }
        MainFrame& frame;
    };

    wxMenuBar* buildMenuBar();
    wxWindow* buildInfoPanel(wxWindow* parent);
    void onClose(wxCloseEvent& event);

    oa::OaApp& m_app;
    DrawingSession& m_session;
    ActivationReactor m_reactor{*this};
    wxInfoBar* m_infoBar = nullptr;
    wxStaticText* m_title = nullptr;
    wxStaticText* m_file = nullptr;
    wxStaticText* m_units = nullptr;
    wxStaticText* m_lengthFormat = nullptr;
    wxStaticText* m_libraries = nullptr;
    CommandLinePane* m_commandLine = nullptr;
    wxMenu* m_libraryMenu = nullptr;
};

#include "MainFrame.h"

#include <wx/filename.h>
#include <wx/infobar.h>
#include <wx/intl.h>
#include <wx/menu.h>
#include <wx/panel.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/statbox.h>
#include <wx/statline.h>
#include <wx/stattext.h>

#include "CaFileDialog.h"
#include "CaUnits.h"
#include "CommandLinePane.h"
#include "DrawingSession.h"
#include "MainWindow.h"
#include "OaApp.h"
#include "OdDbDatabase.h"
#include "OdStringWx.h"
#include "Prompt.h"
#include "WxgConfig.h"

namespace {
const wxString kWindowKey = "StudioMainFrame";
constexpr int kFirstLibraryCommandId = wxID_HIGHEST + 1000;
constexpr int kLastLibraryCommandId = kFirstLibraryCommandId + 499;
constexpr int kImportLibraryId = kLastLibraryCommandId + 1;
constexpr int kExportLibraryId = kLastLibraryCommandId + 2;
// File menu entries that a module provides as commands of these names.
const wxString kImportLibraryCommand = "import-library";
const wxString kExportLibraryCommand = "export-library";
}  // namespace

MainFrame::MainFrame(oa::OaApp& app, DrawingSession& session)
    : wxFrame(nullptr, wxID_ANY, ca::appName(), wxDefaultPosition, wxDefaultSize, wxDEFAULT_FRAME_STYLE,
              "VL_MAIN_FRAME"),
      m_app(app), m_session(session) {
    SetMenuBar(buildMenuBar());
    CreateStatusBar(2);
    SetStatusText(_("Ready"), 0);

    auto* content = new wxPanel(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL, "VL_CONTENT");
    m_infoBar = new wxInfoBar(content);
    const int gap = FromDIP(10);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(m_infoBar, 0, wxEXPAND);
    column->Add(buildInfoPanel(content), 0, wxEXPAND | wxALL, gap);
    auto* commandBox = new wxStaticBoxSizer(wxVERTICAL, content, _("Command line"));
    m_commandLine = new CommandLinePane(commandBox->GetStaticBox(),
                                        [this](const wxString& text) { m_app.executeCommandLine(text); });
    commandBox->Add(m_commandLine, 1, wxEXPAND | wxALL, FromDIP(4));
    column->Add(commandBox, 1, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, gap);
    content->SetSizer(column);

    auto* frameSizer = new wxBoxSizer(wxVERTICAL);
    frameSizer->Add(content, 1, wxEXPAND);
    SetSizer(frameSizer);
    SetMinSize(FromDIP(wxSize(640, 420)));
    wxg::WxgConfig::restoreWindow(this, kWindowKey, FromDIP(wxSize(960, 640)));

    for (const wxString& line : ca::promptLog())
        m_commandLine->appendLine(line);
    ca::setPromptSink([this](const wxString& line) { m_commandLine->appendLine(line); });
    wxg::setMainWindow(this);
    m_app.addAppReactor(&m_reactor, ca::kDocumentEvents);
    m_app.setCommandsChangedHandler([this] { rebuildLibraryMenu(); });

    Bind(wxEVT_CLOSE_WINDOW, &MainFrame::onClose, this);
    rebuildLibraryMenu();
    refreshDrawingInfo();
}

MainFrame::~MainFrame() {
    m_app.setCommandsChangedHandler({});
    m_app.removeAppReactor(&m_reactor);
    ca::setPromptSink({});
    wxg::setMainWindow(nullptr);
}

wxMenuBar* MainFrame::buildMenuBar() {
    auto* file = new wxMenu;
    file->Append(wxID_OPEN, _("&Open...\tCtrl+O"), _("Open a drawing"));
    file->Append(wxID_CLOSE, _("&Close Drawing"), _("Close the open drawing"));
    file->AppendSeparator();
    file->Append(kImportLibraryId, _("&Import Library..."), _("Read a library exchange document into a library of the drawing"));
    file->Append(kExportLibraryId, _("&Export Library..."), _("Write a library of the drawing as an exchange document"));
    file->AppendSeparator();
    file->Append(wxID_PREFERENCES, _("&Preferences..."), _("Central libraries, name clashes and profile standards"));
    file->AppendSeparator();
    file->Append(wxID_EXIT, _("E&xit"));
    Bind(wxEVT_MENU, [this](wxCommandEvent&) { chooseAndOpenDrawing(); }, wxID_OPEN);
    Bind(wxEVT_MENU, [this](wxCommandEvent&) { closeDrawing(); }, wxID_CLOSE);
    Bind(wxEVT_MENU, [this](wxCommandEvent&) { m_app.runCommand("preferences"); }, wxID_PREFERENCES);
    Bind(wxEVT_MENU, [this](wxCommandEvent&) { Close(); }, wxID_EXIT);
    Bind(wxEVT_UPDATE_UI, [this](wxUpdateUIEvent& e) { e.Enable(m_session.database() != nullptr); }, wxID_CLOSE);
    for (const auto& [id, command] : {std::make_pair(kImportLibraryId, kImportLibraryCommand),
                                      std::make_pair(kExportLibraryId, kExportLibraryCommand)}) {
        const wxString name = command;
        Bind(wxEVT_MENU, [this, name](wxCommandEvent&) { m_app.runCommand(name); }, id);
        Bind(wxEVT_UPDATE_UI, [this, name](wxUpdateUIEvent& e) { e.Enable(m_session.database() && hasCommand(name)); }, id);
    }

    m_libraryMenu = new wxMenu;
    Bind(wxEVT_MENU, [this](wxCommandEvent& event) {
        const size_t index = static_cast<size_t>(event.GetId() - kFirstLibraryCommandId);
        if (index < m_app.commands().size())
            m_app.runCommand(m_app.commands()[index].name);
    }, kFirstLibraryCommandId, kLastLibraryCommandId);

    auto* help = new wxMenu;
    help->Append(wxID_ABOUT, _("&About"));
    Bind(wxEVT_MENU, [this](wxCommandEvent&) { m_app.runCommand("about"); }, wxID_ABOUT);

    auto* bar = new wxMenuBar;
    bar->Append(file, _("&File"));
    bar->Append(m_libraryMenu, _("&Library"));
    bar->Append(help, _("&Help"));
    return bar;
}

wxWindow* MainFrame::buildInfoPanel(wxWindow* parent) {
    auto* panel = new wxPanel(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL, "VL_DRAWING_INFO");
    auto* column = new wxBoxSizer(wxVERTICAL);
    m_title = new wxStaticText(panel, wxID_ANY, wxString());
    wxFont titleFont = m_title->GetFont().Bold();
    titleFont.SetPointSize(titleFont.GetPointSize() + 4);
    m_title->SetFont(titleFont);
    column->Add(m_title, 0, wxBOTTOM, FromDIP(8));

    auto* grid = new wxFlexGridSizer(2, FromDIP(6), FromDIP(16));
    grid->AddGrowableCol(1);
    auto addRow = [&](const wxString& label, const wxString& name) {
        auto* caption = new wxStaticText(panel, wxID_ANY, label);
        caption->SetForegroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_GRAYTEXT));
        auto* value = new wxStaticText(panel, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                                       wxST_ELLIPSIZE_MIDDLE, name);
        grid->Add(caption, 0, wxALIGN_TOP);
        grid->Add(value, 1, wxEXPAND);
        return value;
    };
    m_file = addRow(_("File"), "VL_INFO_FILE");
    m_units = addRow(_("Units"), "VL_INFO_UNITS");
    m_lengthFormat = addRow(_("Lengths"), "VL_INFO_LENGTHS");
    m_libraries = addRow(_("Libraries"), "VL_INFO_LIBRARIES");
    column->Add(grid, 0, wxEXPAND);
    column->Add(new wxStaticLine(panel), 0, wxEXPAND | wxTOP, FromDIP(10));
    panel->SetSizer(column);
    return panel;
}

void MainFrame::refreshDrawingInfo() {
    OdDbDatabase* db = m_session.database();
    if (!db) {
        m_title->SetLabel(_("No drawing open"));
        m_file->SetLabel(_("Use File > Open to open a drawing (.vldwg)."));
        const wxString none = wxString::FromUTF8("\xE2\x80\x94");
        m_units->SetLabel(none);
        m_lengthFormat->SetLabel(none);
        m_libraries->SetLabel(m_app.hasLibraryInfoProvider() ? none : m_app.libraryInfo(nullptr));
        SetTitle(ca::appName());
        SetStatusText(wxString(), 1);
    } else {
        const wxString path = toWx(db->fileName());
        const wxString name = wxFileName(path).GetFullName();
        m_title->SetLabel(db->isReadOnly() ? wxString::Format(_("%s (read-only)"), name) : name);
        m_file->SetLabel(path);
        m_units->SetLabel(ca::unitsToString(db->getINSUNITS()));
        m_lengthFormat->SetLabel(wxString::Format(_("%s (sample of 1234.5678)"), ca::rtos(1234.5678)));
        m_libraries->SetLabel(m_app.libraryInfo(db));
        SetTitle(wxString::Format("%s - %s", name, ca::appName()));
        SetStatusText(ca::unitsToString(db->getINSUNITS()), 1);
    }
    Layout();
}

bool MainFrame::hasCommand(const wxString& name) const {
    for (const ca::Command& command : m_app.commands())
        if (command.name == name)
            return true;
    return false;
}

void MainFrame::rebuildLibraryMenu() {
    while (m_libraryMenu->GetMenuItemCount() > 0)
        m_libraryMenu->Destroy(m_libraryMenu->FindItemByPosition(0));
    const auto& commands = m_app.commands();
    int id = kFirstLibraryCommandId;
    for (const ca::Command& command : commands) {
        if (id > kLastLibraryCommandId)
            break;
        if (!command.menuLabel.empty())
            m_libraryMenu->Append(id, command.menuLabel, wxString::Format(_("Runs the command %s"), command.name));
        ++id;
    }
    if (m_libraryMenu->GetMenuItemCount() == 0)
        m_libraryMenu->Append(wxID_ANY, _("(no library commands)"))->Enable(false);
}

bool MainFrame::openDrawing(const wxString& path) {
    wxString error;
    if (!m_session.open(path, error)) {
        showError(error);
        return false;
    }
    m_infoBar->Dismiss();
    ca::prompt(wxString::Format(_("Opened %s."), path));
    refreshDrawingInfo();
    return true;
}

void MainFrame::chooseAndOpenDrawing() {
    ca::FileDialogRequest request;
    request.dialogKey = "StudioOpenDrawing";
    request.title = _("Open Drawing");
    request.filterDescription = _("Drawings");
    request.defaultExtension = "vldwg";
    wxString path;
    if (ca::getFilePath(path, request, this))
        openDrawing(path);
}

void MainFrame::closeDrawing() {
    m_session.close();
    refreshDrawingInfo();
}

void MainFrame::showError(const wxString& message) {
    ca::prompt(message);
    m_infoBar->ShowMessage(message, wxICON_ERROR);
    SetStatusText(message, 0);
}

void MainFrame::onClose(wxCloseEvent& event) {
    m_app.fireBeginQuit();
    wxg::WxgConfig::saveWindow(this, kWindowKey);
    event.Skip();
}

// The profiles dialog: construction, the preselected profile, selection between the two
// lists, the buttons of each mode, closing and the pick loop. Filters and the query, and the
// right side, live in the files beside.
#include "app/profiles/DlgProfiles.h"

#include <wx/bmpbuttn.h>
#include <wx/button.h>
#include <wx/splitter.h>
#include <wx/toolbar.h>
#include <wx/wupdlock.h>
#include <wx/xrc/xmlres.h>

#include <IconStore.h>
#include <MainWindow.h>
#include <OdStringWx.h>

#include <vl_db/Profiles.h>

#include "app/common/ErrorMessages.h"
#include "app/common/Helpers.h"

namespace vl_app {

namespace {
const wxString kSettingsKey = "DlgProfiles";
const wxString kSashKey = "DlgProfiles/sash";
// The modal result of the pick button: the dialog comes back after the user picked geometry.
constexpr int kResultPick = 1;

bool isPicker(vl_db::EMode mode) { return mode == vl_db::kModePicker || mode == vl_db::kModeProfilePicker; }
}  // namespace

// clang-format off
wxBEGIN_EVENT_TABLE(DlgProfiles, wxg::QcThemedDialog)
    EVT_INIT_DIALOG(DlgProfiles::onInitDialog)
    EVT_IDLE(DlgProfiles::onIdle)
    EVT_CLOSE(DlgProfiles::onClose)
    EVT_CHAR_HOOK(DlgProfiles::onCharHook)
    EVT_BUTTON(XRCID("BTN_UNSELECT"), DlgProfiles::onUnselect)
    EVT_BUTTON(XRCID("PICK_PROFILE_BUTTON"), DlgProfiles::onPickProfile)
    EVT_TOOL(XRCID("TOOL_PROJ_INFO"), DlgProfiles::onProjectInfo)
    EVT_MENU(XRCID("TOOL_DEL"), DlgProfiles::onDelete)
    EVT_MENU(XRCID("TOOL_COPY_TO_PROJ"), DlgProfiles::onCopyToProject)
    EVT_MENU(XRCID("TOOL_COPY_TO_LIBR"), DlgProfiles::onCopyToLibrary)
    EVT_CHOICE(XRCID("ID_SEL_TYPE_CHOICES"), DlgProfiles::onSelTypeChanged)
    EVT_CHOICE(XRCID("ID_STANDARD_CHOICES"), DlgProfiles::onStandardChanged)
    EVT_CHOICE(XRCID("ID_SHAPE_CHOICES"), DlgProfiles::onShapeChanged)
    EVT_CHOICE(XRCID("ID_SEL_NAME_CHOICES"), DlgProfiles::onNameChanged)
    EVT_TEXT(XRCID("ID_PROFILEFILTER"), DlgProfiles::onProfilenameFilterTextChanged)
    EVT_UPDATE_UI(wxID_OK, DlgProfiles::onUpdateUI)
    EVT_UPDATE_UI(wxID_NEW, DlgProfiles::onUpdateUI)
    EVT_UPDATE_UI(wxID_SAVE, DlgProfiles::onUpdateUI)
    EVT_UPDATE_UI(XRCID("TOOL_NEW"), DlgProfiles::onUpdateUI)
    EVT_UPDATE_UI(XRCID("TOOL_SAVE"), DlgProfiles::onUpdateUI)
    EVT_UPDATE_UI(XRCID("TOOL_DEL"), DlgProfiles::onUpdateUI)
    EVT_UPDATE_UI(XRCID("TOOL_NEW_IN_PROJ"), DlgProfiles::onUpdateUI)
    EVT_UPDATE_UI(XRCID("TOOL_NEW_IN_LIBR"), DlgProfiles::onUpdateUI)
    EVT_UPDATE_UI(XRCID("TOOL_PROJ_INFO"), DlgProfiles::onUpdateUI)
    EVT_UPDATE_UI(XRCID("PICK_PROFILE_BUTTON"), DlgProfiles::onUpdateUI)
    EVT_UPDATE_UI(XRCID("BTN_OFFSET"), DlgProfiles::onUpdateUI)
wxEND_EVENT_TABLE()
// clang-format on

NoStandardsError::NoStandardsError()
    : OdError(eInvalidInput, toOd(_("Libraries do not contain standards specified in BIMPROFILESTANDARDS."))) {}

DlgProfiles::DlgProfiles(wxWindow* parent, vl_db::DocumentLibraries* libs, vl_db::EMode mode, vl_db::EDbType dbType,
                         unsigned profileId, CustomProfileInfo* customInfo, ProfilesInfo* host)
    : m_mode(mode), m_profileId(profileId), m_libs(libs), m_customInfo(customInfo), m_host(host) {
    const bool large = wxg::isDpiForLargeIcons();
    if (!loadLayout(parent, kSettingsKey, wxSize(-1, large ? 1200 : 600)))
        throw OdError(eKeyNotFound, OdString(L"The dialog layout \"DlgProfiles\" is not loaded."));
    SetMinSize(large ? wxSize(2000, 1200) : wxSize(1000, 600));
    createPropertyGrid();
    initCustomProfileTools();
    FindWindow(XRCID("PANEL_PREVIEW"))->Bind(wxEVT_PAINT, &DlgProfiles::onPaintPreview, this);
    bindEditHandlers();
    if (m_libs)
        m_libs->initialize();

    ListKind kind;
    kind.objectType = vantlib::kConstructionProfile;
    kind.projectMenu = "MENU_BIM_PROFILE_PROJ";
    kind.centralMenu = "MENU_BIM_PROFILE_LIBR";
    kind.projectHeader = whatLib(vl_db::kDbProject);
    kind.centralHeader = whatLib(vl_db::kDbCentral);
    kind.thumbnailEdge = 0;
    TwoListClient& client = *this;
    m_browser = std::make_unique<TwoListBrowser>(this, m_libs, client, kind);

    if (profileId == 0)
        return;
    // A project preselection that the project library lacks selects nothing; only an unknown
    // library falls back to the central one.
    if (dbType == vl_db::kDbProject || dbType == vl_db::kDbNone) {
        if (const auto project = getLib(vl_db::kDbProject))
            m_selected = project->get<vantlib::Profile>(profileId);
        if (m_selected)
            m_browser->setCurrent(vl_db::kDbProject);
    }
    if (!m_selected && dbType != vl_db::kDbProject) {
        if (const auto central = getLib(vl_db::kDbCentral))
            m_selected = central->get<vantlib::Profile>(profileId);
        if (m_selected)
            m_browser->setCurrent(vl_db::kDbCentral);
    }
}

DlgProfiles::~DlgProfiles() = default;

vl_db::EDbType DlgProfiles::currentDb() const { return m_browser ? m_browser->current() : vl_db::kDbNone; }

std::shared_ptr<vantlib::Library> DlgProfiles::getLib(vl_db::EDbType type) const {
    return vl_db::library(m_libs, type, false);
}

void DlgProfiles::onInitDialog(wxInitDialogEvent& event) {
    event.Skip();
    // Showing the dialog again after a pick initialises it again; the controls are set up once.
    if (m_initialised)
        return;
    m_initialised = true;
    wxWindowUpdateLocker freeze(this);
    for (const char* hidden : {"TBAR_CUSTOM_PROFILE", "PANEL_PREVIEW", "ID_SET_PROPS"})
        FindWindow(XRCID(hidden))->Hide();
    keepSashPosition(XRCCTRL(*this, "SPLITTER", wxSplitterWindow), kSashKey);

    initFilters();
    updateLists(false);
    updateFilters(kFilterAll);
    restoreFilters();

    const wxBitmap trash = wxg::themedBitmap("ERASE");
    if (trash.IsOk())
        XRCCTRL(*this, "BTN_UNSELECT", wxButton)->SetBitmap(trash);
    initializeRightTypeChoices();
    initShapeChoices();
    initBottomButtons();
    displayMeasureUnit();
    selectInitialProfile();
    updateProfileDlg();
    if (m_startNew) {
        m_startNew = false;
        startNewProfile(vl_db::kDbProject);
    }
    CentreOnParent();
    Layout();
}

void DlgProfiles::initBottomButtons() {
    FindWindow(XRCID("BTN_UNSELECT"))->Hide();
    FindWindow(wxID_SAVE)->Hide();
    FindWindow(wxID_CANCEL)->Hide();
    FindWindow(wxID_NEW)->Show();
    FindWindow(wxID_OK)->Show();
    if (isPicker(m_mode)) {
        FindWindow(XRCID("BTN_UNSELECT"))->Show(m_mode == vl_db::kModeProfilePicker);
        FindWindow(wxID_OK)->SetLabel(_("Select"));
        FindWindow(wxID_CANCEL)->Show();
    }
}

void DlgProfiles::selectInitialProfile() {
    // A preselected profile that neither library had leaves nothing selected.
    if (m_profileId != 0 && !m_selected)
        return;
    if (m_selected) {
        const vl_db::EDbType type = m_browser->current();
        if (m_browser->model(type).find(m_selected->id()) != -1)
            m_browser->selectRow(type, m_selected->id());
        setSelectedProfile(type);
        return;
    }
    const ObjectListModel& central = m_browser->model(vl_db::kDbCentral);
    if (central.size() == 0)
        return;
    m_browser->selectRow(vl_db::kDbCentral, central.row(0).id);
    setSelectedProfile(vl_db::kDbCentral);
}

QcSmartPtr<vantlib::Profile> DlgProfiles::listedProfile(vl_db::EDbType type, unsigned id) const {
    if (id == 0 || (type != vl_db::kDbProject && type != vl_db::kDbCentral))
        return QcSmartPtr<vantlib::Profile>();
    for (const auto& profile : m_listed[type])
        if (profile->id() == id)
            return profile;
    return QcSmartPtr<vantlib::Profile>();
}

void DlgProfiles::setSelectedProfile(vl_db::EDbType type) {
    m_browser->setCurrent(type);
    m_selected = listedProfile(type, m_browser->selectedId());
    m_selectionChanged = true;
    m_browser->deselectAll(otherLibrary(type));
}

void DlgProfiles::currentChanged() {
    // Choosing a listed profile leaves a new profile unsaved.
    m_creating = false;
    setSelectedProfile(m_browser->current());
}

void DlgProfiles::rowActivated() {
    if (isPicker(m_mode) && id() != 0)
        EndDialog(wxID_OK);
}

void DlgProfiles::onIdle(wxIdleEvent& event) {
    event.Skip();
    if (!m_selectionChanged)
        return;
    m_selectionChanged = false;
    wxWindowUpdateLocker freeze(this);
    if (FindWindow(wxID_SAVE)->IsShown())
        FindWindow(wxID_SAVE)->Hide();
    updateProfileDlg();
    fitColumns();
    Layout();
}

void DlgProfiles::onUpdateUI(wxUpdateUIEvent& event) {
    const int id = event.GetId();
    if (id == wxID_OK) {
        if (m_blockOk != 0)
            event.Enable(false);
        else
            event.Enable(!isPicker(m_mode) || (m_selected && m_selected->id() != 0));
    } else if (id == XRCID("TOOL_DEL")) {
        event.Enable(m_browser && m_browser->isEnabled(ListCommand::kDelete));
    } else if (id == XRCID("TOOL_PROJ_INFO")) {
        event.Enable(m_host && m_libs && m_libs->database());
    } else if (id == XRCID("PICK_PROFILE_BUTTON")) {
        event.Enable(m_host && m_customInfo);
    } else if (id == XRCID("BTN_OFFSET")) {
        event.Enable(canSetOffset());
    } else if (!updateEditUI(event)) {
        event.Enable(false);
    }
}

void DlgProfiles::onUnselect(wxCommandEvent&) { EndDialog(kButtonUnselect); }

void DlgProfiles::onPickProfile(wxCommandEvent&) { EndDialog(kResultPick); }

void DlgProfiles::onClose(wxCloseEvent&) { EndDialog(wxID_CANCEL); }

void DlgProfiles::onCharHook(wxKeyEvent& event) {
    if (event.GetKeyCode() == WXK_ESCAPE)
        EndDialog(wxID_CANCEL);
    else
        event.Skip();
}

void DlgProfiles::onProjectInfo(wxCommandEvent&) {
    OdDbDatabase* db = m_libs ? m_libs->database() : nullptr;
    if (!m_host || !db)
        return;
    if (m_host->openProjectInfoDlg(*db, m_libs, 0)) {
        wxWindowUpdateLocker freeze(this);
        updateLists(true);
        updateFilters(kFilterAll);
    }
}

void DlgProfiles::onDelete(wxCommandEvent&) {
    m_browser->removeSelected();
    updateFilters(kFilterAll);
}

void DlgProfiles::onCopyToProject(wxCommandEvent&) { copyTo(vl_db::kDbProject); }
void DlgProfiles::onCopyToLibrary(wxCommandEvent&) { copyTo(vl_db::kDbCentral); }

void DlgProfiles::copyTo(vl_db::EDbType destination) {
    // Profiles travel between the lists by dragging; the command only says why it cannot.
    if (m_browser->selectedIds(otherLibrary(destination)).empty())
        return;
    m_browser->copyDestination(destination);
}

std::set<unsigned> DlgProfiles::removeObjects(const std::shared_ptr<vantlib::Library>& library,
                                              const std::set<unsigned>& ids) {
    const std::set<unsigned> kept = library->remove<vantlib::Profile>(ids);
    m_kept.clear();
    const vl_db::EDbType type = m_browser->current();
    for (const unsigned keptId : kept)
        if (auto profile = listedProfile(type, keptId))
            m_kept.push_back(profile);
    return kept;
}

wxString DlgProfiles::keptMessage(const std::vector<wxString>& names) const {
    if (names.empty() || m_kept.empty())
        return wxString();
    if (m_kept.size() == 1)
        return wxString::Format(_("Couldn't remove profile '%ls'.\nIt is referenced in one or more entities."),
                                toWx(vl_db::fullProfileName(*m_kept.front())));
    wxString message = _("Some profiles couldn't be removed.\nThese are referenced in one or more entities:");
    for (const auto& profile : m_kept) {
        const auto& name = profile->name();
        const wxString standard = name && name->standard() ? toWx(name->standard()->name()) : wxString();
        message << "\n    " << standard << ' ' << (name ? toWx(name->name()) : wxString()) << ' '
                << toWx(profile->size());
    }
    return message;
}

wxString DlgProfiles::rowsText(unsigned count) const {
    return wxString::Format(wxPLURAL("%u profile", "%u profiles", count), count);
}

DlgProfiles::EButton DlgProfiles::selectProfiles(unsigned profileId, vl_db::DocumentLibraries* libs,
                                                 QcSmartPtr<vantlib::Profile>& result,
                                                 CustomProfileInfo* customInfo, ProfilesInfo* host,
                                                 vl_db::EDbType dbType, vl_db::EMode mode) {
    DlgProfiles dialog(wxg::mainWindow(), libs, mode, dbType, profileId, customInfo, host);
    return runModal(dialog, result);
}

DlgProfiles::EButton DlgProfiles::runModal(DlgProfiles& dialog, QcSmartPtr<vantlib::Profile>& result) {
    for (;;) {
        const int answer = dialog.ShowModal();
        if (answer == kResultPick && dialog.m_host && dialog.m_customInfo) {
            const auto library = dialog.getLib(dialog.currentDb());
            try {
                *dialog.m_customInfo =
                    dialog.m_host->getProfileFromGeometricSel(library ? library->unit() : OdDb::kUnitsMillimeters);
                // The picked outline becomes a new profile to name, with its preview and tools.
                QcSmartPtr<vantlib::Profile> picked;
                dialog.displayPredefinedFromCustom(picked);
                dialog.customModeRightPanels();
            } catch (const std::exception& error) {
                showError(&dialog, error);
            }
            continue;
        }
        if (answer == kButtonUnselect)
            return kButtonUnselect;
        if (answer == wxID_OK) {
            result = dialog.selectedProfile();
            return kButtonOk;
        }
        return kButtonCancel;
    }
}

}  // namespace vl_app

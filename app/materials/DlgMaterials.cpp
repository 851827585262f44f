// The materials dialog: construction, settings, selection between the two lists, enabling of
// commands and closing. Lists, the three pages and the entry points live in the files beside.
#include "app/materials/DlgMaterials.h"

#include <algorithm>

#include <wx/button.h>
#include <wx/dcgraph.h>
#include <wx/dcmemory.h>
#include <wx/image.h>
#include <wx/msgdlg.h>
#include <wx/notebook.h>
#include <wx/splitter.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/toolbar.h>
#include <wx/wupdlock.h>
#include <wx/xrc/xmlres.h>

#include <IconStore.h>
#include <OdError.h>
#include <OdStringWx.h>
#include <QcPropertyGrid.h>
#include <WxgConfig.h>

#include <vantlib/Exception.h>

#include "app/common/Helpers.h"
#include "app/common/ListHelpers.h"

namespace vl_app {

namespace {
const wxString kSettingsKey = "DlgMaterials";
const wxString kSashKey = "DlgMaterials/sash";
const wxString kPageKey = "DlgMaterials/seltab";
constexpr int kReloadDelayMs = 80;

// A field label drawn from a symbol, for hosts whose icon store lacks the themed picture.
wxBitmap symbolBitmap(const wchar_t* symbol, const wxWindow* window) {
    wxImage image(16, 16);
    image.InitAlpha();
    std::fill(image.GetAlpha(), image.GetAlpha() + 16 * 16, 0);
    wxBitmap bitmap(image);
    wxMemoryDC dc(bitmap);
    wxGCDC gc(dc);
    gc.SetFont(window->GetFont());
    gc.SetTextForeground(window->GetForegroundColour());
    const wxSize extent = gc.GetTextExtent(symbol);
    gc.DrawText(symbol, (16 - extent.x) / 2, (16 - extent.y) / 2);
    dc.SelectObject(wxNullBitmap);
    return bitmap;
}
}  // namespace

// clang-format off
wxBEGIN_EVENT_TABLE(DlgMaterials, wxg::QcThemedDialog)
    EVT_INIT_DIALOG(DlgMaterials::onInitDialog)
    EVT_TIMER(wxID_ANY, DlgMaterials::onTimer)
    EVT_SIZE(DlgMaterials::onSize)
    EVT_BUTTON(wxID_OK, DlgMaterials::onOK)
    // lists and their commands
    EVT_LIST_ITEM_SELECTED(XRCID("LIST_PROJECT"), DlgMaterials::onSelect)
    EVT_LIST_ITEM_SELECTED(XRCID("LIST_LIBRARY"), DlgMaterials::onSelect)
    EVT_LIST_ITEM_DESELECTED(XRCID("LIST_PROJECT"), DlgMaterials::onDeselect)
    EVT_LIST_ITEM_DESELECTED(XRCID("LIST_LIBRARY"), DlgMaterials::onDeselect)
    EVT_LIST_ITEM_ACTIVATED(XRCID("LIST_PROJECT"), DlgMaterials::onActivate)
    EVT_LIST_ITEM_ACTIVATED(XRCID("LIST_LIBRARY"), DlgMaterials::onActivate)
    EVT_LIST_ITEM_RIGHT_CLICK(XRCID("LIST_PROJECT"), DlgMaterials::onListContextMenu)
    EVT_LIST_ITEM_RIGHT_CLICK(XRCID("LIST_LIBRARY"), DlgMaterials::onListContextMenu)
    EVT_CHOICE(XRCID("FILTER_CLASS"), DlgMaterials::onFilterClass)
    EVT_TOOL(XRCID("TOOL_FILTER"), DlgMaterials::onToggleFilter)
    EVT_TOOL(XRCID("TOOL_NEW"), DlgMaterials::onNew)
    EVT_MENU(XRCID("TOOL_NEW_IN_PROJ"), DlgMaterials::onNewInProj)
    EVT_MENU(XRCID("TOOL_NEW_IN_LIBR"), DlgMaterials::onNewInLibr)
    EVT_MENU(XRCID("TOOL_DUPLICATE"), DlgMaterials::onDuplicate)
    EVT_MENU(XRCID("TOOL_DEL"), DlgMaterials::onDelete)
    EVT_MENU(XRCID("TOOL_COPY_TO_PROJ"), DlgMaterials::onCopyToProject)
    EVT_MENU(XRCID("TOOL_COPY_TO_LIBR"), DlgMaterials::onCopyToLibrary)
    EVT_MENU(XRCID("TOOL_MAKE_COMP"), DlgMaterials::onMakeComp)
    // identity page
    EVT_TEXT(XRCID("TEXT_NAME"), DlgMaterials::onEditText)
    EVT_TEXT(XRCID("COMBO_CLASS"), DlgMaterials::onEditText)
    EVT_COMBOBOX(XRCID("COMBO_CLASS"), DlgMaterials::onEditText)
    EVT_TEXT(XRCID("TEXT_DSCR"), DlgMaterials::onEditText)
    EVT_BUTTON(XRCID("BTN_CLASS"), DlgMaterials::onClasses)
    // appearance page
    EVT_TEXT(XRCID("SECT_LAYER"), DlgMaterials::onEditText)
    EVT_COMBOBOX(XRCID("SECT_LAYER"), DlgMaterials::onEditText)
    EVT_TEXT(XRCID("ELEV_LAYER"), DlgMaterials::onEditText)
    EVT_COMBOBOX(XRCID("ELEV_LAYER"), DlgMaterials::onEditText)
    EVT_TEXT(XRCID("TEXT_SECT_HATCH_SCALE"), DlgMaterials::onEditText)
    EVT_TEXT(XRCID("TEXT_SECT_HATCH_SPACE"), DlgMaterials::onEditText)
    EVT_TEXT(XRCID("TEXT_SECT_HATCH_ANGLE"), DlgMaterials::onEditText)
    EVT_TEXT(XRCID("TEXT_ELEV_HATCH_SCALE"), DlgMaterials::onEditText)
    EVT_TEXT(XRCID("TEXT_ELEV_HATCH_SPACE"), DlgMaterials::onEditText)
    EVT_TEXT(XRCID("TEXT_ELEV_HATCH_ANGLE"), DlgMaterials::onEditText)
    EVT_BUTTON(XRCID("BTN_SECT_HATCH"), DlgMaterials::onSectHatch)
    EVT_BUTTON(XRCID("BTN_ELEV_HATCH"), DlgMaterials::onElevHatch)
    EVT_CHOICE(XRCID("SECT_HATCH_TYPE"), DlgMaterials::onSectHatchType)
    EVT_CHOICE(XRCID("ELEV_HATCH_TYPE"), DlgMaterials::onElevHatchType)
    EVT_CHOICE(XRCID("SECT_HATCH_NAME"), DlgMaterials::onSectHatchName)
    EVT_CHOICE(XRCID("ELEV_HATCH_NAME"), DlgMaterials::onElevHatchName)
    EVT_CHECKBOX(XRCID("SECT_HATCH_CROSS"), DlgMaterials::onSectHatchCross)
    EVT_CHECKBOX(XRCID("ELEV_HATCH_CROSS"), DlgMaterials::onElevHatchCross)
    EVT_CHECKBOX(XRCID("SECT_HATCH_ANNOTATIVE"), DlgMaterials::onSectHatchAnnotative)
    EVT_CHECKBOX(XRCID("ELEV_HATCH_ANNOTATIVE"), DlgMaterials::onElevHatchAnnotative)
    EVT_COMBOBOX(XRCID("ID_SECT_BACKGROUND_COLOR"), DlgMaterials::onSectBkgColorChoice)
    EVT_COMBOBOX(XRCID("ID_ELEV_BACKGROUND_COLOR"), DlgMaterials::onElevBkgColorChoice)
    EVT_BUTTON(XRCID("BTN_RENDER_MAT"), DlgMaterials::onRenderMat)
    // properties page
    EVT_BUTTON(XRCID("BTN_CUSTOM_PROPS"), DlgMaterials::onCustomProps)
    EVT_TOOL(XRCID("TOOL_CUSTOMPROP_NEW"), DlgMaterials::onCustomProps)
    EVT_TOOL(XRCID("TOOL_CUSTOMPROP_DELETE"), DlgMaterials::onDelCustomPropValue)
    EVT_PG_CHANGED(wxID_ANY, DlgMaterials::onPropChanged)
    EVT_NOTEBOOK_PAGE_CHANGING(XRCID("TABBOOK"), DlgMaterials::onPageChanging)
    // enabling
    EVT_UPDATE_UI(XRCID("TOOL_NEW"), DlgMaterials::onUpdateUI)
    EVT_UPDATE_UI(XRCID("TOOL_NEW_IN_PROJ"), DlgMaterials::onUpdateUI)
    EVT_UPDATE_UI(XRCID("TOOL_NEW_IN_LIBR"), DlgMaterials::onUpdateUI)
    EVT_UPDATE_UI(XRCID("TOOL_DUPLICATE"), DlgMaterials::onUpdateUI)
    EVT_UPDATE_UI(XRCID("TOOL_DEL"), DlgMaterials::onUpdateUI)
    EVT_UPDATE_UI(XRCID("TOOL_MAKE_COMP"), DlgMaterials::onUpdateUI)
    EVT_UPDATE_UI(XRCID("TOOL_COPY_TO_PROJ"), DlgMaterials::onUpdateUI)
    EVT_UPDATE_UI(XRCID("TOOL_COPY_TO_LIBR"), DlgMaterials::onUpdateUI)
    EVT_UPDATE_UI(XRCID("TOOL_CUSTOMPROP_NEW"), DlgMaterials::onUpdateUI)
    EVT_UPDATE_UI(XRCID("TOOL_CUSTOMPROP_DELETE"), DlgMaterials::onUpdateUI)
    EVT_UPDATE_UI(XRCID("BTN_CUSTOM_PROPS"), DlgMaterials::onUpdateUI)
    EVT_UPDATE_UI(XRCID("BTN_CLASS"), DlgMaterials::onUpdateUI)
    EVT_UPDATE_UI(wxID_OK, DlgMaterials::onUpdateUI)
wxEND_EVENT_TABLE()
// clang-format on

DlgMaterials::DlgMaterials(wxWindow* parent, vl_db::DocumentLibraries* libs, vl_db::EMode mode,
                           vl_db::EDbType dbType, unsigned materialId)
    : m_mode(mode), m_dbType(dbType), m_libs(libs), m_timer(this) {
    if (!loadLayout(parent, kSettingsKey))
        throw OdError(eKeyNotFound, OdString(L"The dialog layout \"DlgMaterials\" is not loaded."));
    restoreWindowRect(wxSize(1000, 700));
    bindControls();
    if (m_libs)
        m_libs->initialize();
    if (materialId != 0) {
        if (const auto library = lib()) {
            m_material = library->get<vantlib::Material>(materialId);
            if (m_material)
                m_selName = toWx(m_material->name());
        }
    }
}

DlgMaterials::~DlgMaterials() {
    m_timer.Stop();
    wxg::WxgConfig::writeLong(kPageKey, short(XRCCTRL(*this, "TABBOOK", wxNotebook)->GetSelection()));
    wxg::WxgConfig::writeLong(kSashKey, XRCCTRL(*this, "SPLITTER", wxSplitterWindow)->GetSashPosition());
    saveWindowRect(kSettingsKey);
}

void DlgMaterials::bindControls() {
    m_listProject = XRCCTRL(*this, "LIST_PROJECT", wxListCtrl);
    m_listLibrary = XRCCTRL(*this, "LIST_LIBRARY", wxListCtrl);
}

std::shared_ptr<vantlib::Library> DlgMaterials::lib() const { return vl_db::library(m_libs, m_dbType, false); }

wxListCtrl* DlgMaterials::list(vl_db::EDbType type) const {
    switch (type) {
    case vl_db::kDbProject:
        return m_listProject;
    case vl_db::kDbCentral:
        return m_listLibrary;
    default:
        return nullptr;
    }
}

int DlgMaterials::numSelected() const {
    const wxListCtrl* current = list(m_dbType);
    return current ? current->GetSelectedItemCount() : 0;
}

OdDb::UnitsValue DlgMaterials::unit() const {
    const auto library = lib();
    return library ? library->unit() : OdDb::kUnitsMillimeters;
}

void DlgMaterials::onInitDialog(wxInitDialogEvent& event) {
    event.Skip();
    // Showing the dialog again initialises it again; the controls are set up once.
    if (m_grid)
        return;
    wxWindowUpdateLocker freeze(this);
    m_updating = true;
    auto* splitter = XRCCTRL(*this, "SPLITTER", wxSplitterWindow);
    const long sash = wxg::WxgConfig::readLong(kSashKey, 0);
    if (sash > 0)
        splitter->SetSashPosition(int(sash));
    auto* book = XRCCTRL(*this, "TABBOOK", wxNotebook);
    const long page = wxg::WxgConfig::readLong(kPageKey, 0);
    if (page >= 0 && size_t(page) < book->GetPageCount())
        book->SetSelection(size_t(page));

    auto* tools = XRCCTRL(*this, "TBAR_EDIT", wxToolBar);
    const wxBitmap filter = wxg::themedBitmap("FILTER");
    if (filter.IsOk())
        tools->SetToolNormalBitmap(XRCID("TOOL_FILTER"), filter);
    const wxBitmap erase = wxg::themedBitmap("ERASE");
    if (erase.IsOk())
        tools->SetToolNormalBitmap(XRCID("TOOL_DEL"), erase);
    const struct {
        const char* name;
        const wchar_t* symbol;
    } fields[] = {{"SCALE", L"\u00D7"}, {"SPACE", L"\u2194"}, {"ANGLE", L"\u2220"}};
    for (const char* view : {"SECT", "ELEV"}) {
        for (const auto& field : fields) {
            wxBitmap picture = wxg::themedBitmap(field.name);
            if (!picture.IsOk())
                picture = symbolBitmap(field.symbol, this);
            auto* label =
                dynamic_cast<wxStaticBitmap*>(FindWindow(XRCID(wxString::Format("STAT_%s_HATCH_%s", view, field.name))));
            if (label)
                label->SetBitmap(picture);
        }
    }
    createPropertyGrid();
    initList(vl_db::kDbProject);
    initList(vl_db::kDbCentral);
    m_updating = false;

    updateFilter();
    updateLists(true);
    updateMaterial();
    updateClasses();
    if (m_mode != vl_db::kModePicker)
        FindWindow(wxID_CANCEL)->Hide();
    for (const char* hidden : {"BTN_SECT_COLOR", "BTN_ELEV_COLOR", "BTN_ASSET_STRUCT", "BTN_ASSET_THERMAL"})
        FindWindow(XRCID(hidden))->Hide();
    Layout();
}

void DlgMaterials::onSelect(wxListEvent& event) {
    if (m_updating)
        return;
    wxWindowUpdateLocker freeze(this);
    m_timer.Stop();
    const vl_db::EDbType type = event.GetEventObject() == m_listProject ? vl_db::kDbProject : vl_db::kDbCentral;
    if (type != m_dbType)
        saveMaterial();
    m_dbType = type;
    deselectAll(list(type == vl_db::kDbProject ? vl_db::kDbCentral : vl_db::kDbProject));
    updateMaterial();
}

void DlgMaterials::onDeselect(wxListEvent&) {
    if (m_updating)
        return;
    saveMaterial();
    m_timer.StartOnce(kReloadDelayMs);
}

void DlgMaterials::onTimer(wxTimerEvent&) {
    if (m_listProject->GetSelectedItemCount() > 0)
        m_dbType = vl_db::kDbProject;
    else if (m_listLibrary->GetSelectedItemCount() > 0)
        m_dbType = vl_db::kDbCentral;
    updateMaterial();
}

void DlgMaterials::onListMouseDown(wxMouseEvent& event) {
    event.Skip();
    const vl_db::EDbType type = event.GetEventObject() == m_listProject ? vl_db::kDbProject : vl_db::kDbCentral;
    if (type == m_dbType || m_status != kValid)
        return;
    saveMaterial();
    deselectAll(list(m_dbType));
    m_dbType = type;
    updateMaterial();
}

void DlgMaterials::onActivate(wxListEvent& event) {
    const vl_db::EDbType type = event.GetEventObject() == m_listProject ? vl_db::kDbProject : vl_db::kDbCentral;
    m_timer.Stop();
    if (type != m_dbType)
        saveMaterial();
    deselectAll(list(type == vl_db::kDbProject ? vl_db::kDbCentral : vl_db::kDbProject));
    m_dbType = type;
    updateMaterial();
    if (m_mode == vl_db::kModePicker && m_material && m_status == kValid)
        EndDialog(wxID_OK);
}

void DlgMaterials::onPageChanging(wxBookCtrlEvent& event) {
    // An invalid name or class must be fixed on the identity page before anything else.
    if (m_status != kValid)
        event.Veto();
}

void DlgMaterials::onSize(wxSizeEvent& event) {
    event.Skip();
    // Sizes arrive before start-up has given the lists their column.
    for (wxListCtrl* target : {m_listProject, m_listLibrary})
        if (target && target->GetColumnCount() > 0)
            autoColumnSize(target);
}

void DlgMaterials::onOK(wxCommandEvent& event) {
    if (m_status != kValid)
        return;
    saveMaterial();
    event.Skip();
}

void DlgMaterials::onUpdateUI(wxUpdateUIEvent& event) {
    const int id = event.GetId();
    const bool anySelected = numSelected() > 0;
    const bool currentWritable = vl_db::writable(m_libs, m_dbType);
    if (id == XRCID("TOOL_NEW"))
        event.Enable(vl_db::writable(m_libs, creationTarget()));
    else if (id == XRCID("TOOL_NEW_IN_PROJ"))
        event.Enable(vl_db::writable(m_libs, vl_db::kDbProject));
    else if (id == XRCID("TOOL_NEW_IN_LIBR"))
        event.Enable(vl_db::writable(m_libs, vl_db::kDbCentral));
    else if (id == XRCID("TOOL_DUPLICATE"))
        event.Enable(anySelected && m_material && m_material->id() != 0 && vl_db::writable(m_libs, creationTarget()));
    else if (id == XRCID("TOOL_DEL") || id == XRCID("TOOL_MAKE_COMP"))
        event.Enable(currentWritable && anySelected);
    else if (id == XRCID("TOOL_COPY_TO_PROJ"))
        event.Enable(m_dbType == vl_db::kDbCentral && vl_db::writable(m_libs, vl_db::kDbProject) && anySelected);
    else if (id == XRCID("TOOL_COPY_TO_LIBR"))
        event.Enable(m_dbType == vl_db::kDbProject && vl_db::writable(m_libs, vl_db::kDbCentral) && anySelected);
    else if (id == XRCID("TOOL_CUSTOMPROP_NEW") || id == XRCID("BTN_CUSTOM_PROPS") || id == XRCID("BTN_CLASS"))
        event.Enable(currentWritable && m_material);
    else if (id == XRCID("TOOL_CUSTOMPROP_DELETE"))
        event.Enable(currentWritable && selectedCustomProperty());
    else if (id == wxID_OK)
        event.Enable(m_status == kValid && (m_mode != vl_db::kModePicker || m_material));
}

void DlgMaterials::deselectAll(wxListCtrl* target) {
    if (!target)
        return;
    const bool wasUpdating = m_updating;
    m_updating = true;
    for (long row = target->GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED); row != -1;
         row = target->GetNextItem(row, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED))
        target->SetItemState(row, 0, wxLIST_STATE_SELECTED);
    m_updating = wasUpdating;
}

void DlgMaterials::updateMaterial() {
    wxWindowUpdateLocker freeze(this);
    m_timer.Stop();
    m_material.release();
    const auto library = lib();
    wxListCtrl* current = list(m_dbType);
    if (library && current) {
        long row = current->GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_FOCUSED);
        if (row == -1 || current->GetItemState(row, wxLIST_STATE_SELECTED) == 0)
            row = current->GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED);
        try {
            if (row != -1)
                m_material = library->get<vantlib::Material>(unsigned(current->GetItemData(row)));
        } catch (const std::exception& error) {
            reportError(error);
        }
    }
    m_selName = m_material ? toWx(m_material->name()) : wxString();
    m_nameText = m_selName;
    m_classText = m_material && m_material->material_type() ? toWx(m_material->material_type()->name()) : wxString();
    m_status = kValid;

    XRCCTRL(*this, "STAT_NAME", wxStaticText)->SetLabel(m_selName);
    updateIdentity();
    updateAppearance();
    updateProps();
    updateThumbnail();
    updateReadOnly();
    updateStatus();
}

void DlgMaterials::updateReadOnly() {
    const bool enable = m_material && vl_db::writable(m_libs, m_dbType);
    for (const char* page : {"PANEL_IDENTITY", "PANEL_APPEARANCE", "PANEL_PROPS"})
        FindWindow(XRCID(page))->Enable(enable);
}

void DlgMaterials::saveMaterial() {
    if (!m_material || m_status != kValid || !vl_db::writable(m_libs, m_dbType))
        return;
    try {
        m_material->save();
        m_selName = toWx(m_material->name());
    } catch (const std::exception& error) {
        reportError(error);
    }
}

void DlgMaterials::changeMaterial(const std::function<void(vantlib::Material&)>& change) {
    if (m_updating || !m_material || !vl_db::writable(m_libs, m_dbType))
        return;
    try {
        change(*m_material);
        if (m_status == kValid) {
            m_material->save();
            m_selName = toWx(m_material->name());
        }
    } catch (const std::exception& error) {
        reportError(error);
        const auto library = lib();
        if (library && m_material->id() != 0) {
            if (auto stored = library->get<vantlib::Material>(m_material->id()))
                m_material = stored;
        }
    }
}

void DlgMaterials::reportError(const std::exception& error) {
    const auto* libraryError = dynamic_cast<const vantlib::Exception*>(&error);
    const auto* sdkError = dynamic_cast<const OdError*>(&error);
    const wxString message = libraryError ? toWx(libraryError->message())
                             : sdkError   ? toWx(sdkError->description())
                                          : wxString::FromUTF8(error.what());
    wxMessageBox(message, _("BIM"), wxOK | wxICON_ERROR | wxCENTRE, this);
}

}  // namespace vl_app

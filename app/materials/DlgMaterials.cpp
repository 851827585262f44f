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

#include "app/common/ErrorMessages.h"
#include "app/common/Helpers.h"
#include "app/common/ListHelpers.h"
#include "app/common/ObjectEditing.h"

namespace vl_app {

namespace {
const wxString kSettingsKey = "DlgMaterials";
const wxString kSashKey = "DlgMaterials/sash";
const wxString kPageKey = "DlgMaterials/seltab";

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
    EVT_SIZE(DlgMaterials::onSize)
    EVT_BUTTON(wxID_OK, DlgMaterials::onOK)
    // lists and their commands
    EVT_CHOICE(XRCID("FILTER_CLASS"), DlgMaterials::onFilterClass)
    EVT_TOOL(XRCID("TOOL_FILTER"), DlgMaterials::onToggleFilter)
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
    EVT_UPDATE_UI(XRCID("TOOL_MAKE_COMP"), DlgMaterials::onUpdateUI)
    EVT_UPDATE_UI(XRCID("TOOL_CUSTOMPROP_NEW"), DlgMaterials::onUpdateUI)
    EVT_UPDATE_UI(XRCID("TOOL_CUSTOMPROP_DELETE"), DlgMaterials::onUpdateUI)
    EVT_UPDATE_UI(XRCID("BTN_CUSTOM_PROPS"), DlgMaterials::onUpdateUI)
    EVT_UPDATE_UI(XRCID("BTN_CLASS"), DlgMaterials::onUpdateUI)
    EVT_UPDATE_UI(wxID_OK, DlgMaterials::onUpdateUI)
wxEND_EVENT_TABLE()
// clang-format on

DlgMaterials::DlgMaterials(wxWindow* parent, vl_db::DocumentLibraries* libs, vl_db::EMode mode,
                           vl_db::EDbType dbType, unsigned materialId)
    : m_mode(mode), m_dbType(dbType), m_libs(libs) {
    if (!loadLayout(parent, kSettingsKey, wxSize(1000, 700)))
        throw OdError(eKeyNotFound, OdString(L"The dialog layout \"DlgMaterials\" is not loaded."));
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

DlgMaterials::~DlgMaterials() = default;

void DlgMaterials::bindControls() {}

std::shared_ptr<vantlib::Library> DlgMaterials::lib() const { return vl_db::library(m_libs, m_dbType, false); }

ObjectListCtrl* DlgMaterials::list(vl_db::EDbType type) const { return m_browser ? m_browser->list(type) : nullptr; }

int DlgMaterials::numSelected() const { return m_browser ? m_browser->numSelected() : 0; }

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
    keepSashPosition(XRCCTRL(*this, "SPLITTER", wxSplitterWindow), kSashKey);
    keepPage(XRCCTRL(*this, "TABBOOK", wxNotebook), kPageKey);

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
    initLists();
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

void DlgMaterials::onPageChanging(wxBookCtrlEvent& event) {
    // An invalid name or class must be fixed on the identity page before anything else.
    if (m_status != kValid)
        event.Veto();
}

void DlgMaterials::onSize(wxSizeEvent& event) {
    event.Skip();
}

void DlgMaterials::onOK(wxCommandEvent& event) {
    if (m_status != kValid)
        return;
    saveMaterial();
    event.Skip();
}

void DlgMaterials::onUpdateUI(wxUpdateUIEvent& event) {
    if (!m_browser)
        return;
    const int id = event.GetId();
    const bool currentWritable = vl_db::writable(m_libs, m_dbType);
    if (m_browser->enableListCommand(event, m_status == kValid))
        return;
    if (id == XRCID("TOOL_CUSTOMPROP_NEW") || id == XRCID("BTN_CUSTOM_PROPS") || id == XRCID("BTN_CLASS"))
        event.Enable(currentWritable && m_material);
    else if (id == XRCID("TOOL_CUSTOMPROP_DELETE"))
        event.Enable(currentWritable && selectedCustomProperty());
    else if (id == wxID_OK)
        event.Enable(m_status == kValid && (m_mode != vl_db::kModePicker || m_material));
}

void DlgMaterials::updateMaterial() {
    wxWindowUpdateLocker freeze(this);
    m_material.release();
    try {
        if (m_browser)
            m_material = m_browser->loadSelected<vantlib::Material>(m_dbType);
    } catch (const std::exception& error) {
        reportError(error);
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
    if (saveObject(m_material, [this](const std::exception& error) { reportError(error); }))
        m_selName = toWx(m_material->name());
}

void DlgMaterials::changeMaterial(const std::function<void(vantlib::Material&)>& change) {
    if (m_updating || !m_material || !vl_db::writable(m_libs, m_dbType))
        return;
    const bool save = m_status == kValid;
    if (changeObject(m_material, lib(), save, change, [this](const std::exception& error) { reportError(error); }) &&
        save)
        m_selName = toWx(m_material->name());
}

void DlgMaterials::reportError(const std::exception& error) {
    showError(this, error);
    // From now on the library refuses writes: the lists and pages say so, and no later edit
    // tries again (each would end in the same message).
    if (madeLibraryReadOnly(error) && m_browser) {
        updateLists(true);
        updateReadOnly();
    }
}

}  // namespace vl_app

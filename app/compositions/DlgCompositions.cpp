// The compositions dialog: construction, settings, loading the selected composition, its name
// and type, the preview, enabling of commands and closing. Lists, plies and properties live in
// the files beside.
#include "app/compositions/DlgCompositions.h"

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/splitter.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/toolbar.h>
#include <wx/wupdlock.h>
#include <wx/xrc/xmlres.h>

#include <IconStore.h>
#include <OdError.h>
#include <OdStringWx.h>
#include <QcPropertyGrid.h>

#include "app/common/ErrorMessages.h"
#include "app/common/Helpers.h"
#include "app/common/ListHelpers.h"
#include "app/common/ObjectEditing.h"
#include "app/common/Previews.h"
#include "app/compositions/CompositionPhysicsText.h"

namespace vl_app {

namespace {
const wxString kSettingsKey = "DlgCompositions";
const wxString kSashKey = "DlgCompositions/sash";

// The filter entry of a composition: its composition type, else the label of its base type.
wxString typeEntry(const vantlib::Composition& composition) {
    if (composition.composition_type())
        return toWx(composition.composition_type()->name());
    return compositionBaseType(composition.type());
}
}  // namespace

// clang-format off
wxBEGIN_EVENT_TABLE(DlgCompositions, wxg::QcThemedDialog)
    EVT_INIT_DIALOG(DlgCompositions::onInitDialog)
    EVT_BUTTON(wxID_OK, DlgCompositions::onOK)
    EVT_BUTTON(XRCID("BTN_UNSELECT"), DlgCompositions::onUnselect)
    EVT_CHOICE(XRCID("FILTER_TYPE"), DlgCompositions::onFilterType)
    EVT_CHOICE(XRCID("CHOICE_CMP_TYPE"), DlgCompositions::onCmpType)
    EVT_TEXT(XRCID("TEXT_NAME"), DlgCompositions::onEditText)
    EVT_TOOL(XRCID("TOOL_FILTER"), DlgCompositions::onToggleFilter)
    EVT_TOOL(XRCID("TOOL_PLY_NEW"), DlgCompositions::onAddPly)
    EVT_TOOL(XRCID("TOOL_PLY_DUPL"), DlgCompositions::onDuplicatePly)
    EVT_TOOL(XRCID("TOOL_PLY_DEL"), DlgCompositions::onRemovePly)
    EVT_BUTTON(XRCID("BTN_CUSTOM_PROPS"), DlgCompositions::onCustomProps)
    EVT_TOOL(XRCID("TOOL_CUSTOMPROP_DELETE"), DlgCompositions::onDelCustomPropValue)
    EVT_PG_CHANGED(wxID_ANY, DlgCompositions::onPropChanged)
    EVT_UPDATE_UI(XRCID("TOOL_PLY_NEW"), DlgCompositions::onUpdateUI)
    EVT_UPDATE_UI(XRCID("TOOL_PLY_DUPL"), DlgCompositions::onUpdateUI)
    EVT_UPDATE_UI(XRCID("TOOL_PLY_DEL"), DlgCompositions::onUpdateUI)
    EVT_UPDATE_UI(XRCID("BTN_CUSTOM_PROPS"), DlgCompositions::onUpdateUI)
    EVT_UPDATE_UI(XRCID("TOOL_CUSTOMPROP_DELETE"), DlgCompositions::onUpdateUI)
    EVT_UPDATE_UI(wxID_OK, DlgCompositions::onUpdateUI)
wxEND_EVENT_TABLE()
// clang-format on

DlgCompositions::DlgCompositions(wxWindow* parent, vl_db::DocumentLibraries* libs, vl_db::EMode mode,
                                 vl_db::EDbType dbType, unsigned compositionId, const wxString& typeFilter)
    : m_mode(mode), m_dbType(dbType), m_libs(libs), m_filterType(typeFilter) {
    if (!loadLayout(parent, kSettingsKey, wxSize(1000, 700)))
        throw OdError(eKeyNotFound, OdString(L"The dialog layout \"DlgCompositions\" is not loaded."));
    if (m_libs)
        m_libs->initialize();
    if (compositionId != 0) {
        if (const auto library = lib()) {
            m_composition = library->get<vantlib::Composition>(compositionId);
            if (m_composition) {
                m_selName = toWx(m_composition->name());
                if (m_filterType.empty())
                    m_filterType = typeEntry(*m_composition);
            }
        }
    }
    if (m_filterType == _("All"))
        m_filterType.clear();
}

DlgCompositions::~DlgCompositions() = default;

std::shared_ptr<vantlib::Library> DlgCompositions::lib() const { return vl_db::library(m_libs, m_dbType, false); }

ObjectListCtrl* DlgCompositions::list(vl_db::EDbType type) const {
    return m_browser ? m_browser->list(type) : nullptr;
}

int DlgCompositions::numSelected() const { return m_browser ? m_browser->numSelected() : 0; }

OdDb::UnitsValue DlgCompositions::unit() const {
    if (const auto library = lib())
        return library->unit();
    const auto project = vl_db::library(m_libs, vl_db::kDbProject, false);
    return project ? project->unit() : OdDb::kUnitsMillimeters;
}

void DlgCompositions::onInitDialog(wxInitDialogEvent& event) {
    event.Skip();
    // Showing the dialog again initialises it again; the controls are set up once.
    if (m_grid)
        return;
    wxWindowUpdateLocker freeze(this);
    m_updating = true;
    keepSashPosition(XRCCTRL(*this, "SPLITTER", wxSplitterWindow), kSashKey);

    auto* tools = XRCCTRL(*this, "TBAR_EDIT", wxToolBar);
    for (const auto& tool : {std::make_pair("TOOL_FILTER", "FILTER"), std::make_pair("TOOL_DEL", "ERASE")}) {
        const wxBitmap picture = wxg::themedBitmap(tool.second);
        if (picture.IsOk())
            tools->SetToolNormalBitmap(XRCID(tool.first), picture);
    }
    auto* plyTools = XRCCTRL(*this, "TBAR_PLY_EDIT", wxToolBar);
    for (const auto& tool : {std::make_pair("TOOL_PLY_DUPL", "COPYCLIP"), std::make_pair("TOOL_PLY_DEL", "ERASE")}) {
        const wxBitmap picture = wxg::themedBitmap(tool.second);
        if (picture.IsOk())
            plyTools->SetToolNormalBitmap(XRCID(tool.first), picture);
    }

    PlyGridOwner& owner = *this;
    m_plies = new PlyGrid(this, wxID_ANY, owner);
    wxXmlResource::Get()->AttachUnknownControl("GRID_PLIES", m_plies, this);
    createPropertyGrid();
    initLists();
    m_updating = false;

    updateFilterTypes();
    updateFilter();
    updateLists(true);
    updateComposition();
    if (m_mode != vl_db::kModePicker)
        FindWindow(wxID_CANCEL)->Hide();
    FindWindow(XRCID("BTN_UNSELECT"))->Show(m_mode == vl_db::kModePicker);
    if (m_mode == vl_db::kModePicker)
        XRCCTRL(*this, "wxID_OK", wxButton)->SetLabel(_("&Select"));
    if (m_mode == vl_db::kModeManagerEditName) {
        auto* name = XRCCTRL(*this, "TEXT_NAME", wxTextCtrl);
        name->SetFocus();
        // Selected once the field is on screen: a selection made before is not kept by every
        // toolkit, which would then select the text only if the dialog got the focus.
        CallAfter([name] { name->SelectAll(); });
    }
    Layout();
}

void DlgCompositions::onOK(wxCommandEvent& event) {
    if (m_status != kValid)
        return;
    saveComposition();
    event.Skip();
}

void DlgCompositions::onUnselect(wxCommandEvent&) {
    m_dbType = vl_db::kDbNone;
    m_composition.release();
    m_selName.clear();
    EndDialog(wxID_OK);
}

void DlgCompositions::onUpdateUI(wxUpdateUIEvent& event) {
    if (!m_browser)
        return;
    const int id = event.GetId();
    const bool currentWritable = m_composition && vl_db::writable(m_libs, m_dbType);
    if (m_browser->enableListCommand(event, m_status == kValid))
        return;
    if (id == XRCID("TOOL_PLY_NEW") || id == XRCID("BTN_CUSTOM_PROPS"))
        event.Enable(currentWritable);
    else if (id == XRCID("TOOL_PLY_DUPL") || id == XRCID("TOOL_PLY_DEL"))
        event.Enable(currentWritable && m_plies && !m_plies->selectedPlies().empty());
    else if (id == XRCID("TOOL_CUSTOMPROP_DELETE"))
        event.Enable(currentWritable && selectedCustomProperty());
    else if (id == wxID_OK)
        event.Enable(m_status == kValid && (m_mode != vl_db::kModePicker || m_composition));
}

void DlgCompositions::updateComposition() {
    wxWindowUpdateLocker freeze(this);
    m_composition.release();
    try {
        if (m_browser)
            m_composition = m_browser->loadSelected<vantlib::Composition>(m_dbType);
    } catch (const std::exception& error) {
        reportError(error);
    }
    m_selName = m_composition ? toWx(m_composition->name()) : wxString();
    m_status = kValid;
    updateName();
    updateTypeChoice();
    updateType();
    updateStructure();
    updateProps();
    updateReadOnly();
    updatePreview();
    updateStatus();
    FindWindow(XRCID("PANEL_CMP"))->Layout();
}

void DlgCompositions::updateName() {
    const bool wasUpdating = m_updating;
    m_updating = true;
    // The same text again would drop the selection and the caret the user has in the field.
    auto* name = XRCCTRL(*this, "TEXT_NAME", wxTextCtrl);
    if (name->GetValue() != m_selName)
        name->ChangeValue(m_selName);
    m_updating = wasUpdating;
}

void DlgCompositions::updateTypeChoice() {
    auto* choice = XRCCTRL(*this, "CHOICE_CMP_TYPE", wxChoice);
    choice->Clear();
    if (!m_composition)
        return;
    choice->Append(baseCompositionClasses());
    try {
        choice->Append(compositionClasses(std::shared_ptr<const vantlib::Library>(lib())));
    } catch (const std::exception& error) {
        reportError(error);
    }
    choice->SetSelection(choice->FindString(typeEntry(*m_composition), true));
}

void DlgCompositions::updateType() {
    const bool slab = m_composition && m_composition->type() == vantlib::Composition::kSlab;
    XRCCTRL(*this, "STAT_EXT", wxStaticText)->SetLabel(slab ? _("Top") : _("Exterior"));
    XRCCTRL(*this, "STAT_INT", wxStaticText)->SetLabel(slab ? _("Bottom") : _("Interior"));
}

void DlgCompositions::updateStatus() {
    const bool invalid = m_status != kValid;
    auto* text = XRCCTRL(*this, "STAT_ERROR", wxStaticText);
    switch (m_status) {
    case kNameEmpty: text->SetLabel(_("Please enter a name")); break;
    case kNameTaken:
        text->SetLabel(_("Invalid name: a composition with that name already exists in the library"));
        break;
    default: text->SetLabel(wxString()); break;
    }
    text->Show(invalid);
    XRCCTRL(*this, "BMP_ERROR", wxStaticBitmap)->Show(invalid);
    // The user cannot leave a composition whose name is not valid.
    XRCCTRL(*this, "PANEL_LEFT", wxPanel)->Enable(!invalid);
    FindWindow(XRCID("PANEL_CMP"))->Layout();
}

void DlgCompositions::updateReadOnly() {
    const bool enable = m_composition && vl_db::writable(m_libs, m_dbType);
    for (const char* name : {"TEXT_NAME", "CHOICE_CMP_TYPE", "TBAR_PLY_EDIT", "TBAR_CUSTOMPROP"})
        FindWindow(XRCID(name))->Enable(enable);
    if (m_grid)
        m_grid->Enable(enable);
}

void DlgCompositions::updatePreview() {
    const int edge = wxg::isDpiForLargeIcons() ? 128 : 64;
    const wxBitmap picture = m_composition ? preview(m_composition, wxSize(edge, edge), true) : wxBitmap();
    setBitmap(FindWindow(XRCID("PREVIEW")),
              picture.IsOk() ? picture
                             : wxXmlResource::Get()->LoadBitmap(edge > 64 ? "BmpEmptyCmp_64" : "BmpEmptyCmp_32"));
    updateCurrentRow();
}

void DlgCompositions::onEditText(wxCommandEvent& event) {
    if (m_updating || !m_composition || !vl_db::writable(m_libs, m_dbType))
        return;
    const wxString name = event.GetString();
    const auto library = lib();
    bool taken = false;
    try {
        taken = !name.empty() && name != m_selName && library &&
                library->get<vantlib::Composition>(vantlib::NameKey(toOd(name)));
    } catch (const std::exception& error) {
        reportError(error);
        return;
    }
    if (name.empty()) {
        m_status = kNameEmpty;
    } else if (taken) {
        m_status = kNameTaken;
    } else {
        m_status = kValid;
        changeComposition([&](vantlib::Composition& composition) { composition.set_name(toOd(name)); });
        updateCurrentRow();
    }
    updateStatus();
}

void DlgCompositions::onCmpType(wxCommandEvent& event) {
    if (m_updating || !m_composition)
        return;
    const wxString entry = event.GetString();
    const auto library = lib();
    if (baseCompositionClasses().Index(entry) != wxNOT_FOUND) {
        changeComposition([&](vantlib::Composition& composition) {
            composition.set_base_type(compositionBaseType(entry));
            composition.set_type(QcSmartPtr<vantlib::CompositionType>());
        });
    } else if (library) {
        QcSmartPtr<vantlib::CompositionType> type;
        try {
            type = library->get<vantlib::CompositionType>(vantlib::NameKey(toOd(entry)));
        } catch (const std::exception& error) {
            reportError(error);
            return;
        }
        if (!type) {
            showMessage(this, wxString::Format(_("The composition type \"%s\" does not exist."), entry),
                        wxICON_WARNING);
            updateTypeChoice();
            return;
        }
        changeComposition([&](vantlib::Composition& composition) { composition.set_type(type); });
    }
    updateType();
    updatePreview();
    updateProps();
}

void DlgCompositions::saveComposition() {
    if (!m_composition || m_status != kValid || !vl_db::writable(m_libs, m_dbType))
        return;
    if (saveObject(m_composition, [this](const std::exception& error) { reportError(error); }))
        m_selName = toWx(m_composition->name());
}

void DlgCompositions::changeComposition(const std::function<void(vantlib::Composition&)>& change) {
    if (m_updating || !m_composition || !vl_db::writable(m_libs, m_dbType))
        return;
    const bool save = m_status == kValid;
    if (changeObject(m_composition, lib(), save, change,
                     [this](const std::exception& error) { reportError(error); })) {
        if (save)
            m_selName = toWx(m_composition->name());
    } else if (m_plies) {
        // The grid shows the object that is stored again.
        m_plies->setComposition(m_composition, unit(), vl_db::writable(m_libs, m_dbType));
    }
}

void DlgCompositions::reportError(const std::exception& error) {
    showError(this, error);
    // From now on the library refuses writes: the lists and controls say so.
    if (madeLibraryReadOnly(error) && m_browser) {
        updateLists(true);
        updateReadOnly();
    }
}

}  // namespace vl_app

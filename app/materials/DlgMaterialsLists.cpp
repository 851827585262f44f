// The two material lists of the materials dialog: filling them with thumbnails, the class and
// tag filters, and the commands that create, copy and remove materials.
#include <algorithm>

#include <wx/busyinfo.h>
#include <wx/choice.h>
#include <wx/combobox.h>
#include <wx/dnd.h>
#include <wx/imaglist.h>
#include <wx/menu.h>
#include <wx/msgdlg.h>
#include <wx/notebook.h>
#include <wx/panel.h>
#include <wx/textctrl.h>
#include <wx/toolbar.h>
#include <wx/utils.h>
#include <wx/wupdlock.h>
#include <wx/xrc/xmlres.h>

#include <IconStore.h>
#include <OdStringWx.h>

#include <vantlib/Composition.h>
#include <vantlib/Criteria.h>
#include <vantlib/Transaction.h>

#include "app/common/DragDrop.h"
#include "app/common/Helpers.h"
#include "app/common/ListHelpers.h"
#include "app/common/Tags.h"
#include "app/materials/DlgMaterials.h"
#include "app/materials/MaterialEditRules.h"

namespace vl_app {

namespace {
// Edge of list thumbnails: the 32-pixel placeholder shows a hatch well enough to tell apart.
constexpr int kThumbnailEdge = 32;

vl_db::EDbType otherLibrary(vl_db::EDbType type) {
    return type == vl_db::kDbProject ? vl_db::kDbCentral : vl_db::kDbProject;
}
}  // namespace

void DlgMaterials::initList(vl_db::EDbType type) {
    wxListCtrl* target = list(type);
    target->Bind(wxEVT_LIST_BEGIN_DRAG, &DlgMaterials::onListBeginDrag, this);
    target->Bind(wxEVT_LEFT_DOWN, &DlgMaterials::onListMouseDown, this);
    auto* images = new wxImageList(kThumbnailEdge, kThumbnailEdge, true, 1);
    images->Add(wxXmlResource::Get()->LoadBitmap(kThumbnailEdge > 16 ? "BmpEmptyMat_32" : "BmpEmptyMat"));
    target->AssignImageList(images, wxIMAGE_LIST_SMALL);
    target->InsertColumn(0, type == vl_db::kDbProject ? _("Project") : _("Central Database"));
    target->SetDropTarget(new VantlibDropTarget(m_libs, type, vantlib::kMaterial));
    autoColumnSize(target);
}

void DlgMaterials::updateLists(bool keepSelection) {
    updateList(vl_db::kDbProject, keepSelection);
    updateList(vl_db::kDbCentral, keepSelection);
}

void DlgMaterials::updateList(vl_db::EDbType type, bool keepSelection) {
    wxListCtrl* target = list(type);
    std::map<MaterialThumbnails::Key, int>& imageIndex = m_imageIndex[type];
    const auto library = vl_db::library(m_libs, type, false);
    const bool wasUpdating = m_updating;
    m_updating = true;
    wxWindowUpdateLocker freeze(target);
    clear(target);
    imageIndex.clear();
    if (!library) {
        m_updating = wasUpdating;
        return;
    }
    target->SetTextColour(vl_db::writable(library) ? XRCCTRL(*this, "PANEL_LEFT", wxPanel)->GetForegroundColour()
                                                   : wxg::readOnlyTextColour());

    std::vector<QcSmartPtr<vantlib::Material>> materials;
    {
        wxBusyCursor busy;
        vantlib::MaterialCriteria criteria;
        if (!m_filterClass.empty())
            criteria.materialClass.equals(toOd(m_filterClass));
        if (tagFilter() && m_libs) {
            if (const auto manager = m_libs->vantlibManager()) {
                const OdArray<OdString> tags = manager->filterTags();
                criteria.tags.assign(tags.begin(), tags.end());
            }
        }
        try {
            library->get(materials, criteria);
        } catch (const std::exception& error) {
            m_updating = wasUpdating;
            reportError(error);
            return;
        }
    }
    std::sort(materials.begin(), materials.end(), [](const auto& a, const auto& b) {
        return a->name().iCompare(b->name()) < 0;
    });

    wxImageList* images = target->GetImageList(wxIMAGE_LIST_SMALL);
    long selectedRow = -1;
    long row = 0;
    for (const auto& material : materials) {
        const MaterialThumbnails::Key key = MaterialThumbnails::key(material, kThumbnailEdge);
        auto found = imageIndex.find(key);
        if (found == imageIndex.end()) {
            const wxBitmap& picture = m_thumbnails.thumbnail(key, material);
            found = imageIndex.emplace(key, picture.IsOk() ? images->Add(picture) : 0).first;
        }
        wxListItem item;
        item.SetId(row);
        item.SetText(toWx(material->name()));
        item.SetImage(found->second);
        item.SetData(material->id());
        target->InsertItem(item);
        if (keepSelection && m_material && m_dbType == type && material->id() == m_material->id())
            selectedRow = row;
        ++row;
    }
    if (selectedRow != -1) {
        target->SetItemState(selectedRow, wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED,
                             wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED);
        target->EnsureVisible(selectedRow);
    }
    m_updating = wasUpdating;
}

void DlgMaterials::selectInList(vl_db::EDbType type, unsigned id) {
    wxListCtrl* target = list(type);
    if (!target)
        return;
    deselectAll(target);
    const long row = target->FindItem(-1, wxUIntPtr(id));
    if (row == -1)
        return;
    const bool wasUpdating = m_updating;
    m_updating = true;
    target->SetItemState(row, wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED,
                         wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED);
    target->EnsureVisible(row);
    m_updating = wasUpdating;
}

void DlgMaterials::updateFilter() {
    auto* tools = XRCCTRL(*this, "TBAR_EDIT", wxToolBar);
    tools->ToggleTool(XRCID("TOOL_FILTER"), tagFilter());
    tools->SetToolShortHelp(XRCID("TOOL_FILTER"), tagFilterToolTip(m_libs));
}

void DlgMaterials::updateClasses() {
    const bool wasUpdating = m_updating;
    m_updating = true;
    // Both libraries may name the same class; the filter offers each name once.
    try {
        m_filterClasses = materialClasses(m_libs);
        m_comboClasses = materialClasses(std::shared_ptr<const vantlib::Library>(lib()));
    } catch (const std::exception& error) {
        reportError(error);
    }
    m_filterClasses.Sort([](const wxString& a, const wxString& b) { return a.CmpNoCase(b); });
    wxArrayString unique;
    for (const wxString& name : m_filterClasses)
        if (unique.empty() || unique.Last().CmpNoCase(name) != 0)
            unique.Add(name);
    m_filterClasses = unique;

    auto* filter = XRCCTRL(*this, "FILTER_CLASS", wxChoice);
    filter->Clear();
    filter->Append(_("All"));
    filter->Append(m_filterClasses);
    const int index = m_filterClass.empty() ? 0 : filter->FindString(m_filterClass, true);
    filter->SetSelection(index == wxNOT_FOUND ? 0 : index);

    auto* combo = XRCCTRL(*this, "COMBO_CLASS", wxComboBox);
    combo->Set(m_comboClasses);
    combo->ChangeValue(m_classText);
    m_updating = wasUpdating;
}

void DlgMaterials::onFilterClass(wxCommandEvent& event) {
    const int index = event.GetSelection();
    m_filterClass = index <= 0 ? wxString() : event.GetString();
    wxWindowUpdateLocker freeze(this);
    updateLists(true);
    updateMaterial();
}

void DlgMaterials::onToggleFilter(wxCommandEvent&) {
    tagFilterToggle();
    wxWindowUpdateLocker freeze(this);
    updateFilter();
    updateLists(true);
    updateMaterial();
}

vl_db::EDbType DlgMaterials::creationTarget() const {
    if (m_dbType == vl_db::kDbNone || !vl_db::writable(m_libs, m_dbType))
        return vl_db::kDbProject;
    return m_dbType;
}

void DlgMaterials::onNew(wxCommandEvent&) { createMaterial(creationTarget()); }
void DlgMaterials::onNewInProj(wxCommandEvent&) { createMaterial(vl_db::kDbProject); }
void DlgMaterials::onNewInLibr(wxCommandEvent&) { createMaterial(vl_db::kDbCentral); }

void DlgMaterials::createMaterial(vl_db::EDbType type) {
    const auto library = vl_db::library(m_libs, type, false);
    if (!vl_db::writable(library) || m_status != kValid)
        return;
    saveMaterial();
    try {
        const wxString name = uniqueName(_("New"), [&](const wxString& candidate) {
            return bool(library->get<vantlib::Material>(vantlib::NameKey(toOd(candidate))));
        });
        QcSmartPtr<vantlib::Material> material;
        vantlib::Material::create(toOd(name), material);
        if (!m_filterClass.empty()) {
            if (auto materialClass = library->get<vantlib::MaterialType>(vantlib::NameKey(toOd(m_filterClass))))
                material->set_type(materialClass);
        }
        m_material = library->save(material);
    } catch (const std::exception& error) {
        reportError(error);
        return;
    }
    wxWindowUpdateLocker freeze(this);
    showStoredMaterial(type);
    updateClasses();
    XRCCTRL(*this, "TABBOOK", wxNotebook)->SetSelection(0);
    auto* name = XRCCTRL(*this, "TEXT_NAME", wxTextCtrl);
    name->SetFocus();
    name->SelectAll();
}

void DlgMaterials::onDuplicate(wxCommandEvent&) {
    const vl_db::EDbType type = creationTarget();
    const auto library = vl_db::library(m_libs, type, false);
    if (!vl_db::writable(library) || !m_material || m_material->id() == 0 || m_status != kValid)
        return;
    saveMaterial();
    try {
        m_material = library->save(duplicateMaterial(m_material, library));
    } catch (const std::exception& error) {
        reportError(error);
        return;
    }
    wxWindowUpdateLocker freeze(this);
    showStoredMaterial(type);
}

void DlgMaterials::showStoredMaterial(vl_db::EDbType type) {
    m_dbType = type;
    deselectAll(list(otherLibrary(type)));
    updateList(type, true);
    updateMaterial();
}

void DlgMaterials::onDelete(wxCommandEvent&) {
    const auto library = lib();
    wxListCtrl* current = list(m_dbType);
    if (!vl_db::writable(library) || !current)
        return;
    const std::set<unsigned> ids = selectedIDs(current);
    if (ids.empty())
        return;
    const long previous = current->GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED);
    std::set<unsigned> kept;
    try {
        kept = library->remove<vantlib::Material>(ids);
    } catch (const std::exception& error) {
        reportError(error);
        return;
    }
    std::vector<wxString> keptNames;
    {
        const bool wasUpdating = m_updating;
        m_updating = true;
        for (long row = current->GetItemCount() - 1; row >= 0; --row) {
            const unsigned id = unsigned(current->GetItemData(row));
            if (!ids.count(id))
                continue;
            if (kept.count(id))
                keptNames.insert(keptNames.begin(), current->GetItemText(row));
            else
                current->DeleteItem(row);
        }
        m_updating = wasUpdating;
    }
    const wxString message = removalMessage(keptNames);
    if (!message.empty())
        wxMessageBox(message, _("BIM"), wxOK | wxICON_WARNING | wxCENTRE, this);

    wxWindowUpdateLocker freeze(current);
    deselectAll(current);
    const long count = current->GetItemCount();
    if (count > 0) {
        const long row = std::min(previous, count - 1);
        const bool wasUpdating = m_updating;
        m_updating = true;
        current->SetItemState(row, wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED,
                              wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED);
        current->EnsureVisible(row);
        m_updating = wasUpdating;
    }
    updateMaterial();
}

void DlgMaterials::onCopyToProject(wxCommandEvent&) { copyTo(vl_db::kDbProject); }
void DlgMaterials::onCopyToLibrary(wxCommandEvent&) { copyTo(vl_db::kDbCentral); }

void DlgMaterials::copyTo(vl_db::EDbType destination) {
    const vl_db::EDbType sourceType = otherLibrary(destination);
    const std::set<unsigned> ids = selectedIDs(list(sourceType));
    if (ids.empty())
        return;
    const auto target = vl_db::library(m_libs, destination, false);
    if (!target) {
        wxMessageBox(_("No destination library."), _("BIM"), wxOK | wxCENTRE, this);
        return;
    }
    if (!vl_db::writable(target)) {
        wxMessageBox(_("Destination library is read-only."), _("BIM"), wxOK | wxCENTRE, this);
        return;
    }
    saveMaterial();
    try {
        target->copy<vantlib::Material>(vl_db::library(m_libs, sourceType, false), ids);
    } catch (const std::exception& error) {
        reportError(error);
    }
    updateList(destination, true);
    updateClasses();
}

void DlgMaterials::onMakeComp(wxCommandEvent&) {
    const auto library = lib();
    if (!vl_db::writable(library))
        return;
    const std::set<unsigned> ids = selectedIDs(list(m_dbType));
    if (ids.empty())
        return;
    saveMaterial();
    try {
        vantlib::Transaction transaction(library);
        std::vector<QcSmartPtr<vantlib::Material>> materials;
        library->get(materials, ids);
        for (const auto& material : materials) {
            auto composition = vantlib::Composition::create(material->name(), vantlib::Composition::kWall);
            composition->append_ply(vantlib::Ply::defaultPly(material));
            const vantlib::BimAsset* bim = material->bim_asset();
            if (bim && bim->variable_thickness())
                composition->set_variable_ply(0);
            library->save(composition);
        }
        transaction.commit();
    } catch (const std::exception& error) {
        reportError(error);
    }
}

void DlgMaterials::onListContextMenu(wxListEvent& event) {
    const vl_db::EDbType type = event.GetEventObject() == m_listProject ? vl_db::kDbProject : vl_db::kDbCentral;
    wxListCtrl* clicked = list(type);
    const long row = event.GetIndex();
    // A right click on a row that is not selected acts on that row, as a left click would.
    if (row >= 0 && clicked->GetItemState(row, wxLIST_STATE_SELECTED) == 0 && m_status == kValid) {
        deselectAll(clicked);
        clicked->SetItemState(row, wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED,
                              wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED);
    }
    std::unique_ptr<wxMenu> menu(
        wxXmlResource::Get()->LoadMenu(type == vl_db::kDbProject ? "MENU_BIM_MAT_PROJ" : "MENU_BIM_MAT_LIBR"));
    if (menu)
        PopupMenu(menu.get());
}

void DlgMaterials::onListBeginDrag(wxListEvent& event) {
    const vl_db::EDbType type = event.GetEventObject() == m_listProject ? vl_db::kDbProject : vl_db::kDbCentral;
    VantlibDragData data;
    data.dbType = type;
    data.objectType = vantlib::kMaterial;
    for (const unsigned id : selectedIDs(list(type)))
        data.keys.emplace_back(vantlib::kMaterial, id);
    if (data.keys.empty())
        return;
    saveMaterial();
    VantlibDataObject payload(data);
    wxDropSource source(payload, list(type));
    if (source.DoDragDrop(wxDrag_CopyOnly) == wxDragCopy) {
        wxWindowUpdateLocker freeze(this);
        updateLists(true);
        updateClasses();
    }
}

}  // namespace vl_app

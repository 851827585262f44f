// The two material lists of the materials dialog (on the shared two-list browser): what they
// list and draw, the class and tag filters, and the commands that create and derive materials.
#include <algorithm>

#include <wx/choice.h>
#include <wx/combobox.h>
#include <wx/notebook.h>
#include <wx/textctrl.h>
#include <wx/toolbar.h>
#include <wx/wupdlock.h>
#include <wx/xrc/xmlres.h>

#include <OdStringWx.h>

#include <vantlib/Composition.h>
#include <vantlib/Criteria.h>
#include <vantlib/Transaction.h>

#include "app/common/Helpers.h"
#include "app/common/Previews.h"
#include "app/common/Tags.h"
#include "app/materials/DlgMaterials.h"
#include "app/materials/MaterialEditRules.h"

namespace vl_app {

void DlgMaterials::initLists() {
    ListKind kind;
    kind.objectType = vantlib::kMaterial;
    kind.projectMenu = "MENU_BIM_MAT_PROJ";
    kind.centralMenu = "MENU_BIM_MAT_LIBR";
    kind.projectHeader = _("Project");
    kind.centralHeader = _("Central Database");
    // The 32-pixel placeholder shows a hatch well enough to tell materials apart.
    kind.placeholder = "BmpEmptyMat_32";
    kind.thumbnailEdge = 32;
    TwoListClient& client = *this;
    m_browser = std::make_unique<TwoListBrowser>(this, m_libs, client, kind);
    m_browser->bindListCommands();
    m_browser->setCurrent(m_dbType);
}

void DlgMaterials::updateLists(bool keepSelection) { m_browser->updateLists(keepSelection); }

std::vector<ObjectRow> DlgMaterials::queryRows(const std::shared_ptr<vantlib::Library>& library) {
    vantlib::MaterialCriteria criteria;
    if (!m_filterClass.empty())
        criteria.materialClass.equals(toOd(m_filterClass));
    if (tagFilter() && m_libs) {
        if (const auto manager = m_libs->vantlibManager()) {
            const OdArray<OdString> tags = manager->filterTags();
            criteria.tags.assign(tags.begin(), tags.end());
        }
    }
    std::vector<ObjectRow> rows;
    library->list<vantlib::Material>(rows, criteria);
    return rows;
}

wxBitmap DlgMaterials::drawThumbnail(const std::shared_ptr<vantlib::Library>& library, const ObjectRow& row,
                                     const wxSize& size) {
    const auto material = library->get<vantlib::Material>(row.id);
    return material ? hatchPreview(material, vl_db::kHatchSection, size) : wxNullBitmap;
}

std::set<unsigned> DlgMaterials::removeObjects(const std::shared_ptr<vantlib::Library>& library,
                                               const std::set<unsigned>& ids) {
    return library->remove<vantlib::Material>(ids);
}

wxString DlgMaterials::keptMessage(const std::vector<wxString>& names) const { return removalMessage(names); }

wxString DlgMaterials::rowsText(unsigned count) const {
    return wxString::Format(wxPLURAL("%u material", "%u materials", count), count);
}

unsigned DlgMaterials::currentObjectId() const { return m_material ? m_material->id() : 0; }

void DlgMaterials::currentChanged() {
    m_dbType = m_browser->current();
    updateMaterial();
}

void DlgMaterials::rowActivated() {
    if (m_mode == vl_db::kModePicker && m_material && m_status == kValid)
        EndDialog(wxID_OK);
}

void DlgMaterials::updateCurrentRow() {
    if (!m_browser || !m_material)
        return;
    // The row shows what is stored, as a refill would.
    try {
        m_browser->reloadRow<vantlib::Material>(m_dbType, m_material->id());
    } catch (const std::exception& error) {
        reportError(error);
    }
}

void DlgMaterials::updateFilter() {
    showTagFilterTool(XRCCTRL(*this, "TBAR_EDIT", wxToolBar), XRCID("TOOL_FILTER"), m_libs);
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

void DlgMaterials::createObject(vl_db::EDbType type) {
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

void DlgMaterials::duplicateCurrent(vl_db::EDbType type) {
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
    m_browser->showObject(type, m_material ? m_material->id() : 0);
}

void DlgMaterials::onMakeComp(wxCommandEvent&) {
    const auto library = lib();
    if (!vl_db::writable(library))
        return;
    const std::set<unsigned> ids = m_browser->selectedIds(m_dbType);
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

}  // namespace vl_app

// The categories of the property sets editor: the host's element categories with their entity
// types as three-state check boxes, showing and changing the IFC types a set is assigned to.
#include <set>

#include <wx/button.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/xrc/xmlres.h>

#include <OdStringWx.h>

#include "app/properties/DlgProperties.h"

namespace vl_app {

void DlgProperties::createCategoriesTree() {
    m_categories = new wxTreeListCtrl(m_panelTreeCategories, XRCID("TREE_CATEGORIES"), wxDefaultPosition, wxDefaultSize,
                                      wxTL_SINGLE | wxTL_3STATE | wxTL_NO_HEADER);
    m_categories->AppendColumn(_("Categories"), wxCOL_WIDTH_AUTOSIZE, wxALIGN_LEFT, wxCOL_RESIZABLE);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(m_categories, 1, wxEXPAND);
    m_panelTreeCategories->SetSizer(sizer);
}

void DlgProperties::fillCategoriesTree() {
    if (!m_categories)
        return;
    m_categories->DeleteAllItems();
    const wxTreeListItem root = m_categories->GetRootItem();
    for (const EntityCategory& category : m_categoryList) {
        const wxTreeListItem item = m_categories->AppendItem(root, category.name);
        for (const EntityType& type : category.types)
            m_categories->AppendItem(item, type.label, -1, -1,
                                     new EntityTypeData(m_ifcTypeGetter ? m_ifcTypeGetter(type) : type.key));
        m_categories->Expand(item);
    }
    if (const auto set = selectedPropertySet())
        setCategoryStates(set);
}

void DlgProperties::showCategoriesFor(const std::shared_ptr<vl_db::IPropertySet>& set) {
    const bool shown = set != nullptr;
    if (shown)
        setCategoryStates(set);
    if (m_panelCategories->IsShown() != shown) {
        m_panelCategories->Show(shown);
        m_panelCategories->GetParent()->Layout();
    }
}

void DlgProperties::setCategoryStates(const std::shared_ptr<vl_db::IPropertySet>& set) {
    if (!m_categories)
        return;
    std::set<wxString> assigned;
    for (const OdString& type : set->ifcTypes())
        assigned.insert(toWx(type));
    const wxTreeListItem root = m_categories->GetRootItem();
    for (wxTreeListItem category = m_categories->GetFirstChild(root); category.IsOk();
         category = m_categories->GetNextSibling(category)) {
        std::vector<bool> states;
        for (wxTreeListItem item = m_categories->GetFirstChild(category); item.IsOk();
             item = m_categories->GetNextSibling(item)) {
            const auto* data = static_cast<EntityTypeData*>(m_categories->GetItemData(item));
            const bool checked = data && assigned.count(data->ifcType) > 0;
            m_categories->CheckItem(item, checked ? wxCHK_CHECKED : wxCHK_UNCHECKED);
            states.push_back(checked);
        }
        m_categories->CheckItem(category, static_cast<wxCheckBoxState>(combinedCheckState(states)));
    }
}

void DlgProperties::checkCategoryRecursively(const std::shared_ptr<vl_db::IPropertySet>& set, const wxTreeListItem& item) {
    const wxCheckBoxState state = m_categories->GetCheckedState(item);
    if (const auto* data = static_cast<EntityTypeData*>(m_categories->GetItemData(item))) {
        if (state == wxCHK_CHECKED)
            set->addIfcType(toOd(data->ifcType));
        else if (state == wxCHK_UNCHECKED)
            set->removeIfcType(toOd(data->ifcType));
    }
    for (wxTreeListItem child = m_categories->GetFirstChild(item); child.IsOk(); child = m_categories->GetNextSibling(child)) {
        m_categories->CheckItem(child, state);
        checkCategoryRecursively(set, child);
    }
}

void DlgProperties::onCategoryChecked(wxTreeListEvent& event) {
    applyCategoryCheck(event.GetItem(), event.GetOldCheckedState());
}

void DlgProperties::checkCategory(const wxTreeListItem& item, wxCheckBoxState state) {
    const wxCheckBoxState old = m_categories->GetCheckedState(item);
    m_categories->CheckItem(item, state);
    applyCategoryCheck(item, old);
}

void DlgProperties::applyCategoryCheck(const wxTreeListItem& item, wxCheckBoxState oldState) {
    const auto set = selectedPropertySet();
    if (!set || !libraryUsable() || !set->isEditable()) {
        m_categories->CheckItem(item, oldState);
        return;
    }
    guarded([&] {
        checkCategoryRecursively(set, item);
        m_categories->UpdateItemParentStateRecursively(item);
        m_structureChanged = true;
    });
}

void DlgProperties::onBtnCheckCategories(wxCommandEvent& event) {
    const auto set = selectedPropertySet();
    if (!set || !libraryUsable() || !set->isEditable())
        return;
    const bool none = event.GetId() == XRCID("BTN_UNCHECK_ALL_CATEGORIES");
    guarded([&] {
        const wxTreeListItem root = m_categories->GetRootItem();
        m_categories->CheckItem(root, none ? wxCHK_UNCHECKED : wxCHK_CHECKED);
        checkCategoryRecursively(set, root);
        m_structureChanged = true;
    });
}

}  // namespace vl_app

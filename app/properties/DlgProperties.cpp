// The property sets editor: controls, namespace choice, tree, search, new objects, moving,
// deleting, import, export, visibility and OK. The panes and their edits are in
// DlgPropertiesPanes.cpp, the categories in DlgPropertiesCategories.cpp.
#include "app/properties/DlgProperties.h"

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/menu.h>
#include <wx/msgdlg.h>
#include <wx/panel.h>
#include <wx/propgrid/propgrid.h>
#include <wx/sizer.h>
#include <wx/srchctrl.h>
#include <wx/xrc/xmlres.h>

#include <CaApp.h>
#include <CaFileDialog.h>
#include <OdEdSettingsManager.h>
#include <OdError.h>
#include <OdStringWx.h>
#include <QcPropertyGrid.h>

#include "app/common/ErrorMessages.h"

namespace vl_app {

using vl_db::ObjectTypeWrapper;

wxBEGIN_EVENT_TABLE(DlgProperties, wxg::QcThemedDialog)
    EVT_INIT_DIALOG(DlgProperties::onInitDialog)
    EVT_CHOICE(XRCID("CHOICE_NAMESPACE"), DlgProperties::onChoiceNamespace)
    EVT_TEXT(XRCID("SEARCH_CTRL"), DlgProperties::OnSearchCtrlTextChanged)
    EVT_SEARCH(XRCID("SEARCH_CTRL"), DlgProperties::onSearchCtrlSearchBtn)
    EVT_SEARCH_CANCEL(XRCID("SEARCH_CTRL"), DlgProperties::onSearchCtrlCancelBtn)
    EVT_TREE_SEL_CHANGING(XRCID("TREE_NAMESPACE"), DlgProperties::onTreeSelChanging)
    EVT_TREE_SEL_CHANGED(XRCID("TREE_NAMESPACE"), DlgProperties::onTreeSelChanged)
    // The menu event comes for a right click and for the keyboard's menu key alike.
    EVT_TREE_ITEM_MENU(XRCID("TREE_NAMESPACE"), DlgProperties::onTreeItemRightClicked)
    EVT_TREE_KEY_DOWN(XRCID("TREE_NAMESPACE"), DlgProperties::onTreeKeyDown)
    EVT_PG_CHANGED(XRCID("PROPERTY_GRID"), DlgProperties::onPropChanged)
    EVT_TREELIST_ITEM_CHECKED(XRCID("TREE_CATEGORIES"), DlgProperties::onCategoryChecked)
    EVT_BUTTON(XRCID("BMP_BTN_NEW_PROP_SET"), DlgProperties::onNewPropertySet)
    EVT_BUTTON(XRCID("BMP_BTN_NEW_PROP_DEF"), DlgProperties::onNewPropertyDefinition)
    EVT_BUTTON(XRCID("BMP_BTN_NEW_VAL_DEF"), DlgProperties::onNewValueDefinition)
    EVT_BUTTON(XRCID("BMP_BTN_UP"), DlgProperties::onDefinitionMoveUp)
    EVT_BUTTON(XRCID("BMP_BTN_DOWN"), DlgProperties::onDefinitionMoveDown)
    EVT_BUTTON(XRCID("BMP_BTN_DELETE"), DlgProperties::onDeleteSelectedItem)
    EVT_BUTTON(XRCID("BTN_CHECK_ALL_CATEGORIES"), DlgProperties::onBtnCheckCategories)
    EVT_BUTTON(XRCID("BTN_UNCHECK_ALL_CATEGORIES"), DlgProperties::onBtnCheckCategories)
    EVT_BUTTON(XRCID("BTN_IMPORT_PROP_SET"), DlgProperties::onBtnImport)
    EVT_BUTTON(XRCID("BTN_EXPORT_PROP_SET"), DlgProperties::onBtnExport)
    EVT_BUTTON(XRCID("BTN_ATTR_SET_VIS"), DlgProperties::onBtnVisibility)
    EVT_BUTTON(wxID_OK, DlgProperties::onOK)
    EVT_BUTTON(wxID_CANCEL, DlgProperties::onCancel)
    EVT_MENU(XRCID("TOOL_NEW_PROPERTY_SET"), DlgProperties::onNewPropertySet)
    EVT_MENU(XRCID("TOOL_NEW_PROPERTY_DEFINITION"), DlgProperties::onNewPropertyDefinition)
    EVT_MENU(XRCID("TOOL_NEW_VALUE_DEFINITION"), DlgProperties::onNewValueDefinition)
    EVT_MENU(XRCID("TOOL_DELETE_PROPERTY_SET"), DlgProperties::onDeleteSelectedItem)
    EVT_MENU(XRCID("TOOL_DELETE_DEFINITION"), DlgProperties::onDeleteSelectedItem)
wxEND_EVENT_TABLE()

namespace {

template <class T>
T* control(wxWindow* dialog, const char* name) {
    auto* found = dynamic_cast<T*>(dialog->FindWindow(XRCID(name)));
    if (!found)
        throw OdError(eInvalidInput, OdString::formatted(L"The property sets layout has no control %hs", name));
    return found;
}

// The name of a new object: the default, or with a number when the namespace has it already.
wxString freeName(ObjectTypeWrapper type, const vl_db::INamespace& ns, const wxString& base) {
    wxString name = base;
    for (int number = 2; !isNameFree(type, ns, name); ++number)
        name = wxString::Format("%s %d", base, number);
    return name;
}

}  // namespace

DlgProperties::DlgProperties(wxWindow* parent, const std::shared_ptr<vl_db::ILibrary>& library,
                             std::unique_ptr<IDlgEnabler>& enabler, const Categories& categories,
                             const IfcTypeGetter& ifcTypeGetter, const OdString& initialNamespace, Domain domain,
                             PropertySetsHost* host)
    : m_library(library),
      m_enabler(enabler),
      m_categoryList(categories),
      m_ifcTypeGetter(ifcTypeGetter),
      m_initialNamespace(initialNamespace),
      m_domain(domain),
      m_host(host) {
    if (!loadLayout(parent, "BIM_PROPERTIES", wxSize(900, 640)))
        throw OdError(eInvalidInput, OdString(L"The layout BIM_PROPERTIES is not loaded"));
    findControls();
    if (m_domain == Domain::Mechanical) {
        m_btnNewValDef->Hide();
        m_btnVisibility->Hide();
    }
    m_panelCategories->Hide();
    Layout();
}

DlgProperties::~DlgProperties() = default;

void DlgProperties::findControls() {
    m_choiceNamespace = control<wxChoice>(this, "CHOICE_NAMESPACE");
    m_btnNewSet = control<wxButton>(this, "BMP_BTN_NEW_PROP_SET");
    m_btnNewPropDef = control<wxButton>(this, "BMP_BTN_NEW_PROP_DEF");
    m_btnNewValDef = control<wxButton>(this, "BMP_BTN_NEW_VAL_DEF");
    m_btnUp = control<wxButton>(this, "BMP_BTN_UP");
    m_btnDown = control<wxButton>(this, "BMP_BTN_DOWN");
    m_btnDelete = control<wxButton>(this, "BMP_BTN_DELETE");
    m_btnAll = control<wxButton>(this, "BTN_CHECK_ALL_CATEGORIES");
    m_btnNone = control<wxButton>(this, "BTN_UNCHECK_ALL_CATEGORIES");
    m_btnVisibility = control<wxButton>(this, "BTN_ATTR_SET_VIS");
    m_search = control<wxSearchCtrl>(this, "SEARCH_CTRL");
    m_tree = control<wxTreeCtrl>(this, "TREE_NAMESPACE");
    m_panelSettings = control<wxPanel>(this, "PANEL_SETTINGS");
    m_panelCategories = control<wxPanel>(this, "PANEL_CATEGORIES");
    m_panelTreeCategories = control<wxPanel>(this, "PANEL_TREE_CATEGORIES");
    m_search->ShowCancelButton(true);
}

void DlgProperties::onInitDialog(wxInitDialogEvent& event) {
    event.Skip();
    if (m_grid)
        return;
    createPropertyGrid();
    createCategoriesTree();
    guarded([this] {
        fillChoiceNameSpace(0);
        fillCategoriesTree();
    });
    // The grid has its size only once the dialog shows.
    CallAfter([this] { placeSplitter(); });
}

void DlgProperties::placeSplitter() {
    // The labels stay whole in every language, and the values get the room that is left.
    m_grid->SetSplitterLeft(true);
    if (m_grid->GetSplitterPosition() < FromDIP(85))
        m_grid->SetSplitterPosition(FromDIP(85));
}

void DlgProperties::createPropertyGrid() {
    wxPropertyGrid::SetBoolChoices(_("Yes"), _("No"));
    m_grid = new wxg::QcPropertyGrid(m_panelSettings, XRCID("PROPERTY_GRID"), wxDefaultPosition, wxDefaultSize,
                                     wxPG_DEFAULT_STYLE | wxTAB_TRAVERSAL);
    m_grid->SetSplitterPosition(FromDIP(85));
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(m_grid, 1, wxEXPAND);
    m_panelSettings->SetSizer(sizer);
    m_panelSettings->Layout();
}

void DlgProperties::guarded(const std::function<void()>& work) {
    try {
        work();
    } catch (const std::exception& error) {
        libraryFailed(error);
    }
}

void DlgProperties::libraryFailed(const std::exception& error) {
    wxMessageBox(errorText(error), messageBoxCaption(), wxOK | wxICON_ERROR | wxCENTRE, this);
    if (madeLibraryReadOnly(error) && !m_libraryGone) {
        // The file went away or stopped taking writes: what the tree shows stays browsable.
        m_libraryGone = true;
        updateControls();
        rebuildPaneLater();
    }
}

bool DlgProperties::libraryUsable() const { return m_library && !m_libraryGone; }

wxString DlgProperties::messageBoxCaption() const {
    return m_domain == Domain::Mechanical ? _("Mechanical") : bimCaption();
}

long DlgProperties::message(const wxString& text, long style) {
    return wxMessageBox(text, messageBoxCaption(), style | wxCENTRE, this);
}

// ---- namespaces

void DlgProperties::fillChoiceNameSpace(unsigned id) {
    m_choiceNamespace->Clear();
    std::vector<uint32_t> ids;
    std::vector<OdString> names;
    if (m_library) {
        for (const auto& ns : m_library->namespaces()) {
            m_choiceNamespace->Append(toWx(ns->displayLabel()), reinterpret_cast<void*>(static_cast<uintptr_t>(ns->id())));
            ids.push_back(ns->id());
            names.push_back(ns->name());
        }
    }
    const int index = namespaceChoiceIndex(ids, names, id, m_initialNamespace);
    if (index >= 0)
        m_choiceNamespace->SetSelection(index);
    onNamespaceChanged();
}

void DlgProperties::onNamespaceChanged() {
    m_namespace.reset();
    const int index = m_choiceNamespace->GetSelection();
    if (m_library && index != wxNOT_FOUND) {
        const auto id = static_cast<uint32_t>(reinterpret_cast<uintptr_t>(m_choiceNamespace->GetClientData(index)));
        for (const auto& ns : m_library->namespaces())
            if (ns->id() == id)
                m_namespace = ns;
    }
    populateNamespaceTree(wxString(), wxString());
}

void DlgProperties::onChoiceNamespace(wxCommandEvent&) {
    guarded([this] { onNamespaceChanged(); });
}

bool DlgProperties::isCurrentNamespaceEditable() const {
    return libraryUsable() && m_namespace && m_namespace->isEditable();
}

// ---- the tree

bool DlgProperties::matchesSearchString(const wxString& text) const { return matchesSearch(m_searchString, text); }

wxTreeItemId DlgProperties::createGroupingNode(const wxTreeItemId& parent, ObjectTypeWrapper type) {
    auto* tag = new ObjectData(this, type, 0, true);
    if (type == vl_db::kPropertyDefinitionObject)
        return m_tree->InsertItem(parent, 0, _("Property definitions"), -1, -1, tag);
    return m_tree->AppendItem(parent, _("Value definitions"), -1, -1, tag);
}

wxTreeItemId DlgProperties::getGroupingNode(const wxTreeItemId& parent, ObjectTypeWrapper type) {
    wxTreeItemIdValue cookie;
    for (wxTreeItemId child = m_tree->GetFirstChild(parent, cookie); child.IsOk();
         child = m_tree->GetNextChild(parent, cookie)) {
        const auto* tag = static_cast<ObjectData*>(m_tree->GetItemData(child));
        if (tag && tag->isGroup && tag->type == type)
            return child;
    }
    return createGroupingNode(parent, type);
}

void DlgProperties::populateNamespaceTree(const wxString& setKey, const wxString& definitionName) {
    m_populating = true;
    m_tree->Freeze();
    m_tree->DeleteAllItems();
    if (!m_library || !m_namespace) {
        // Without a namespace there is nothing to show, not even an empty root.
        m_tree->Thaw();
        m_populating = false;
        onNamespaceTreeSelChanged();
        return;
    }
    const wxTreeItemId root = m_tree->AddRoot(toWx(m_namespace->displayLabel()), -1, -1,
                                              new ObjectData(this, vl_db::kNamespaceObject, m_namespace->id(), false));
    wxTreeItemId toSelect;
    {
        const bool filtering = !m_searchString.empty();
        for (const TreeSet& set : namespaceTreeContent(*m_namespace, m_searchString)) {
            const wxTreeItemId setItem =
                m_tree->AppendItem(root, set.label, -1, -1, new ObjectData(this, vl_db::kPropertySetObject, set.id, false));
            const bool keySet = !setKey.empty() && set.name == setKey;
            if (keySet && definitionName.empty())
                toSelect = setItem;
            const auto appendGroup = [&](ObjectTypeWrapper type, const std::vector<TreeDefinition>& definitions) {
                if (definitions.empty())
                    return;
                const wxTreeItemId group = createGroupingNode(setItem, type);
                for (const TreeDefinition& definition : definitions) {
                    const wxTreeItemId item =
                        m_tree->AppendItem(group, definition.label, -1, -1, new ObjectData(this, type, definition.id, false));
                    if (!toSelect.IsOk() && !definitionName.empty() && definition.label == definitionName &&
                        (setKey.empty() || keySet))
                        toSelect = item;
                }
                m_tree->Expand(group);
            };
            appendGroup(vl_db::kPropertyDefinitionObject, set.propertyDefinitions);
            appendGroup(vl_db::kValueDefinitionObject, set.valueDefinitions);
            // While filtering, the sets that hold matches open so that the matches are seen.
            if (filtering && m_tree->HasChildren(setItem))
                m_tree->Expand(setItem);
        }
    }
    m_tree->Expand(root);
    m_tree->Thaw();
    m_populating = false;
    if (!toSelect.IsOk())
        toSelect = root;
    m_tree->SelectItem(toSelect);
    m_tree->EnsureVisible(toSelect);
    onNamespaceTreeSelChanged();
}

void DlgProperties::OnSearchCtrlTextChanged(wxCommandEvent& event) {
    if (m_search->GetValue().empty())
        onSearchCtrlCancelBtn(event);
    else
        onSearchCtrlSearchBtn(event);
}

void DlgProperties::onSearchCtrlSearchBtn(wxCommandEvent&) {
    m_searchString = m_search->GetValue().Lower();
    guarded([this] { populateNamespaceTree(wxString(), wxString()); });
}

void DlgProperties::onSearchCtrlCancelBtn(wxCommandEvent&) {
    wxString setKey;
    wxString label;
    selectionKey(setKey, label);
    m_searchString.clear();
    if (!m_search->GetValue().empty())
        m_search->ChangeValue(wxString());
    guarded([&] { populateNamespaceTree(setKey, label); });
}

void DlgProperties::selectionKey(wxString& setKey, wxString& definitionLabel) const {
    const wxTreeItemId item = m_tree->GetSelection();
    const ObjectData* data = selectedObjectData();
    if (!data || data->type == vl_db::kNamespaceObject)
        return;
    if (const auto set = propertySetOfItem(item))
        setKey = toWx(set->name());
    if (!data->isGroup && data->type != vl_db::kPropertySetObject)
        definitionLabel = m_tree->GetItemText(item);
}

wxTreeItemId DlgProperties::findItem(const wxString& setKey, const wxString& definitionLabel) const {
    const wxTreeItemId root = m_tree->GetRootItem();
    if (!root.IsOk())
        return wxTreeItemId();
    wxTreeItemIdValue cookie;
    for (wxTreeItemId setItem = m_tree->GetFirstChild(root, cookie); setItem.IsOk();
         setItem = m_tree->GetNextChild(root, cookie)) {
        const auto set = propertySetOfItem(setItem);
        if (!set || toWx(set->name()) != setKey)
            continue;
        if (definitionLabel.empty())
            return setItem;
        wxTreeItemIdValue groupCookie;
        for (wxTreeItemId group = m_tree->GetFirstChild(setItem, groupCookie); group.IsOk();
             group = m_tree->GetNextChild(setItem, groupCookie)) {
            wxTreeItemIdValue itemCookie;
            for (wxTreeItemId item = m_tree->GetFirstChild(group, itemCookie); item.IsOk();
                 item = m_tree->GetNextChild(group, itemCookie))
                if (m_tree->GetItemText(item) == definitionLabel)
                    return item;
        }
    }
    return wxTreeItemId();
}

wxTreeItemId DlgProperties::findItemById(ObjectTypeWrapper type, uint32_t id) const {
    std::vector<wxTreeItemId> pending{m_tree->GetRootItem()};
    while (!pending.empty()) {
        const wxTreeItemId item = pending.back();
        pending.pop_back();
        if (!item.IsOk())
            continue;
        const auto* data = static_cast<ObjectData*>(m_tree->GetItemData(item));
        if (data && !data->isGroup && data->type == type && data->id == id)
            return item;
        wxTreeItemIdValue cookie;
        for (wxTreeItemId child = m_tree->GetFirstChild(item, cookie); child.IsOk();
             child = m_tree->GetNextChild(item, cookie))
            pending.push_back(child);
    }
    return wxTreeItemId();
}

// ---- selection

ObjectData* DlgProperties::selectedObjectData() const {
    const wxTreeItemId item = m_tree->GetSelection();
    return item.IsOk() ? static_cast<ObjectData*>(m_tree->GetItemData(item)) : nullptr;
}

wxTreeItemId DlgProperties::selectedPropertySetTreeItem() const {
    wxTreeItemId item = m_tree->GetSelection();
    while (item.IsOk()) {
        const auto* data = static_cast<ObjectData*>(m_tree->GetItemData(item));
        if (data && data->type == vl_db::kPropertySetObject && !data->isGroup)
            return item;
        if (data && data->type == vl_db::kNamespaceObject)
            break;
        item = m_tree->GetItemParent(item);
    }
    return wxTreeItemId();
}

std::shared_ptr<vl_db::IPropertySet> DlgProperties::propertySetOfItem(const wxTreeItemId& item) const {
    wxTreeItemId setItem = item;
    while (setItem.IsOk()) {
        const auto* data = static_cast<ObjectData*>(m_tree->GetItemData(setItem));
        if (!data || data->type == vl_db::kNamespaceObject)
            return nullptr;
        if (data->type == vl_db::kPropertySetObject && !data->isGroup) {
            if (!m_namespace)
                return nullptr;
            for (const auto& set : m_namespace->propertySets())
                if (set->id() == data->id)
                    return set;
            return nullptr;
        }
        setItem = m_tree->GetItemParent(setItem);
    }
    return nullptr;
}

std::shared_ptr<vl_db::IPropertySet> DlgProperties::selectedPropertySet() const {
    return propertySetOfItem(m_tree->GetSelection());
}

std::shared_ptr<vl_db::IPropertySet> DlgProperties::getActivePropSet(wxTreeItemId& setItem) const {
    setItem = selectedPropertySetTreeItem();
    return setItem.IsOk() ? propertySetOfItem(setItem) : nullptr;
}

std::shared_ptr<vl_db::IAbstractDefinition> DlgProperties::definitionOfItem(const wxTreeItemId& item) const {
    const auto* data = item.IsOk() ? static_cast<ObjectData*>(m_tree->GetItemData(item)) : nullptr;
    if (!data || data->isGroup)
        return nullptr;
    const auto set = propertySetOfItem(item);
    if (!set)
        return nullptr;
    if (data->type == vl_db::kPropertyDefinitionObject) {
        for (const auto& definition : set->propertyDefinitions())
            if (definition->id() == data->id)
                return definition;
    } else if (data->type == vl_db::kValueDefinitionObject) {
        for (const auto& definition : set->valueDefinitions())
            if (definition->id() == data->id)
                return definition;
    }
    return nullptr;
}

void DlgProperties::onTreeSelChanging(wxTreeEvent& event) {
    // An edit still open in the pane belongs to the item it was begun on.
    if (m_grid && !m_populating)
        m_grid->CommitChangesFromEditor();
    event.Skip();
}

void DlgProperties::onTreeSelChanged(wxTreeEvent& event) {
    event.Skip();
    if (!m_populating)
        guarded([this] { onNamespaceTreeSelChanged(); });
}

void DlgProperties::onNamespaceTreeSelChanged() {
    if (!m_grid)
        return;
    m_grid->Clear();
    const ObjectData* data = selectedObjectData();
    std::shared_ptr<vl_db::IPropertySet> shownSet;
    if (data && !data->isGroup) {
        m_currentType = data->type;
        m_currentId = data->id;
        switch (data->type) {
        case vl_db::kNamespaceObject:
            if (m_namespace)
                onNamespaceSelected(data->id);
            break;
        case vl_db::kPropertySetObject:
            onPropertySetSelected(data->id);
            shownSet = selectedPropertySet();
            break;
        case vl_db::kPropertyDefinitionObject: onPropertyDefinitionSelected(data->id); break;
        case vl_db::kValueDefinitionObject: onValueDefinitionSelected(data->id); break;
        }
    } else {
        m_currentType = data ? data->type : vl_db::kNamespaceObject;
        m_currentId = 0;
    }
    placeSplitter();
    showCategoriesFor(shownSet);
    updateControls();
}

void DlgProperties::updateControls() {
    TreeSelection selection;
    const wxTreeItemId item = m_tree->GetSelection();
    const ObjectData* data = selectedObjectData();
    bool categoriesEditable = false;
    if (data) {
        selection.nothing = false;
        selection.type = data->type;
        selection.isGroup = data->isGroup;
        if (data->type == vl_db::kNamespaceObject) {
            selection.editable = isCurrentNamespaceEditable();
        } else if (const auto set = propertySetOfItem(item)) {
            selection.editable = libraryUsable() && set->isEditable();
            categoriesEditable = selection.editable;
            if (!data->isGroup && data->type != vl_db::kPropertySetObject) {
                const bool values = data->type == vl_db::kValueDefinitionObject;
                std::vector<uint32_t> ids;
                if (values)
                    for (const auto& definition : set->valueDefinitions())
                        ids.push_back(definition->id());
                else
                    for (const auto& definition : set->propertyDefinitions())
                        ids.push_back(definition->id());
                selection.count = static_cast<unsigned>(ids.size());
                selection.index = static_cast<unsigned>(std::find(ids.begin(), ids.end(), data->id) - ids.begin());
            }
        }
    }
    const ButtonStates states = buttonStates(selection, isCurrentNamespaceEditable(), m_domain == Domain::Mechanical);
    m_btnNewSet->Enable(states.newSet);
    m_btnNewPropDef->Enable(states.newPropertyDefinition);
    m_btnNewValDef->Enable(states.newValueDefinition);
    m_btnUp->Enable(states.up);
    m_btnDown->Enable(states.down);
    m_btnDelete->Enable(states.remove);
    m_btnAll->Enable(categoriesEditable);
    m_btnNone->Enable(categoriesEditable);
}

void DlgProperties::onTreeItemRightClicked(wxTreeEvent& event) {
    if (!isCurrentNamespaceEditable())
        return;
    const wxTreeItemId item = event.GetItem();
    if (!item.IsOk())
        return;
    m_tree->SelectItem(item);
    const auto* data = static_cast<ObjectData*>(m_tree->GetItemData(item));
    if (!data)
        return;
    const char* menuName = nullptr;
    switch (data->type) {
    case vl_db::kNamespaceObject: menuName = "MENU_NAMESPACE_OBJECT"; break;
    case vl_db::kPropertySetObject: menuName = "MENU_PROPERTY_SET_OBJECT"; break;
    case vl_db::kPropertyDefinitionObject:
        menuName = data->isGroup ? "MENU_PROPERTY_DEFINITION_GROUP" : "MENU_PROPERTY_DEFINITION_OBJECT";
        break;
    case vl_db::kValueDefinitionObject:
        menuName = data->isGroup ? "MENU_VALUE_DEFINITION_GROUP" : "MENU_VALUE_DEFINITION_OBJECT";
        break;
    }
    std::unique_ptr<wxMenu> menu(wxXmlResource::Get()->LoadMenu(menuName));
    if (!menu)
        return;
    if (m_domain == Domain::Mechanical && data->type == vl_db::kPropertySetObject)
        menu->Destroy(XRCID("TOOL_NEW_VALUE_DEFINITION"));
    PopupMenu(menu.get());
}

void DlgProperties::onTreeKeyDown(wxTreeEvent& event) {
    // Delete removes the selected item as the Remove button does, when that button acts.
    if (event.GetKeyCode() == WXK_DELETE && m_btnDelete->IsEnabled()) {
        wxCommandEvent remove(wxEVT_BUTTON, m_btnDelete->GetId());
        onDeleteSelectedItem(remove);
        return;
    }
    event.Skip();
}

// ---- new objects

void DlgProperties::onNewPropertySet(wxCommandEvent&) {
    if (!isCurrentNamespaceEditable())
        return;
    guarded([this] {
        const wxString name = freeName(vl_db::kPropertySetObject, *m_namespace, _("New PropertySet"));
        const auto set = m_namespace->createPropertySet(toOd(name));
        set->setLabel(toOd(name));
        m_structureChanged = true;
        m_tree->AppendItem(m_tree->GetRootItem(), name, -1, -1,
                           new ObjectData(this, vl_db::kPropertySetObject, set->id(), false));
        const uint32_t id = set->id();
        CallAfter([this, id] { selectItemAndEnableEditingId(findItemById(vl_db::kPropertySetObject, id)); });
    });
}

void DlgProperties::onNewDefinition(ObjectTypeWrapper type) {
    if (!libraryUsable() || !m_namespace)
        return;
    if (type == vl_db::kValueDefinitionObject && m_domain == Domain::Mechanical)
        return;
    guarded([&] {
        wxTreeItemId setItem;
        const auto set = getActivePropSet(setItem);
        if (!set) {
            message(_("Please select a property set to add the definition to."), wxOK);
            return;
        }
        if (!set->isEditable())
            return;
        const bool values = type == vl_db::kValueDefinitionObject;
        const wxString name = freeName(type, *m_namespace, values ? _("New Value") : _("New Property"));
        std::shared_ptr<vl_db::IAbstractDefinition> definition;
        if (values)
            definition = set->createValueDefinition(toOd(name));
        else
            definition = set->createPropertyDefinition(toOd(name));
        definition->setLabel(toOd(name));
        m_structureChanged = true;
        const wxTreeItemId group = getGroupingNode(setItem, type);
        m_tree->AppendItem(group, name, -1, -1, new ObjectData(this, type, definition->id(), false));
        m_tree->Expand(setItem);
        m_tree->Expand(group);
        const uint32_t id = definition->id();
        CallAfter([this, type, id] { selectItemAndEnableEditingId(findItemById(type, id)); });
    });
}

void DlgProperties::onNewPropertyDefinition(wxCommandEvent&) { onNewDefinition(vl_db::kPropertyDefinitionObject); }

void DlgProperties::onNewValueDefinition(wxCommandEvent&) { onNewDefinition(vl_db::kValueDefinitionObject); }

void DlgProperties::selectItemAndEnableEditingId(const wxTreeItemId& item) {
    if (!item.IsOk())
        return;
    if (m_tree->GetSelection() == item)
        guarded([this] { onNamespaceTreeSelChanged(); });
    else
        m_tree->SelectItem(item);
    m_tree->EnsureVisible(item);
    wxPGProperty* id = paneRow(kRowId);
    if (!id)
        return;
    m_grid->EnableProperty(id, true);
    m_grid->setPropertyReadOnly(id, false);
    m_grid->SetFocus();
    m_grid->SelectProperty(id, true);
}

// ---- moving and deleting

void DlgProperties::onDefinitionMove(int delta) {
    const ObjectData* data = selectedObjectData();
    if (!libraryUsable() || !data || data->isGroup ||
        (data->type != vl_db::kPropertyDefinitionObject && data->type != vl_db::kValueDefinitionObject))
        return;
    const ObjectData tag = *data;
    guarded([&] {
        const auto set = selectedPropertySet();
        if (!set || !set->isEditable())
            return;
        const bool values = tag.type == vl_db::kValueDefinitionObject;
        std::vector<uint32_t> ids;
        if (values)
            for (const auto& definition : set->valueDefinitions())
                ids.push_back(definition->id());
        else
            for (const auto& definition : set->propertyDefinitions())
                ids.push_back(definition->id());
        const auto found = std::find(ids.begin(), ids.end(), tag.id);
        if (found == ids.end())
            return;
        const auto index = static_cast<long>(found - ids.begin());
        if (index + delta < 0)
            return;
        const auto from = static_cast<unsigned>(index);
        const auto to = static_cast<unsigned>(index + delta);
        const bool moved = values ? set->moveValueDefinition(from, to) : set->movePropertyDefinition(from, to);
        if (!moved)
            return;
        m_structureChanged = true;
        populateNamespaceTree(toWx(set->name()), m_tree->GetItemText(m_tree->GetSelection()));
    });
}

void DlgProperties::onDefinitionMoveUp(wxCommandEvent&) { onDefinitionMove(-1); }

void DlgProperties::onDefinitionMoveDown(wxCommandEvent&) { onDefinitionMove(+1); }

void DlgProperties::removeItemSelectNeighbour(const wxTreeItemId& item) {
    wxTreeItemId next = m_tree->GetNextSibling(item);
    if (!next.IsOk())
        next = m_tree->GetPrevSibling(item);
    wxTreeItemId parent = m_tree->GetItemParent(item);
    m_tree->Delete(item);
    // A grouping node left without definitions goes, as when the tree is filled.
    const auto* parentData = parent.IsOk() ? static_cast<ObjectData*>(m_tree->GetItemData(parent)) : nullptr;
    if (!next.IsOk() && parentData && parentData->isGroup) {
        const wxTreeItemId group = parent;
        parent = m_tree->GetItemParent(group);
        m_tree->Delete(group);
    }
    const wxTreeItemId selection = next.IsOk() ? next : parent;
    if (selection.IsOk())
        m_tree->SelectItem(selection);
    onNamespaceTreeSelChanged();
}

void DlgProperties::onDeleteSelectedItem(wxCommandEvent&) {
    const wxTreeItemId item = m_tree->GetSelection();
    const ObjectData* data = selectedObjectData();
    if (!libraryUsable() || !m_namespace || !data)
        return;
    const ObjectData tag = *data;
    guarded([&] {
        if (tag.type == vl_db::kNamespaceObject) {
            deleteNamespace();
            return;
        }
        const auto set = propertySetOfItem(item);
        if (!set || !set->isEditable())
            return;
        if (tag.type == vl_db::kPropertySetObject) {
            if (!m_namespace->removePropertySet(set->id())) {
                message(wxString::Format(_("Could not delete property set:\n\"%s\"."), toWx(set->label())), wxOK);
                return;
            }
            m_structureChanged = true;
            removeItemSelectNeighbour(item);
            return;
        }
        const bool values = tag.type == vl_db::kValueDefinitionObject;
        if (tag.isGroup) {
            const unsigned failed = values ? set->removeAllValueDefinitions() : set->removeAllPropertyDefinitions();
            m_structureChanged = true;
            if (failed > 0) {
                const auto count = static_cast<long long>(failed);
                message(values ? wxString::Format(_("Failed to delete %lld of value definitions from the database."), count)
                               : wxString::Format(_("Failed to delete %lld of property definitions from the database."), count),
                        wxOK | wxICON_ERROR);
            }
            populateNamespaceTree(toWx(set->name()), wxString());
            return;
        }
        const bool removed = values ? set->removeValueDefinition(tag.id) : set->removePropertyDefinition(tag.id);
        if (removed) {
            m_structureChanged = true;
            removeItemSelectNeighbour(item);
        }
    });
}

void DlgProperties::deleteNamespace() {
    if (m_domain == Domain::Mechanical) {
        message(_("Namespaces cannot be deleted."), wxOK);
        return;
    }
    if (!isCurrentNamespaceEditable())
        return;
    const wxString question =
        wxString::Format(_("Are you sure you want to delete \"%s\" namespace?"), toWx(m_namespace->displayLabel()));
    if (message(question, wxYES_NO | wxNO_DEFAULT | wxICON_WARNING) != wxYES)
        return;
    if (!m_library->deleteNamespace(m_namespace->id())) {
        message(_("Failed to delete namespace."), wxOK | wxICON_ERROR);
        onNamespaceChanged();
        return;
    }
    m_structureChanged = true;
    fillChoiceNameSpace(0);
    fillCategoriesTree();
}

// ---- import, export, visibility, OK and Cancel

void DlgProperties::onBtnImport(wxCommandEvent&) {
    if (!libraryUsable())
        return;
    guarded([this] {
        ca::FileDialogRequest request;
        request.dialogKey = "BimPropertiesImport";
        request.filterDescription = _("XML Files");
        request.defaultExtension = "xml";
        request.title = _("Select xml file to import");
        request.defaultFolder = toWx(m_library->defaultFileLocation());
        request.mode = ca::kOpenExistingFile;
        request.showDialog = OdEdSettingsManager::instance().getInt(L"FILEDIA", 1) != 0;
        wxString path;
        if (!ca::getFilePath(path, request, this) || !wxFileName::FileExists(path))
            return;
        uint32_t id = 0;
        try {
            id = m_library->importXml(toOd(path), 1, ca::curDb());
        } catch (const std::exception& error) {
            message(wxString::Format(_("The property sets of \"%s\" could not be imported: %s"), path, errorText(error)),
                    wxOK | wxICON_ERROR);
            if (madeLibraryReadOnly(error))
                libraryFailed(error);
            return;
        }
        if (id != 0) {
            m_structureChanged = true;
            fillChoiceNameSpace(id);
        }
    });
}

void DlgProperties::onBtnExport(wxCommandEvent&) {
    if (!m_library)
        return;
    wxFileDialog dialog(this, _("Select location to save xml file"), wxString(), wxString(),
                        _("XML Library Files (*.xml)|*.xml"), wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
    if (dialog.ShowModal() != wxID_OK)
        return;
    const wxString path = dialog.GetPath();
    try {
        if (!m_library->exportXml(toOd(path), 1, ca::curDb(), m_namespace ? m_namespace->id() : 0))
            message(wxString::Format(_("The property sets could not be exported to \"%s\"."), path), wxOK | wxICON_ERROR);
    } catch (const std::exception& error) {
        message(wxString::Format(_("The property sets could not be exported to \"%s\": %s"), path, errorText(error)),
                wxOK | wxICON_ERROR);
    }
}

void DlgProperties::onBtnVisibility(wxCommandEvent&) {
    if (!libraryUsable() || !m_host)
        return;
    guarded([this] {
        m_host->showVisibilityDialog(this, m_library);
        m_structureChanged = true;
        onNamespaceTreeSelChanged();
    });
}

void DlgProperties::onOK(wxCommandEvent& event) {
    if (m_grid)
        m_grid->CommitChangesFromEditor();
    if (m_library && !m_libraryGone) {
        try {
            m_library->commit();
        } catch (const std::exception& error) {
            libraryFailed(error);
            return;
        }
        if (m_structureChanged && m_host)
            m_host->updateStructureConfiguration(ca::curDb());
    }
    event.Skip();
}

void DlgProperties::onCancel(wxCommandEvent& event) {
    if (m_library) {
        try {
            m_library->rollback();
        } catch (const std::exception& error) {
            // The dialog closes anyway; the library drops what was not committed when it goes.
            message(errorText(error), wxOK | wxICON_ERROR);
        }
    }
    event.Skip();
}

}  // namespace vl_app

#pragma once
// The property sets editor: the namespaces of a library's property-set definitions, the tree
// of a namespace's sets with their property and value definitions (filtered while the user
// types a search text), the pane of the selected item, the element categories a set is
// assigned to, import and export of definition files and the host's visibility dialog. Edits
// go to the library as they are made; OK commits them, Cancel leaves them to the library,
// which drops what is not committed.
#include <cstdint>
#include <functional>
#include <memory>

#include <wx/treebase.h>
#include <wx/treectrl.h>
#include <wx/treelist.h>

#include <OdString.h>
#include <QcThemedDialog.h>

#include <vl_db/PropertySets.h>

#include "app/IDlgEnabler.h"
#include "app/properties/PropertySetRules.h"
#include "app/properties/PropertySetsHost.h"

class wxButton;
class wxChoice;
class wxPanel;
class wxPGProperty;
class wxPropertyGridEvent;
class wxSearchCtrl;
class wxStaticText;

namespace wxg {
class QcPropertyGrid;
}

namespace vl_app {

class DlgProperties;

// The tag of a tree item: what it shows. Grouping nodes have id 0.
class ObjectData : public wxTreeItemData {
public:
    ObjectData(DlgProperties* owner, vl_db::ObjectTypeWrapper type, uint32_t id, bool isGroup)
        : owner(owner), type(type), id(id), isGroup(isGroup) {}

    DlgProperties* owner;
    vl_db::ObjectTypeWrapper type;
    uint32_t id;
    bool isGroup;
};

// The tag of an entity-type item of the categories: the IFC type it stands for.
class EntityTypeData : public wxClientData {
public:
    explicit EntityTypeData(const wxString& ifcType) : ifcType(ifcType) {}
    wxString ifcType;
};

class DlgProperties : public wxg::QcThemedDialog {
public:
    using Categories = EntityCategories;
    using IfcTypeGetter = vl_app::IfcTypeGetter;
    using Domain = PropertyDomain;

    // `enabler` is held by reference for the dialog's life; `host` (not owned, may be null)
    // shows the visibility dialog and learns of structure changes.
    DlgProperties(wxWindow* parent, const std::shared_ptr<vl_db::ILibrary>& library,
                  std::unique_ptr<IDlgEnabler>& enabler, const Categories& categories,
                  const IfcTypeGetter& ifcTypeGetter, const OdString& initialNamespace, Domain domain,
                  PropertySetsHost* host = nullptr);
    ~DlgProperties() override;

    // ---- for the host and for tests
    const std::shared_ptr<vl_db::INamespace>& currentNamespace() const { return m_namespace; }
    wxTreeCtrl* tree() const { return m_tree; }
    wxg::QcPropertyGrid* grid() const { return m_grid; }
    wxTreeListCtrl* categoriesTree() const { return m_categories; }
    wxChoice* namespaceChoice() const { return m_choiceNamespace; }
    wxSearchCtrl* searchCtrl() const { return m_search; }
    bool structureChanged() const { return m_structureChanged; }
    // The tree item of a set (by key) or of a definition (by label inside that set); invalid
    // when the tree does not show it.
    wxTreeItemId findItem(const wxString& setKey, const wxString& definitionLabel = wxString()) const;
    // The pane's row of an identifier; null when the pane has none.
    wxPGProperty* paneRow(PaneRow row) const;
    // Gives a pane row a new value as the user's edit would, with its checks.
    void editRow(PaneRow row, const wxVariant& value);
    // Checks or unchecks an item of the categories as the user's click would.
    void checkCategory(const wxTreeListItem& item, wxCheckBoxState state);

protected:
    void onInitDialog(wxInitDialogEvent& event);
    void fillChoiceNameSpace(unsigned id);
    bool matchesSearchString(const wxString& text) const;
    wxTreeItemId createGroupingNode(const wxTreeItemId& parent, vl_db::ObjectTypeWrapper type);
    void populateNamespaceTree(const wxString& setKey, const wxString& definitionName);
    void fillCategoriesTree();

    void onNamespaceSelected(unsigned id);
    void onPropertySetSelected(unsigned id);
    void onPropertyDefinitionSelected(unsigned id);
    void onValueDefinitionSelected(unsigned id);
    wxTreeItemId selectedPropertySetTreeItem() const;
    void onNamespaceChanged();
    void onNamespaceTreeSelChanged();

    void onTreeSelChanging(wxTreeEvent& event);
    void onTreeSelChanged(wxTreeEvent& event);
    void onTreeItemRightClicked(wxTreeEvent& event);
    void onTreeKeyDown(wxTreeEvent& event);
    void onPropChanged(wxPropertyGridEvent& event);

    void checkCategoryRecursively(const std::shared_ptr<vl_db::IPropertySet>& set, const wxTreeListItem& item);
    void onCategoryChecked(wxTreeListEvent& event);

    bool onNamespacePropChanged(wxPGProperty* property);
    bool onPropertySetPropChanged(wxPGProperty* property);
    bool onDefinitionPropChanged(wxPGProperty* property);
    bool isValidName(vl_db::ObjectTypeWrapper type, const wxString& name) const;

    void onChoiceNamespace(wxCommandEvent& event);
    void OnSearchCtrlTextChanged(wxCommandEvent& event);
    void onSearchCtrlSearchBtn(wxCommandEvent& event);
    void onSearchCtrlCancelBtn(wxCommandEvent& event);

    void onNewPropertySet(wxCommandEvent& event);
    std::shared_ptr<vl_db::IPropertySet> getActivePropSet(wxTreeItemId& setItem) const;
    wxTreeItemId getGroupingNode(const wxTreeItemId& parent, vl_db::ObjectTypeWrapper type);
    void onNewDefinition(vl_db::ObjectTypeWrapper type);
    void onNewPropertyDefinition(wxCommandEvent& event);
    void onNewValueDefinition(wxCommandEvent& event);
    void selectItemAndEnableEditingId(const wxTreeItemId& item);

    ObjectData* selectedObjectData() const;
    std::shared_ptr<vl_db::IPropertySet> selectedPropertySet() const;
    wxString messageBoxCaption() const;

    void onDeleteSelectedItem(wxCommandEvent& event);
    void onDefinitionMove(int delta);
    void onDefinitionMoveUp(wxCommandEvent& event);
    void onDefinitionMoveDown(wxCommandEvent& event);
    void onBtnCheckCategories(wxCommandEvent& event);
    void onBtnImport(wxCommandEvent& event);
    void onBtnExport(wxCommandEvent& event);
    void onBtnVisibility(wxCommandEvent& event);
    void onOK(wxCommandEvent& event);

private:
    void findControls();
    void createPropertyGrid();
    void placeSplitter();
    void createCategoriesTree();
    // The set of an item of the tree (a set, a grouping node or a definition).
    std::shared_ptr<vl_db::IPropertySet> propertySetOfItem(const wxTreeItemId& item) const;
    std::shared_ptr<vl_db::IAbstractDefinition> definitionOfItem(const wxTreeItemId& item) const;
    bool isCurrentNamespaceEditable() const;
    // The buttons and the categories panel for the selection.
    void updateControls();
    void showCategoriesFor(const std::shared_ptr<vl_db::IPropertySet>& set);
    void applyCategoryCheck(const wxTreeListItem& item, wxCheckBoxState oldState);
    void setCategoryStates(const std::shared_ptr<vl_db::IPropertySet>& set);
    wxPGProperty* appendRow(PaneRow row, wxPGProperty* property, bool ownerEditable);
    void appendDefinitionRows(const vl_db::IAbstractDefinition& definition, const std::shared_ptr<vl_db::IPropertySet>& set,
                              bool valueDefinition);
    // The accepted name for a renamed object: the value itself, another that the user gives in
    // the "Invalid name" loop, or empty when the user gave up.
    wxString askValidName(vl_db::ObjectTypeWrapper type, wxString name, const wxString& message);
    // Rebuilds the pane of the selection once the grid's event is over.
    void rebuildPaneLater();
    // Without a library or after it went away: says so once and returns false.
    bool libraryUsable() const;
    // Runs library work; a failure is shown and, when the library stopped taking edits, the
    // dialog turns read-only.
    void guarded(const std::function<void()>& work);
    long message(const wxString& text, long style);
    // The set key and definition label of the selection, for selecting it again.
    void selectionKey(wxString& setKey, wxString& definitionLabel) const;
    wxTreeItemId findItemById(vl_db::ObjectTypeWrapper type, uint32_t id) const;
    void removeItemSelectNeighbour(const wxTreeItemId& item);
    void deleteNamespace();
    void onCancel(wxCommandEvent& event);
    void libraryFailed(const std::exception& error);

    std::shared_ptr<vl_db::ILibrary> m_library;
    std::unique_ptr<IDlgEnabler>& m_enabler;
    Categories m_categoryList;
    IfcTypeGetter m_ifcTypeGetter;
    OdString m_initialNamespace;
    Domain m_domain;
    PropertySetsHost* m_host;

    std::shared_ptr<vl_db::INamespace> m_namespace;
    vl_db::ObjectTypeWrapper m_currentType = vl_db::kNamespaceObject;
    uint32_t m_currentId = 0;
    wxString m_searchString;
    bool m_structureChanged = false;
    bool m_libraryGone = false;
    bool m_populating = false;

    wxChoice* m_choiceNamespace = nullptr;
    wxButton* m_btnNewSet = nullptr;
    wxButton* m_btnNewPropDef = nullptr;
    wxButton* m_btnNewValDef = nullptr;
    wxButton* m_btnUp = nullptr;
    wxButton* m_btnDown = nullptr;
    wxButton* m_btnDelete = nullptr;
    wxButton* m_btnAll = nullptr;
    wxButton* m_btnNone = nullptr;
    wxButton* m_btnVisibility = nullptr;
    wxSearchCtrl* m_search = nullptr;
    wxTreeCtrl* m_tree = nullptr;
    wxPanel* m_panelSettings = nullptr;
    wxPanel* m_panelCategories = nullptr;
    wxPanel* m_panelTreeCategories = nullptr;
    wxg::QcPropertyGrid* m_grid = nullptr;
    wxTreeListCtrl* m_categories = nullptr;

    wxDECLARE_EVENT_TABLE();
};

}  // namespace vl_app

#pragma once
// The rules of the property sets dialog that need no window: the search filter, the choice of
// the first namespace, unique names, what the tree shows of a namespace, which rows a pane has
// and which of its buttons act. The dialog applies them; tests and the bench call them alone.
#include <cstdint>
#include <vector>

#include <wx/string.h>

#include <vl_db/PropertySets.h>

namespace vl_app {

// Identifier of a row of the dialog's panes, kept in the row's "type" attribute.
enum PaneRow : int {
    kRowId = 0,
    kRowLabel = 1,
    kRowVisible = 2,
    kRowDescription = 3,
    kRowType = 4,
    kRowPerInstance = 5,
    kRowEnum = 6,
    kRowFormula = 7,
    kRowMeasure = 8,
};

// The translated label of a row; "Unrecognized property type (N)" for any other value.
wxString paneRowLabel(int row);

// True when the lower-cased `text` contains `lowerFilter`; everything matches an empty filter.
bool matchesSearch(const wxString& lowerFilter, const wxString& text);

// The entry of the namespace choice to select: the one of `id`, or with `id` 0 the one named
// `initialName` exactly; failing that the second entry when there are several (the first is
// usually the official namespace, which users rarely edit); -1 for none.
int namespaceChoiceIndex(const std::vector<uint32_t>& ids, const std::vector<OdString>& names, uint32_t id,
                         const OdString& initialName);

// Whether `name` may be given to an object of `type` in `ns`: not empty and not used (letter
// case ignored) by a property set (type 2), by a property definition (type 3) or by a value
// definition (type 4) of any set of the namespace. The object `exceptId` of that type is left
// out, so that a rename that changes only the letter case is allowed. Other types: any
// non-empty name.
bool isNameFree(vl_db::ObjectTypeWrapper type, const vl_db::INamespace& ns, const wxString& name, uint32_t exceptId = 0);

// The text of a tree item: the label, or the name of an object without one (definitions read
// from files often have none).
wxString treeLabel(const OdString& label, const OdString& name);

// What the tree shows of a namespace under a search filter: every set, each with the
// definitions whose label matches.
struct TreeDefinition {
    uint32_t id;
    wxString label;
};
struct TreeSet {
    uint32_t id;
    wxString name;
    wxString label;
    std::vector<TreeDefinition> propertyDefinitions;
    std::vector<TreeDefinition> valueDefinitions;
};
std::vector<TreeSet> namespaceTreeContent(const vl_db::INamespace& ns, const wxString& lowerFilter);

// The Type choice: its entries' primitive codes in order, and the entry of a code (-1 when the
// choice does not offer it).
const std::vector<int>& typeChoiceCodes();
int typeChoiceIndex(int primitiveCode);

// Whether the specifier is an enumeration whose list holds values (which keeps its type from
// being changed until the list is cleared).
bool hasEnumValues(const vl_db::AbstractTypeSpecifier& specifier);
// A plain specifier of the Type choice's code: a list of an enumeration is not carried over.
vl_db::TypeSpecifierPtr plainSpecifier(int primitiveCode);

// The rows of a pane, in order, for the kind of the selected object and, for definitions, its
// type specifier (null for namespaces and sets).
std::vector<PaneRow> paneRows(vl_db::ObjectTypeWrapper type, const vl_db::AbstractTypeSpecifier* specifier);
// Whether a row can be edited: the Id row never (the dialog opens it only for a new object),
// Visible always, the others when the owner is editable.
bool isRowEditable(PaneRow row, bool ownerEditable);

// What the selected item of the tree is, for the buttons.
struct TreeSelection {
    vl_db::ObjectTypeWrapper type = vl_db::kNamespaceObject;
    bool isGroup = false;
    bool nothing = true;         // no item selected
    bool editable = false;       // the set or namespace that owns the item
    unsigned index = 0;          // of a definition in its set's list of its kind
    unsigned count = 0;          // definitions of that kind in the set
};
struct ButtonStates {
    bool newSet = false;
    bool newPropertyDefinition = false;
    bool newValueDefinition = false;
    bool up = false;
    bool down = false;
    bool remove = false;
};
// `namespaceEditable` is the current namespace's flag; `mechanical` drops value definitions
// and the deletion of namespaces.
ButtonStates buttonStates(const TreeSelection& selection, bool namespaceEditable, bool mechanical);

// State of a category item from its entity types: 0 none assigned, 1 all, 2 some.
int combinedCheckState(const std::vector<bool>& assigned);

}  // namespace vl_app

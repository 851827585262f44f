#include "app/properties/PropertySetRules.h"

#include <algorithm>

#include <wx/intl.h>

#include <OdStringWx.h>

namespace vl_app {

using vl_db::AbstractTypeSpecifier;
using vl_db::ObjectTypeWrapper;

wxString paneRowLabel(int row) {
    switch (row) {
    case kRowId: return _("Id");
    case kRowLabel: return _("Label");
    case kRowVisible: return _("Visible");
    case kRowDescription: return _("Description");
    case kRowType: return _("Type");
    case kRowPerInstance: return _("Per Instance");
    case kRowEnum: return _("Enum");
    case kRowFormula: return _("Formula");
    case kRowMeasure: return _("Measure");
    default: return wxString::Format(_("Unrecognized property type (%d)"), row);
    }
}

bool matchesSearch(const wxString& lowerFilter, const wxString& text) {
    return lowerFilter.empty() || text.Lower().find(lowerFilter) != wxString::npos;
}

int namespaceChoiceIndex(const std::vector<uint32_t>& ids, const std::vector<OdString>& names, uint32_t id,
                         const OdString& initialName) {
    for (size_t i = 0; i < ids.size(); ++i) {
        if (id != 0 ? ids[i] == id : (i < names.size() && !initialName.isEmpty() && names[i] == initialName))
            return static_cast<int>(i);
    }
    return ids.size() > 1 ? 1 : -1;
}

bool isNameFree(ObjectTypeWrapper type, const vl_db::INamespace& ns, const wxString& name, uint32_t exceptId) {
    if (name.empty())
        return false;
    const wxString lower = name.Lower();
    const auto taken = [&](const OdString& other, uint32_t otherId) {
        return otherId != exceptId && toWx(other).Lower() == lower;
    };
    switch (type) {
    case vl_db::kPropertySetObject:
        for (const auto& set : ns.propertySets())
            if (taken(set->name(), set->id()))
                return false;
        return true;
    case vl_db::kPropertyDefinitionObject:
        for (const auto& set : ns.propertySets())
            for (const auto& definition : set->propertyDefinitions())
                if (taken(definition->name(), definition->id()))
                    return false;
        return true;
    case vl_db::kValueDefinitionObject:
        for (const auto& set : ns.propertySets())
            for (const auto& definition : set->valueDefinitions())
                if (taken(definition->name(), definition->id()))
                    return false;
        return true;
    default:
        return true;
    }
}

wxString treeLabel(const OdString& label, const OdString& name) { return toWx(label.isEmpty() ? name : label); }

namespace {
std::vector<TreeDefinition> matchingDefinitions(const std::vector<vantlib::PropertyOutlineEntry>& definitions,
                                                const wxString& lowerFilter) {
    std::vector<TreeDefinition> shown;
    for (const auto& definition : definitions) {
        wxString label = treeLabel(definition.label, definition.name);
        if (matchesSearch(lowerFilter, label))
            shown.push_back({definition.id, std::move(label)});
    }
    return shown;
}
}  // namespace

std::vector<TreeSet> namespaceTreeContent(const vl_db::INamespace& ns, const wxString& lowerFilter) {
    std::vector<TreeSet> content;
    for (const auto& set : ns.outline()) {
        content.push_back({set.set.id, toWx(set.set.name), treeLabel(set.set.label, set.set.name),
                           matchingDefinitions(set.properties, lowerFilter), matchingDefinitions(set.values, lowerFilter)});
    }
    return content;
}

const std::vector<int>& typeChoiceCodes() {
    static const std::vector<int> codes{vl_db::kBooleanCode, vl_db::kIntegerCode, vl_db::kRealCode, vl_db::kStringCode};
    return codes;
}

int typeChoiceIndex(int primitiveCode) {
    const auto& codes = typeChoiceCodes();
    const auto found = std::find(codes.begin(), codes.end(), primitiveCode);
    return found == codes.end() ? -1 : static_cast<int>(found - codes.begin());
}

bool hasEnumValues(const AbstractTypeSpecifier& specifier) {
    if (specifier.kind() != vantlib::TypeSpecification::kEnumeration)
        return false;
    if (const auto* integers = dynamic_cast<const vl_db::EnumTypeSpecifier<long long>*>(&specifier))
        return !integers->values().empty();
    if (const auto* reals = dynamic_cast<const vl_db::EnumTypeSpecifier<double>*>(&specifier))
        return !reals->values().empty();
    if (const auto* texts = dynamic_cast<const vl_db::EnumTypeSpecifier<OdString>*>(&specifier))
        return !texts->values().empty();
    return false;
}

vl_db::TypeSpecifierPtr plainSpecifier(int primitiveCode) {
    switch (primitiveCode) {
    case vl_db::kBooleanCode:
    case vl_db::kIntegerCode: return std::make_shared<vl_db::TypeSpecifier<long long>>(primitiveCode);
    case vl_db::kRealCode: return std::make_shared<vl_db::TypeSpecifier<double>>(primitiveCode);
    default: return std::make_shared<vl_db::TypeSpecifier<OdString>>(primitiveCode);
    }
}

std::vector<PaneRow> paneRows(ObjectTypeWrapper type, const AbstractTypeSpecifier* specifier) {
    const int code = specifier ? specifier->primitiveCode() : 0;
    switch (type) {
    case vl_db::kNamespaceObject: return {kRowId, kRowLabel};
    case vl_db::kPropertySetObject: return {kRowId, kRowLabel, kRowPerInstance, kRowVisible};
    case vl_db::kPropertyDefinitionObject: {
        std::vector<PaneRow> rows{kRowId, kRowLabel, kRowDescription, kRowType};
        // An enumeration of truth values makes no sense; other extended kinds show no list.
        if (code != vl_db::kBooleanCode && (!specifier || vl_db::isEditableType(*specifier)))
            rows.push_back(kRowEnum);
        return rows;
    }
    case vl_db::kValueDefinitionObject: {
        std::vector<PaneRow> rows{kRowId, kRowLabel, kRowDescription, kRowType};
        if (code == vl_db::kRealCode)
            rows.push_back(kRowMeasure);
        // Formulas compute texts; a number or truth value has none.
        if (code == vl_db::kStringCode && (!specifier || specifier->valueCategory() == vl_db::kSingleValue))
            rows.push_back(kRowFormula);
        return rows;
    }
    }
    return {};
}

bool isRowEditable(PaneRow row, bool ownerEditable) {
    if (row == kRowId)
        return false;
    if (row == kRowVisible)
        return true;
    return ownerEditable;
}

ButtonStates buttonStates(const TreeSelection& selection, bool namespaceEditable, bool mechanical) {
    ButtonStates states;
    states.newSet = namespaceEditable;
    if (selection.nothing)
        return states;
    const bool inSet = selection.type != vl_db::kNamespaceObject && selection.editable;
    states.newPropertyDefinition = inSet;
    states.newValueDefinition = inSet && !mechanical;
    const bool definition = !selection.isGroup && (selection.type == vl_db::kPropertyDefinitionObject ||
                                                   selection.type == vl_db::kValueDefinitionObject);
    states.up = definition && selection.editable && selection.index > 0;
    states.down = definition && selection.editable && selection.index + 1 < selection.count;
    states.remove = selection.type == vl_db::kNamespaceObject ? !mechanical && selection.editable : selection.editable;
    return states;
}

int combinedCheckState(const std::vector<bool>& assigned) {
    const auto count = std::count(assigned.begin(), assigned.end(), true);
    if (count == 0)
        return 0;
    return static_cast<size_t>(count) == assigned.size() ? 1 : 2;
}

}  // namespace vl_app

#pragma once
// Objects read from an exchange document or from material cards, checked and ready to be
// written into a library by one import.
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <vantlib/Composition.h>
#include <vantlib/Exchange.h>
#include <vantlib/Material.h>
#include <vantlib/Profile.h>
#include <vantlib/PropertySets.h>

namespace vantlib {

// A namespace of property-set definitions with its sets, each with its definitions (property
// definitions, then value definitions, each in order). Ids are not set.
struct ExchangedNamespace {
    struct Set {
        PropertySetRecord set;
        std::vector<PropertyDefinitionRecord> definitions;
    };
    PropertyNamespaceRecord ns;
    std::vector<Set> sets;
};

struct ExchangeDocument {
    // The kinds shared by name, in the order of `named`.
    static constexpr ObjectType kNamedKinds[4] = {kTag, kLayer, kMaterialType, kCompositionType};

    OdDb::UnitsValue unit = OdDb::kUnitsUndefined;  // of the lengths below
    std::optional<std::string> description;
    std::vector<QcSmartPtr<Object>> named[4];
    std::vector<QcSmartPtr<CustomProperty>> properties;
    std::vector<QcSmartPtr<Material>> materials;
    std::vector<QcSmartPtr<Composition>> compositions;
    std::vector<QcSmartPtr<ProfileStandard>> profileStandards;
    // Each refers to its standard by a stand-in of that name.
    std::vector<QcSmartPtr<ProfileName>> profileNames;
    // Each refers to its profile name and material by stand-ins of their names.
    std::vector<QcSmartPtr<Profile>> profiles;
    std::vector<ExchangedNamespace> propertyNamespaces;
    // Folded names per kind: duplicates, references inside the document, free names. A
    // profile name is known by its standard's and its own name (profileNameKey), a profile by
    // that and its size (profileKey), under kConstructionProfile.
    std::map<ObjectType, std::set<std::wstring>> names;
    size_t objectCount = 0;
    // False when two objects of a kind may have the same name (material cards).
    bool uniqueNames = true;

    // The list of `named` for one of kNamedKinds.
    std::vector<QcSmartPtr<Object>>& namedOf(ObjectType type) {
        for (size_t k = 0; k < 4; ++k)
            if (kNamedKinds[k] == type)
                return named[k];
        throw ConsistencyError(OdString(L"Not a kind shared by name"));
    }
};

std::wstring profileNameKey(const OdString& standard, const OdString& name);
std::wstring profileKey(const OdString& standard, const OdString& name, const OdString& size);

// Writes the objects into the library in one transaction, lengths converted into the
// library's unit; everything or nothing.
ImportReport writeExchangeDocument(const std::shared_ptr<Library>& library, ExchangeDocument& doc, ClashAnswer onClash,
                                   const ExchangeProgress& progress);

}  // namespace vantlib

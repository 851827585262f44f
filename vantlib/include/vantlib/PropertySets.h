#pragma once
// Property-set definitions kept in a library: namespaces (the official sets, an office's own),
// the property sets of a namespace, and the property and value definitions of a set. Unlike
// materials these are not objects copied between libraries by name; they are rows kept in the
// order the user gives them, edited one field at a time by the property sets editor.
//
// Names: a namespace's is unique in the library, a set's in its namespace, a definition's in
// its set among the definitions of its kind; letter case is ignored as everywhere else.
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <OdString.h>

#include <vantlib/Types.h>

namespace vantlib {

class Library;

// The name and definition of a set or a definition in another language.
struct LocalizedName {
    OdString language;  // language code as the definition files give it ("de", "fr-FR")
    OdString name;
    OdString definition;

    friend bool operator==(const LocalizedName& a, const LocalizedName& b) {
        return a.language == b.language && a.name == b.name && a.definition == b.definition;
    }
};

// A definition's type as the library keeps it; the drawing side turns it into its type
// specifier objects and back.
struct TypeSpecification {
    enum Kind : uint32_t {
        kPrimitive = 0,                // a single value of `code`
        kEnumeration = 1,              // `data`: the specifier's JSON (values, allow_custom_value)
        kFormula = 2,                  // `data`: the specifier's JSON
        kParentReference = 3,          // `data`: the specifier's JSON
        kValueDefinitionReference = 4,
        kExtended = 5,                 // a kind the editors cannot change; `data` is its original text
    };
    static constexpr Kind kLastKind = kExtended;

    Kind kind = kPrimitive;
    int code = 11;           // primitive code: 1 Boolean, 6 Integer, 10 Real, 11 String, ...
    int valueCategory = 1;   // 1: a single value
    std::string data;        // UTF-8

    friend bool operator==(const TypeSpecification& a, const TypeSpecification& b) {
        return a.kind == b.kind && a.code == b.code && a.valueCategory == b.valueCategory && a.data == b.data;
    }
};

struct PropertyNamespaceRecord {
    uint32_t id = 0;
    OdString name;
    OdString label;  // shown to the user; the name when empty
    bool editable = true;
};

struct PropertySetRecord {
    uint32_t id = 0;
    uint32_t namespaceId = 0;
    OdString name;
    OdString label;
    OdString description;
    bool visible = true;
    bool perInstance = true;
    bool editable = true;
    OdString templateType;         // how the set applies (to occurrences, to types, ...)
    OdString applicableTypeValue;  // the predefined type the set is restricted to, if any
    std::vector<OdString> applicableClasses;  // the IFC types the set is assigned to, in order
    std::vector<LocalizedName> aliases;
    // What a definition file gave that the fields above do not hold (JSON, UTF-8), kept so that
    // the file can be written back as it was; empty for a set made in the library.
    std::string source;
};

enum class DefinitionKind : uint32_t {
    kProperty = 1,
    kValue = 2,
};

// What a tree of a namespace shows of a set or a definition.
struct PropertyOutlineEntry {
    uint32_t id = 0;
    OdString name;
    OdString label;
};

// A set with its property and value definitions, each list in order.
struct PropertySetOutline {
    PropertyOutlineEntry set;
    std::vector<PropertyOutlineEntry> properties;
    std::vector<PropertyOutlineEntry> values;
};

struct PropertyDefinitionRecord {
    uint32_t id = 0;
    uint32_t setId = 0;
    DefinitionKind kind = DefinitionKind::kProperty;
    OdString name;
    OdString label;
    OdString description;
    TypeSpecification type;
    OdString measure;  // "LENGTH", "AREA", "VOLUME", "MASS" or empty
    std::vector<LocalizedName> aliases;
    // As PropertySetRecord::source.
    std::string source;
};

// Reads and writes the property-set definitions of one library. Every write throws ReadOnly
// on a read-only library and is a transaction of its own unless one is open (Transaction.h);
// unknown ids raise ConsistencyError, a taken name ObjectNotUnique, an empty one
// ConsistencyError.
class PropertySetStore {
public:
    explicit PropertySetStore(std::shared_ptr<Library> library);

    const std::shared_ptr<Library>& library() const { return m_library; }

    // ---- Namespaces, in order
    std::vector<PropertyNamespaceRecord> namespaces() const;
    std::optional<PropertyNamespaceRecord> findNamespace(uint32_t id) const;
    std::optional<PropertyNamespaceRecord> findNamespace(const OdString& name) const;
    // Appends a namespace; returns its id.
    uint32_t createNamespace(const PropertyNamespaceRecord& record);
    void updateNamespace(const PropertyNamespaceRecord& record);
    // Removes the namespace with its sets and their definitions; false when there is none.
    bool removeNamespace(uint32_t id);

    // ---- Property sets of a namespace, in order
    std::vector<PropertySetRecord> propertySets(uint32_t namespaceId) const;
    std::optional<PropertySetRecord> findPropertySet(uint32_t id) const;
    std::optional<PropertySetRecord> findPropertySet(uint32_t namespaceId, const OdString& name) const;
    // Appends a set to its namespace (with its classes); returns its id.
    uint32_t createPropertySet(const PropertySetRecord& record);
    // Writes the set's own fields and its classes; the namespace stays.
    void updatePropertySet(const PropertySetRecord& record);
    bool removePropertySet(uint32_t id);
    // Assigns the set to an IFC type (appended; false when it was assigned already) or takes
    // the assignment away (false when there was none).
    bool addApplicableClass(uint32_t setId, const OdString& ifcType);
    bool removeApplicableClass(uint32_t setId, const OdString& ifcType);

    // ---- Definitions of a set, in order per kind
    std::vector<PropertyDefinitionRecord> definitions(uint32_t setId, DefinitionKind kind) const;
    // Every definition of every set of the namespace: by set order, then kind, then position.
    std::vector<PropertyDefinitionRecord> namespaceDefinitions(uint32_t namespaceId) const;
    // The namespace's sets and definitions as a tree shows them (ids, names and labels only), in
    // two reads however many sets there are.
    std::vector<PropertySetOutline> outline(uint32_t namespaceId) const;
    std::optional<PropertyDefinitionRecord> findDefinition(uint32_t id) const;
    // Appends a definition to its set; returns its id.
    uint32_t createDefinition(const PropertyDefinitionRecord& record);
    // Appends definitions to a set in their order (their setId is not read), as that many calls
    // of createDefinition would, with the set and the names checked once for all of them;
    // returns their ids. An import writes a set's definitions this way.
    std::vector<uint32_t> createDefinitions(uint32_t setId, const std::vector<PropertyDefinitionRecord>& records);
    // Writes the definition's fields; its set and kind stay.
    void updateDefinition(const PropertyDefinitionRecord& record);
    bool removeDefinition(uint32_t id);
    // Removes every definition of that kind from the set; returns how many went.
    unsigned removeDefinitions(uint32_t setId, DefinitionKind kind);
    // Moves the definition at `from` to `to` (indexes in the set's list of that kind); false,
    // with nothing changed, when either is outside the list.
    bool moveDefinition(uint32_t setId, DefinitionKind kind, unsigned from, unsigned to);

private:
    std::shared_ptr<Library> m_library;
};

}  // namespace vantlib

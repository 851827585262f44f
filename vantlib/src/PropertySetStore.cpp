// Storage of property-set definitions. The three levels (namespace, set, definition) share one
// pattern: rows ordered by `position` within their parent, names unique within the parent
// (the unique indexes of the schema say so too), appended at the end. `Level` describes each
// level once and the operations below work from those descriptions.
#include <vantlib/PropertySets.h>

#include <algorithm>
#include <set>
#include <unordered_map>

#include <nlohmann/json.hpp>

#include <vantlib/Exception.h>
#include <vantlib/Library.h>

#include "LibraryStore.h"
#include "Text.h"

namespace vantlib {

namespace {

using Json = nlohmann::json;

struct Level {
    ObjectType type;
    const char* table;
    // The condition that selects the siblings of a row: parameters ?1 (parent) [and ?2 kind]
    // of the sibling queries below; empty for namespaces, which have no parent.
    const char* siblings;
    const char* what;   // for messages
    const char* scope;  // where a name must be unique, for messages
};

const Level kNamespaceLevel{kPropertyNamespace, "lib_pset_namespace", "", "namespace", ""};
const Level kSetLevel{kPropertySet, "lib_pset", "namespace_id = ?1", "property set", " of the same namespace"};
const Level kDefinitionLevel{kPropertyDefinition, "lib_pset_definition", "set_id = ?1 AND kind = ?2", "definition",
                             " of the same kind in the same set"};

std::string where(const Level& level, const char* more) {
    std::string condition = level.siblings;
    if (*more)
        condition += condition.empty() ? more : std::string(" AND ") + more;
    return condition.empty() ? std::string() : " WHERE " + condition;
}

// Binds the parent (and kind) of a sibling query.
void bindSiblings(Statement& stmt, const Level& level, uint32_t parent, DefinitionKind kind) {
    if (&level != &kNamespaceLevel)
        stmt.bind(1, parent);
    if (&level == &kDefinitionLevel)
        stmt.bind(2, uint32_t(kind));
}

uint32_t nextPosition(LibraryStore& store, const Level& level, uint32_t parent, DefinitionKind kind) {
    Statement& stmt = store.statement(std::string("SELECT coalesce(max(position) + 1, 0) FROM ") + level.table +
                                      where(level, ""));
    bindSiblings(stmt, level, parent, kind);
    stmt.step();
    const uint32_t position = stmt.id(0);
    stmt.reset();
    return position;
}

[[noreturn]] void throwTaken(const Level& level, DefinitionKind kind, const OdString& name) {
    const ObjectType type = &level == &kDefinitionLevel && kind == DefinitionKind::kValue ? kValueDefinition : level.type;
    throw ObjectNotUnique(type, name, OdString::fromUtf8("The name '" + textToUtf8(name) + "' is taken by another " +
                                                         level.what + level.scope));
}

// A name as the schema's NOCASE collation compares it: ASCII letters folded, nothing else.
std::string nocaseKey(const OdString& name) {
    std::string key = textToUtf8(name);
    for (char& c : key) {
        if (c >= 'A' && c <= 'Z')
            c = char(c - 'A' + 'a');
    }
    return key;
}

// A name that is empty or taken among the siblings of `exceptId` raises the error that says so.
void checkName(LibraryStore& store, const Level& level, uint32_t parent, DefinitionKind kind, const OdString& name,
               uint32_t exceptId) {
    if (name.isEmpty())
        throw ConsistencyError(OdString::fromUtf8(std::string("A ") + level.what + " needs a name"));
    Statement& stmt = store.statement(std::string("SELECT id FROM ") + level.table +
                                      where(level, "name = ?3 AND id <> ?4"));
    bindSiblings(stmt, level, parent, kind);
    stmt.bind(3, name).bind(4, exceptId);
    const bool taken = stmt.step();
    stmt.reset();
    if (!taken)
        return;
    throwTaken(level, kind, name);
}

void requireRow(LibraryStore& store, const Level& level, uint32_t id) {
    Statement& stmt = store.statement(std::string("SELECT 1 FROM ") + level.table + " WHERE id = ?1");
    const bool found = stmt.bind(1, id).step();
    stmt.reset();
    if (!found)
        throw ConsistencyError(OdString::fromUtf8(std::string("There is no ") + level.what + " with the id " + std::to_string(id)));
}

// Ids of the siblings in their order.
std::vector<uint32_t> orderedIds(LibraryStore& store, const Level& level, uint32_t parent, DefinitionKind kind) {
    Statement& stmt = store.statement(std::string("SELECT id FROM ") + level.table + where(level, "") +
                                      " ORDER BY position, id");
    bindSiblings(stmt, level, parent, kind);
    std::vector<uint32_t> ids;
    while (stmt.step())
        ids.push_back(stmt.id(0));
    return ids;
}

bool removeRow(LibraryStore& store, const Level& level, uint32_t id) {
    store.statement(std::string("DELETE FROM ") + level.table + " WHERE id = ?1").bind(1, id).run();
    return sqlite3_changes(store.db()) > 0;
}

// The first row of a query read by `read`, the statement then reset so that it holds no
// read lock; nothing when there is no row.
template <class Read>
auto firstRow(Statement& stmt, Read&& read) -> std::optional<decltype(read(stmt))> {
    std::optional<decltype(read(stmt))> result;
    if (stmt.step())
        result = read(stmt);
    stmt.reset();
    return result;
}

// Runs one write of the store's interface as a transaction level of its own.
template <class Operation>
auto write(const std::shared_ptr<Library>& library, Operation&& operation) -> decltype(operation(library->store())) {
    LibraryStore& store = library->store();
    store.requireWritable();
    return store.guardWrite([&] {
        LibraryStore::WriteScope scope(store);
        auto result = operation(store);
        scope.commit();
        return result;
    });
}

// A JSON string as nlohmann's dump() writes it; the aliases are written by hand because they
// are written for every definition an import stores, and building JSON values first costs more
// than the insert.
void appendJsonString(std::string& out, const std::string& text) {
    static const char* const kHex = "0123456789abcdef";
    out += '"';
    for (const char c : text) {
        switch (c) {
        case '"': out += "\\\""; break;
        case '\\': out += "\\\\"; break;
        case '\b': out += "\\b"; break;
        case '\f': out += "\\f"; break;
        case '\n': out += "\\n"; break;
        case '\r': out += "\\r"; break;
        case '\t': out += "\\t"; break;
        default:
            if (static_cast<unsigned char>(c) < 0x20) {
                out += "\\u00";
                out += kHex[(c >> 4) & 0xF];
                out += kHex[c & 0xF];
            } else {
                out += c;
            }
        }
    }
    out += '"';
}

// [{"definition": ..., "language": ..., "name": ...}, ...] with the keys in nlohmann's order.
std::string aliasesToJson(const std::vector<LocalizedName>& aliases) {
    if (aliases.empty())
        return std::string();
    std::string list = "[";
    for (const LocalizedName& alias : aliases) {
        list += list.size() > 1 ? ",{\"definition\":" : "{\"definition\":";
        appendJsonString(list, textToUtf8(alias.definition));
        list += ",\"language\":";
        appendJsonString(list, textToUtf8(alias.language));
        list += ",\"name\":";
        appendJsonString(list, textToUtf8(alias.name));
        list += '}';
    }
    return list + ']';
}

std::vector<LocalizedName> aliasesFromJson(const std::string& text) {
    std::vector<LocalizedName> aliases;
    if (text.empty())
        return aliases;
    const Json list = Json::parse(text, nullptr, false);
    if (!list.is_array())
        throw ConsistencyError(OdString(L"The aliases of a property-set definition are not a JSON list"));
    for (const Json& entry : list) {
        auto field = [&](const char* key) {
            auto it = entry.is_object() ? entry.find(key) : entry.end();
            return it != entry.end() && it->is_string() ? textFromUtf8(it->get<std::string>()) : OdString();
        };
        aliases.push_back({field("language"), field("name"), field("definition")});
    }
    return aliases;
}

// ---- Namespaces

const char* const kNamespaceColumns = "id, name, label, editable FROM lib_pset_namespace";

PropertyNamespaceRecord readNamespace(const Statement& row) {
    PropertyNamespaceRecord record;
    record.id = row.id(0);
    record.name = row.text(1);
    record.label = row.text(2);
    record.editable = row.boolean(3);
    return record;
}

// ---- Sets

const char* const kSetColumns =
    "id, namespace_id, name, label, description, visible, per_instance, editable, template_type, "
    "applicable_type_value, aliases, source FROM lib_pset";

PropertySetRecord readSet(const Statement& row) {
    PropertySetRecord record;
    record.id = row.id(0);
    record.namespaceId = row.id(1);
    record.name = row.text(2);
    record.label = row.text(3);
    record.description = row.text(4);
    record.visible = row.boolean(5);
    record.perInstance = row.boolean(6);
    record.editable = row.boolean(7);
    record.templateType = row.text(8);
    record.applicableTypeValue = row.text(9);
    record.aliases = aliasesFromJson(row.utf8(10));
    record.source = row.utf8(11);
    return record;
}

// Binds the set's own fields at 1..10.
void bindSet(Statement& stmt, const PropertySetRecord& record) {
    stmt.bind(1, record.name)
        .bind(2, record.label)
        .bind(3, record.description)
        .bind(4, int(record.visible))
        .bind(5, int(record.perInstance))
        .bind(6, int(record.editable))
        .bind(7, record.templateType)
        .bind(8, record.applicableTypeValue)
        .bind(9, aliasesToJson(record.aliases))
        .bind(10, record.source);
}

void readClasses(LibraryStore& store, PropertySetRecord& record) {
    Statement& stmt = store.statement("SELECT class_name FROM lib_pset_class WHERE set_id = ?1 ORDER BY position");
    stmt.bind(1, record.id);
    record.applicableClasses.clear();
    while (stmt.step())
        record.applicableClasses.push_back(stmt.text(0));
}

bool insertClass(LibraryStore& store, uint32_t setId, const OdString& ifcType) {
    if (ifcType.isEmpty())
        throw ConsistencyError(OdString(L"An IFC type needs a name"));
    Statement& taken = store.statement("SELECT 1 FROM lib_pset_class WHERE set_id = ?1 AND class_name = ?2");
    const bool assigned = taken.bind(1, setId).bind(2, ifcType).step();
    taken.reset();
    if (assigned)
        return false;
    store.statement("INSERT INTO lib_pset_class(set_id, position, class_name) SELECT ?1, coalesce(max(position) + 1, 0), ?2"
                    " FROM lib_pset_class WHERE set_id = ?1")
        .bind(1, setId)
        .bind(2, ifcType)
        .run();
    return true;
}

void writeClasses(LibraryStore& store, const PropertySetRecord& record) {
    store.statement("DELETE FROM lib_pset_class WHERE set_id = ?1").bind(1, record.id).run();
    for (const OdString& ifcType : record.applicableClasses)
        insertClass(store, record.id, ifcType);
}

// ---- Definitions

const char* const kDefinitionColumns =
    "d.id, d.set_id, d.kind, d.name, d.label, d.description, d.type_kind, d.type_code, d.value_category, d.type_data, "
    "d.measure, d.aliases, d.source FROM lib_pset_definition d";

PropertyDefinitionRecord readDefinition(const Statement& row) {
    PropertyDefinitionRecord record;
    record.id = row.id(0);
    record.setId = row.id(1);
    record.kind = DefinitionKind(row.integer(2));
    record.name = row.text(3);
    record.label = row.text(4);
    record.description = row.text(5);
    const int kind = row.integer(6);
    // A kind written by a newer version keeps its data and shows as a kind nobody edits here.
    record.type.kind = kind >= 0 && kind <= int(TypeSpecification::kLastKind) ? TypeSpecification::Kind(kind)
                                                                              : TypeSpecification::kExtended;
    record.type.code = row.integer(7);
    record.type.valueCategory = row.integer(8);
    record.type.data = row.utf8(9);
    record.measure = row.text(10);
    record.aliases = aliasesFromJson(row.utf8(11));
    record.source = row.utf8(12);
    return record;
}

// Binds the definition's own fields at 1..10.
void bindDefinition(Statement& stmt, const PropertyDefinitionRecord& record) {
    stmt.bind(1, record.name)
        .bind(2, record.label)
        .bind(3, record.description)
        .bind(4, uint32_t(record.type.kind))
        .bind(5, record.type.code)
        .bind(6, record.type.valueCategory)
        .bind(7, record.type.data)
        .bind(8, record.measure)
        .bind(9, aliasesToJson(record.aliases))
        .bind(10, record.source);
}

void checkKind(DefinitionKind kind) {
    if (kind != DefinitionKind::kProperty && kind != DefinitionKind::kValue)
        throw ConsistencyError(OdString(L"A definition is either a property or a value definition"));
}

}  // namespace

PropertySetStore::PropertySetStore(std::shared_ptr<Library> library) : m_library(std::move(library)) {
    if (!m_library)
        throw ConsistencyError(OdString(L"Property sets need a library"));
}

// ---- Namespaces

std::vector<PropertyNamespaceRecord> PropertySetStore::namespaces() const {
    Statement& stmt = m_library->store().statement(std::string("SELECT ") + kNamespaceColumns + " ORDER BY position, id");
    std::vector<PropertyNamespaceRecord> records;
    while (stmt.step())
        records.push_back(readNamespace(stmt));
    return records;
}

std::optional<PropertyNamespaceRecord> PropertySetStore::findNamespace(uint32_t id) const {
    Statement& stmt = m_library->store().statement(std::string("SELECT ") + kNamespaceColumns + " WHERE id = ?1");
    return firstRow(stmt.bind(1, id), readNamespace);
}

std::optional<PropertyNamespaceRecord> PropertySetStore::findNamespace(const OdString& name) const {
    Statement& stmt = m_library->store().statement(std::string("SELECT ") + kNamespaceColumns + " WHERE name = ?1");
    return firstRow(stmt.bind(1, name), readNamespace);
}

uint32_t PropertySetStore::createNamespace(const PropertyNamespaceRecord& record) {
    return write(m_library, [&](LibraryStore& store) {
        checkName(store, kNamespaceLevel, 0, DefinitionKind::kProperty, record.name, 0);
        store.statement("INSERT INTO lib_pset_namespace(position, name, label, editable) VALUES (?1, ?2, ?3, ?4)")
            .bind(1, nextPosition(store, kNamespaceLevel, 0, DefinitionKind::kProperty))
            .bind(2, record.name)
            .bind(3, record.label)
            .bind(4, int(record.editable))
            .run();
        return uint32_t(sqlite3_last_insert_rowid(store.db()));
    });
}

void PropertySetStore::updateNamespace(const PropertyNamespaceRecord& record) {
    write(m_library, [&](LibraryStore& store) {
        requireRow(store, kNamespaceLevel, record.id);
        checkName(store, kNamespaceLevel, 0, DefinitionKind::kProperty, record.name, record.id);
        store.statement("UPDATE lib_pset_namespace SET name = ?1, label = ?2, editable = ?3 WHERE id = ?4")
            .bind(1, record.name)
            .bind(2, record.label)
            .bind(3, int(record.editable))
            .bind(4, record.id)
            .run();
        return 0;
    });
}

bool PropertySetStore::removeNamespace(uint32_t id) {
    return write(m_library, [&](LibraryStore& store) { return removeRow(store, kNamespaceLevel, id); });
}

// ---- Property sets

std::vector<PropertySetRecord> PropertySetStore::propertySets(uint32_t namespaceId) const {
    LibraryStore& store = m_library->store();
    LibraryStore::ReadScope snapshot(store);
    std::vector<PropertySetRecord> records;
    {
        Statement& stmt = store.statement(std::string("SELECT ") + kSetColumns + " WHERE namespace_id = ?1 ORDER BY position, id");
        stmt.bind(1, namespaceId);
        while (stmt.step())
            records.push_back(readSet(stmt));
    }
    // The classes of all the namespace's sets in one query, merged by set id.
    Statement& classes = store.statement(
        "SELECT c.set_id, c.class_name FROM lib_pset_class c JOIN lib_pset s ON s.id = c.set_id"
        " WHERE s.namespace_id = ?1 ORDER BY c.set_id, c.position");
    classes.bind(1, namespaceId);
    std::vector<PropertySetRecord*> byId;
    for (PropertySetRecord& record : records)
        byId.push_back(&record);
    std::sort(byId.begin(), byId.end(), [](const auto* a, const auto* b) { return a->id < b->id; });
    auto next = byId.begin();
    while (classes.step()) {
        const uint32_t setId = classes.id(0);
        while (next != byId.end() && (*next)->id < setId)
            ++next;
        if (next != byId.end() && (*next)->id == setId)
            (*next)->applicableClasses.push_back(classes.text(1));
    }
    return records;
}

std::optional<PropertySetRecord> PropertySetStore::findPropertySet(uint32_t id) const {
    LibraryStore& store = m_library->store();
    Statement& stmt = store.statement(std::string("SELECT ") + kSetColumns + " WHERE id = ?1");
    std::optional<PropertySetRecord> record = firstRow(stmt.bind(1, id), readSet);
    if (record)
        readClasses(store, *record);
    return record;
}

std::optional<PropertySetRecord> PropertySetStore::findPropertySet(uint32_t namespaceId, const OdString& name) const {
    Statement& stmt = m_library->store().statement("SELECT id FROM lib_pset WHERE namespace_id = ?1 AND name = ?2");
    const std::optional<uint32_t> id = firstRow(stmt.bind(1, namespaceId).bind(2, name), [](const Statement& row) { return row.id(0); });
    return id ? findPropertySet(*id) : std::nullopt;
}

uint32_t PropertySetStore::createPropertySet(const PropertySetRecord& record) {
    return write(m_library, [&](LibraryStore& store) {
        requireRow(store, kNamespaceLevel, record.namespaceId);
        checkName(store, kSetLevel, record.namespaceId, DefinitionKind::kProperty, record.name, 0);
        Statement& insert = store.statement(
            "INSERT INTO lib_pset(name, label, description, visible, per_instance, editable, template_type,"
            " applicable_type_value, aliases, source, namespace_id, position) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11,"
            " ?12)");
        bindSet(insert, record);
        insert.bind(11, record.namespaceId)
            .bind(12, nextPosition(store, kSetLevel, record.namespaceId, DefinitionKind::kProperty))
            .run();
        PropertySetRecord stored = record;
        stored.id = uint32_t(sqlite3_last_insert_rowid(store.db()));
        writeClasses(store, stored);
        return stored.id;
    });
}

void PropertySetStore::updatePropertySet(const PropertySetRecord& record) {
    write(m_library, [&](LibraryStore& store) {
        Statement& parent = store.statement("SELECT namespace_id FROM lib_pset WHERE id = ?1");
        const auto namespaceId = firstRow(parent.bind(1, record.id), [](const Statement& row) { return row.id(0); });
        if (!namespaceId)
            requireRow(store, kSetLevel, record.id);  // throws: there is no such set
        checkName(store, kSetLevel, *namespaceId, DefinitionKind::kProperty, record.name, record.id);
        Statement& update = store.statement(
            "UPDATE lib_pset SET name = ?1, label = ?2, description = ?3, visible = ?4, per_instance = ?5, editable = ?6,"
            " template_type = ?7, applicable_type_value = ?8, aliases = ?9, source = ?10 WHERE id = ?11");
        bindSet(update, record);
        update.bind(11, record.id).run();
        writeClasses(store, record);
        return 0;
    });
}

bool PropertySetStore::removePropertySet(uint32_t id) {
    return write(m_library, [&](LibraryStore& store) { return removeRow(store, kSetLevel, id); });
}

bool PropertySetStore::addApplicableClass(uint32_t setId, const OdString& ifcType) {
    return write(m_library, [&](LibraryStore& store) {
        requireRow(store, kSetLevel, setId);
        return insertClass(store, setId, ifcType);
    });
}

bool PropertySetStore::removeApplicableClass(uint32_t setId, const OdString& ifcType) {
    return write(m_library, [&](LibraryStore& store) {
        requireRow(store, kSetLevel, setId);
        store.statement("DELETE FROM lib_pset_class WHERE set_id = ?1 AND class_name = ?2").bind(1, setId).bind(2, ifcType).run();
        return sqlite3_changes(store.db()) > 0;
    });
}

// ---- Definitions

std::vector<PropertyDefinitionRecord> PropertySetStore::definitions(uint32_t setId, DefinitionKind kind) const {
    Statement& stmt = m_library->store().statement(std::string("SELECT ") + kDefinitionColumns +
                                                   " WHERE d.set_id = ?1 AND d.kind = ?2 ORDER BY d.position, d.id");
    stmt.bind(1, setId).bind(2, uint32_t(kind));
    std::vector<PropertyDefinitionRecord> records;
    while (stmt.step())
        records.push_back(readDefinition(stmt));
    return records;
}

std::vector<PropertyDefinitionRecord> PropertySetStore::namespaceDefinitions(uint32_t namespaceId) const {
    Statement& stmt = m_library->store().statement(
        std::string("SELECT ") + kDefinitionColumns +
        " JOIN lib_pset s ON s.id = d.set_id WHERE s.namespace_id = ?1 ORDER BY s.position, s.id, d.kind, d.position, d.id");
    stmt.bind(1, namespaceId);
    std::vector<PropertyDefinitionRecord> records;
    while (stmt.step())
        records.push_back(readDefinition(stmt));
    return records;
}

std::vector<PropertySetOutline> PropertySetStore::outline(uint32_t namespaceId) const {
    LibraryStore& store = m_library->store();
    LibraryStore::ReadScope snapshot(store);
    std::vector<PropertySetOutline> sets;
    std::unordered_map<uint32_t, size_t> index;
    {
        Statement& stmt = store.statement("SELECT id, name, label FROM lib_pset WHERE namespace_id = ?1 ORDER BY position, id");
        stmt.bind(1, namespaceId);
        while (stmt.step()) {
            index.emplace(stmt.id(0), sets.size());
            sets.push_back({{stmt.id(0), stmt.text(1), stmt.text(2)}, {}, {}});
        }
    }
    Statement& definitions = store.statement(
        "SELECT d.id, d.set_id, d.kind, d.name, d.label FROM lib_pset_definition d JOIN lib_pset s ON s.id = d.set_id"
        " WHERE s.namespace_id = ?1 ORDER BY d.set_id, d.kind, d.position, d.id");
    definitions.bind(1, namespaceId);
    while (definitions.step()) {
        const auto found = index.find(definitions.id(1));
        if (found == index.end())
            continue;
        PropertySetOutline& set = sets[found->second];
        auto& list = DefinitionKind(definitions.integer(2)) == DefinitionKind::kValue ? set.values : set.properties;
        list.push_back({definitions.id(0), definitions.text(3), definitions.text(4)});
    }
    return sets;
}

std::optional<PropertyDefinitionRecord> PropertySetStore::findDefinition(uint32_t id) const {
    Statement& stmt = m_library->store().statement(std::string("SELECT ") + kDefinitionColumns + " WHERE d.id = ?1");
    return firstRow(stmt.bind(1, id), readDefinition);
}

uint32_t PropertySetStore::createDefinition(const PropertyDefinitionRecord& record) {
    checkKind(record.kind);
    return write(m_library, [&](LibraryStore& store) {
        requireRow(store, kSetLevel, record.setId);
        checkName(store, kDefinitionLevel, record.setId, record.kind, record.name, 0);
        Statement& insert = store.statement(
            "INSERT INTO lib_pset_definition(name, label, description, type_kind, type_code, value_category, type_data,"
            " measure, aliases, source, set_id, kind, position) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12,"
            " ?13)");
        bindDefinition(insert, record);
        insert.bind(11, record.setId)
            .bind(12, uint32_t(record.kind))
            .bind(13, nextPosition(store, kDefinitionLevel, record.setId, record.kind))
            .run();
        return uint32_t(sqlite3_last_insert_rowid(store.db()));
    });
}

std::vector<uint32_t> PropertySetStore::createDefinitions(uint32_t setId, const std::vector<PropertyDefinitionRecord>& records) {
    for (const PropertyDefinitionRecord& record : records)
        checkKind(record.kind);
    return write(m_library, [&](LibraryStore& store) {
        requireRow(store, kSetLevel, setId);
        // The names of the set's definitions per kind, and the next position of each kind.
        std::set<std::string> taken[2];
        uint32_t position[2] = {0, 0};
        Statement& existing = store.statement("SELECT kind, name, position FROM lib_pset_definition WHERE set_id = ?1");
        existing.bind(1, setId);
        while (existing.step()) {
            const size_t kind = existing.integer(0) == int(DefinitionKind::kValue);
            taken[kind].insert(nocaseKey(existing.text(1)));
            position[kind] = std::max(position[kind], existing.id(2) + 1);
        }
        Statement& insert = store.statement(
            "INSERT INTO lib_pset_definition(name, label, description, type_kind, type_code, value_category, type_data,"
            " measure, aliases, source, set_id, kind, position) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12,"
            " ?13)");
        std::vector<uint32_t> ids;
        for (const PropertyDefinitionRecord& record : records) {
            const size_t kind = record.kind == DefinitionKind::kValue;
            if (record.name.isEmpty())
                throw ConsistencyError(OdString(L"A definition needs a name"));
            if (!taken[kind].insert(nocaseKey(record.name)).second)
                throwTaken(kDefinitionLevel, record.kind, record.name);
            insert.reset();
            bindDefinition(insert, record);
            insert.bind(11, setId).bind(12, uint32_t(record.kind)).bind(13, position[kind]++).run();
            ids.push_back(uint32_t(sqlite3_last_insert_rowid(store.db())));
        }
        return ids;
    });
}

void PropertySetStore::updateDefinition(const PropertyDefinitionRecord& record) {
    write(m_library, [&](LibraryStore& store) {
        Statement& parent = store.statement("SELECT set_id, kind FROM lib_pset_definition WHERE id = ?1");
        const auto owner = firstRow(parent.bind(1, record.id), [](const Statement& row) {
            return std::make_pair(row.id(0), DefinitionKind(row.integer(1)));
        });
        if (!owner)
            requireRow(store, kDefinitionLevel, record.id);  // throws: there is no such definition
        checkName(store, kDefinitionLevel, owner->first, owner->second, record.name, record.id);
        Statement& update = store.statement(
            "UPDATE lib_pset_definition SET name = ?1, label = ?2, description = ?3, type_kind = ?4, type_code = ?5,"
            " value_category = ?6, type_data = ?7, measure = ?8, aliases = ?9, source = ?10 WHERE id = ?11");
        bindDefinition(update, record);
        update.bind(11, record.id).run();
        return 0;
    });
}

bool PropertySetStore::removeDefinition(uint32_t id) {
    return write(m_library, [&](LibraryStore& store) { return removeRow(store, kDefinitionLevel, id); });
}

unsigned PropertySetStore::removeDefinitions(uint32_t setId, DefinitionKind kind) {
    checkKind(kind);
    return write(m_library, [&](LibraryStore& store) {
        requireRow(store, kSetLevel, setId);
        store.statement("DELETE FROM lib_pset_definition WHERE set_id = ?1 AND kind = ?2").bind(1, setId).bind(2, uint32_t(kind)).run();
        return unsigned(sqlite3_changes(store.db()));
    });
}

bool PropertySetStore::moveDefinition(uint32_t setId, DefinitionKind kind, unsigned from, unsigned to) {
    checkKind(kind);
    return write(m_library, [&](LibraryStore& store) {
        std::vector<uint32_t> ids = orderedIds(store, kDefinitionLevel, setId, kind);
        if (from >= ids.size() || to >= ids.size())
            return false;
        const uint32_t moved = ids[from];
        ids.erase(ids.begin() + from);
        ids.insert(ids.begin() + to, moved);
        Statement& update = store.statement("UPDATE lib_pset_definition SET position = ?1 WHERE id = ?2");
        for (size_t position = 0; position < ids.size(); ++position)
            update.reset().bind(1, uint32_t(position)).bind(2, ids[position]).run();
        return true;
    });
}

}  // namespace vantlib

// Listing a namespace of property-set definitions as the property sets editor fills its tree:
// every set of the namespace, then each set's property and value definitions with their names
// and labels, through ILibrary; against the raw SQLite floor of the same rows and columns.
// Usage: bench_psets [DEFINITIONS]   (default 10000, in sets of 100)
#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include <vantlib/Library.h>
#include <vantlib/PropertySets.h>
#include <vantlib/Transaction.h>
#include <vl_db/PropertySets.h>

#include "BenchBasics.h"

using namespace vantlib;

namespace {

constexpr size_t kPerSet = 100;
constexpr size_t kValuesPerSet = 20;

// One namespace of n definitions, a fifth of them value definitions, every tenth an enumeration.
uint32_t fill(const std::shared_ptr<Library>& library, size_t n) {
    PropertySetStore store(library);
    Transaction transaction(library);
    PropertyNamespaceRecord ns;
    ns.name = L"Office";
    const uint32_t namespaceId = store.createNamespace(ns);
    for (size_t s = 0; s * kPerSet < n; ++s) {
        PropertySetRecord set;
        set.namespaceId = namespaceId;
        set.name = OdString::formatted(L"Office_Set%03zu", s);
        set.label = OdString::formatted(L"Set %zu of the office", s);
        set.description = L"Properties the office records for elements of this kind.";
        set.applicableClasses = {L"IfcWall", L"IfcSlab"};
        const uint32_t setId = store.createPropertySet(set);
        for (size_t d = 0; d < kPerSet && s * kPerSet + d < n; ++d) {
            PropertyDefinitionRecord definition;
            definition.setId = setId;
            definition.kind = d < kPerSet - kValuesPerSet ? DefinitionKind::kProperty : DefinitionKind::kValue;
            definition.name = OdString::formatted(L"Property%03zu", d);
            definition.label = OdString::formatted(L"Property %zu of set %zu", d, s);
            definition.description = L"What the property says about the element, in a sentence or two.";
            if (d % 10 == 0) {
                definition.type = {TypeSpecification::kEnumeration, 11, 1,
                                   R"({"type":"Enum","values":[{"ref":"A","desc":"First"},"B","C"],"allow_custom_value":false})"};
            } else {
                definition.type.code = d % 2 ? 10 : 11;
            }
            if (definition.kind == DefinitionKind::kValue)
                definition.measure = L"AREA";
            store.createDefinition(definition);
        }
    }
    transaction.commit();
    return namespaceId;
}

// What the tree shows: set and definition labels, counted so that nothing is optimised away.
size_t listThroughInterfaces(const vl_db::ILibrary& library) {
    size_t characters = 0;
    for (const auto& ns : library.namespaces())
        for (const auto& set : ns->propertySets()) {
            characters += set->label().getLength();
            for (const auto& definition : set->propertyDefinitions())
                characters += definition->name().getLength() + definition->label().getLength();
            for (const auto& definition : set->valueDefinitions())
                characters += definition->name().getLength() + definition->label().getLength();
        }
    return characters;
}

void check(int rc, sqlite3* db) {
    if (rc != SQLITE_OK && rc != SQLITE_DONE && rc != SQLITE_ROW)
        throw std::runtime_error(sqlite3_errmsg(db));
}

struct RawDefinition {
    std::vector<std::string> texts;
    std::vector<int64_t> numbers;
};

// The same rows and columns with the SQLite C interface: the sets of the namespace with their
// classes, then per set and kind its definitions in order.
size_t listRaw(sqlite3* db, uint32_t namespaceId) {
    auto prepare = [db](const char* sql) {
        sqlite3_stmt* stmt = nullptr;
        check(sqlite3_prepare_v2(db, sql, -1, &stmt, nullptr), db);
        return stmt;
    };
    sqlite3_stmt* sets = prepare(
        "SELECT id, namespace_id, name, label, description, visible, per_instance, editable, template_type,"
        " applicable_type_value, aliases, source FROM lib_pset WHERE namespace_id = ?1 ORDER BY position, id");
    sqlite3_stmt* classes = prepare(
        "SELECT c.set_id, c.class_name FROM lib_pset_class c JOIN lib_pset s ON s.id = c.set_id"
        " WHERE s.namespace_id = ?1 ORDER BY c.set_id, c.position");
    sqlite3_stmt* definitions = prepare(
        "SELECT d.id, d.set_id, d.kind, d.name, d.label, d.description, d.type_kind, d.type_code, d.value_category,"
        " d.type_data, d.measure, d.aliases, d.source FROM lib_pset_definition d WHERE d.set_id = ?1 AND d.kind = ?2"
        " ORDER BY d.position, d.id");
    auto text = [](sqlite3_stmt* stmt, int column) {
        const auto* t = reinterpret_cast<const char*>(sqlite3_column_text(stmt, column));
        return std::string(t ? t : "", size_t(sqlite3_column_bytes(stmt, column)));
    };
    std::vector<std::pair<int64_t, std::vector<std::string>>> setRows;
    sqlite3_bind_int64(sets, 1, namespaceId);
    while (sqlite3_step(sets) == SQLITE_ROW) {
        std::vector<std::string> row;
        for (int c : {2, 3, 4, 8, 9, 10, 11})
            row.push_back(text(sets, c));
        setRows.emplace_back(sqlite3_column_int64(sets, 0), std::move(row));
    }
    sqlite3_bind_int64(classes, 1, namespaceId);
    size_t classCount = 0;
    while (sqlite3_step(classes) == SQLITE_ROW)
        classCount += text(classes, 1).size();
    size_t characters = classCount;
    std::vector<RawDefinition> rows;
    for (const auto& set : setRows)
        for (int kind : {1, 2}) {
            sqlite3_bind_int64(definitions, 1, set.first);
            sqlite3_bind_int(definitions, 2, kind);
            while (sqlite3_step(definitions) == SQLITE_ROW) {
                RawDefinition row;
                for (int c : {0, 1, 2, 6, 7, 8})
                    row.numbers.push_back(sqlite3_column_int64(definitions, c));
                for (int c : {3, 4, 5, 9, 10, 11, 12})
                    row.texts.push_back(text(definitions, c));
                characters += row.texts[0].size() + row.texts[1].size();
                rows.push_back(std::move(row));
            }
            sqlite3_reset(definitions);
        }
    sqlite3_finalize(sets);
    sqlite3_finalize(classes);
    sqlite3_finalize(definitions);
    return characters + rows.size();
}

}  // namespace

int main(int argc, char** argv) {
    const size_t n = argc > 1 ? size_t(std::strtoull(argv[1], nullptr, 10)) : 10000;
    vl_bench::Folder folder("vl-bench-psets");
    const std::string path = folder.file("psets.vlib");
    uint32_t namespaceId = 0;
    double fillMs = 0;
    {
        auto library = Library::create(OdString::fromUtf8(path), OdDb::kUnitsMillimeters);
        fillMs = vl_bench::timeMs([&] { namespaceId = fill(library, n); });
    }

    auto library = Library::open(OdString::fromUtf8(path), true);
    const auto interfaces = vl_db::propertySetLibrary(library);
    size_t listed = 0;
    const double interfaceMs = vl_bench::bestMs([&] { listed = listThroughInterfaces(*interfaces); }, 5);
    PropertySetStore store(library);
    size_t stored = 0;
    const double storeMs = vl_bench::bestMs([&] { stored = store.namespaceDefinitions(namespaceId).size(); }, 5);

    sqlite3* db = nullptr;
    check(sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr), db);
    size_t raw = 0;
    const double rawMs = vl_bench::bestMs([&] { raw = listRaw(db, namespaceId); }, 5);
    sqlite3_close(db);
    if (listed == 0 || raw == 0 || stored != n)
        throw std::runtime_error("the listing read nothing");

    std::printf("Property-set definitions, one namespace of %zu definitions in %zu sets (written in %.0f ms)\n", n,
                (n + kPerSet - 1) / kPerSet, fillMs);
    std::printf("  %-44s %9.2f ms\n", "raw SQLite floor (same rows and columns)", rawMs);
    std::printf("  %-44s %9.2f ms  %5.2fx the floor (target 3x)\n", "ILibrary: sets, then each set's definitions",
                interfaceMs, interfaceMs / rawMs);
    std::printf("  %-44s %9.2f ms  %5.2fx the floor\n", "store: the namespace's definitions at once", storeMs,
                storeMs / rawMs);
    return 0;
}

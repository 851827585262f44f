// Importing the official files into a fresh library through importPsdFiles (finding, reading
// and checking the files, mapping them, writing and committing), against the floor: the same
// rows, already in memory as column values, inserted into the same tables and columns of an
// equally fresh library with prepared statements in one transaction, under the connection
// settings the library uses. Both commit to disk.
#include "ImportBench.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <stdexcept>

#include <nlohmann/json.hpp>

#include <vantlib/Library.h>
#include <vantlib/PropertySets.h>
#include <vl_db/PsdLibrary.h>

#include "BenchBasics.h"

namespace {

using vantlib::PropertyDefinitionRecord;

std::string utf8(const OdString& text) { return text.toUtf8(); }

// The library's stored form of aliases.
std::string aliasText(const std::vector<vantlib::LocalizedName>& aliases) {
    if (aliases.empty())
        return std::string();
    nlohmann::json list = nlohmann::json::array();
    for (const auto& alias : aliases)
        list.push_back({{"language", utf8(alias.language)}, {"name", utf8(alias.name)}, {"definition", utf8(alias.definition)}});
    return list.dump();
}

struct RawDefinition {
    int kind, typeKind, code, category;
    std::string name, label, description, typeData, measure, aliases, source;
};

struct RawSet {
    int perInstance;
    std::string name, label, description, templateType, applicableTypeValue, aliases, source;
    std::vector<std::string> classes;
    std::vector<RawDefinition> definitions;
};

std::vector<RawSet> rawRows(const std::vector<std::string>& files) {
    std::vector<RawSet> sets;
    for (const std::string& file : files) {
        const vl_db::PsdLibrarySet mapped = vl_db::librarySetOf(vl_db::readPsd(file));
        const auto& s = mapped.set;
        RawSet raw{int(s.perInstance), utf8(s.name), utf8(s.label), utf8(s.description), utf8(s.templateType),
                   utf8(s.applicableTypeValue), aliasText(s.aliases), s.source, {}, {}};
        for (const OdString& ifcType : s.applicableClasses)
            raw.classes.push_back(utf8(ifcType));
        for (const PropertyDefinitionRecord& d : mapped.properties)
            raw.definitions.push_back({int(d.kind), int(d.type.kind), d.type.code, d.type.valueCategory, utf8(d.name),
                                       utf8(d.label), utf8(d.description), d.type.data, utf8(d.measure), aliasText(d.aliases),
                                       d.source});
        sets.push_back(std::move(raw));
    }
    return sets;
}

void check(int rc, sqlite3* db) {
    if (rc != SQLITE_OK && rc != SQLITE_DONE && rc != SQLITE_ROW)
        throw std::runtime_error(std::string("floor: ") + sqlite3_errmsg(db));
}

class Insert {
public:
    Insert(sqlite3* db, const char* sql) : m_db(db) { check(sqlite3_prepare_v2(db, sql, -1, &m_stmt, nullptr), db); }
    ~Insert() { sqlite3_finalize(m_stmt); }
    Insert& text(int index, const std::string& value) {
        sqlite3_bind_text(m_stmt, index, value.data(), int(value.size()), SQLITE_STATIC);
        return *this;
    }
    Insert& number(int index, int64_t value) {
        sqlite3_bind_int64(m_stmt, index, value);
        return *this;
    }
    int64_t run() {
        check(sqlite3_step(m_stmt), m_db);
        sqlite3_reset(m_stmt);
        return sqlite3_last_insert_rowid(m_db);
    }

private:
    sqlite3* m_db;
    sqlite3_stmt* m_stmt = nullptr;
};

void insertRaw(const std::string& path, const std::vector<RawSet>& sets) {
    sqlite3* db = nullptr;
    check(sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READWRITE, nullptr), db);
    check(sqlite3_exec(db, "PRAGMA foreign_keys = ON; PRAGMA temp_store = MEMORY; PRAGMA cache_size = -65536", nullptr,
                       nullptr, nullptr),
          db);
    {
        check(sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr), db);
        Insert ns(db, "INSERT INTO lib_pset_namespace(position, name, label, editable) VALUES (0, ?1, ?2, 0)");
        Insert set(db,
                   "INSERT INTO lib_pset(namespace_id, position, name, label, description, visible, per_instance, editable,"
                   " template_type, applicable_type_value, aliases, source) VALUES (?1, ?2, ?3, ?4, ?5, 1, ?6, 1, ?7, ?8, ?9, ?10)");
        Insert ifcClass(db, "INSERT INTO lib_pset_class(set_id, position, class_name) VALUES (?1, ?2, ?3)");
        Insert definition(db,
                          "INSERT INTO lib_pset_definition(set_id, kind, position, name, label, description, type_kind, type_code,"
                          " value_category, type_data, measure, aliases, source)"
                          " VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13)");
        const std::string name = "IFC4", label = "Official";
        const int64_t namespaceId = ns.text(1, name).text(2, label).run();
        for (size_t s = 0; s < sets.size(); ++s) {
            const RawSet& r = sets[s];
            const int64_t setId = set.number(1, namespaceId)
                                      .number(2, int64_t(s))
                                      .text(3, r.name)
                                      .text(4, r.label)
                                      .text(5, r.description)
                                      .number(6, r.perInstance)
                                      .text(7, r.templateType)
                                      .text(8, r.applicableTypeValue)
                                      .text(9, r.aliases)
                                      .text(10, r.source)
                                      .run();
            for (size_t c = 0; c < r.classes.size(); ++c)
                ifcClass.number(1, setId).number(2, int64_t(c)).text(3, r.classes[c]).run();
            for (size_t d = 0; d < r.definitions.size(); ++d) {
                const RawDefinition& def = r.definitions[d];
                definition.number(1, setId)
                    .number(2, def.kind)
                    .number(3, int64_t(d))
                    .text(4, def.name)
                    .text(5, def.label)
                    .text(6, def.description)
                    .number(7, def.typeKind)
                    .number(8, def.code)
                    .number(9, def.category)
                    .text(10, def.typeData)
                    .text(11, def.measure)
                    .text(12, def.aliases)
                    .text(13, def.source)
                    .run();
            }
        }
    }
    check(sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr), db);
    sqlite3_close(db);
}

// What both sides stored, to see that they stored the same.
std::string storedSummary(const std::string& path) {
    sqlite3* db = nullptr;
    check(sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr), db);
    sqlite3_stmt* stmt = nullptr;
    check(sqlite3_prepare_v2(db,
                             "SELECT (SELECT count(*) FROM lib_pset), (SELECT count(*) FROM lib_pset_class), count(*),"
                             " total(length(name) + length(type_data) + length(aliases) + length(source))"
                             " FROM lib_pset_definition",
                             -1, &stmt, nullptr),
          db);
    check(sqlite3_step(stmt), db);
    std::string summary;
    for (int c = 0; c < 4; ++c)
        summary += std::to_string(sqlite3_column_int64(stmt, c)) + " ";
    sqlite3_finalize(stmt);
    sqlite3_close(db);
    return summary;
}

}  // namespace

namespace {

struct ImportFigures {
    double importMs = 1e300;
    double floorMs = 1e300;
};

ImportFigures measureImport(const std::string& folder, const std::vector<RawSet>& rows, const std::string& where) {
    vl_bench::Folder scratch("vl-bench-psd-import", where);
    ImportFigures figures;
    std::string imported, inserted;
    for (int round = 0; round < 10; ++round) {
        const std::string product = scratch.file(("import-" + std::to_string(round) + ".vlib").c_str());
        const std::string floor = scratch.file(("floor-" + std::to_string(round) + ".vlib").c_str());
        vantlib::Library::create(OdString::fromUtf8(floor), OdDb::kUnitsMillimeters);
        {
            vantlib::PropertySetStore store(vantlib::Library::create(OdString::fromUtf8(product), OdDb::kUnitsMillimeters));
            figures.importMs = std::min(figures.importMs, vl_bench::timeMs([&] {
                                            vl_db::importPsdFiles(store, {folder}, {L"IFC4", L"Official", false});
                                        }));
        }
        figures.floorMs = std::min(figures.floorMs, vl_bench::timeMs([&] { insertRaw(floor, rows); }));
        imported = storedSummary(product);
        inserted = storedSummary(floor);
    }
    if (imported != inserted)
        throw std::runtime_error("the import stored " + imported + "and the floor " + inserted);
    return figures;
}

}  // namespace

void printImportFigures(const std::string& folder, const std::vector<std::string>& files) {
    const std::vector<RawSet> rows = rawRows(files);
    size_t definitions = 0;
    for (const RawSet& set : rows)
        definitions += set.definitions.size();
    // Both sides commit to disk, whose sync costs the most; a memory-backed folder shows the work
    // without it.
    std::vector<std::pair<std::string, std::string>> places = {{"disk", std::filesystem::temp_directory_path().string()}};
    std::error_code error;
    if (std::filesystem::is_directory("/dev/shm", error))
        places.emplace_back("memory", "/dev/shm");

    std::printf("\npsd: importing the official files into a library (reading, checking, mapping, writing, commit), "
                "against the raw insert of the same rows\n");
    std::printf("%-10s %-8s %6s %11s %10s %10s %7s %7s\n", "operation", "files on", "files", "definitions", "time ms",
                "floor ms", "ratio", "target");
    for (const auto& [name, where] : places) {
        const ImportFigures figures = measureImport(folder, rows, where);
        std::printf("%-10s %-8s %6zu %11zu %10.2f %10.2f %6.2fx %7s\n", "import", name.c_str(), files.size(), definitions,
                    figures.importMs, figures.floorMs, figures.importMs / figures.floorMs, "3x");
    }
}

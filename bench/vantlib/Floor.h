#pragma once
// The floor: the same rows stored and read with plain prepared SQLite statements, on a file
// with the same tables, without any of the library's object handling.
#include <sqlite3.h>

#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "Records.h"

// A row read into plain values.
struct RawRow {
    std::vector<std::string> texts;
    std::vector<double> numbers;
    std::vector<std::string> tags;
};

class Floor {
public:
    explicit Floor(const std::string& path);
    ~Floor();

    void saveMaterials(const std::vector<MaterialRecord>& records);
    size_t getMaterialsByName(const std::vector<MaterialRecord>& records);
    size_t queryAllMaterials();
    // The materials that `where` (a WHERE clause on "m", or empty) selects, with their tags.
    size_t queryMaterials(const std::string& where);
    size_t queryMaterialsByClassAndTag();
    void saveCompositions(const std::vector<CompositionRecord>& records, const std::vector<MaterialRecord>& materials);
    size_t getCompositionsByName(const std::vector<CompositionRecord>& records);
    size_t queryAllCompositions();
    // The compositions that `where` (a WHERE clause on "k", or empty) selects, with their tags,
    // plies and the plies' materials.
    size_t queryCompositions(const std::string& where);
    size_t queryCompositionsByTypeAndTag();
    // Copies every material (or composition with its materials) of `source`, replacing rows
    // of the same name.
    void copyMaterials(Floor& source);
    void copyCompositions(Floor& source);
    void removeCompositions();
    void removeMaterials();

    sqlite3* db() const { return m_db; }
    int64_t count(const char* table);

private:
    sqlite3_stmt* prepare(const std::string& sql);
    void exec(const char* sql);
    int64_t namedId(const char* table, const std::string& name);
    std::vector<RawRow> readMaterials(sqlite3_stmt* rows, sqlite3_stmt* tags);
    std::vector<RawRow> readCompositions(sqlite3_stmt* rows, sqlite3_stmt* tags, sqlite3_stmt* plies,
                                         std::vector<RawRow>& materials);
    int64_t writeMaterialRow(const RawRow& row, int64_t replaceId);

    sqlite3* m_db = nullptr;
    std::map<std::string, sqlite3_stmt*> m_statements;
    std::unordered_map<std::string, int64_t> m_ids[8];
};

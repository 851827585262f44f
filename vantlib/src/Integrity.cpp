// Consistency check of a library file for tools: storage, references and values.
#include <vantlib/Integrity.h>

#include <vantlib/Exception.h>

#include "Kinds.h"
#include "LibraryFile.h"
#include "Statement.h"
#include "Text.h"

namespace vantlib {

namespace {

void collect(sqlite3* db, const char* sql, std::vector<OdString>& problems, const wchar_t* format) {
    Statement stmt(db, sql);
    while (stmt.step()) {
        int columns = sqlite3_column_count(stmt.handle());
        OdString a = columns > 0 ? stmt.text(0) : OdString();
        OdString b = columns > 1 ? stmt.text(1) : OdString();
        OdString c = columns > 2 ? stmt.text(2) : OdString();
        problems.push_back(OdString::formatted(format, a.c_str(), b.c_str(), c.c_str()));
    }
}

// Rows of a link table keyed by (object_type, object_id) whose object is missing or of a kind
// that has no such rows.
std::string orphanedLinkRows(const std::string& linkTable) {
    std::string missing, kinds;
    for (const KindDescription* kind : storedKinds())
        for (const KindReference& reference : kind->references)
            if (reference.table == linkTable) {
                const std::string type = std::to_string(unsigned(kind->type));
                missing += "(l.object_type = " + type + " AND NOT EXISTS (SELECT 1 FROM " + kind->table +
                           " WHERE id = l.object_id)) OR ";
                kinds += (kinds.empty() ? "" : ", ") + type;
            }
    return "SELECT l.object_type, l.object_id, '' FROM " + linkTable + " l WHERE " + missing + "l.object_type NOT IN (" +
           kinds + ")";
}

}  // namespace

std::vector<OdString> checkIntegrity(const OdString& path) {
    OpenedFile file = openLibraryFile(path, FileAccess::kReadOnly);
    std::vector<OdString> problems;
    try {
        sqlite3* db = file.db->getHandle();
        {
            Statement check(db, "PRAGMA integrity_check");
            while (check.step()) {
                OdString line = check.text(0);
                if (line != L"ok")
                    problems.push_back(OdString(L"Storage: ") + line);
            }
        }
        collect(db,
                // Tables without row ids (plies, tags of objects) report no row number.
                "SELECT \"table\", CASE WHEN rowid IS NULL THEN 'has a row that' ELSE 'row ' || rowid END,"
                " parent FROM pragma_foreign_key_check WHERE \"table\" LIKE 'lib\\_%' ESCAPE '\\'",
                problems, L"Table %ls %ls refers to a missing row of %ls");
        collect(db, orphanedLinkRows("lib_object_tag").c_str(), problems,
                L"A tag is attached to a missing object of kind %ls, id %ls%ls");
        collect(db, orphanedLinkRows("lib_custom_value").c_str(), problems,
                L"A custom value belongs to a missing object of kind %ls, id %ls%ls");
        collect(db,
                "SELECT cv.object_id, p.name, cv.object_type FROM lib_custom_value cv JOIN lib_custom_property p"
                " ON p.id = cv.property_id WHERE p.object_type <> 0 AND p.object_type <> cv.object_type",
                problems, L"Object %ls carries custom property '%ls', which does not apply to kind %ls");
        collect(db,
                "SELECT k.name, k.variable_ply, '' FROM lib_composition k WHERE k.variable_ply < -1"
                " OR k.variable_ply >= (SELECT count(*) FROM lib_ply p WHERE p.composition_id = k.id)",
                problems, L"Composition '%ls' has a variable ply %ls that it does not hold%ls");
        collect(db,
                "SELECT k.name, count(*), max(p.position) FROM lib_composition k JOIN lib_ply p ON p.composition_id = k.id"
                " GROUP BY k.id HAVING max(p.position) <> count(*) - 1",
                problems, L"Composition '%ls' has %ls plies numbered up to %ls");
        collect(db,
                "SELECT name, sect_type, elev_type FROM lib_material WHERE sect_type NOT BETWEEN 0 AND 3"
                " OR elev_type NOT BETWEEN 0 AND 3",
                problems, L"Material '%ls' has unknown pattern types %ls / %ls");
        collect(db,
                "SELECT key, '', '' FROM (SELECT 'guid' AS key UNION SELECT 'unit') k"
                " WHERE NOT EXISTS (SELECT 1 FROM lib_meta m WHERE m.key = k.key)",
                problems, L"Library setting '%ls' is missing%ls%ls");
    } catch (const SQLite::Exception& e) {
        problems.push_back(OdString(L"Storage: ") + textFromUtf8(std::string(e.what())));
    } catch (const StorageError& e) {
        problems.push_back(OdString(L"Storage: ") + e.message());
    }
    return problems;
}

}  // namespace vantlib

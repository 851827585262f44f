#include "Floor.h"

#include <stdexcept>

namespace {

const char* const kColumns =
    "name, description, comments, class_id, appearance,"
    " sect_type, sect_name, sect_scale, sect_space, sect_angle, sect_cross, sect_annotative, sect_background,"
    " elev_type, elev_name, elev_scale, elev_space, elev_angle, elev_cross, elev_annotative, elev_background,"
    " has_bim, sect_layer_id, elev_layer_id, default_function, thicknesses, variable_thickness,"
    " union_elevation, union_section,"
    " has_info, classification, unique_code, cost, keynote, label, manufacturer, mark, model, url,"
    " has_physical, density, density_unit, conductivity, conductivity_unit, specific_heat, specific_heat_unit";

std::string placeholders(int n) {
    std::string s;
    for (int i = 1; i <= n; ++i)
        s += (i > 1 ? ", ?" : "?") + std::to_string(i);
    return s;
}

const std::string kSelectMaterial =
    std::string("SELECT m.id, m.") + "name, m.description, m.comments, m.class_id, m.appearance,"
    " m.sect_type, m.sect_name, m.sect_scale, m.sect_space, m.sect_angle, m.sect_cross, m.sect_annotative, m.sect_background,"
    " m.elev_type, m.elev_name, m.elev_scale, m.elev_space, m.elev_angle, m.elev_cross, m.elev_annotative, m.elev_background,"
    " m.has_bim, m.sect_layer_id, m.elev_layer_id, m.default_function, m.thicknesses, m.variable_thickness,"
    " m.union_elevation, m.union_section, m.has_info, m.classification, m.unique_code, m.cost, m.keynote, m.label,"
    " m.manufacturer, m.mark, m.model, m.url, m.has_physical, m.density, m.density_unit, m.conductivity,"
    " m.conductivity_unit, m.specific_heat, m.specific_heat_unit, c.name, sl.name, el.name FROM lib_material m"
    " LEFT JOIN lib_material_type c ON c.id = m.class_id LEFT JOIN lib_layer sl ON sl.id = m.sect_layer_id"
    " LEFT JOIN lib_layer el ON el.id = m.elev_layer_id";

const std::string kSelectComposition =
    "SELECT k.id, k.name, k.description, k.comments, k.base_type, k.type_id, k.layer_id, k.variable_ply,"
    " k.variable_min, ct.name, ly.name FROM lib_composition k LEFT JOIN lib_composition_type ct ON ct.id = k.type_id"
    " LEFT JOIN lib_layer ly ON ly.id = k.layer_id";

const char* const kTagsOf =
    "SELECT ot.object_id, t.name FROM lib_object_tag ot JOIN lib_tag t ON t.id = ot.tag_id"
    " WHERE ot.object_type = ?1 AND ot.object_id = ?2 ORDER BY ot.position";

void check(int rc, sqlite3* db) {
    if (rc != SQLITE_OK && rc != SQLITE_DONE && rc != SQLITE_ROW)
        throw std::runtime_error(sqlite3_errmsg(db));
}

// Reads every column of the current row into plain values.
void readRow(sqlite3_stmt* stmt, RawRow& row) {
    int columns = sqlite3_column_count(stmt);
    row.texts.reserve(size_t(columns));
    row.numbers.reserve(size_t(columns));
    for (int i = 0; i < columns; ++i) {
        switch (sqlite3_column_type(stmt, i)) {
        case SQLITE_TEXT:
            row.texts.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(stmt, i)), size_t(sqlite3_column_bytes(stmt, i)));
            break;
        case SQLITE_NULL:
            row.texts.emplace_back();
            break;
        default:
            row.numbers.push_back(sqlite3_column_double(stmt, i));
        }
    }
}

void readTags(sqlite3_stmt* tags, int type, int64_t id, RawRow& row) {
    sqlite3_bind_int(tags, 1, type);
    sqlite3_bind_int64(tags, 2, id);
    while (sqlite3_step(tags) == SQLITE_ROW)
        row.tags.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(tags, 1)));
    sqlite3_reset(tags);
}

}  // namespace

Floor::Floor(const std::string& path) {
    check(sqlite3_open_v2(path.c_str(), &m_db, SQLITE_OPEN_READWRITE, nullptr), m_db);
    // The same connection settings as the library's, so that only the work differs.
    exec("PRAGMA foreign_keys = ON; PRAGMA journal_mode = WAL; PRAGMA busy_timeout = 10000;"
         " PRAGMA temp_store = MEMORY; PRAGMA cache_size = -65536; PRAGMA mmap_size = 268435456");
}

Floor::~Floor() {
    for (auto& entry : m_statements)
        sqlite3_finalize(entry.second);
    sqlite3_close(m_db);
}

sqlite3_stmt* Floor::prepare(const std::string& sql) {
    auto it = m_statements.find(sql);
    if (it != m_statements.end()) {
        sqlite3_reset(it->second);
        return it->second;
    }
    sqlite3_stmt* stmt = nullptr;
    check(sqlite3_prepare_v3(m_db, sql.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &stmt, nullptr), m_db);
    m_statements[sql] = stmt;
    return stmt;
}

void Floor::exec(const char* sql) { check(sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr), m_db); }

int64_t Floor::count(const char* table) {
    sqlite3_stmt* stmt = prepare(std::string("SELECT count(*) FROM ") + table);
    sqlite3_step(stmt);
    int64_t n = sqlite3_column_int64(stmt, 0);
    sqlite3_reset(stmt);
    return n;
}

// Id of a tag, class, layer or type, inserted when missing (cached like any application would).
int64_t Floor::namedId(const char* table, const std::string& name) {
    size_t slot = std::string(table) == "lib_tag" ? 0 : std::string(table) == "lib_layer" ? 1
                : std::string(table) == "lib_material_type" ? 2 : 3;
    auto it = m_ids[slot].find(name);
    if (it != m_ids[slot].end())
        return it->second;
    sqlite3_stmt* find = prepare(std::string("SELECT id FROM ") + table + " WHERE name = ?1");
    sqlite3_bind_text(find, 1, name.data(), int(name.size()), SQLITE_STATIC);
    int64_t id = sqlite3_step(find) == SQLITE_ROW ? sqlite3_column_int64(find, 0) : 0;
    sqlite3_reset(find);
    if (id == 0) {
        sqlite3_stmt* insert = prepare(std::string("INSERT INTO ") + table + "(name) VALUES (?1)");
        sqlite3_bind_text(insert, 1, name.data(), int(name.size()), SQLITE_STATIC);
        check(sqlite3_step(insert), m_db);
        sqlite3_reset(insert);
        id = sqlite3_last_insert_rowid(m_db);
    }
    m_ids[slot][name] = id;
    return id;
}

void Floor::saveMaterials(const std::vector<MaterialRecord>& records) {
    exec("BEGIN IMMEDIATE");
    sqlite3_stmt* insert = prepare(std::string("INSERT INTO lib_material(") + kColumns + ") VALUES (" + placeholders(46) + ")");
    sqlite3_stmt* tag = prepare("INSERT INTO lib_object_tag(object_type, object_id, position, tag_id) VALUES (4, ?1, ?2, ?3)");
    char thicknesses[64];
    for (const MaterialRecord& r : records) {
        int64_t classId = namedId("lib_material_type", r.className);
        int64_t layerId = namedId("lib_layer", r.layer);
        snprintf(thicknesses, sizeof thicknesses, "%.17g %.17g", r.thickness1, r.thickness2);
        sqlite3_bind_text(insert, 1, r.name.data(), int(r.name.size()), SQLITE_STATIC);
        sqlite3_bind_text(insert, 2, r.description.data(), int(r.description.size()), SQLITE_STATIC);
        sqlite3_bind_text(insert, 3, "", 0, SQLITE_STATIC);
        sqlite3_bind_int64(insert, 4, classId);
        sqlite3_bind_text(insert, 5, "", 0, SQLITE_STATIC);
        for (int view = 0; view < 2; ++view) {
            int first = 6 + view * 8;
            sqlite3_bind_int(insert, first, 0);
            sqlite3_bind_text(insert, first + 1, "", 0, SQLITE_STATIC);
            sqlite3_bind_double(insert, first + 2, 1.0);
            sqlite3_bind_double(insert, first + 3, 1.0);
            sqlite3_bind_double(insert, first + 4, 0.0);
            sqlite3_bind_int(insert, first + 5, 0);
            sqlite3_bind_int(insert, first + 6, 0);
            sqlite3_bind_null(insert, first + 7);
        }
        sqlite3_bind_int(insert, 22, 1);
        sqlite3_bind_int64(insert, 23, layerId);
        sqlite3_bind_null(insert, 24);
        sqlite3_bind_int(insert, 25, r.function);
        sqlite3_bind_text(insert, 26, thicknesses, -1, SQLITE_TRANSIENT);
        for (int i = 27; i <= 29; ++i)
            sqlite3_bind_int(insert, i, 0);
        sqlite3_bind_int(insert, 30, 1);
        sqlite3_bind_text(insert, 31, "", 0, SQLITE_STATIC);
        sqlite3_bind_text(insert, 32, r.uniqueCode.data(), int(r.uniqueCode.size()), SQLITE_STATIC);
        for (int i = 33; i <= 39; ++i)
            sqlite3_bind_text(insert, i, "", 0, SQLITE_STATIC);
        sqlite3_bind_text(insert, 36, r.manufacturer.data(), int(r.manufacturer.size()), SQLITE_STATIC);
        sqlite3_bind_int(insert, 40, 1);
        sqlite3_bind_double(insert, 41, r.density);
        sqlite3_bind_text(insert, 42, "kg/m\u00B3", -1, SQLITE_STATIC);
        sqlite3_bind_null(insert, 43);
        sqlite3_bind_text(insert, 44, "", 0, SQLITE_STATIC);
        sqlite3_bind_null(insert, 45);
        sqlite3_bind_text(insert, 46, "", 0, SQLITE_STATIC);
        check(sqlite3_step(insert), m_db);
        sqlite3_reset(insert);
        int64_t id = sqlite3_last_insert_rowid(m_db);
        const std::string* tags[2] = {&r.tag1, &r.tag2};
        for (int p = 0; p < 2; ++p) {
            sqlite3_bind_int64(tag, 1, id);
            sqlite3_bind_int(tag, 2, p);
            sqlite3_bind_int64(tag, 3, namedId("lib_tag", *tags[p]));
            check(sqlite3_step(tag), m_db);
            sqlite3_reset(tag);
        }
    }
    exec("COMMIT");
}

std::vector<RawRow> Floor::readMaterials(sqlite3_stmt* rows, sqlite3_stmt* tags) {
    std::vector<RawRow> result;
    std::vector<int64_t> ids;
    while (sqlite3_step(rows) == SQLITE_ROW) {
        result.emplace_back();
        readRow(rows, result.back());
        ids.push_back(sqlite3_column_int64(rows, 0));
    }
    sqlite3_reset(rows);
    if (tags) {
        for (size_t i = 0; i < result.size(); ++i)
            readTags(tags, 4, ids[i], result[i]);
    }
    return result;
}

size_t Floor::getMaterialsByName(const std::vector<MaterialRecord>& records) {
    sqlite3_stmt* rows = prepare(kSelectMaterial + " WHERE m.name = ?1");
    sqlite3_stmt* tags = prepare(kTagsOf);
    size_t found = 0;
    for (const MaterialRecord& r : records) {
        sqlite3_bind_text(rows, 1, r.name.data(), int(r.name.size()), SQLITE_STATIC);
        found += readMaterials(rows, tags).size();
    }
    return found;
}

size_t Floor::queryAllMaterials() { return queryMaterials(std::string()); }

size_t Floor::queryMaterials(const std::string& where) {
    // One pass over the rows and one over all tag links, matched by id.
    sqlite3_stmt* rows = prepare(kSelectMaterial + where + " ORDER BY m.id");
    std::vector<RawRow> result;
    std::unordered_map<int64_t, size_t> index;
    while (sqlite3_step(rows) == SQLITE_ROW) {
        index[sqlite3_column_int64(rows, 0)] = result.size();
        result.emplace_back();
        readRow(rows, result.back());
    }
    sqlite3_reset(rows);
    sqlite3_stmt* tags = prepare("SELECT ot.object_id, t.name FROM lib_object_tag ot JOIN lib_tag t ON t.id = ot.tag_id"
                                 " WHERE ot.object_type = 4" +
                                 (where.empty() ? std::string() : " AND ot.object_id IN (SELECT m.id FROM lib_material m" + where + ")") +
                                 " ORDER BY ot.object_id, ot.position");
    while (sqlite3_step(tags) == SQLITE_ROW) {
        const auto found = index.find(sqlite3_column_int64(tags, 0));
        if (found != index.end())
            result[found->second].tags.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(tags, 1)));
    }
    sqlite3_reset(tags);
    return result.size();
}

size_t Floor::queryMaterialsByClassAndTag() {
    sqlite3_stmt* rows = prepare(kSelectMaterial +
                                 " WHERE c.name = ?1 AND m.id IN (SELECT ot.object_id FROM lib_object_tag ot"
                                 " JOIN lib_tag t ON t.id = ot.tag_id WHERE ot.object_type = 4 AND t.name IN (?2))"
                                 " ORDER BY m.id");
    sqlite3_bind_text(rows, 1, kQueryClass, -1, SQLITE_STATIC);
    sqlite3_bind_text(rows, 2, kQueryTag, -1, SQLITE_STATIC);
    return readMaterials(rows, prepare(kTagsOf)).size();
}

void Floor::saveCompositions(const std::vector<CompositionRecord>& records, const std::vector<MaterialRecord>& materials) {
    exec("BEGIN IMMEDIATE");
    std::unordered_map<std::string, int64_t> materialIds;
    sqlite3_stmt* all = prepare("SELECT id, name FROM lib_material");
    while (sqlite3_step(all) == SQLITE_ROW)
        materialIds[reinterpret_cast<const char*>(sqlite3_column_text(all, 1))] = sqlite3_column_int64(all, 0);
    sqlite3_reset(all);
    sqlite3_stmt* insert = prepare(
        "INSERT INTO lib_composition(name, description, comments, base_type, type_id, layer_id, variable_ply, variable_min)"
        " VALUES (?1, ?2, '', ?3, ?4, ?5, -1, 0)");
    sqlite3_stmt* ply = prepare("INSERT INTO lib_ply(composition_id, position, material_id, thickness, function) VALUES (?1, ?2, ?3, ?4, ?5)");
    sqlite3_stmt* tag = prepare("INSERT INTO lib_object_tag(object_type, object_id, position, tag_id) VALUES (5, ?1, 0, ?2)");
    for (const CompositionRecord& r : records) {
        sqlite3_bind_text(insert, 1, r.name.data(), int(r.name.size()), SQLITE_STATIC);
        sqlite3_bind_text(insert, 2, r.description.data(), int(r.description.size()), SQLITE_STATIC);
        sqlite3_bind_int(insert, 3, r.baseType);
        sqlite3_bind_int64(insert, 4, namedId("lib_composition_type", r.typeName));
        sqlite3_bind_int64(insert, 5, namedId("lib_layer", r.layer));
        check(sqlite3_step(insert), m_db);
        sqlite3_reset(insert);
        int64_t id = sqlite3_last_insert_rowid(m_db);
        for (int p = 0; p < 3; ++p) {
            sqlite3_bind_int64(ply, 1, id);
            sqlite3_bind_int(ply, 2, p);
            sqlite3_bind_int64(ply, 3, materialIds[materials[size_t(r.plyMaterial[p])].name]);
            sqlite3_bind_double(ply, 4, r.plyThickness[p]);
            sqlite3_bind_int(ply, 5, r.plyFunction[p]);
            check(sqlite3_step(ply), m_db);
            sqlite3_reset(ply);
        }
        sqlite3_bind_int64(tag, 1, id);
        sqlite3_bind_int64(tag, 2, namedId("lib_tag", r.tag));
        check(sqlite3_step(tag), m_db);
        sqlite3_reset(tag);
    }
    exec("COMMIT");
}

std::vector<RawRow> Floor::readCompositions(sqlite3_stmt* rows, sqlite3_stmt* tags, sqlite3_stmt* plies,
                                            std::vector<RawRow>& materials) {
    std::vector<RawRow> result;
    std::vector<int64_t> ids;
    while (sqlite3_step(rows) == SQLITE_ROW) {
        result.emplace_back();
        readRow(rows, result.back());
        ids.push_back(sqlite3_column_int64(rows, 0));
    }
    sqlite3_reset(rows);
    std::set<int64_t> materialIds;
    for (size_t i = 0; i < result.size(); ++i) {
        readTags(tags, 5, ids[i], result[i]);
        sqlite3_bind_int64(plies, 1, ids[i]);
        while (sqlite3_step(plies) == SQLITE_ROW) {
            result[i].numbers.push_back(double(sqlite3_column_int64(plies, 0)));
            result[i].numbers.push_back(sqlite3_column_double(plies, 1));
            result[i].numbers.push_back(sqlite3_column_double(plies, 2));
            materialIds.insert(sqlite3_column_int64(plies, 0));
        }
        sqlite3_reset(plies);
    }
    sqlite3_stmt* material = prepare(kSelectMaterial + " WHERE m.id = ?1");
    sqlite3_stmt* materialTags = prepare(kTagsOf);
    for (int64_t id : materialIds) {
        sqlite3_bind_int64(material, 1, id);
        for (RawRow& row : readMaterials(material, materialTags))
            materials.push_back(std::move(row));
    }
    return result;
}

size_t Floor::getCompositionsByName(const std::vector<CompositionRecord>& records) {
    sqlite3_stmt* rows = prepare(kSelectComposition + " WHERE k.name = ?1");
    sqlite3_stmt* tags = prepare(kTagsOf);
    sqlite3_stmt* plies = prepare("SELECT material_id, thickness, function FROM lib_ply WHERE composition_id = ?1 ORDER BY position");
    size_t found = 0;
    for (const CompositionRecord& r : records) {
        sqlite3_bind_text(rows, 1, r.name.data(), int(r.name.size()), SQLITE_STATIC);
        std::vector<RawRow> materials;
        found += readCompositions(rows, tags, plies, materials).size();
    }
    return found;
}

size_t Floor::queryAllCompositions() { return queryCompositions(std::string()); }

size_t Floor::queryCompositionsByTypeAndTag() {
    return queryCompositions(" WHERE k.base_type = " + std::to_string(kQueryBaseType) +
                             " AND k.id IN (SELECT ot.object_id FROM lib_object_tag ot JOIN lib_tag t ON t.id = ot.tag_id"
                             " WHERE ot.object_type = 5 AND t.name = '" + std::string(kQueryCompositionTag) + "')");
}

size_t Floor::queryCompositions(const std::string& where) {
    // One pass over the rows, one over their tag links and one over their plies, matched by id;
    // then the materials the plies use.
    const std::string chosen = where.empty() ? std::string() : " IN (SELECT k.id FROM lib_composition k" + where + ")";
    sqlite3_stmt* rows = prepare(kSelectComposition + where + " ORDER BY k.id");
    std::vector<RawRow> result;
    std::unordered_map<int64_t, size_t> index;
    while (sqlite3_step(rows) == SQLITE_ROW) {
        index[sqlite3_column_int64(rows, 0)] = result.size();
        result.emplace_back();
        readRow(rows, result.back());
    }
    sqlite3_reset(rows);
    sqlite3_stmt* tags = prepare("SELECT ot.object_id, t.name FROM lib_object_tag ot JOIN lib_tag t ON t.id = ot.tag_id"
                                 " WHERE ot.object_type = 5" + (chosen.empty() ? std::string() : " AND ot.object_id" + chosen) +
                                 " ORDER BY ot.object_id, ot.position");
    while (sqlite3_step(tags) == SQLITE_ROW)
        result[index[sqlite3_column_int64(tags, 0)]].tags.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(tags, 1)));
    sqlite3_reset(tags);
    const std::string plyRows = " FROM lib_ply" + (chosen.empty() ? std::string() : " WHERE composition_id" + chosen);
    sqlite3_stmt* plies = prepare("SELECT composition_id, material_id, thickness, function" + plyRows +
                                  " ORDER BY composition_id, position");
    while (sqlite3_step(plies) == SQLITE_ROW) {
        RawRow& row = result[index[sqlite3_column_int64(plies, 0)]];
        row.numbers.push_back(sqlite3_column_double(plies, 1));
        row.numbers.push_back(sqlite3_column_double(plies, 2));
    }
    sqlite3_reset(plies);
    queryMaterials(" WHERE m.id IN (SELECT material_id" + plyRows + ")");
    return result.size();
}

// Writes a material row read from another file (the layout of kSelectMaterial), resolving
// its class, layer and tags by name.
int64_t Floor::writeMaterialRow(const RawRow& row, int64_t replaceId) {
    // texts: name, description, comments, appearance, sect_name, sect_background(null), elev_name,
    // elev_background(null), sect/elev layer ids as null when absent ..., then c.name, sl.name, el.name.
    const std::string& name = row.texts[0];
    const std::string& className = row.texts[row.texts.size() - 3];
    const std::string& layerName = row.texts[row.texts.size() - 2];
    sqlite3_stmt* stmt = replaceId
        ? prepare(std::string("UPDATE lib_material SET (") + kColumns + ") = (" + placeholders(46) + ") WHERE id = ?47")
        : prepare(std::string("INSERT INTO lib_material(") + kColumns + ") VALUES (" + placeholders(46) + ")");
    sqlite3_bind_text(stmt, 1, name.data(), int(name.size()), SQLITE_STATIC);
    sqlite3_bind_text(stmt, 2, row.texts[1].data(), int(row.texts[1].size()), SQLITE_STATIC);
    sqlite3_bind_text(stmt, 3, row.texts[2].data(), int(row.texts[2].size()), SQLITE_STATIC);
    if (className.empty()) sqlite3_bind_null(stmt, 4); else sqlite3_bind_int64(stmt, 4, namedId("lib_material_type", className));
    sqlite3_bind_text(stmt, 5, "", 0, SQLITE_STATIC);
    for (int view = 0; view < 2; ++view) {
        int first = 6 + view * 8;
        sqlite3_bind_int(stmt, first, 0);
        sqlite3_bind_text(stmt, first + 1, "", 0, SQLITE_STATIC);
        sqlite3_bind_double(stmt, first + 2, 1.0);
        sqlite3_bind_double(stmt, first + 3, 1.0);
        sqlite3_bind_double(stmt, first + 4, 0.0);
        sqlite3_bind_int(stmt, first + 5, 0);
        sqlite3_bind_int(stmt, first + 6, 0);
        sqlite3_bind_null(stmt, first + 7);
    }
    sqlite3_bind_int(stmt, 22, 1);
    if (layerName.empty()) sqlite3_bind_null(stmt, 23); else sqlite3_bind_int64(stmt, 23, namedId("lib_layer", layerName));
    sqlite3_bind_null(stmt, 24);
    sqlite3_bind_int(stmt, 25, 1);
    sqlite3_bind_text(stmt, 26, "0.1 0.2", -1, SQLITE_STATIC);
    for (int i = 27; i <= 29; ++i)
        sqlite3_bind_int(stmt, i, 0);
    sqlite3_bind_int(stmt, 30, 1);
    for (int i = 31; i <= 39; ++i)
        sqlite3_bind_text(stmt, i, "", 0, SQLITE_STATIC);
    sqlite3_bind_int(stmt, 40, 1);
    sqlite3_bind_double(stmt, 41, 1000.0);
    sqlite3_bind_text(stmt, 42, "kg/m\u00B3", -1, SQLITE_STATIC);
    sqlite3_bind_null(stmt, 43);
    sqlite3_bind_text(stmt, 44, "", 0, SQLITE_STATIC);
    sqlite3_bind_null(stmt, 45);
    sqlite3_bind_text(stmt, 46, "", 0, SQLITE_STATIC);
    if (replaceId)
        sqlite3_bind_int64(stmt, 47, replaceId);
    check(sqlite3_step(stmt), m_db);
    sqlite3_reset(stmt);
    int64_t id = replaceId ? replaceId : sqlite3_last_insert_rowid(m_db);
    if (replaceId) {
        sqlite3_stmt* clear = prepare("DELETE FROM lib_object_tag WHERE object_type = 4 AND object_id = ?1");
        sqlite3_bind_int64(clear, 1, id);
        check(sqlite3_step(clear), m_db);
        sqlite3_reset(clear);
    }
    sqlite3_stmt* tag = prepare("INSERT INTO lib_object_tag(object_type, object_id, position, tag_id) VALUES (4, ?1, ?2, ?3)");
    for (size_t p = 0; p < row.tags.size(); ++p) {
        sqlite3_bind_int64(tag, 1, id);
        sqlite3_bind_int(tag, 2, int(p));
        sqlite3_bind_int64(tag, 3, namedId("lib_tag", row.tags[p]));
        check(sqlite3_step(tag), m_db);
        sqlite3_reset(tag);
    }
    return id;
}

void Floor::copyMaterials(Floor& source) {
    exec("BEGIN IMMEDIATE");
    std::vector<RawRow> rows = source.readMaterials(source.prepare(kSelectMaterial + " ORDER BY m.id"), source.prepare(kTagsOf));
    sqlite3_stmt* find = prepare("SELECT id FROM lib_material WHERE name = ?1");
    for (const RawRow& row : rows) {
        sqlite3_bind_text(find, 1, row.texts[0].data(), int(row.texts[0].size()), SQLITE_STATIC);
        int64_t existing = sqlite3_step(find) == SQLITE_ROW ? sqlite3_column_int64(find, 0) : 0;
        sqlite3_reset(find);
        writeMaterialRow(row, existing);
    }
    exec("COMMIT");
}

void Floor::copyCompositions(Floor& source) {
    exec("BEGIN IMMEDIATE");
    std::vector<RawRow> materials;
    sqlite3_stmt* sourcePlies = source.prepare("SELECT material_id, thickness, function FROM lib_ply WHERE composition_id = ?1 ORDER BY position");
    std::vector<RawRow> rows = source.readCompositions(source.prepare(kSelectComposition + " ORDER BY k.id"),
                                                       source.prepare(kTagsOf), sourcePlies, materials);
    // Materials first (each once), remembering their new ids by name.
    std::unordered_map<std::string, int64_t> materialIds;
    sqlite3_stmt* findMaterial = prepare("SELECT id FROM lib_material WHERE name = ?1");
    for (const RawRow& row : materials) {
        sqlite3_bind_text(findMaterial, 1, row.texts[0].data(), int(row.texts[0].size()), SQLITE_STATIC);
        int64_t existing = sqlite3_step(findMaterial) == SQLITE_ROW ? sqlite3_column_int64(findMaterial, 0) : 0;
        sqlite3_reset(findMaterial);
        materialIds[row.texts[0]] = writeMaterialRow(row, existing);
    }
    // Source ply material ids to names.
    std::unordered_map<int64_t, std::string> sourceNames;
    sqlite3_stmt* names = source.prepare("SELECT id, name FROM lib_material");
    while (sqlite3_step(names) == SQLITE_ROW)
        sourceNames[sqlite3_column_int64(names, 0)] = reinterpret_cast<const char*>(sqlite3_column_text(names, 1));
    sqlite3_reset(names);

    sqlite3_stmt* find = prepare("SELECT id FROM lib_composition WHERE name = ?1");
    sqlite3_stmt* insert = prepare(
        "INSERT INTO lib_composition(name, description, comments, base_type, type_id, layer_id, variable_ply, variable_min)"
        " VALUES (?1, ?2, '', ?3, ?4, ?5, -1, 0)");
    sqlite3_stmt* update = prepare(
        "UPDATE lib_composition SET (name, description, comments, base_type, type_id, layer_id, variable_ply, variable_min)"
        " = (?1, ?2, '', ?3, ?4, ?5, -1, 0) WHERE id = ?6");
    sqlite3_stmt* clearPlies = prepare("DELETE FROM lib_ply WHERE composition_id = ?1");
    sqlite3_stmt* clearTags = prepare("DELETE FROM lib_object_tag WHERE object_type = 5 AND object_id = ?1");
    sqlite3_stmt* ply = prepare("INSERT INTO lib_ply(composition_id, position, material_id, thickness, function) VALUES (?1, ?2, ?3, ?4, ?5)");
    sqlite3_stmt* tag = prepare("INSERT INTO lib_object_tag(object_type, object_id, position, tag_id) VALUES (5, ?1, ?2, ?3)");
    for (const RawRow& row : rows) {
        // texts: name, description, comments, type name, layer name; numbers: id, base type,
        // type id, layer id, variable ply, variable min, then (material, thickness, function) per ply.
        const std::string& name = row.texts[0];
        sqlite3_bind_text(find, 1, name.data(), int(name.size()), SQLITE_STATIC);
        int64_t existing = sqlite3_step(find) == SQLITE_ROW ? sqlite3_column_int64(find, 0) : 0;
        sqlite3_reset(find);
        sqlite3_stmt* write = existing ? update : insert;
        sqlite3_bind_text(write, 1, name.data(), int(name.size()), SQLITE_STATIC);
        sqlite3_bind_text(write, 2, row.texts[1].data(), int(row.texts[1].size()), SQLITE_STATIC);
        sqlite3_bind_int64(write, 3, int64_t(row.numbers[1]));
        sqlite3_bind_int64(write, 4, namedId("lib_composition_type", row.texts[3]));
        sqlite3_bind_int64(write, 5, namedId("lib_layer", row.texts[4]));
        if (existing)
            sqlite3_bind_int64(write, 6, existing);
        check(sqlite3_step(write), m_db);
        sqlite3_reset(write);
        int64_t id = existing ? existing : sqlite3_last_insert_rowid(m_db);
        if (existing) {
            for (sqlite3_stmt* clear : {clearPlies, clearTags}) {
                sqlite3_bind_int64(clear, 1, id);
                check(sqlite3_step(clear), m_db);
                sqlite3_reset(clear);
            }
        }
        for (size_t p = 0, at = 6; at + 2 < row.numbers.size(); ++p, at += 3) {
            sqlite3_bind_int64(ply, 1, id);
            sqlite3_bind_int(ply, 2, int(p));
            sqlite3_bind_int64(ply, 3, materialIds[sourceNames[int64_t(row.numbers[at])]]);
            sqlite3_bind_double(ply, 4, row.numbers[at + 1]);
            sqlite3_bind_int(ply, 5, int(row.numbers[at + 2]));
            check(sqlite3_step(ply), m_db);
            sqlite3_reset(ply);
        }
        for (size_t p = 0; p < row.tags.size(); ++p) {
            sqlite3_bind_int64(tag, 1, id);
            sqlite3_bind_int(tag, 2, int(p));
            sqlite3_bind_int64(tag, 3, namedId("lib_tag", row.tags[p]));
            check(sqlite3_step(tag), m_db);
            sqlite3_reset(tag);
        }
    }
    exec("COMMIT");
}

void Floor::removeCompositions() {
    exec("BEGIN IMMEDIATE");
    std::vector<int64_t> ids;
    sqlite3_stmt* all = prepare("SELECT id FROM lib_composition");
    while (sqlite3_step(all) == SQLITE_ROW)
        ids.push_back(sqlite3_column_int64(all, 0));
    sqlite3_reset(all);
    sqlite3_stmt* remove = prepare("DELETE FROM lib_composition WHERE id = ?1");
    for (int64_t id : ids) {
        sqlite3_bind_int64(remove, 1, id);
        check(sqlite3_step(remove), m_db);
        sqlite3_reset(remove);
    }
    exec("COMMIT");
}

void Floor::removeMaterials() {
    exec("BEGIN IMMEDIATE");
    std::vector<int64_t> ids;
    sqlite3_stmt* all = prepare("SELECT id FROM lib_material");
    while (sqlite3_step(all) == SQLITE_ROW)
        ids.push_back(sqlite3_column_int64(all, 0));
    sqlite3_reset(all);
    sqlite3_stmt* used = prepare("SELECT 1 FROM lib_ply WHERE material_id = ?1 LIMIT 1");
    sqlite3_stmt* remove = prepare("DELETE FROM lib_material WHERE id = ?1");
    for (int64_t id : ids) {
        sqlite3_bind_int64(used, 1, id);
        bool referenced = sqlite3_step(used) == SQLITE_ROW;
        sqlite3_reset(used);
        if (referenced)
            continue;
        sqlite3_bind_int64(remove, 1, id);
        check(sqlite3_step(remove), m_db);
        sqlite3_reset(remove);
    }
    exec("COMMIT");
}

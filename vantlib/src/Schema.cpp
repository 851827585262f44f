#include "Schema.h"

#include <string>

#include <vantlib/Library.h>

#include "Statement.h"
#include "Text.h"

namespace vantlib {

namespace {

// Version 1. Names are unique per kind regardless of ASCII letter case. Tags and custom
// values are keyed by (object_type, object_id) so that kinds added later (profiles) use
// the same tables; triggers drop them with their object.
const char* const kSchemaV1 = R"SQL(
CREATE TABLE lib_meta(key TEXT PRIMARY KEY NOT NULL, value TEXT NOT NULL) WITHOUT ROWID;
CREATE TABLE lib_tag(id INTEGER PRIMARY KEY, name TEXT NOT NULL COLLATE NOCASE UNIQUE CHECK(name <> ''));
CREATE TABLE lib_layer(id INTEGER PRIMARY KEY, name TEXT NOT NULL COLLATE NOCASE UNIQUE CHECK(name <> ''));
CREATE TABLE lib_material_type(id INTEGER PRIMARY KEY, name TEXT NOT NULL COLLATE NOCASE UNIQUE CHECK(name <> ''));
CREATE TABLE lib_composition_type(id INTEGER PRIMARY KEY, name TEXT NOT NULL COLLATE NOCASE UNIQUE CHECK(name <> ''));
CREATE TABLE lib_custom_property(id INTEGER PRIMARY KEY, name TEXT NOT NULL COLLATE NOCASE UNIQUE CHECK(name <> ''),
    object_type INTEGER NOT NULL CHECK(object_type IN (0, 4, 5)));
CREATE TABLE lib_material(
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL COLLATE NOCASE UNIQUE CHECK(name <> ''),
    description TEXT NOT NULL DEFAULT '',
    comments TEXT NOT NULL DEFAULT '',
    class_id INTEGER REFERENCES lib_material_type(id),
    appearance TEXT NOT NULL DEFAULT '',
    sect_type INTEGER NOT NULL DEFAULT 0, sect_name TEXT NOT NULL DEFAULT '', sect_scale REAL NOT NULL DEFAULT 1,
    sect_space REAL NOT NULL DEFAULT 1, sect_angle REAL NOT NULL DEFAULT 0, sect_cross INTEGER NOT NULL DEFAULT 0,
    sect_annotative INTEGER NOT NULL DEFAULT 0, sect_background INTEGER,
    elev_type INTEGER NOT NULL DEFAULT 0, elev_name TEXT NOT NULL DEFAULT '', elev_scale REAL NOT NULL DEFAULT 1,
    elev_space REAL NOT NULL DEFAULT 1, elev_angle REAL NOT NULL DEFAULT 0, elev_cross INTEGER NOT NULL DEFAULT 0,
    elev_annotative INTEGER NOT NULL DEFAULT 0, elev_background INTEGER,
    has_bim INTEGER NOT NULL DEFAULT 0,
    sect_layer_id INTEGER REFERENCES lib_layer(id),
    elev_layer_id INTEGER REFERENCES lib_layer(id),
    default_function INTEGER NOT NULL DEFAULT 0 CHECK(default_function BETWEEN 0 AND 6),
    thicknesses TEXT NOT NULL DEFAULT '',
    variable_thickness INTEGER NOT NULL DEFAULT 0,
    union_elevation INTEGER NOT NULL DEFAULT 0,
    union_section INTEGER NOT NULL DEFAULT 0,
    has_info INTEGER NOT NULL DEFAULT 0,
    classification TEXT NOT NULL DEFAULT '', unique_code TEXT, cost TEXT NOT NULL DEFAULT '',
    keynote TEXT NOT NULL DEFAULT '', label TEXT NOT NULL DEFAULT '', manufacturer TEXT NOT NULL DEFAULT '',
    mark TEXT NOT NULL DEFAULT '', model TEXT NOT NULL DEFAULT '', url TEXT NOT NULL DEFAULT '',
    has_physical INTEGER NOT NULL DEFAULT 0,
    density REAL, density_unit TEXT NOT NULL DEFAULT '',
    conductivity REAL, conductivity_unit TEXT NOT NULL DEFAULT '',
    specific_heat REAL, specific_heat_unit TEXT NOT NULL DEFAULT '');
CREATE INDEX lib_material_class ON lib_material(class_id);
CREATE INDEX lib_material_sect_layer ON lib_material(sect_layer_id);
CREATE INDEX lib_material_elev_layer ON lib_material(elev_layer_id);
CREATE TABLE lib_composition(
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL COLLATE NOCASE UNIQUE CHECK(name <> ''),
    description TEXT NOT NULL DEFAULT '',
    comments TEXT NOT NULL DEFAULT '',
    base_type INTEGER NOT NULL DEFAULT 1,
    type_id INTEGER REFERENCES lib_composition_type(id),
    layer_id INTEGER REFERENCES lib_layer(id),
    variable_ply INTEGER NOT NULL DEFAULT -1,
    variable_min REAL NOT NULL DEFAULT 0);
CREATE INDEX lib_composition_base_type ON lib_composition(base_type);
CREATE INDEX lib_composition_type_ref ON lib_composition(type_id);
CREATE INDEX lib_composition_layer ON lib_composition(layer_id);
CREATE TABLE lib_ply(
    composition_id INTEGER NOT NULL REFERENCES lib_composition(id) ON DELETE CASCADE,
    position INTEGER NOT NULL,
    material_id INTEGER NOT NULL REFERENCES lib_material(id),
    thickness REAL NOT NULL,
    function INTEGER NOT NULL CHECK(function BETWEEN 0 AND 6),
    PRIMARY KEY(composition_id, position)) WITHOUT ROWID;
CREATE INDEX lib_ply_material ON lib_ply(material_id);
CREATE TABLE lib_object_tag(
    object_type INTEGER NOT NULL,
    object_id INTEGER NOT NULL,
    position INTEGER NOT NULL,
    tag_id INTEGER NOT NULL REFERENCES lib_tag(id),
    PRIMARY KEY(object_type, object_id, position)) WITHOUT ROWID;
CREATE INDEX lib_object_tag_tag ON lib_object_tag(tag_id, object_type, object_id);
CREATE TABLE lib_custom_value(
    object_type INTEGER NOT NULL,
    object_id INTEGER NOT NULL,
    property_id INTEGER NOT NULL REFERENCES lib_custom_property(id),
    value TEXT NOT NULL,
    PRIMARY KEY(object_type, object_id, property_id)) WITHOUT ROWID;
CREATE INDEX lib_custom_value_property ON lib_custom_value(property_id);
CREATE TRIGGER lib_material_drop AFTER DELETE ON lib_material BEGIN
    DELETE FROM lib_object_tag WHERE object_type = 4 AND object_id = old.id;
    DELETE FROM lib_custom_value WHERE object_type = 4 AND object_id = old.id;
END;
CREATE TRIGGER lib_composition_drop AFTER DELETE ON lib_composition BEGIN
    DELETE FROM lib_object_tag WHERE object_type = 5 AND object_id = old.id;
    DELETE FROM lib_custom_value WHERE object_type = 5 AND object_id = old.id;
END;
)SQL";

// Version 2 adds construction profiles: standards, profile names and one table for profiles
// of every shape. A profile is identified by its profile name and its size; its dimensions
// and custom outline are JSON text, so a new shape adds no table.
const char* const kSchemaV2 = R"SQL(
CREATE TABLE lib_profile_standard(id INTEGER PRIMARY KEY, name TEXT NOT NULL COLLATE NOCASE UNIQUE CHECK(name <> ''));
CREATE TABLE lib_profile_name(
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL COLLATE NOCASE CHECK(name <> ''),
    standard_id INTEGER REFERENCES lib_profile_standard(id),
    type INTEGER NOT NULL DEFAULT 1);
CREATE UNIQUE INDEX lib_profile_name_key ON lib_profile_name(standard_id, name);
CREATE INDEX lib_profile_name_name ON lib_profile_name(name);
CREATE TABLE lib_profile(
    id INTEGER PRIMARY KEY,
    size TEXT NOT NULL COLLATE NOCASE DEFAULT '',
    name_id INTEGER REFERENCES lib_profile_name(id),
    description TEXT NOT NULL DEFAULT '',
    material_id INTEGER REFERENCES lib_material(id),
    object_type INTEGER NOT NULL,
    has_offset INTEGER NOT NULL DEFAULT 0,
    offset_x REAL NOT NULL DEFAULT 0,
    offset_y REAL NOT NULL DEFAULT 0,
    parameters TEXT NOT NULL DEFAULT '{}',
    geometry TEXT);
CREATE UNIQUE INDEX lib_profile_key ON lib_profile(name_id, size);
CREATE INDEX lib_profile_size ON lib_profile(size);
CREATE INDEX lib_profile_type ON lib_profile(object_type);
CREATE INDEX lib_profile_material ON lib_profile(material_id);
)SQL";

// Version 3 adds property-set definitions: namespaces, the property sets of a namespace, the
// IFC classes each set is assigned to, and the property and value definitions of a set (one
// table, told apart by `kind`: 1 property, 2 value). Everything is kept in the order the user
// gives it (`position`). Set names are unique within their namespace and definition names
// within their set and kind, letter case ignored. Aliases are JSON text: a list of
// {"language", "name", "definition"} objects. A definition's type is its kind of specifier,
// primitive code, value category and the specifier's own data (JSON, or the original text of
// a kind the editors cannot change). `source` keeps, as JSON, what a definition file gave
// that has no column of its own (identifiers, the IFC data type as written, the constants of
// an enumeration with their aliases), so that the file can be written back as it was; it is
// empty for what was made in the library.
const char* const kSchemaV3 = R"SQL(
CREATE TABLE lib_pset_namespace(
    id INTEGER PRIMARY KEY,
    position INTEGER NOT NULL,
    name TEXT NOT NULL COLLATE NOCASE UNIQUE CHECK(name <> ''),
    label TEXT NOT NULL DEFAULT '',
    editable INTEGER NOT NULL DEFAULT 1);
CREATE TABLE lib_pset(
    id INTEGER PRIMARY KEY,
    namespace_id INTEGER NOT NULL REFERENCES lib_pset_namespace(id) ON DELETE CASCADE,
    position INTEGER NOT NULL,
    name TEXT NOT NULL COLLATE NOCASE CHECK(name <> ''),
    label TEXT NOT NULL DEFAULT '',
    description TEXT NOT NULL DEFAULT '',
    visible INTEGER NOT NULL DEFAULT 1,
    per_instance INTEGER NOT NULL DEFAULT 1,
    editable INTEGER NOT NULL DEFAULT 1,
    template_type TEXT NOT NULL DEFAULT '',
    applicable_type_value TEXT NOT NULL DEFAULT '',
    aliases TEXT NOT NULL DEFAULT '',
    source TEXT NOT NULL DEFAULT '',
    UNIQUE(namespace_id, name));
CREATE INDEX lib_pset_order ON lib_pset(namespace_id, position);
CREATE TABLE lib_pset_class(
    set_id INTEGER NOT NULL REFERENCES lib_pset(id) ON DELETE CASCADE,
    position INTEGER NOT NULL,
    class_name TEXT NOT NULL COLLATE NOCASE CHECK(class_name <> ''),
    PRIMARY KEY(set_id, position),
    UNIQUE(set_id, class_name)) WITHOUT ROWID;
CREATE INDEX lib_pset_class_name ON lib_pset_class(class_name);
CREATE TABLE lib_pset_definition(
    id INTEGER PRIMARY KEY,
    set_id INTEGER NOT NULL REFERENCES lib_pset(id) ON DELETE CASCADE,
    kind INTEGER NOT NULL CHECK(kind IN (1, 2)),
    position INTEGER NOT NULL,
    name TEXT NOT NULL COLLATE NOCASE CHECK(name <> ''),
    label TEXT NOT NULL DEFAULT '',
    description TEXT NOT NULL DEFAULT '',
    type_kind INTEGER NOT NULL DEFAULT 0,
    type_code INTEGER NOT NULL DEFAULT 11,
    value_category INTEGER NOT NULL DEFAULT 1,
    type_data TEXT NOT NULL DEFAULT '',
    measure TEXT NOT NULL DEFAULT '',
    aliases TEXT NOT NULL DEFAULT '',
    source TEXT NOT NULL DEFAULT '',
    UNIQUE(set_id, kind, name));
CREATE INDEX lib_pset_definition_order ON lib_pset_definition(set_id, kind, position);
)SQL";

// The step from version v to v + 1, at index v - 1.
const char* const kMigrationSteps[] = {kSchemaV2, kSchemaV3};

int queryInt(sqlite3* db, const char* sql) {
    Statement stmt(db, sql);
    return stmt.step() ? stmt.integer(0) : 0;
}

}  // namespace

void createSchema(sqlite3* db, const OdString& guid, OdDb::UnitsValue unit) {
    execute(db, kSchemaV1);
    execute(db, kSchemaV2);
    execute(db, kSchemaV3);
    Statement meta(db, "INSERT INTO lib_meta(key, value) VALUES (?1, ?2)");
    meta.reset().bind(1, std::string("guid")).bind(2, guid).run();
    meta.reset().bind(1, std::string("unit")).bind(2, std::to_string(int(unit))).run();
    meta.reset().bind(1, std::string("description")).bind(2, std::string()).run();
    execute(db, ("PRAGMA user_version = " + std::to_string(Library::kSchemaVersion)).c_str());
}

void migrateSchema(sqlite3* db, int fromVersion) {
    static_assert(sizeof(kMigrationSteps) / sizeof(kMigrationSteps[0]) == Library::kSchemaVersion - 1,
                  "one migration step per schema version after the first");
    // Each step takes a library from version v to v + 1; the caller holds the transaction.
    for (int version = fromVersion; version < Library::kSchemaVersion; ++version)
        execute(db, kMigrationSteps[version - 1]);
    execute(db, ("PRAGMA user_version = " + std::to_string(Library::kSchemaVersion)).c_str());
}

bool hasLibraryTables(sqlite3* db) {
    return queryInt(db, "SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name = 'lib_meta'") == 1;
}

int schemaVersion(sqlite3* db) { return queryInt(db, "PRAGMA user_version"); }

}  // namespace vantlib

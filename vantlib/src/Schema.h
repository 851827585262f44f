#pragma once
// Layout of the library tables (all prefixed lib_, so that they can live inside a drawing
// file next to tables owned by others) and their forward migrations.
#include <sqlite3.h>

#include <OdString.h>
#include <OdUnits.h>

namespace vantlib {

// Creates every library table and the metadata, and sets PRAGMA user_version.
void createSchema(sqlite3* db, const OdString& guid, OdDb::UnitsValue unit);
// Brings a library of an older version up to the current one (inside a transaction).
void migrateSchema(sqlite3* db, int fromVersion);
// True when the database holds the library tables.
bool hasLibraryTables(sqlite3* db);
int schemaVersion(sqlite3* db);

}  // namespace vantlib

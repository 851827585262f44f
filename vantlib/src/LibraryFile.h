#pragma once
// Opening library files: the checks made before anything may be written.
#include <memory>

#include <SQLiteCpp/Database.h>

#include <OdString.h>

namespace vantlib {

enum class FileAccess { kReadOnly, kReadWrite };

// Throws FileMissing or NotALibrary (not SQLite, truncated) from the file's header alone.
void checkFileHeader(const OdString& path, bool allowEmpty);
// True when this process may write the file and create its journal beside it.
bool canWrite(const OdString& path);
// Throws FileMissing when the folder that is to hold the file does not exist.
void requireFolder(const OdString& path);
// Connection with the module's settings (busy timeout, foreign keys, memory temp store).
std::unique_ptr<SQLite::Database> connect(const OdString& path, FileAccess access, bool create);
// Switches the file to write-ahead logging. A file that another connection is using at that
// moment keeps its current journal, which is just as safe, only less concurrent.
void preferWriteAheadLog(SQLite::Database& db);
// Called by the last writer before it closes: back to a rollback journal, so that tools that
// only read the library leave no -wal / -shm files beside it. Another connection still open
// keeps the write-ahead log; that is checked without waiting.
void leaveWriteAheadLog(SQLite::Database& db);
// Opens read-only and checks tables and version; throws NotALibrary / NewerSchema.
// Returns the schema version found.
int inspectLibrary(const OdString& path);

}  // namespace vantlib

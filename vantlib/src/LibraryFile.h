#pragma once
// Opening library files: the checks made before anything may be written, and the recovery of
// a write that a stopped program left unfinished.
//
// Libraries keep SQLite's rollback journal for good. It needs no shared-memory file, works
// on read-only media and network folders, and the journal mode is never switched, so there is
// no moment at which a stopped program leaves a half-made switch behind. Files that an earlier
// version left in write-ahead-log mode are moved to the rollback journal by their first
// writable open; until then read-only opens read them without touching anything beside them.
#include <sys/types.h>

#include <memory>
#include <string>

#include <SQLiteCpp/Database.h>

#include <OdString.h>

namespace vantlib {

enum class FileAccess { kReadOnly, kReadWrite };

// Which file a path leads to; compared to notice a file deleted or replaced behind an open
// library. Both zero when the path leads nowhere.
struct FileIdentity {
    dev_t device = 0;
    ino_t inode = 0;
    bool operator==(const FileIdentity& other) const { return device == other.device && inode == other.inode; }
    bool operator!=(const FileIdentity& other) const { return !(*this == other); }
};
FileIdentity identityOf(const OdString& path);

// Throws FileMissing or NotALibrary (not SQLite, truncated) from the file's header alone.
void checkFileHeader(const OdString& path, bool allowEmpty);
// True when this process may write the file and create its journal beside it.
bool canWrite(const OdString& path);
// Throws FileMissing when the folder that is to hold the file does not exist.
void requireFolder(const OdString& path);
// Connection with the module's settings (busy timeout, foreign keys, memory temp store). A
// read-only connection never writes the file or creates anything beside it; it throws
// NeedsRecovery when that would be needed to read the file.
std::unique_ptr<SQLite::Database> connect(const OdString& path, FileAccess access, bool create);

struct OpenedFile {
    std::unique_ptr<SQLite::Database> db;
    int schemaVersion = 0;
};
// Checks the header, connects and checks tables and version; throws FileMissing,
// NotALibrary, NewerSchema, Damaged or NeedsRecovery. A writable connection first finishes
// the recovery of an interrupted write (SQLite undoes it from the journal), which is the only
// thing written before the checks pass.
OpenedFile openLibraryFile(const OdString& path, FileAccess access);
// Raises the file error that an SQLite failure met while opening or checking a library means.
[[noreturn]] void throwOpenError(const OdString& path, int extendedCode, const std::string& message);

// Moves a file left in write-ahead-log mode to the rollback journal (see above). Leaves it as
// it is while another program has it open in that mode; a later open converts it.
void useRollbackJournal(SQLite::Database& db, const OdString& path);

// True for SQLite failures that mean the file no longer takes writes (read-only file or
// folder, full or failing disk), as opposed to locks, constraints or damage.
bool isWriteRefusal(int extendedCode);
bool isDamage(int extendedCode);
// SQLite's words for a result code, without the statement that met it.
OdString plainReason(int extendedCode);

}  // namespace vantlib

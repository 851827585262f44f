#include "LibraryFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <cstdio>
#include <cstring>

#include <vantlib/Exception.h>
#include <vantlib/Library.h>

#include "Schema.h"
#include "Text.h"

namespace vantlib {

namespace {

// How long a connection waits for another process's lock before it fails.
constexpr int kBusyTimeoutMs = 10000;

uint32_t bigEndian(const unsigned char* p, int bytes) {
    uint32_t v = 0;
    for (int i = 0; i < bytes; ++i)
        v = (v << 8) | p[i];
    return v;
}

std::string directoryOf(const std::string& path) {
    size_t slash = path.find_last_of('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

bool nonEmptyFile(const std::string& path) {
    struct stat info;
    return ::stat(path.c_str(), &info) == 0 && info.st_size > 0;
}

// Bytes 18 and 19 of the header: 2 when the file is in write-ahead-log mode.
bool headerSaysWriteAheadLog(const std::string& file) {
    unsigned char header[20];
    FILE* f = std::fopen(file.c_str(), "rb");
    if (!f)
        return false;
    size_t got = std::fread(header, 1, sizeof header, f);
    std::fclose(f);
    return got == sizeof header && (header[18] == 2 || header[19] == 2);
}

// "file:" URI of a path, for the query parameters of a read-only connection.
std::string fileUri(const std::string& path) {
    static const char* const hex = "0123456789ABCDEF";
    std::string uri = "file:";
    for (unsigned char c : path) {
        if (std::isalnum(c) || c == '/' || c == '-' || c == '_' || c == '.' || c == '~' || c >= 0x80) {
            uri += char(c);
        } else {
            uri += '%';
            uri += hex[c >> 4];
            uri += hex[c & 15];
        }
    }
    return uri;
}

// Settings that are not stored in the file. The 64 MB page cache keeps large libraries (100k
// objects and more) from going back to the file for every page. Reads are not memory-mapped:
// a disk error or a file shortened under a mapping would end the process with SIGBUS instead
// of failing the read.
void configure(SQLite::Database& db, bool readOnly) {
    db.exec("PRAGMA foreign_keys = ON; PRAGMA temp_store = MEMORY; PRAGMA cache_size = -65536");
    if (readOnly)
        db.exec("PRAGMA query_only = ON");
}

}  // namespace

void checkFileHeader(const OdString& path, bool allowEmpty) {
    std::string file = textToUtf8(path);
    struct stat info;
    if (::stat(file.c_str(), &info) != 0)
        throw FileMissing(path);
    if (!S_ISREG(info.st_mode))
        throw NotALibrary(path, OdString(L"not a regular file"));
    if (info.st_size == 0) {
        if (allowEmpty)
            return;
        throw NotALibrary(path, OdString(L"empty file"));
    }
    unsigned char header[100];
    FILE* f = std::fopen(file.c_str(), "rb");
    if (!f)
        throw NotALibrary(path, OdString(L"cannot be read"));
    size_t got = std::fread(header, 1, sizeof header, f);
    std::fclose(f);
    if (got < sizeof header || std::memcmp(header, "SQLite format 3", 16) != 0)
        throw NotALibrary(path, OdString(L"not an SQLite database"));
    uint32_t pageSize = bigEndian(header + 16, 2);
    if (pageSize == 1)
        pageSize = 65536;
    // The page count in the header is valid when its change counter matches.
    uint32_t pages = bigEndian(header + 28, 4);
    bool countValid = bigEndian(header + 24, 4) == bigEndian(header + 92, 4) && pages != 0;
    if (pageSize < 512 || (pageSize & (pageSize - 1)) != 0)
        throw NotALibrary(path, OdString(L"damaged header"));
    // With a journal beside it the file may be legitimately short (a write or a checkpoint cut
    // off midway), and SQLite completes or undoes it from the journal.
    bool pendingJournal = nonEmptyFile(file + "-wal") || nonEmptyFile(file + "-journal");
    if (countValid && !pendingJournal && uint64_t(info.st_size) < uint64_t(pages) * pageSize)
        throw NotALibrary(path, OdString(L"the file is truncated"));
}

FileIdentity identityOf(const OdString& path) {
    struct stat info;
    if (::stat(textToUtf8(path).c_str(), &info) != 0)
        return FileIdentity();
    return FileIdentity{info.st_dev, info.st_ino};
}

bool canWrite(const OdString& path) {
    std::string file = textToUtf8(path);
    // The effective user decides what may be written, as for the open itself.
    if (::access(file.c_str(), F_OK) == 0 && ::eaccess(file.c_str(), W_OK) != 0)
        return false;
    return ::eaccess(directoryOf(file).c_str(), W_OK) == 0;
}

void requireFolder(const OdString& path) {
    std::string folder = directoryOf(textToUtf8(path));
    struct stat info;
    if (::stat(folder.c_str(), &info) != 0 || !S_ISDIR(info.st_mode))
        throw FileMissing(textFromUtf8(folder));
}

std::unique_ptr<SQLite::Database> connect(const OdString& path, FileAccess access, bool create) {
    std::string file = textToUtf8(path);
    std::unique_ptr<SQLite::Database> db;
    if (access == FileAccess::kReadWrite) {
        int flags = SQLite::OPEN_READWRITE | (create ? SQLite::OPEN_CREATE : 0);
        db = std::make_unique<SQLite::Database>(file, flags, kBusyTimeoutMs);
    } else if (headerSaysWriteAheadLog(file)) {
        // SQLite reads such a file only through its -wal and -shm files, creating them when
        // missing, which fails on read-only media and folders. Without a log holding
        // changes, the file alone is the library: read it as an unchanging file, without
        // locks and without anything beside it. A log with changes needs a writable open.
        if (nonEmptyFile(file + "-wal"))
            throw NeedsRecovery(path);
        db = std::make_unique<SQLite::Database>(fileUri(file) + "?immutable=1", SQLite::OPEN_READONLY | SQLite::OPEN_URI,
                                                kBusyTimeoutMs);
    } else {
        db = std::make_unique<SQLite::Database>(file, SQLite::OPEN_READONLY, kBusyTimeoutMs);
    }
    configure(*db, access == FileAccess::kReadOnly);
    return db;
}

bool isWriteRefusal(int code) {
    switch (code & 0xFF) {
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_FULL:
    case SQLITE_CANTOPEN:
        return true;
    case SQLITE_IOERR:
        // A failed read is a failing disk, not a refused write.
        return code != SQLITE_IOERR_READ && code != SQLITE_IOERR_SHORT_READ;
    default:
        return false;
    }
}

OdString plainReason(int code) { return textFromUtf8(std::string(sqlite3_errstr(code))); }

bool isDamage(int code) { return (code & 0xFF) == SQLITE_CORRUPT || (code & 0xFF) == SQLITE_NOTADB; }

void throwOpenError(const OdString& path, int code, const std::string& message) {
    OdString reason = textFromUtf8(message);
    if (code == SQLITE_READONLY_ROLLBACK || code == SQLITE_READONLY_RECOVERY)
        throw NeedsRecovery(path);
    if (isDamage(code))
        throw Damaged(path, plainReason(code));
    if (headerSaysWriteAheadLog(textToUtf8(path)) && isWriteRefusal(code))
        throw FileError(path, OdString::formatted(L"Library file %ls was left in write-ahead-log mode, and its -wal and "
                                                  L"-shm files beside it cannot be used (%ls)",
                                                  path.c_str(), reason.c_str()));
    throw StorageError(path + L": " + reason, code);
}

namespace {

int inspect(sqlite3* db, const OdString& path) {
    // Tables first: an SQLite file of another program may use the version slot for itself.
    if (!hasLibraryTables(db))
        throw NotALibrary(path, OdString(L"no library tables"));
    int version = schemaVersion(db);
    if (version > Library::kSchemaVersion)
        throw NewerSchema(path, version, Library::kSchemaVersion);
    if (version < 1)
        throw NotALibrary(path, OdString(L"library tables without a schema version"));
    return version;
}

}  // namespace

OpenedFile openLibraryFile(const OdString& path, FileAccess access) {
    checkFileHeader(path, false);
    try {
        OpenedFile opened;
        opened.db = connect(path, access, false);
        // The first read of a writable connection undoes an interrupted write (hot journal)
        // or replays a write-ahead log; a read-only one fails with READONLY_ROLLBACK instead.
        opened.schemaVersion = inspect(opened.db->getHandle(), path);
        return opened;
    } catch (const SQLite::Exception& e) {
        throwOpenError(path, e.getExtendedErrorCode(), e.what());
    } catch (const StorageError& e) {
        throwOpenError(path, e.sqliteCode(), e.what());
    }
}

void useRollbackJournal(SQLite::Database& db, const OdString& path) {
    sqlite3* handle = db.getHandle();
    if (db.execAndGet("PRAGMA journal_mode").getString() != "wal")
        return;
    // Needs the file to itself; waiting for another program would hold up the open.
    sqlite3_busy_timeout(handle, 0);
    int rc = sqlite3_exec(handle, "PRAGMA journal_mode = DELETE", nullptr, nullptr, nullptr);
    std::string message = sqlite3_errmsg(handle);
    int code = sqlite3_extended_errcode(handle);
    sqlite3_busy_timeout(handle, kBusyTimeoutMs);
    // Busy: another program has the file open in that mode; the log stays safe meanwhile.
    if (rc != SQLITE_OK && (rc & 0xFF) != SQLITE_BUSY)
        throwOpenError(path, code, message);
}

}  // namespace vantlib

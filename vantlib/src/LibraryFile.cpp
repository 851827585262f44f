#include "LibraryFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>

#include <vantlib/Exception.h>
#include <vantlib/Library.h>

#include "Schema.h"
#include "Text.h"

namespace vantlib {

namespace {

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
    // With a non-empty journal beside it the file may be legitimately short (a checkpoint cut
    // off midway), and SQLite completes it from the journal.
    struct stat journal;
    bool pendingJournal = ::stat((file + "-wal").c_str(), &journal) == 0 && journal.st_size > 0;
    if (countValid && !pendingJournal && uint64_t(info.st_size) < uint64_t(pages) * pageSize)
        throw NotALibrary(path, OdString(L"the file is truncated"));
}

bool canWrite(const OdString& path) {
    std::string file = textToUtf8(path);
    if (::access(file.c_str(), F_OK) == 0 && ::access(file.c_str(), W_OK) != 0)
        return false;
    return ::access(directoryOf(file).c_str(), W_OK) == 0;
}

std::unique_ptr<SQLite::Database> connect(const OdString& path, FileAccess access, bool create) {
    int flags = access == FileAccess::kReadOnly ? SQLite::OPEN_READONLY : SQLite::OPEN_READWRITE;
    if (create)
        flags |= SQLite::OPEN_CREATE;
    auto db = std::make_unique<SQLite::Database>(textToUtf8(path), flags, 10000);
    // A 64 MB page cache and memory-mapped reads keep large libraries (100k objects and more)
    // from going back to the file for every page; neither setting is stored in the file.
    db->exec("PRAGMA foreign_keys = ON; PRAGMA temp_store = MEMORY; PRAGMA cache_size = -65536;"
             " PRAGMA mmap_size = 268435456");
    if (access == FileAccess::kReadOnly)
        db->exec("PRAGMA query_only = ON");
    return db;
}

void preferWriteAheadLog(SQLite::Database& db) {
    try {
        db.exec("PRAGMA journal_mode = WAL");
    } catch (const SQLite::Exception&) {
        // Busy: see the declaration.
    }
}

void leaveWriteAheadLog(SQLite::Database& db) {
    sqlite3_busy_timeout(db.getHandle(), 0);
    try {
        db.exec("PRAGMA journal_mode = DELETE");
    } catch (const SQLite::Exception&) {
        // Busy: somebody else has the library open and the log stays theirs to finish.
    }
}

void requireFolder(const OdString& path) {
    std::string folder = directoryOf(textToUtf8(path));
    struct stat info;
    if (::stat(folder.c_str(), &info) != 0 || !S_ISDIR(info.st_mode))
        throw FileMissing(textFromUtf8(folder));
}

int inspectLibrary(const OdString& path) {
    try {
        auto db = connect(path, FileAccess::kReadOnly, false);
        int version = schemaVersion(db->getHandle());
        bool tables = hasLibraryTables(db->getHandle());
        if (version > Library::kSchemaVersion)
            throw NewerSchema(path, version, Library::kSchemaVersion);
        if (!tables)
            throw NotALibrary(path, OdString(L"no library tables"));
        if (version < 1)
            throw NotALibrary(path, OdString(L"library tables without a schema version"));
        return version;
    } catch (const SQLite::Exception& e) {
        throw NotALibrary(path, textFromUtf8(std::string(e.what())));
    } catch (const StorageError& e) {
        throw NotALibrary(path, e.message());
    }
}

}  // namespace vantlib

// Library files in trouble: a write cut off by a killed program, files left in write-ahead-log
// mode by an earlier version, damaged files, and files that stop taking writes, vanish or are
// replaced while a library is open.
#include "support.h"

#include <signal.h>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <set>

using namespace vltest;

namespace {

namespace fs = std::filesystem;

constexpr uid_t kUnprivileged = 65534;

// The tests run as root, whom permissions do not stop. Within this scope they act as an
// ordinary user, so that read-only files and folders refuse writes as they do for users.
class AsOrdinaryUser {
public:
    AsOrdinaryUser() : m_switched(::geteuid() == 0) {
        if (m_switched && (::setegid(kUnprivileged) != 0 || ::seteuid(kUnprivileged) != 0))
            throw std::runtime_error("cannot act as an ordinary user");
    }
    ~AsOrdinaryUser() {
        if (m_switched && (::seteuid(0) != 0 || ::setegid(0) != 0))
            std::abort();
    }
    AsOrdinaryUser(const AsOrdinaryUser&) = delete;
    AsOrdinaryUser& operator=(const AsOrdinaryUser&) = delete;

private:
    bool m_switched;
};

// Lets the ordinary user of AsOrdinaryUser work in the folder.
void handToOrdinaryUser(const std::string& folder) {
    ::chmod(folder.c_str(), 0755);
    if (::geteuid() == 0) {
        ASSERT_EQ(0, ::chown(folder.c_str(), kUnprivileged, kUnprivileged));
    }
}

std::set<std::string> folderListing(const std::string& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.insert(entry.path().filename().string());
    return names;
}

std::string libraryWithMaterials(const TempDir& dir, const char* name, int count) {
    auto library = Library::create(dir.file(name), OdDb::kUnitsMillimeters);
    Transaction transaction(library);
    for (int i = 0; i < count; ++i)
        library->save(sampleMaterial(OdString::formatted(L"Material %d", i)));
    transaction.commit();
    return dir.path() + "/" + name;
}

void runSql(const std::string& path, const char* sql) {
    sqlite3* db = nullptr;
    ASSERT_EQ(SQLITE_OK, sqlite3_open(path.c_str(), &db));
    char* error = nullptr;
    EXPECT_EQ(SQLITE_OK, sqlite3_exec(db, sql, nullptr, nullptr, &error)) << (error ? error : "");
    sqlite3_free(error);
    sqlite3_close(db);
}

// As an earlier version left its libraries: the header says write-ahead log, no log beside it.
void leaveInWriteAheadLogMode(const std::string& path) {
    runSql(path, "PRAGMA journal_mode = WAL");
    ASSERT_FALSE(fs::exists(path + "-wal"));
}

// A program that is killed while writing `sql` in one transaction. With a small page cache
// SQLite writes changed pages into the file before the commit, so the file is left torn,
// with the journal that undoes it ("hot"), or in write-ahead-log mode with a log of commits.
void killedWhileWriting(const std::string& path, const char* sql) {
    pid_t child = ::fork();
    if (child == 0) {
        sqlite3* db = nullptr;
        if (sqlite3_open(path.c_str(), &db) != SQLITE_OK ||
            sqlite3_exec(db, "PRAGMA cache_size = 2; PRAGMA wal_autocheckpoint = 0", nullptr, nullptr, nullptr) != SQLITE_OK ||
            sqlite3_exec(db, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
            ::_exit(1);
        ::kill(::getpid(), SIGKILL);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
}

template <class Kind>
OdString messageOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const Kind& e) {
        return e.message();
    } catch (const std::exception& e) {
        ADD_FAILURE() << "another kind of failure: " << e.what();
        return OdString();
    }
    ADD_FAILURE() << "no failure";
    return OdString();
}

bool contains(const OdString& text, const wchar_t* part) { return text.find(part) >= 0; }

}  // namespace

TEST(FileFaults, WriteCutOffByAKillIsUndoneByTheFirstWritableOpen) {
    TempDir dir;
    std::string path = libraryWithMaterials(dir, "central.vlib", 300);
    std::string before = dumpLibrary(OdString::fromUtf8(path));
    killedWhileWriting(path, "BEGIN; UPDATE lib_material SET description = description || ' changed'");
    ASSERT_GT(fs::file_size(path + "-journal"), 0u);
    std::string torn = fileBytes(path);

    // Reading may not write, so it cannot undo the cut-off write; it says so.
    OdString message = messageOf<NeedsRecovery>([&] { Library::open(OdString::fromUtf8(path), true); });
    EXPECT_TRUE(contains(message, L"needs recovery")) << message.toUtf8();
    EXPECT_THROW(checkIntegrity(OdString::fromUtf8(path)), NeedsRecovery);
    EXPECT_TRUE(Library::containsLibrary(OdString::fromUtf8(path)));
    EXPECT_EQ(torn, fileBytes(path));

    {
        auto library = Library::open(OdString::fromUtf8(path));
        EXPECT_FALSE(library->isReadOnly());
        EXPECT_EQ(300u, library->count<Material>());
        EXPECT_EQ(W("Material 7 description"), library->get<Material>(NameKey(W("Material 7")))->description());
    }
    EXPECT_FALSE(fs::exists(path + "-journal"));
    EXPECT_EQ(before, dumpLibrary(OdString::fromUtf8(path)));
    EXPECT_TRUE(checkIntegrity(OdString::fromUtf8(path)).empty());
    EXPECT_EQ(300u, Library::open(OdString::fromUtf8(path), true)->count<Material>());
}

TEST(FileFaults, LibraryLeftInWriteAheadLogModeIsReadWhereNothingMayBeWritten) {
    TempDir dir;
    std::string path = libraryWithMaterials(dir, "old.vlib", 50);
    leaveInWriteAheadLogMode(path);
    ::chmod(dir.path().c_str(), 0555);  // readable by everybody, writable by nobody but root
    std::string bytes = fileBytes(path);
    std::set<std::string> listing = folderListing(dir.path());

    {
        AsOrdinaryUser user;
        ASSERT_NE(0, ::eaccess(dir.path().c_str(), W_OK)) << "the folder must refuse writes";
        for (bool readOnly : {false, true}) {
            auto library = Library::open(OdString::fromUtf8(path), readOnly);
            EXPECT_TRUE(library->isReadOnly());
            EXPECT_EQ(50u, library->count<Material>());
            EXPECT_EQ(W("Material 3 description"), library->get<Material>(NameKey(W("Material 3")))->description());
            EXPECT_THROW(library->save(Material::create(W("New"))), ReadOnly);
        }
        EXPECT_TRUE(checkIntegrity(OdString::fromUtf8(path)).empty());
    }
    // Where it could, a read-only open still leaves nothing beside the file.
    EXPECT_EQ(50u, Library::open(OdString::fromUtf8(path), true)->count<Material>());
    EXPECT_EQ(listing, folderListing(dir.path()));
    EXPECT_EQ(bytes, fileBytes(path));

    // A log with commits in it needs a writable open, which keeps them and leaves the mode.
    ::chmod(dir.path().c_str(), 0755);
    killedWhileWriting(path, "UPDATE lib_material SET description = 'kept' WHERE name = 'Material 3'");
    ASSERT_GT(fs::file_size(path + "-wal"), 0u);
    ::chmod(dir.path().c_str(), 0555);
    {
        AsOrdinaryUser user;
        EXPECT_THROW(Library::open(OdString::fromUtf8(path)), NeedsRecovery);
    }
    ::chmod(dir.path().c_str(), 0755);
    {
        auto library = Library::open(OdString::fromUtf8(path));
        EXPECT_FALSE(library->isReadOnly());
        EXPECT_EQ(W("kept"), library->get<Material>(NameKey(W("Material 3")))->description());
    }
    EXPECT_FALSE(fs::exists(path + "-wal"));
    EXPECT_FALSE(fs::exists(path + "-shm"));
    EXPECT_EQ(1, fileBytes(path)[18]) << "the header says rollback journal";
}

TEST(FileFaults, BlockedSharedMemoryFileIsAClearErrorNotACrash) {
    TempDir dir;
    std::string old = libraryWithMaterials(dir, "old.vlib", 20);
    leaveInWriteAheadLogMode(old);
    fs::create_directory(old + "-shm");
    std::string bytes = fileBytes(old);
    OdString message = messageOf<FileError>([&] { Library::open(OdString::fromUtf8(old)); });
    EXPECT_TRUE(contains(message, L"-shm")) << message.toUtf8();
    EXPECT_EQ(bytes, fileBytes(old));
    EXPECT_EQ(20u, Library::open(OdString::fromUtf8(old), true)->count<Material>());

    // Libraries in the rollback journal never use such a file.
    std::string current = libraryWithMaterials(dir, "current.vlib", 20);
    fs::create_directory(current + "-shm");
    auto library = Library::open(OdString::fromUtf8(current));
    library->save(Material::create(W("New")));
    EXPECT_EQ(21u, library->count<Material>());
}

TEST(FileFaults, DamagedLibraryIsRefusedInPlainWordsAndNeverWritten) {
    TempDir dir;
    std::string path = libraryWithMaterials(dir, "damaged.vlib", 200);
    int metaPage = 0;
    {
        sqlite3* db = nullptr;
        ASSERT_EQ(SQLITE_OK, sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr));
        sqlite3_stmt* stmt = nullptr;
        sqlite3_prepare_v2(db, "SELECT rootpage FROM sqlite_master WHERE name = 'lib_meta'", -1, &stmt, nullptr);
        EXPECT_EQ(SQLITE_ROW, sqlite3_step(stmt));
        metaPage = sqlite3_column_int(stmt, 0);
        sqlite3_finalize(stmt);
        sqlite3_close(db);
    }
    ASSERT_GT(metaPage, 1);
    std::string bytes = fileBytes(path);
    const size_t pageSize = 4096;
    for (size_t i = (metaPage - 1) * pageSize + 8; i < size_t(metaPage) * pageSize; ++i)
        bytes[i] = char(i * 131 + 7);
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;

    for (bool readOnly : {false, true}) {
        OdString message = messageOf<Damaged>([&] { Library::open(OdString::fromUtf8(path), readOnly); });
        EXPECT_TRUE(contains(message, L"the library is damaged")) << message.toUtf8();
        EXPECT_TRUE(contains(message, L"run vlib check")) << message.toUtf8();
        EXPECT_FALSE(contains(message, L"SELECT")) << message.toUtf8();
    }
    EXPECT_EQ(bytes, fileBytes(path));
    EXPECT_EQ(std::set<std::string>{"damaged.vlib"}, folderListing(dir.path()));
}

TEST(FileFaults, SqliteFileWithAVersionButNoLibraryTablesIsNotALibrary) {
    TempDir dir;
    std::string path = dir.path() + "/other.db";
    runSql(path, "CREATE TABLE notes(text); PRAGMA user_version = 7");
    OdString message = messageOf<NotALibrary>([&] { Library::open(OdString::fromUtf8(path)); });
    EXPECT_TRUE(contains(message, L"no library tables")) << message.toUtf8();
    EXPECT_FALSE(Library::containsLibrary(OdString::fromUtf8(path)));
}

TEST(FileFaults, FileThatStopsTakingWritesTurnsTheLibraryReadOnly) {
    TempDir dir;
    handToOrdinaryUser(dir.path());
    OdString path = dir.file("central.vlib");
    std::string file = path.toUtf8();
    {
        AsOrdinaryUser user;
        auto library = Library::create(path, OdDb::kUnitsMillimeters);
        library->save(sampleMaterial(W("Saved before")));

        // The file made read-only: the next write is refused, and every one after it.
        ASSERT_EQ(0, ::chmod(file.c_str(), 0444));
        OdString message = messageOf<WriteRefused>([&] { library->save(Material::create(W("Refused"))); });
        EXPECT_TRUE(contains(message, L"can no longer be written")) << message.toUtf8();
        EXPECT_TRUE(library->isReadOnly());
        ASSERT_EQ(0, ::chmod(file.c_str(), 0644));
        EXPECT_THROW(library->save(Material::create(W("Refused"))), ReadOnly);
        EXPECT_THROW(Transaction{library}, ReadOnly);
        EXPECT_EQ(1u, library->count<Material>());

        // The folder made read-only: SQLite cannot create the journal.
        auto again = Library::open(path, false);
        ASSERT_EQ(0, ::chmod(dir.path().c_str(), 0555));
        EXPECT_THROW(again->set_description(W("Refused")), WriteRefused);
        EXPECT_TRUE(again->isReadOnly());
        ASSERT_EQ(0, ::chmod(dir.path().c_str(), 0755));
    }
    auto library = Library::open(path);
    EXPECT_EQ(1u, library->count<Material>());
    EXPECT_FALSE(library->get<Material>(NameKey(W("Saved before"))).isNull());
    EXPECT_TRUE(library->description().isEmpty());
    EXPECT_TRUE(checkIntegrity(path).empty());
}

TEST(FileFaults, DiskThatRefusesTheCommitTurnsTheLibraryReadOnly) {
    TempDir dir;
    OdString path = W((libraryWithMaterials(dir, "full.vlib", 5)).c_str());
    std::string before = dumpLibrary(path);
    auto library = Library::open(path);
    RecordingReactor reactor;

    // The file may not grow any more, as on a full disk; SQLite writes the grown file at the
    // commit.
    struct rlimit saved;
    ::getrlimit(RLIMIT_FSIZE, &saved);
    struct rlimit limit = saved;
    limit.rlim_cur = fs::file_size(path.toUtf8());
    auto previousHandler = ::signal(SIGXFSZ, SIG_IGN);
    ::setrlimit(RLIMIT_FSIZE, &limit);
    OdString message = messageOf<WriteRefused>([&] {
        Transaction transaction(library);
        for (int i = 0; i < 200; ++i)
            library->save(sampleMaterial(OdString::formatted(L"Extra %d", i)));
        transaction.commit();
    });
    ::setrlimit(RLIMIT_FSIZE, &saved);
    ::signal(SIGXFSZ, previousHandler);

    EXPECT_FALSE(contains(message, L"cannot rollback")) << message.toUtf8();
    EXPECT_TRUE(library->isReadOnly());
    EXPECT_EQ(0u, library->transactionDepth());
    EXPECT_EQ(reactor.begins, reactor.ends);
    EXPECT_EQ(5u, library->count<Material>());
    EXPECT_THROW(library->save(Material::create(W("Later"))), ReadOnly);
    library.reset();
    EXPECT_EQ(before, dumpLibrary(path));
    EXPECT_TRUE(checkIntegrity(path).empty());
}

TEST(FileFaults, FileDeletedOrReplacedWhileOpenIsNeverWrittenInto) {
    TempDir dir;
    OdString path = dir.file("central.vlib");
    std::string file = path.toUtf8();
    {
        auto library = Library::create(path, OdDb::kUnitsMillimeters);
        library->save(Material::create(W("Brick")));
        fs::remove(file);
        OdString message = messageOf<FileReplaced>([&] { library->save(Material::create(W("Lost"))); });
        EXPECT_TRUE(contains(message, L"deleted or replaced")) << message.toUtf8();
        EXPECT_TRUE(library->isReadOnly());
        EXPECT_TRUE(folderListing(dir.path()).empty()) << "nothing was created where the file was";
        // What was read stays readable.
        EXPECT_FALSE(library->get<Material>(NameKey(W("Brick"))).isNull());
    }
    {
        auto library = Library::create(path, OdDb::kUnitsMillimeters);
        auto other = Library::create(dir.file("other.vlib"), OdDb::kUnitsMillimeters);
        other->save(Material::create(W("Other")));
        other.reset();
        fs::rename(dir.path() + "/other.vlib", file);
        std::string replacement = fileBytes(file);
        EXPECT_THROW(library->save(Material::create(W("Lost"))), FileReplaced);
        EXPECT_THROW(library->save(Material::create(W("Lost"))), ReadOnly);
        EXPECT_EQ(replacement, fileBytes(file));
    }
    auto library = Library::open(path, true);
    EXPECT_EQ(1u, library->count<Material>());
    EXPECT_FALSE(library->get<Material>(NameKey(W("Other"))).isNull());
}

// Library files that cannot be used as they are: reported, never modified.
#include "support.h"

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <random>

using namespace vltest;

namespace {

void writeBytes(const std::string& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << bytes;
}

std::string filledLibrary(const TempDir& dir, const char* name) {
    auto library = Library::create(dir.file(name), OdDb::kUnitsMillimeters);
    Transaction transaction(library);
    for (int i = 0; i < 300; ++i)
        library->save(sampleMaterial(OdString::formatted(L"Material %d", i)));
    transaction.commit();
    return dir.path() + "/" + name;
}

template <class Kind>
void expectRefusedUntouched(const std::string& path) {
    std::string before = fileBytes(path);
    EXPECT_THROW(Library::open(OdString::fromUtf8(path)), Kind);
    EXPECT_THROW(Library::open(OdString::fromUtf8(path), true), Kind);
    EXPECT_THROW(Library::create(OdString::fromUtf8(path), OdDb::kUnitsMeters), Exception);
    EXPECT_EQ(before, fileBytes(path)) << path;
    EXPECT_FALSE(std::filesystem::exists(path + "-journal")) << "no transaction was started";
    EXPECT_FALSE(std::filesystem::exists(path + "-wal"));
}

}  // namespace

TEST(LibraryFiles, MissingFile) {
    TempDir dir;
    EXPECT_THROW(Library::open(dir.file("nowhere.vlib")), FileMissing);
    EXPECT_FALSE(std::filesystem::exists(dir.path() + "/nowhere.vlib"));
    EXPECT_THROW(checkIntegrity(dir.file("nowhere.vlib")), FileMissing);
    EXPECT_THROW(Library::create(dir.file("no/such/folder/new.vlib"), OdDb::kUnitsMeters), FileMissing);
}

TEST(LibraryFiles, RandomBytesEmptyAndTruncatedFiles) {
    TempDir dir;
    std::string random = dir.path() + "/random.vlib";
    std::mt19937 generator(7);
    std::string noise(8192, '\0');
    for (char& c : noise)
        c = char(generator());
    writeBytes(random, noise);
    expectRefusedUntouched<NotALibrary>(random);

    std::string empty = dir.path() + "/empty.vlib";
    writeBytes(empty, "");
    EXPECT_THROW(Library::open(OdString::fromUtf8(empty)), NotALibrary);
    EXPECT_EQ(0u, std::filesystem::file_size(empty));

    std::string truncated = filledLibrary(dir, "truncated.vlib");
    std::string bytes = fileBytes(truncated);
    ASSERT_GT(bytes.size(), 8192u);
    writeBytes(truncated, bytes.substr(0, bytes.size() / 2));
    expectRefusedUntouched<NotALibrary>(truncated);

    std::string stub = dir.path() + "/stub.vlib";
    writeBytes(stub, bytes.substr(0, 60));
    expectRefusedUntouched<NotALibrary>(stub);
}

TEST(LibraryFiles, NewerSchemaIsRefused) {
    TempDir dir;
    std::string path = filledLibrary(dir, "newer.vlib");
    sqlite3* db = nullptr;
    ASSERT_EQ(SQLITE_OK, sqlite3_open(path.c_str(), &db));
    sqlite3_exec(db, "PRAGMA journal_mode = DELETE; PRAGMA user_version = 99", nullptr, nullptr, nullptr);
    sqlite3_close(db);
    std::string before = fileBytes(path);
    try {
        Library::open(OdString::fromUtf8(path));
        FAIL() << "a newer schema must be refused";
    } catch (const NewerSchema& e) {
        EXPECT_EQ(99, e.foundVersion());
        EXPECT_EQ(Library::kSchemaVersion, e.supportedVersion());
    }
    EXPECT_TRUE(Library::containsLibrary(OdString::fromUtf8(path)));
    EXPECT_EQ(before, fileBytes(path));
}

TEST(LibraryFiles, ReadOnlyLibraryRefusesWritesAndStaysIdentical) {
    TempDir dir;
    std::string path = filledLibrary(dir, "central.vlib");
    auto writer = Library::open(OdString::fromUtf8(path));
    auto brick = writer->get<Material>(NameKey(W("Material 1")));
    writer.reset();
    std::string before = fileBytes(path);

    auto other = Library::create(dir.file("other.vlib"), OdDb::kUnitsMillimeters);
    other->save(Material::create(W("Foreign")));
    auto check = [&](const std::shared_ptr<Library>& library) {
        ASSERT_TRUE(library->isReadOnly());
        EXPECT_EQ(300u, library->count<Material>());
        EXPECT_THROW(library->save(Material::create(W("New"))), ReadOnly);
        auto material = library->get<Material>(brick->id());
        material->set_description(W("changed"));
        EXPECT_THROW(material->save(), ReadOnly);
        EXPECT_THROW(library->remove(material), ReadOnly);
        EXPECT_THROW(library->remove<Material>(std::set<unsigned>{brick->id()}), Exception);
        EXPECT_THROW(Transaction{library}, ReadOnly);
        EXPECT_THROW(library->set_description(W("x")), ReadOnly);
        IdMapping mapping(library);
        EXPECT_THROW(library->copy(other, {ObjectKey(kMaterial, 1)}, mapping), ReadOnly);
        EXPECT_EQ(0u, library->purge<Tag>());
    };
    check(Library::open(OdString::fromUtf8(path), true));
    EXPECT_EQ(before, fileBytes(path));
    // Libraries keep the rollback journal, so reading leaves nothing beside the file.
    EXPECT_FALSE(std::filesystem::exists(path + "-wal"));
    EXPECT_FALSE(std::filesystem::exists(path + "-shm"));

    // A file that cannot be written opens read-only by itself (permissions do not bind root).
    if (::geteuid() == 0)
        return;
    ::chmod(path.c_str(), 0444);
    check(Library::open(OdString::fromUtf8(path)));
    EXPECT_EQ(before, fileBytes(path));
}

TEST(LibraryFiles, IntegrityCheckFindsBrokenReferences) {
    TempDir dir;
    std::string path = filledLibrary(dir, "check.vlib");
    EXPECT_TRUE(checkIntegrity(OdString::fromUtf8(path)).empty());

    sqlite3* db = nullptr;
    ASSERT_EQ(SQLITE_OK, sqlite3_open(path.c_str(), &db));
    // Another program without foreign keys damages references.
    sqlite3_exec(db,
                 "PRAGMA foreign_keys = OFF;"
                 "DELETE FROM lib_material_type;"
                 "INSERT INTO lib_object_tag VALUES (4, 99999, 0, 1);"
                 "UPDATE lib_material SET sect_type = 9 WHERE id = 3;",
                 nullptr, nullptr, nullptr);
    sqlite3_close(db);
    auto problems = checkIntegrity(OdString::fromUtf8(path));
    ASSERT_GE(problems.size(), 3u);
    bool mentionsClass = false, mentionsTag = false, mentionsPattern = false;
    for (const auto& p : problems) {
        mentionsClass |= p.find(L"lib_material_type") >= 0;
        mentionsTag |= p.find(L"99999") >= 0;
        mentionsPattern |= p.find(L"pattern") >= 0;
    }
    EXPECT_TRUE(mentionsClass && mentionsTag && mentionsPattern);

    // A damaged record is reported to the reactor and left out, the rest still loads.
    RecordingReactor reactor;
    auto library = Library::open(OdString::fromUtf8(path), true);
    std::vector<QcSmartPtr<Material>> all;
    library->get(all, StringCriteria());
    EXPECT_EQ(299u, all.size());
    ASSERT_EQ(1u, reactor.loadFailures.size());
    EXPECT_EQ(ObjectKey(kMaterial, 3), reactor.loadFailures[0]);
}

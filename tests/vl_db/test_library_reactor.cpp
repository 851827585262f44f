// What the reactor base is told and decides: broken library files of a drawing, and removals
// of objects that an open drawing uses.
#include "DrawingFixture.h"

#include <algorithm>
#include <functional>

#include <SQLiteCpp/Database.h>

#include <vl_db/DbVantLibManager.h>

using namespace vl_db_test;

namespace {

class LibraryFileErrorTest : public DrawingFixture {
protected:
    // A sound library of a few pages, to be damaged by the cases.
    fs::path soundLibrary(const std::string& name) {
        std::vector<std::wstring> materials;
        for (int i = 0; i < 200; ++i)
            materials.push_back(L"Material " + std::to_wstring(i));
        return newLibrary(name, materials);
    }

    struct Outcome {
        std::vector<FileErrorCall> calls;
        vl_db::LibraryFileError error;
        bool available;
    };
    Outcome openWithCentral(const fs::path& central) {
        preferences.setDefaultMetricLibrary(od(central));
        reactor.calls.clear();
        vl_db::DocumentLibraries* libs = vl_db::docLibs(newDrawing("drawing" + std::to_string(++m_count) + ".vldwg"));
        return {reactor.calls, libs->fileError(vl_db::kDbCentral), libs->secondary() != nullptr};
    }

private:
    int m_count = 0;
};

TEST_F(LibraryFileErrorTest, MissingCentralLibraryIsReportedOnce) {
    const fs::path central = path("nowhere/central.vlib");
    const Outcome outcome = openWithCentral(central);
    EXPECT_FALSE(outcome.available);
    EXPECT_EQ(outcome.error, vl_db::LibraryFileError::kMissing);
    ASSERT_EQ(outcome.calls.size(), 1u);
    EXPECT_EQ(outcome.calls[0].kind, FileErrorCall::kMissing);
    EXPECT_EQ(outcome.calls[0].type, vl_db::kDbCentral);
    EXPECT_EQ(outcome.calls[0].path, od(central));
    EXPECT_FALSE(fs::exists(central));
}

TEST_F(LibraryFileErrorTest, DamagedOrForeignFilesAreReportedAndLeftUntouched) {
    struct Case {
        const char* name;
        std::function<void(const fs::path&)> damage;
        std::vector<FileErrorCall::Kind> accepted;
    };
    const std::vector<Case> cases{
        {"random bytes", [](const fs::path& f) { writeBytes(f, randomBytes(64 * 1024, 7)); }, {FileErrorCall::kLoading}},
        {"text file", [](const fs::path& f) { writeBytes(f, "name;density\nbrick;1800\n"); }, {FileErrorCall::kLoading}},
        {"empty file", [](const fs::path& f) { writeBytes(f, ""); }, {FileErrorCall::kLoading}},
        {"truncated library",
         [](const fs::path& f) {
             const std::string bytes = readBytes(f);
             writeBytes(f, bytes.substr(0, bytes.size() / 3));
         },
         {FileErrorCall::kLoading, FileErrorCall::kUnknown}},
        {"newer schema",
         [](const fs::path& f) {
             SQLite::Database db(f.string(), SQLite::OPEN_READWRITE);
             db.exec("PRAGMA user_version = " + std::to_string(vantlib::Library::kSchemaVersion + 1));
         },
         {FileErrorCall::kLoading}},
        {"damaged pages",
         [](const fs::path& f) {
             int metaPage = 0;
             {
                 SQLite::Database db(f.string(), SQLite::OPEN_READONLY);
                 metaPage = db.execAndGet("SELECT rootpage FROM sqlite_master WHERE name = 'lib_meta'").getInt();
             }
             std::string bytes = readBytes(f);
             for (size_t i = size_t(metaPage - 1) * 4096 + 8; i < size_t(metaPage) * 4096; ++i)
                 bytes[i] = char(i * 131 + 7);
             writeBytes(f, bytes);
         },
         {FileErrorCall::kLoading}},
        {"plain SQLite database",
         [](const fs::path& f) {
             fs::remove(f);
             SQLite::Database db(f.string(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
             db.exec("CREATE TABLE notes(text TEXT)");
         },
         {FileErrorCall::kLoading}},
    };
    int index = 0;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const fs::path file = soundLibrary("central" + std::to_string(index++) + ".vlib");
        c.damage(file);
        const std::string before = readBytes(file);
        const Outcome outcome = openWithCentral(file);
        EXPECT_FALSE(outcome.available);
        ASSERT_EQ(outcome.calls.size(), 1u);
        EXPECT_NE(std::find(c.accepted.begin(), c.accepted.end(), outcome.calls[0].kind), c.accepted.end());
        EXPECT_EQ(outcome.calls[0].type, vl_db::kDbCentral);
        EXPECT_EQ(outcome.calls[0].path, od(file));
        EXPECT_NE(outcome.error, vl_db::LibraryFileError::kNone);
        EXPECT_EQ(readBytes(file), before) << "the file was modified";
    }
}

TEST_F(LibraryFileErrorTest, BrokenProjectLibrariesAreReportedAsProjectAndNotReplaced) {
    // External project library that became random bytes.
    const fs::path external = newLibrary("project.vlib", {L"Brick"});
    OdDbDatabase* db = newDrawing("house.vldwg");
    vl_db::docLibs(db)->attachPrimary(od(external));
    db->save();
    const fs::path drawingFile = db->fileName().str();
    closeDrawing(db);
    writeBytes(external, randomBytes(8192, 3));
    const std::string before = readBytes(external);

    reactor.calls.clear();
    vl_db::DocumentLibraries* libs = vl_db::docLibs(openDrawing(drawingFile));
    ASSERT_EQ(reactor.calls.size(), 1u);
    EXPECT_EQ(reactor.calls[0].kind, FileErrorCall::kLoading);
    EXPECT_EQ(reactor.calls[0].type, vl_db::kDbProject);
    EXPECT_EQ(libs->primary(true), nullptr);
    EXPECT_FALSE(vantlib::Library::containsLibrary(od(drawingFile)));
    EXPECT_EQ(readBytes(external), before);

    // A drawing whose record says "embedded" while its file holds no library.
    OdDbDatabase* other = newDrawing("other.vldwg");
    vl_db::docLibs(other)->vantlibManager(OdDb::kForWrite, true)->setPrimaryLibraryEmbedded(true);
    other->save();
    const fs::path otherFile = other->fileName().str();
    closeDrawing(other);
    reactor.calls.clear();
    vl_db::DocumentLibraries* otherLibs = vl_db::docLibs(openDrawing(otherFile));
    ASSERT_EQ(reactor.calls.size(), 1u);
    EXPECT_EQ(reactor.calls[0].kind, FileErrorCall::kMissing);
    EXPECT_EQ(reactor.calls[0].type, vl_db::kDbProject);
    EXPECT_EQ(otherLibs->primary(), nullptr);
}

TEST_F(LibraryFileErrorTest, InitializeBindsAgainAfterTheFileIsRepaired) {
    const fs::path central = path("central.vlib");
    const Outcome missing = openWithCentral(central);
    EXPECT_FALSE(missing.available);
    newLibrary("central.vlib", {L"Zinc"});
    vl_db::DocumentLibraries* libs = vl_db::docLibs(newDrawing("late.vldwg"));
    EXPECT_NE(libs->secondary(), nullptr);
    libs->initialize();
    EXPECT_NE(libs->secondary(), nullptr);
    EXPECT_EQ(libs->fileError(vl_db::kDbCentral), vl_db::LibraryFileError::kNone);
}

class RemoveVetoTest : public DrawingFixture {
protected:
    void SetUp() override {
        DrawingFixture::SetUp();
        preferences.setDefaultMetricLibrary(od(newLibrary("central.vlib", {L"Concrete", L"Steel"})));
        db = newDrawing("house.vldwg");
        libs = vl_db::docLibs(db);
        project = libs->primary(true);
        concrete = project->save(vantlib::Material::create(L"Concrete"));
        timber = project->save(vantlib::Material::create(L"Timber"));
        glass = project->save(vantlib::Material::create(L"Glass"));
    }

    void addEntityUsing(uint32_t type, vl_db::EDbType kind, const OdString& name, uint32_t id) {
        OdDbEntityPtr entity = OdDbEntity::createObject();
        entity->addLibraryReference({type, int32_t(kind), name, id});
        db->addEntity(entity);
    }

    OdDbDatabase* db = nullptr;
    vl_db::DocumentLibraries* libs = nullptr;
    std::shared_ptr<vantlib::Library> project;
    QcSmartPtr<vantlib::Material> concrete, timber, glass;
};

TEST_F(RemoveVetoTest, ObjectsUsedByAnEntityStayAndOthersGo) {
    addEntityUsing(vantlib::kMaterial, vl_db::kDbProject, L"Concrete", concrete->id());
    // Only the name is known to this entity.
    addEntityUsing(vantlib::kMaterial, vl_db::kDbProject, L"Timber", 0);
    EXPECT_EQ(project->remove(concrete), vantlib::Library::kVetoed);
    EXPECT_EQ(project->remove(timber), vantlib::Library::kVetoed);
    EXPECT_EQ(project->remove(glass), vantlib::Library::kRemoved);
    EXPECT_FALSE(project->get<vantlib::Material>(concrete->id()).isNull());
    EXPECT_TRUE(project->get<vantlib::Material>(glass->id()).isNull());
}

TEST_F(RemoveVetoTest, UseThroughTheOtherLibraryDoesNotProtect) {
    const auto central = libs->secondary();
    ASSERT_NE(central, nullptr);
    const auto centralSteel = central->get<vantlib::Material>(vantlib::NameKey(L"Steel"));
    // The drawing uses the central "Steel" and the project "Concrete": the project's objects
    // of the same id or name are free to go, and the other way round.
    addEntityUsing(vantlib::kMaterial, vl_db::kDbCentral, L"Steel", centralSteel->id());
    addEntityUsing(vantlib::kMaterial, vl_db::kDbProject, L"Concrete", concrete->id());
    const auto centralConcrete = central->get<vantlib::Material>(vantlib::NameKey(L"Concrete"));
    EXPECT_EQ(central->remove(centralConcrete), vantlib::Library::kRemoved);
    EXPECT_EQ(central->remove(centralSteel), vantlib::Library::kVetoed);
}

TEST_F(RemoveVetoTest, ClosedDrawingsNoLongerProtect) {
    addEntityUsing(vantlib::kMaterial, vl_db::kDbProject, L"Concrete", concrete->id());
    EXPECT_EQ(project->remove(concrete), vantlib::Library::kVetoed);
    vl_db::closeDocLibs(db);
    EXPECT_EQ(project->remove(concrete), vantlib::Library::kRemoved);
}

}  // namespace

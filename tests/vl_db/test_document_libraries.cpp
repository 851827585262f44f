// The project and central libraries of real drawings on disk.
#include "DrawingFixture.h"

#include <vl_db/DbVantLibManager.h>
#include <vl_db/FileFinder.h>

using namespace vl_db_test;

namespace {

class DocumentLibrariesTest : public DrawingFixture {
protected:
    std::unique_ptr<OdDbDatabase> m_readOnlyDrawing;
};

TEST_F(DocumentLibrariesTest, EmbeddedProjectLibraryIsCreatedOnRequestAndSurvivesReopening) {
    OdDbDatabase* db = newDrawing("house.vldwg");
    vl_db::DocumentLibraries* libs = vl_db::docLibs(db);
    ASSERT_NE(libs, nullptr);
    EXPECT_EQ(libs, vl_db::docLibs(db));
    EXPECT_EQ(libs->database(), db);

    // Only primary(true) creates; plain look-ups leave a drawing without library alone.
    EXPECT_EQ(libs->primary(false), nullptr);
    EXPECT_EQ(vl_db::library(libs, vl_db::kDbProject, false), nullptr);
    EXPECT_FALSE(vantlib::Library::containsLibrary(db->fileName()));

    const auto project = libs->primary(true);
    ASSERT_NE(project, nullptr);
    EXPECT_TRUE(libs->isPrimaryEmbedded());
    EXPECT_EQ(project->unit(), OdDb::kUnitsMillimeters);
    EXPECT_EQ(libs->primary(true), project);
    EXPECT_EQ(vl_db::getPrimary(db, false), project);
    EXPECT_TRUE(vl_db::writable(libs, vl_db::kDbProject));
    project->save(vantlib::Material::create(L"Oak"));

    const auto manager = libs->vantlibManager();
    ASSERT_FALSE(manager.isNull());
    EXPECT_TRUE(manager->isPrimaryLibraryEmbedded());
    EXPECT_TRUE(manager->primaryLibraryPath().isEmpty());
    EXPECT_EQ(vl_db::DbVantLibManager::getInstance(*db), manager->objectId());

    db->save();
    const fs::path file = db->fileName().str();
    closeDrawing(db);

    OdDbDatabase* reopened = openDrawing(file);
    vl_db::DocumentLibraries* again = vl_db::docLibs(reopened);
    EXPECT_TRUE(again->isPrimaryEmbedded());
    ASSERT_NE(again->primary(), nullptr);
    EXPECT_FALSE(again->getFromPrimary<vantlib::Material>(vantlib::NameKey(L"Oak")).isNull());
    EXPECT_TRUE(vl_db::writable(again, vl_db::kDbProject));
    closeDrawing(reopened);

    // A drawing opened for reading only offers its embedded library for reading only.
    m_readOnlyDrawing = OdDbDatabase::open(od(file), true);
    vl_db::DocumentLibraries* readOnly = vl_db::docLibs(m_readOnlyDrawing.get());
    ASSERT_NE(readOnly->primary(), nullptr);
    EXPECT_TRUE(readOnly->primary()->isReadOnly());
    EXPECT_FALSE(vl_db::writable(readOnly, vl_db::kDbProject));
    vl_db::closeDocLibs(m_readOnlyDrawing.get());
    EXPECT_TRUE(reactor.calls.empty());
}

TEST_F(DocumentLibrariesTest, EmbeddedLibraryTakesTheDrawingUnitAndIsFoundWithoutItsRecord) {
    OdDbDatabase* db = newDrawing("imperial.vldwg", OdDb::kUnitsFeet);
    EXPECT_EQ(vl_db::docLibs(db)->primary(true)->unit(), OdDb::kUnitsFeet);
    // The drawing is not saved, so its manager record is lost; the tables in its file are not.
    const fs::path file = db->fileName().str();
    closeDrawing(db);
    OdDbDatabase* reopened = openDrawing(file);
    EXPECT_TRUE(vl_db::DbVantLibManager::getInstance(*reopened).isNull());
    vl_db::DocumentLibraries* libs = vl_db::docLibs(reopened);
    EXPECT_TRUE(libs->isPrimaryEmbedded());
    EXPECT_NE(libs->primary(), nullptr);
}

TEST_F(DocumentLibrariesTest, ExternalProjectLibraryIsStoredRelativeAndMovesWithTheDrawing) {
    const fs::path libraryFile = newLibrary("project.vlib", {L"Brick"});
    OdDbDatabase* db = newDrawing("house.vldwg");
    vl_db::DocumentLibraries* libs = vl_db::docLibs(db);
    const auto attached = libs->attachPrimary(od(libraryFile));
    ASSERT_NE(attached, nullptr);
    EXPECT_FALSE(libs->isPrimaryEmbedded());
    EXPECT_EQ(libs->vantlibManager()->primaryLibraryPath(), OdString(L"project.vlib"));
    // An embedded library is never created over a configured one.
    EXPECT_EQ(libs->primary(true), attached);
    EXPECT_FALSE(vantlib::Library::containsLibrary(db->fileName()));
    db->save();
    closeDrawing(db);

    const fs::path moved = path("moved");
    fs::create_directories(moved);
    fs::rename(path("house.vldwg"), moved / "house.vldwg");
    fs::rename(libraryFile, moved / "project.vlib");
    OdDbDatabase* reopened = openDrawing(moved / "house.vldwg");
    vl_db::DocumentLibraries* again = vl_db::docLibs(reopened);
    EXPECT_FALSE(again->isPrimaryEmbedded());
    EXPECT_EQ(fs::path(again->primaryPath().str()), moved / "project.vlib");
    EXPECT_FALSE(again->getFromPrimary<vantlib::Material>(vantlib::NameKey(L"Brick")).isNull());
}

TEST_F(DocumentLibrariesTest, AttachingAFileThatIsNoLibraryThrowsAndChangesNothing) {
    writeBytes(path("notes.vlib"), "just some text, not a database");
    const std::string before = readBytes(path("notes.vlib"));
    OdDbDatabase* db = newDrawing("house.vldwg");
    vl_db::DocumentLibraries* libs = vl_db::docLibs(db);
    EXPECT_THROW(libs->attachPrimary(od(path("notes.vlib"))), vantlib::Exception);
    EXPECT_EQ(libs->primary(), nullptr);
    EXPECT_TRUE(vl_db::DbVantLibManager::getInstance(*db).isNull());
    EXPECT_EQ(readBytes(path("notes.vlib")), before);
}

TEST_F(DocumentLibrariesTest, CentralLibraryFollowsTheDrawingUnits) {
    newLibrary("metric.vlib", {L"Concrete"});
    newLibrary("imperial.vlib", {L"Lumber"}, OdDb::kUnitsInches);
    preferences.setDefaultMetricLibrary(od(path("metric.vlib")));
    // A relative path is taken against the roamable root folder.
    preferences.setRoamableRootFolder(od(path("")));
    preferences.setDefaultImperialLibrary(L"imperial.vlib");

    struct Case {
        OdDb::UnitsValue units;
        const wchar_t* expected;
    };
    const Case cases[] = {
        {OdDb::kUnitsMillimeters, L"Concrete"}, {OdDb::kUnitsMeters, L"Concrete"},
        {OdDb::kUnitsUndefined, L"Concrete"},   {OdDb::kUnitsInches, L"Lumber"},
        {OdDb::kUnitsFeet, L"Lumber"},          {OdDb::kUnitsUSSurveyFeet, L"Lumber"},
        {OdDb::kUnitsYards, L"Lumber"},
    };
    int index = 0;
    for (const Case& c : cases) {
        SCOPED_TRACE(int(c.units));
        OdDbDatabase* db = newDrawing("d" + std::to_string(index++) + ".vldwg", c.units);
        vl_db::DocumentLibraries* libs = vl_db::docLibs(db);
        ASSERT_NE(libs->secondary(), nullptr);
        EXPECT_FALSE(libs->getFromSecondary<vantlib::Material>(vantlib::NameKey(c.expected)).isNull());
        EXPECT_EQ(vl_db::library(libs, vl_db::kDbCentral, false), libs->secondary());
    }
    // Drawings that use the same central file share one library object.
    EXPECT_EQ(vl_db::docLibs(newDrawing("a.vldwg"))->secondary(), vl_db::docLibs(newDrawing("b.vldwg"))->secondary());
    EXPECT_TRUE(reactor.calls.empty());
}

TEST_F(DocumentLibrariesTest, NoCentralLibraryConfiguredIsNotAnError) {
    vl_db::DocumentLibraries* libs = vl_db::docLibs(newDrawing("house.vldwg"));
    EXPECT_EQ(libs->secondary(), nullptr);
    EXPECT_TRUE(libs->secondaryPath().isEmpty());
    EXPECT_EQ(libs->fileError(vl_db::kDbCentral), vl_db::LibraryFileError::kNone);
    EXPECT_FALSE(vl_db::writable(libs, vl_db::kDbCentral));
    EXPECT_TRUE(reactor.calls.empty());
}

TEST_F(DocumentLibrariesTest, WritableOnlyForExistingLibrariesThatAreNotReadOnly) {
    const fs::path file = newLibrary("central.vlib", {L"Steel"});
    EXPECT_FALSE(vl_db::writable(nullptr, vl_db::kDbProject));
    EXPECT_FALSE(vl_db::writable(std::shared_ptr<const vantlib::Library>()));
    EXPECT_FALSE(vl_db::writable(vantlib::Library::open(od(file), true)));
    EXPECT_TRUE(vl_db::writable(vantlib::Library::open(od(file), false)));
    vl_db::DocumentLibraries* libs = vl_db::docLibs(newDrawing("house.vldwg"));
    EXPECT_EQ(vl_db::library(libs, vl_db::kDbNone, true), nullptr);
    EXPECT_FALSE(vl_db::writable(libs, vl_db::kDbNone));
    EXPECT_EQ(vl_db::docLibs(nullptr), nullptr);
    EXPECT_EQ(vl_db::getPrimary(nullptr, true), nullptr);
}

TEST_F(DocumentLibrariesTest, CentralLibraryWhoseFileIsGoneIsNoLongerWritable) {
    const fs::path central = newLibrary("central.vlib", {L"Steel"});
    preferences.setDefaultMetricLibrary(od(central));
    vl_db::DocumentLibraries* libs = vl_db::docLibs(newDrawing("house.vldwg"));
    ASSERT_TRUE(vl_db::writable(libs, vl_db::kDbCentral));
    fs::remove(central);
    EXPECT_THROW(libs->secondary()->save(vantlib::Material::create(L"Glass")), vantlib::FileReplaced);
    // The dialogs grey a library that is not writable, so no further edit is attempted.
    EXPECT_FALSE(vl_db::writable(libs, vl_db::kDbCentral));
    EXPECT_FALSE(libs->getFromSecondary<vantlib::Material>(vantlib::NameKey(L"Steel")).isNull());
    EXPECT_FALSE(fs::exists(central));
}

class MappingFinder : public vl_db::FileFinder {
public:
    explicit MappingFinder(OdString target) : m_target(std::move(target)) {}
    bool findFile(OdString& result, const wchar_t* fileName, OdDbDatabase* db) override {
        asked.push_back(fileName);
        if (!db)
            return false;
        result = m_target;
        return true;
    }
    std::vector<OdString> asked;

private:
    OdString m_target;
};

TEST_F(DocumentLibrariesTest, FileFinderResolvesACentralLibraryThatMoved) {
    const fs::path real = newLibrary("found.vlib", {L"Glass"});
    preferences.setDefaultMetricLibrary(od(path("gone/central.vlib")));
    MappingFinder finder(od(real));
    vl_db::FileFinder::setInstance(&finder);
    vl_db::DocumentLibraries* libs = vl_db::docLibs(newDrawing("house.vldwg"));
    vl_db::FileFinder::setInstance(nullptr);
    ASSERT_EQ(finder.asked.size(), 1u);
    EXPECT_EQ(finder.asked[0], od(path("gone/central.vlib")));
    ASSERT_NE(libs->secondary(), nullptr);
    EXPECT_FALSE(libs->getFromSecondary<vantlib::Material>(vantlib::NameKey(L"Glass")).isNull());
    EXPECT_TRUE(reactor.calls.empty());
}

TEST_F(DocumentLibrariesTest, FilterTagsAreKeptInTheDrawing) {
    OdDbDatabase* db = newDrawing("house.vldwg");
    vl_db::DocumentLibraries* libs = vl_db::docLibs(db);
    EXPECT_TRUE(libs->vantlibManager().isNull());
    {
        const auto manager = libs->vantlibManager(OdDb::kForWrite, true);
        manager->setFilterTags({L"exterior", L"load-bearing"});
    }
    // Read access refuses changes.
    EXPECT_THROW(libs->vantlibManager()->setFilterTags({}), OdError);
    db->save();
    const fs::path file = db->fileName().str();
    closeDrawing(db);
    OdDbDatabase* reopened = openDrawing(file);
    const OdArray<OdString> tags = vl_db::docLibs(reopened)->vantlibManager()->filterTags();
    EXPECT_EQ(tags, (OdArray<OdString>{L"exterior", L"load-bearing"}));
    EXPECT_FALSE(vl_db::docLibs(reopened)->vantlibManager()->isPrimaryLibraryEmbedded());
}

}  // namespace

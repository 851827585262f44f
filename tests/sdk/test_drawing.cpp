#include <gtest/gtest.h>

#include <SQLiteCpp/SQLiteCpp.h>

#include <fstream>

#include "OdDbDatabase.h"
#include "TempFolder.h"

namespace drawing_test {

// A module's custom object, as the drawing-side library manager is one.
class TestManager : public OdDbObject {
    ODRX_DECLARE_MEMBERS(TestManager);

    bool embedded = false;
    OdString libraryPath;
    std::vector<OdString> tags;

    void dwgInFields(OdDbDwgFiler& filer) override {
        OdDbObject::dwgInFields(filer);
        embedded = filer.rdBool();
        libraryPath = filer.rdString();
        tags.resize(static_cast<size_t>(filer.rdInt32()));
        for (OdString& tag : tags) tag = filer.rdString();
    }
    void dwgOutFields(OdDbDwgFiler& filer) const override {
        OdDbObject::dwgOutFields(filer);
        filer.wrBool(embedded);
        filer.wrString(libraryPath);
        filer.wrInt32(static_cast<int32_t>(tags.size()));
        for (const OdString& tag : tags) filer.wrString(tag);
    }
};
ODRX_DEFINE_MEMBERS(TestManager, OdDbObject, L"TestManager")

// Writing this object fails, as a module's object may.
class FailingObject : public OdDbObject {
    ODRX_DECLARE_MEMBERS(FailingObject);
    void dwgOutFields(OdDbDwgFiler&) const override { throw OdError(eInvalidContext, L"cannot write"); }
};
ODRX_DEFINE_MEMBERS(FailingObject, OdDbObject, L"FailingObject")

}  // namespace drawing_test

using drawing_test::FailingObject;
using drawing_test::TestManager;

namespace {

OdResult openError(const OdString& path, bool readOnly = false) {
    try {
        OdDbDatabase::open(path, readOnly);
    } catch (const OdError& e) {
        return e.code();
    }
    return eOk;
}

std::vector<OdString> layerNames(OdDbDatabase& db) {
    std::vector<OdString> names;
    OdDbLayerTablePtr layers(db.getLayerTableId().safeOpenObject());
    for (auto it = layers->newIterator(); !it->done(); it->step()) names.push_back(it->getRecord()->getName());
    return names;
}

OdDbEntityPtr makeEntity(const OdString& layer, std::vector<OdDbLibraryReference> references) {
    OdDbEntityPtr entity = OdDbEntity::createObject();
    entity->setLayer(layer);
    entity->setLibraryReferences(references);
    return entity;
}

class Drawing : public ::testing::Test {
protected:
    void SetUp() override { TestManager::rxInit(); }
    void TearDown() override { TestManager::rxUninit(); }
    TempFolder folder;
};

}  // namespace

TEST_F(Drawing, DefaultsFollowTheUnit) {
    auto metric = OdDbDatabase::create(folder.file("metric.vldwg"), OdDb::kUnitsMillimeters);
    EXPECT_EQ(metric->getINSUNITS(), OdDb::kUnitsMillimeters);
    EXPECT_EQ(metric->getLUNITS(), OdDb::kDecimal);
    EXPECT_EQ(metric->getLUPREC(), 1);
    EXPECT_EQ(metric->formatLength(12.5), OdString(L"12.5"));

    auto imperial = OdDbDatabase::create(folder.file("imperial.vldwg"), OdDb::kUnitsInches);
    EXPECT_EQ(imperial->getLUNITS(), OdDb::kArchitectural);
    EXPECT_EQ(imperial->getLUPREC(), 4);
    EXPECT_EQ(imperial->formatLength(18.5), OdString(L"1'-6 1/2\""));
    EXPECT_EQ(layerNames(*imperial), std::vector<OdString>{L"0"});
    EXPECT_FALSE(imperial->isModified());
}

TEST_F(Drawing, HeaderVariablesAreCheckedAndPersist) {
    const OdString path = folder.file("header.vldwg");
    {
        auto db = OdDbDatabase::create(path, OdDb::kUnitsMeters);
        db->setSysVar(L"luprec", OdTypedValue(2));
        db->setSysVar(L"PROJECTNAME", OdTypedValue(OdString(L"Tower \u00C5")));
        EXPECT_THROW(db->setSysVar(L"LUNITS", OdTypedValue(6)), OdError);
        EXPECT_THROW(db->setSysVar(L"INSUNITS", OdTypedValue(L"mm")), OdError);
        EXPECT_THROW(db->setSysVar(L"DIMZIN", OdTypedValue(2.5)), OdError);
        EXPECT_THROW(db->getSysVar(L"NOSUCHVAR"), OdError);
        EXPECT_TRUE(db->isModified());
        db->save();
    }
    auto db = OdDbDatabase::open(path);
    EXPECT_EQ(db->getLUPREC(), 2);
    EXPECT_EQ(db->getSysVar(L"ProjectName").asString(), OdString(L"Tower \u00C5"));
    EXPECT_EQ(db->getSysVar(L"INSUNITS").asInt(), int(OdDb::kUnitsMeters));
}

TEST_F(Drawing, OpeningSomethingElseFailsClearlyAndTouchesNothing) {
    EXPECT_EQ(openError(folder.file("missing.vldwg")), eFileNotFound);

    const OdString text = folder.file("notes.vldwg");
    std::ofstream(text.toUtf8()) << "not a drawing";
    try {
        OdDbDatabase::open(text);
        FAIL() << "a text file opened as a drawing";
    } catch (const OdError& e) {
        EXPECT_EQ(e.code(), eNotADrawing);
        EXPECT_EQ(e.description(), text + L" is not a drawing");
    }
    EXPECT_EQ(fileBytes(text), "not a drawing");

    // A library file: SQLite, but without the drawing's tables.
    const OdString library = folder.file("central.vllib");
    {
        SQLite::Database sql(library.toUtf8(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        sql.exec("CREATE TABLE lib_objects(id INTEGER PRIMARY KEY); PRAGMA user_version = 7");
    }
    const std::string before = fileBytes(library);
    EXPECT_EQ(openError(library), eNotADrawing);
    EXPECT_EQ(fileBytes(library), before);
    EXPECT_FALSE(OdDbDatabase::isDrawingFile(library));

    const OdString newer = folder.file("newer.vldwg");
    OdDbDatabase::create(newer, OdDb::kUnitsMeters);
    {
        SQLite::Database sql(newer.toUtf8(), SQLite::OPEN_READWRITE);
        sql.exec("UPDATE drawing_meta SET value = '99' WHERE key = 'schema_version'");
    }
    EXPECT_EQ(openError(newer), eIncompatibleVersion);
    EXPECT_EQ(openError(newer, true), eIncompatibleVersion);

    // create never overwrites.
    try {
        OdDbDatabase::create(library, OdDb::kUnitsMeters);
        FAIL() << "create replaced an existing file";
    } catch (const OdError& e) {
        EXPECT_EQ(e.code(), eFileAccessErr);
    }
    EXPECT_EQ(fileBytes(library), before);
}

TEST_F(Drawing, EmbeddedLibraryTablesSurviveSaves) {
    const OdString path = folder.file("embedded.vldwg");
    auto db = OdDbDatabase::create(path, OdDb::kUnitsMillimeters);
    {
        SQLite::Database sql(path.toUtf8(), SQLite::OPEN_READWRITE);
        sql.exec("CREATE TABLE lib_materials(name TEXT); INSERT INTO lib_materials VALUES('Brick'); PRAGMA user_version = 3");
    }
    db->addLayer(L"Walls");
    db->save();
    SQLite::Database sql(path.toUtf8(), SQLite::OPEN_READONLY);
    EXPECT_EQ(sql.execAndGet("PRAGMA user_version").getInt(), 3);
    EXPECT_EQ(sql.execAndGet("SELECT name FROM lib_materials").getString(), "Brick");
    EXPECT_EQ(layerNames(*OdDbDatabase::open(path)), (std::vector<OdString>{L"0", L"Walls"}));
}

TEST_F(Drawing, LayerTableKeepsOrderNamesAndProperties) {
    const OdString path = folder.file("layers.vldwg");
    {
        auto db = OdDbDatabase::create(path, OdDb::kUnitsMillimeters);
        db->addLayer(L"Walls", OdCmColor::fromIndex(1));
        db->addLayer(L"Doors", OdCmColor::fromRGB(10, 20, 30));
        db->addLayer(L"Annotation");
        EXPECT_THROW(db->addLayer(L"walls"), OdError);  // names ignore case
        EXPECT_THROW(db->addLayer(L"A/B"), OdError);
        EXPECT_THROW(db->addLayer(L""), OdError);

        OdDbLayerTablePtr layers(db->getLayerTableId().safeOpenObject());
        OdDbLayerTableRecordPtr doors(layers->getAt(L"DOORS").safeOpenObject(OdDb::kForWrite));
        doors->setIsOff(true);
        doors->setIsFrozen(true);
        EXPECT_THROW(doors->setColor(OdCmColor()), OdError);  // a layer cannot be "by layer"
        EXPECT_THROW(doors->setName(L"Walls"), OdError);

        OdDbLayerTableRecordPtr zero(layers->getAt(L"0").safeOpenObject(OdDb::kForWrite));
        EXPECT_THROW(zero->setName(L"Base"), OdError);
        EXPECT_THROW(zero->erase(), OdError);
        db->save();
    }
    auto db = OdDbDatabase::open(path);
    EXPECT_EQ(layerNames(*db), (std::vector<OdString>{L"0", L"Walls", L"Doors", L"Annotation"}));
    OdDbLayerTablePtr layers(db->getLayerTableId().safeOpenObject());
    OdDbLayerTableRecordPtr doors(layers->getAt(L"Doors").safeOpenObject());
    EXPECT_TRUE(doors->isOff());
    EXPECT_TRUE(doors->isFrozen());
    EXPECT_EQ(doors->color(), OdCmColor::fromRGB(10, 20, 30));
    EXPECT_EQ(OdDbLayerTableRecordPtr(layers->getAt(L"Walls").safeOpenObject())->color(), OdCmColor::fromIndex(1));

    // Opened for read, a record refuses changes.
    EXPECT_THROW(doors->setIsOff(false), OdError);
    // The checked cast refuses the wrong class.
    EXPECT_THROW(OdDbEntityPtr(layers->getAt(L"Doors").openObject()), OdError_NotThatKindOfClass);
}

TEST_F(Drawing, CustomObjectsAreFoundAndKeptWhenTheirClassIsAbsent) {
    const OdString path = folder.file("custom.vldwg");
    {
        auto db = OdDbDatabase::create(path, OdDb::kUnitsMillimeters);
        OdSmartPtr<TestManager> manager = TestManager::createObject();
        manager->embedded = true;
        manager->libraryPath = L"lib/project.vllib";
        manager->tags = {L"Fire", L"Acoustic"};
        OdDbDictionaryPtr dictionary(db->getNamedObjectsDictionaryId().safeOpenObject(OdDb::kForWrite));
        dictionary->setAt(L"VL_MANAGER", manager);
        EXPECT_EQ(manager->database(), db.get());
        db->save();
    }
    auto readManager = [&](OdDbDatabase& db) {
        OdDbDictionaryPtr dictionary(db.getNamedObjectsDictionaryId().safeOpenObject());
        return dictionary->getAt(L"VL_MANAGER").openObject();
    };

    // Without the module, the record opens as a proxy and is saved back unchanged.
    TestManager::rxUninit();
    {
        auto db = OdDbDatabase::open(path);
        OdDbObjectPtr object = readManager(*db);
        ASSERT_TRUE(object);
        EXPECT_TRUE(object->isKindOf(OdDbProxyObject::desc()));
        EXPECT_EQ(OdDbProxyObjectPtr(object)->originalClassName(), OdString(L"TestManager"));
        EXPECT_TRUE(TestManager::cast(object.get()).isNull());
        db->addLayer(L"Extra");
        db->save();
    }
    TestManager::rxInit();

    auto db = OdDbDatabase::open(path);
    OdSmartPtr<TestManager> manager(readManager(*db));
    ASSERT_TRUE(manager);
    EXPECT_TRUE(manager->embedded);
    EXPECT_EQ(manager->libraryPath, OdString(L"lib/project.vllib"));
    EXPECT_EQ(manager->tags, (std::vector<OdString>{L"Fire", L"Acoustic"}));
    EXPECT_EQ(manager->isA(), TestManager::desc());
    EXPECT_EQ(odrxFindClass(L"TestManager"), TestManager::desc());

    // Replacing a dictionary entry erases the object it named.
    OdDbObjectId oldId = manager->objectId();
    OdDbDictionaryPtr dictionary(db->getNamedObjectsDictionaryId().safeOpenObject(OdDb::kForWrite));
    dictionary->setAt(L"VL_MANAGER", TestManager::createObject());
    EXPECT_FALSE(oldId.isValid());
    EXPECT_TRUE(oldId.openObject().isNull());
    EXPECT_NE(dictionary->getAt(L"VL_MANAGER"), oldId);
}

TEST_F(Drawing, EntitiesAnswerWhichLibraryObjectsAreUsed) {
    const OdString path = folder.file("entities.vldwg");
    OdDbObjectId beamId;
    {
        auto db = OdDbDatabase::create(path, OdDb::kUnitsMillimeters);
        db->addLayer(L"Walls");
        db->addEntity(makeEntity(L"Walls", {{5, 0, L"Wall 300", 12}, {4, 0, L"Brick", 3}}));
        beamId = db->addEntity(makeEntity(L"0", {{4, 1, L"Steel", 8}, {18, 0, L"IPE 200", 40}}));
        db->addEntity(makeEntity(L"Walls", {{4, 0, L"Brick", 3}}));
        OdDbEntityPtr orphan = OdDbEntity::createObject();
        orphan->setLayer(L"Roofs");  // not in a drawing yet, so not checked here
        EXPECT_THROW(db->addEntity(orphan), OdError);
        EXPECT_TRUE(orphan->database() == nullptr);
        db->save();
    }
    auto db = OdDbDatabase::open(path);
    ASSERT_EQ(db->entityIds().size(), 3u);
    EXPECT_EQ(db->entitiesReferencing(4, 0, 3u).size(), 2u);
    EXPECT_EQ(db->entitiesReferencing(4, 0, OdString(L"Brick")).size(), 2u);
    EXPECT_TRUE(db->entitiesReferencing(4, 1, 3u).empty());  // same id, other library
    EXPECT_TRUE(db->entitiesReferencing(5, 0, 3u).empty());  // same id, other kind
    ASSERT_EQ(db->entitiesReferencing(18, 0, 40u).size(), 1u);

    OdDbObjectId beam = db->entitiesReferencing(18, 0, 40u)[0];
    EXPECT_EQ(beam.handle(), beamId.handle());
    OdDbEntityPtr entity(beam.safeOpenObject(OdDb::kForWrite));
    EXPECT_EQ(entity->layerId(), OdDbLayerTablePtr(db->getLayerTableId().safeOpenObject())->getAt(L"0"));
    EXPECT_EQ(entity->removeLibraryReferences(18, 0, 40), 1u);
    EXPECT_TRUE(db->entitiesReferencing(18, 0, 40u).empty());

    // Renaming a layer takes its entities along; a layer in use cannot be erased.
    OdDbLayerTableRecordPtr walls(OdDbLayerTablePtr(db->getLayerTableId().safeOpenObject())->getAt(L"Walls").safeOpenObject(OdDb::kForWrite));
    walls->setName(L"Partitions");
    EXPECT_EQ(db->entitiesReferencing(5, 0, 12u).size(), 1u);
    EXPECT_EQ(OdDbEntityPtr(db->entitiesReferencing(5, 0, 12u)[0].safeOpenObject())->layerId(), walls->objectId());
    EXPECT_THROW(walls->erase(), OdError);

    db->removeEntity(db->entitiesReferencing(5, 0, 12u)[0]);
    EXPECT_THROW(db->removeEntity(db->getLayerTableId()), OdError);
    db->save();
    auto reopened = OdDbDatabase::open(path);
    EXPECT_EQ(reopened->entityIds().size(), 2u);
    EXPECT_EQ(reopened->entitiesReferencing(4, 0, OdString(L"Brick")).size(), 1u);
    EXPECT_TRUE(reopened->entitiesReferencing(18, 0, 40u).empty());
    for (const OdDbObjectId& id : reopened->entityIds())
        EXPECT_NE(OdDbEntityPtr(id.safeOpenObject())->layer(), OdString(L"Walls"));
}

TEST_F(Drawing, FailedOrRefusedSavesLeaveTheFileAsItWas) {
    const OdString path = folder.file("safe.vldwg");
    auto db = OdDbDatabase::create(path, OdDb::kUnitsMillimeters);
    db->addLayer(L"Kept");
    db->save();
    const std::string saved = fileBytes(path);

    FailingObject::rxInit();
    db->addLayer(L"Lost");
    OdDbDictionaryPtr(db->getNamedObjectsDictionaryId().safeOpenObject(OdDb::kForWrite))->setAt(L"BAD", FailingObject::createObject());
    EXPECT_THROW(db->save(), OdError);
    FailingObject::rxUninit();
    EXPECT_EQ(fileBytes(path), saved);
    EXPECT_EQ(layerNames(*OdDbDatabase::open(path)), (std::vector<OdString>{L"0", L"Kept"}));

    auto readOnly = OdDbDatabase::open(path, true);
    EXPECT_TRUE(readOnly->isReadOnly());
    readOnly->addLayer(L"Draft");
    try {
        readOnly->save();
        FAIL() << "a read-only drawing was saved";
    } catch (const OdError& e) {
        EXPECT_EQ(e.code(), eFileAccessErr);
    }
    EXPECT_EQ(fileBytes(path), saved);
}

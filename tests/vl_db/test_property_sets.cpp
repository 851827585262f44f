// The property sets editor's view of a library: edits wait in one transaction that commit()
// keeps and that is dropped otherwise, names are checked, read-only namespaces refuse edits
// (but for visibility), and definitions keep their order, types and measures.
#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>

#include <vantlib/Library.h>
#include <vl_db/PropertySets.h>

using namespace vl_db;

namespace {

class PropertySets : public ::testing::Test {
protected:
    void SetUp() override {
        m_dir = std::filesystem::temp_directory_path() /
                ("vl-psets-" + std::to_string(::getpid()) + "-" + ::testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::create_directories(m_dir);
        m_path = OdString::fromUtf8((m_dir / "psets.vlib").string());
        vantlib::Library::create(m_path, OdDb::kUnitsMillimeters);
    }
    void TearDown() override { std::filesystem::remove_all(m_dir); }

    std::shared_ptr<ILibrary> open() { return propertySetLibrary(vantlib::Library::open(m_path)); }

    std::filesystem::path m_dir;
    OdString m_path;
};

std::vector<OdString> namesOf(const std::vector<std::shared_ptr<IPropertyDefinition>>& definitions) {
    std::vector<OdString> names;
    for (const auto& d : definitions)
        names.push_back(d->name());
    return names;
}

}  // namespace

TEST_F(PropertySets, EditsStayOnlyWhenCommitted) {
    {
        auto library = open();
        auto office = library->createNamespace(L"Office", L"Our office", true);
        auto walls = office->createPropertySet(L"Walls");
        walls->createPropertyDefinition(L"Finish");
        EXPECT_TRUE(library->hasPendingEdits());
        library->commit();
        EXPECT_FALSE(library->hasPendingEdits());

        // Edited, not committed: the library goes as a cancelled editor would leave it.
        walls->setLabel(L"Changed");
        walls->createPropertyDefinition(L"Uncommitted");
        office->createPropertySet(L"Uncommitted set");
        library->createNamespace(L"Uncommitted namespace", OdString(), true);
    }
    auto library = open();
    ASSERT_EQ(1u, library->namespaces().size());
    auto office = library->namespaces()[0];
    EXPECT_EQ(OdString(L"Our office"), office->displayLabel());
    ASSERT_EQ(1u, office->propertySets().size());
    auto walls = office->propertySets()[0];
    EXPECT_EQ(OdString(L"Walls"), walls->label());
    EXPECT_EQ(std::vector<OdString>{L"Finish"}, namesOf(walls->propertyDefinitions()));

    // An explicit rollback drops the edits too, and later edits start a new transaction.
    walls->setDescription(L"Dropped");
    library->rollback();
    EXPECT_FALSE(library->hasPendingEdits());
    EXPECT_EQ(OdString(), library->namespaces()[0]->propertySets()[0]->description());
    walls->setDescription(L"Kept");
    library->commit();
    library.reset();
    EXPECT_EQ(OdString(L"Kept"), open()->namespaces()[0]->propertySets()[0]->description());
}

TEST_F(PropertySets, TakenAndEmptyNamesAreRefusedWithAClearMessage) {
    auto library = open();
    auto office = library->createNamespace(L"Office", OdString(), true);
    auto other = library->createNamespace(L"Other", OdString(), true);
    EXPECT_EQ(OdString(L"Office"), office->displayLabel()) << "without a label the name is shown";
    auto set = office->createPropertySet(L"PSet_A");
    try {
        office->createPropertySet(L"pset_a");
        FAIL() << "a taken set name was accepted";
    } catch (const vantlib::ObjectNotUnique& e) {
        EXPECT_NE(std::string::npos, std::string(e.what()).find("'pset_a' is taken")) << e.what();
    }
    EXPECT_NO_THROW(other->createPropertySet(L"pset_a"));
    EXPECT_THROW(office->createPropertySet(OdString()), vantlib::ConsistencyError);
    EXPECT_THROW(library->createNamespace(L"OFFICE", OdString(), true), vantlib::ObjectNotUnique);

    auto width = set->createPropertyDefinition(L"Width");
    auto height = set->createPropertyDefinition(L"Height");
    EXPECT_THROW(height->setName(L"WIDTH"), vantlib::ObjectNotUnique);
    EXPECT_EQ(OdString(L"Height"), height->name()) << "a refused rename keeps the old name";
    EXPECT_THROW(set->setName(OdString()), vantlib::ConsistencyError);
    EXPECT_EQ(OdString(L"PSet_A"), office->propertySets()[0]->name());
    // The failed edits left the transaction usable.
    library->commit();
    EXPECT_EQ(2u, set->propertyDefinitions().size());
}

TEST_F(PropertySets, DefinitionsMoveRemoveAndKeepTheirTypes) {
    auto library = open();
    auto set = library->createNamespace(L"Office", OdString(), true)->createPropertySet(L"Walls");
    for (const wchar_t* name : {L"A", L"B", L"C"})
        set->createPropertyDefinition(name);
    auto area = set->createValueDefinition(L"Area");

    EXPECT_TRUE(set->movePropertyDefinition(0, 1));
    EXPECT_FALSE(set->movePropertyDefinition(2, 3)) << "down from the last place";
    EXPECT_FALSE(set->moveValueDefinition(0, 1));
    EXPECT_EQ((std::vector<OdString>{L"B", L"A", L"C"}), namesOf(set->propertyDefinitions()));

    // A new definition holds a string; a changed specifier and measure are read back.
    auto b = set->propertyDefinitions()[0];
    EXPECT_EQ(kStringCode, b->typeSpecifier()->primitiveCode());
    EXPECT_EQ(vantlib::TypeSpecification::kPrimitive, b->typeSpecifier()->kind());
    EnumTypeSpecifier<long long> levels(kIntegerCode, {{1, OdString(L"ground")}, {2, OdString()}}, false);
    b->setTypeSpecifier(levels);
    area->setTypeSpecifier(TypeSpecifier<double>(kRealCode));
    area->setMeasure(L"AREA");
    auto storedB = std::dynamic_pointer_cast<EnumTypeSpecifier<long long>>(set->propertyDefinitions()[0]->typeSpecifier());
    ASSERT_TRUE(storedB);
    EXPECT_EQ(levels.values(), storedB->values());
    ASSERT_EQ(1u, set->valueDefinitions().size());
    EXPECT_EQ(OdString(L"AREA"), set->valueDefinitions()[0]->measure());
    EXPECT_EQ(kValueDefinitionObject, set->valueDefinitions()[0]->objectType());

    // Removal by id only within the set and kind asked.
    EXPECT_FALSE(set->removeValueDefinition(b->id()));
    EXPECT_TRUE(set->removePropertyDefinition(b->id()));
    EXPECT_FALSE(set->removePropertyDefinition(b->id()));
    EXPECT_EQ(0u, set->removeAllPropertyDefinitions());
    EXPECT_TRUE(set->propertyDefinitions().empty());
    EXPECT_EQ(1u, set->valueDefinitions().size());

    // IFC type assignments.
    EXPECT_TRUE(set->addIfcType(L"IfcWall"));
    EXPECT_TRUE(set->addIfcType(L"IfcSlab"));
    EXPECT_FALSE(set->addIfcType(L"IfcWall"));
    EXPECT_TRUE(set->removeIfcType(L"IfcWall"));
    EXPECT_EQ(std::vector<OdString>{L"IfcSlab"}, set->ifcTypes());
}

TEST_F(PropertySets, AReadOnlyNamespaceRefusesEditsButVisibility) {
    auto library = open();
    auto official = library->createNamespace(L"Pset", L"Official", true);
    auto set = official->createPropertySet(L"Pset_WallCommon");
    auto reference = set->createPropertyDefinition(L"Reference");
    library->commit();
    {
        // Made read-only as an import of the official sets leaves its namespace.
        vantlib::PropertySetStore store(vantlib::Library::open(m_path));
        auto record = *store.findNamespace(official->id());
        record.editable = false;
        store.updateNamespace(record);
    }
    library = open();
    official = library->namespaces()[0];
    EXPECT_FALSE(official->isEditable());
    set = official->propertySets()[0];
    EXPECT_FALSE(set->isEditable());
    EXPECT_THROW(official->createPropertySet(L"Mine"), vantlib::ConsistencyError);
    EXPECT_THROW(official->removePropertySet(set->id()), vantlib::ConsistencyError);
    EXPECT_THROW(set->setLabel(L"Mine"), vantlib::ConsistencyError);
    EXPECT_THROW(set->createPropertyDefinition(L"Mine"), vantlib::ConsistencyError);
    EXPECT_THROW(set->addIfcType(L"IfcSlab"), vantlib::ConsistencyError);
    EXPECT_THROW(set->propertyDefinitions()[0]->setLabel(L"Mine"), vantlib::ConsistencyError);
    set->setVisible(false);
    library->commit();
    EXPECT_FALSE(open()->namespaces()[0]->propertySets()[0]->isVisible());

    // Deleting the namespace takes its sets; a second delete finds nothing.
    library = open();
    EXPECT_TRUE(library->deleteNamespace(official->id()));
    EXPECT_FALSE(library->deleteNamespace(official->id()));
    library->commit();
    EXPECT_TRUE(open()->namespaces().empty());
}

TEST_F(PropertySets, FilesNeedAReaderAndTheImportIsAPendingEdit) {
    PropertySetFileHandlers writerOnly;
    writerOnly.exportFile = [](const vantlib::PropertySetStore&, const OdString&, uint32_t) {};
    EXPECT_THROW(propertySetLibrary(vantlib::Library::open(m_path), writerOnly)->importXml(L"x.xml", 1, nullptr),
                 vantlib::ConsistencyError);

    PropertySetFileHandlers files;
    OdString exportedPath;
    files.importFile = [](vantlib::PropertySetStore& store, const OdString& path) {
        vantlib::PropertyNamespaceRecord record;
        record.name = path;
        return store.createNamespace(record);
    };
    files.exportFile = [&](const vantlib::PropertySetStore&, const OdString& path, uint32_t) { exportedPath = path; };
    auto library = propertySetLibrary(vantlib::Library::open(m_path), files);
    EXPECT_NE(0u, library->importXml(L"Pset_WallCommon.xml", 1, nullptr));
    EXPECT_TRUE(library->hasPendingEdits());
    EXPECT_TRUE(library->exportXml(L"out.xml", 1, nullptr, 0));
    EXPECT_EQ(OdString(L"out.xml"), exportedPath);
    EXPECT_EQ(OdString::fromUtf8(m_dir.string()), library->defaultFileLocation());
    library.reset();
    EXPECT_TRUE(open()->namespaces().empty()) << "an import not committed is dropped";
}

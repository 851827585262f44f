// Definition files in a library: the official files imported, exported and imported again keep
// every field; a broken file anywhere in an import leaves the library as it was; exports write
// whole files or none; what the library changed after an import is what the export writes.
#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include <vantlib/Library.h>
#include <vantlib/PropertySets.h>
#include <vl_db/PropertySets.h>
#include <vl_db/PsdLibrary.h>

#include "PsdTestData.h"

using namespace vl_db;
using namespace psd_test;
using vantlib::DefinitionKind;
using vantlib::PropertyDefinitionRecord;
using vantlib::PropertySetRecord;
using vantlib::PropertySetStore;

namespace {

namespace fs = std::filesystem;

class PsdLibrary : public ::testing::Test {
protected:
    void SetUp() override {
        m_dir = fs::temp_directory_path() /
                ("vl-psdlib-" + std::to_string(::getpid()) + "-" + ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(m_dir);
        fs::create_directories(m_dir);
    }
    void TearDown() override { fs::remove_all(m_dir); }

    std::shared_ptr<vantlib::Library> newLibrary(const std::string& name) {
        const OdString path = OdString::fromUtf8((m_dir / name).string());
        vantlib::Library::create(path, OdDb::kUnitsMillimeters);
        return vantlib::Library::open(path);
    }
    // A folder holding the official files named and, last, one more file of the given text.
    fs::path folderWith(const std::vector<std::string>& official, const std::string& extraName, const std::string& extraText) {
        const fs::path folder = m_dir / "in";
        fs::remove_all(folder);
        fs::create_directories(folder);
        for (const std::string& name : official)
            fs::copy_file(officialFile(name), folder / (name + ".xml"));
        std::ofstream(folder / extraName, std::ios::binary) << extraText;
        return folder;
    }

    fs::path m_dir;
};

const PropertySetRecord& setNamed(const std::vector<PropertySetRecord>& sets, const std::string& name) {
    for (const PropertySetRecord& set : sets) {
        if (set.name.toUtf8() == name)
            return set;
    }
    throw std::runtime_error("no set " + name);
}

const PropertyDefinitionRecord& definitionNamed(const PropertySetStore& store, uint32_t setId, const std::string& name) {
    static std::vector<PropertyDefinitionRecord> kept;
    kept = store.definitions(setId, DefinitionKind::kProperty);
    for (const PropertyDefinitionRecord& definition : kept) {
        if (definition.name.toUtf8() == name)
            return definition;
    }
    throw std::runtime_error("no definition " + name);
}

// Every field the library shows of two namespaces' sets and definitions, in order.
void expectSameNamespaces(const PropertySetStore& a, uint32_t nsA, const PropertySetStore& b, uint32_t nsB) {
    const auto setsA = a.propertySets(nsA);
    const auto setsB = b.propertySets(nsB);
    ASSERT_EQ(setsA.size(), setsB.size());
    for (size_t i = 0; i < setsA.size(); ++i) {
        const PropertySetRecord& x = setsA[i];
        const PropertySetRecord& y = setsB[i];
        SCOPED_TRACE(x.name.toUtf8());
        EXPECT_EQ(x.name, y.name);
        EXPECT_EQ(x.description, y.description);
        EXPECT_EQ(x.templateType, y.templateType);
        EXPECT_EQ(x.applicableTypeValue, y.applicableTypeValue);
        EXPECT_EQ(x.applicableClasses, y.applicableClasses);
        EXPECT_EQ(x.perInstance, y.perInstance);
        EXPECT_TRUE(x.aliases == y.aliases);
        EXPECT_EQ(x.source, y.source);
        for (DefinitionKind kind : {DefinitionKind::kProperty, DefinitionKind::kValue}) {
            const auto defsA = a.definitions(x.id, kind);
            const auto defsB = b.definitions(y.id, kind);
            ASSERT_EQ(defsA.size(), defsB.size());
            for (size_t j = 0; j < defsA.size(); ++j) {
                SCOPED_TRACE(defsA[j].name.toUtf8());
                EXPECT_EQ(defsA[j].name, defsB[j].name);
                EXPECT_EQ(defsA[j].description, defsB[j].description);
                EXPECT_EQ(defsA[j].type.kind, defsB[j].type.kind);
                EXPECT_EQ(defsA[j].type.code, defsB[j].type.code);
                EXPECT_EQ(defsA[j].type.valueCategory, defsB[j].type.valueCategory);
                EXPECT_EQ(defsA[j].type.data, defsB[j].type.data) << "enumeration values and descriptions";
                EXPECT_EQ(defsA[j].measure, defsB[j].measure);
                EXPECT_TRUE(defsA[j].aliases == defsB[j].aliases);
                EXPECT_EQ(defsA[j].source, defsB[j].source);
            }
        }
    }
}

}  // namespace

TEST_F(PsdLibrary, OfficialFilesSurviveImportExportAndImportAgain) {
    const std::vector<std::string> files = findPsdFiles({officialFolder()});
    ASSERT_EQ(27u, files.size());

    auto first = newLibrary("first.vlib");
    PropertySetStore store(first);
    const uint32_t official = importPsdFiles(store, {officialFolder()}, {L"IFC4", L"Official", false});
    EXPECT_FALSE(store.findNamespace(official)->editable);
    const auto sets = store.propertySets(official);
    ASSERT_EQ(27u, sets.size());

    // The library's sets are the files' sets: nothing of the model is lost.
    for (size_t i = 0; i < files.size(); ++i) {
        SCOPED_TRACE(files[i]);
        EXPECT_TRUE(psdSetOf(store, sets[i].id) == readPsd(files[i]));
    }

    const fs::path exported = m_dir / "exported";
    const auto written = exportPsdFiles(store, namespaceSetIds(store, official), exported.string());
    ASSERT_EQ(27u, written.size());
    for (size_t i = 0; i < files.size(); ++i) {
        SCOPED_TRACE(files[i]);
        EXPECT_EQ(writePsdText(readPsd(files[i])), readText(written[i])) << "written back as the file was";
    }

    // Into another library, and into another namespace of the same library.
    auto second = newLibrary("second.vlib");
    PropertySetStore secondStore(second);
    const uint32_t again = importPsdFiles(secondStore, {exported.string()}, {L"Again", OdString(), true});
    expectSameNamespaces(store, official, secondStore, again);
    const uint32_t copy = importPsdFiles(store, {exported.string()}, {L"Copy", OdString(), true});
    expectSameNamespaces(store, official, store, copy);
}

TEST_F(PsdLibrary, TheLibraryHoldsTypesMeasuresEnumerationsClassesAndAliases) {
    auto library = newLibrary("lib.vlib");
    PropertySetStore store(library);
    const uint32_t ns = importPsdFiles(store, {officialFolder()}, {L"IFC4", OdString(), false});
    const auto sets = store.propertySets(ns);

    const PropertySetRecord& wall = setNamed(sets, "Pset_WallCommon");
    EXPECT_EQ(OdString(L"PSET_TYPEDRIVENOVERRIDE"), wall.templateType);
    ASSERT_FALSE(wall.applicableClasses.empty());
    EXPECT_EQ(OdString(L"IfcWall"), wall.applicableClasses[0]);
    const PropertyDefinitionRecord& external = definitionNamed(store, wall.id, "IsExternal");
    EXPECT_EQ(int(kBooleanCode), external.type.code);
    bool german = false;
    for (const auto& alias : external.aliases)
        german |= alias.language == OdString(L"de-DE") && alias.name == OdString::fromUtf8("Außenbauteil");
    EXPECT_TRUE(german) << "name aliases per language";

    const PropertySetRecord& beam = setNamed(sets, "Pset_BeamCommon");
    const PropertyDefinitionRecord span = definitionNamed(store, beam.id, "Span");
    EXPECT_EQ(int(kRealCode), span.type.code);
    EXPECT_EQ(OdString(L"LENGTH"), span.measure);
    // An empty EnumList: the constants are the values, each described by its definition.
    const PropertyDefinitionRecord status = definitionNamed(store, beam.id, "Status");
    auto enumeration = std::dynamic_pointer_cast<EnumTypeSpecifier<OdString>>(specifierFromStorage(status.type));
    ASSERT_TRUE(enumeration);
    ASSERT_LE(2u, enumeration->values().size());
    EXPECT_EQ(OdString(L"NEW"), enumeration->values()[0].value);
    EXPECT_EQ(OdString(L"element designed as new addition"), enumeration->values()[0].description);

    // The table value of the steel set is kept whole and is no type the editors change.
    bool extended = false;
    for (const auto& definition : store.definitions(setNamed(sets, "Pset_MaterialSteel").id, DefinitionKind::kProperty)) {
        const TypeSpecifierPtr type = specifierFromStorage(definition.type);
        if (type->kind() == vantlib::TypeSpecification::kExtended) {
            extended = true;
            EXPECT_EQ(int(kTableValue), type->valueCategory());
            EXPECT_FALSE(isEditableType(*type));
            EXPECT_NE(std::string::npos, static_cast<const ExtendedTypeSpecifier&>(*type).definitionText().find("TypePropertyTableValue"));
        }
    }
    EXPECT_TRUE(extended);

    // The quantity set stays one, its quantities reals with their measures.
    const PropertySetRecord& quantities = setNamed(sets, "Qto_WallBaseQuantities");
    EXPECT_EQ(PsdSetKind::kQuantitySet, psdSetOf(store, quantities.id).kind);
    const PropertyDefinitionRecord area = definitionNamed(store, quantities.id, "NetSideArea");
    EXPECT_EQ(int(kRealCode), area.type.code);
    EXPECT_EQ(OdString(L"AREA"), area.measure);

    // The file of empty elements imports.
    EXPECT_FALSE(store.definitions(setNamed(sets, "Pset_SpatialZoneCommon").id, DefinitionKind::kProperty).empty());
}

TEST_F(PsdLibrary, ABrokenFileAnywhereImportsNothingAndNamesFileAndLine) {
    const std::string wall = readText(officialFile("Pset_WallCommon"));
    std::string huge = wall;
    huge.insert(huge.find("</PropertySetDef>"), std::string(kPsdMaxFileBytes, ' '));
    struct Case {
        const char* what;
        std::string text;
        bool hasLine;
    };
    const std::vector<Case> cases = {
        {"not XML", "This is a letter, not a definition file.\n<oops", true},
        {"wrong root", replaced(replaced(wall, "<PropertySetDef", "<Building"), "</PropertySetDef>", "</Building>"), true},
        {"missing Name", replaced(wall, "<Name>IsExternal</Name>", ""), true},
        {"unknown data type", replaced(wall, "type=\"IfcBoolean\"", "type=\"IfcBogusMeasure\""), true},
        {"duplicate property", replaced(wall, "<Name>IsExternal</Name>", "<Name>Reference</Name>"), true},
        {"class named twice", replaced(wall, "<ClassName>IfcWall</ClassName>", "<ClassName>IfcWall</ClassName><ClassName>IFCWALL</ClassName>"), true},
        {"another encoding", replaced(wall, "<?xml version=\"1.0\"?>", "<?xml version=\"1.0\" encoding=\"windows-1252\"?>"), true},
        {"huge file", huge, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const fs::path folder = folderWith({"Pset_BeamCommon", "Pset_DoorCommon"}, "Pset_Zzz.xml", c.text);
        const auto library = propertySetLibrary(newLibrary(std::string("broken-") + std::to_string(&c - cases.data()) + ".vlib"));
        try {
            library->importXml(OdString::fromUtf8(folder.string()), 1, nullptr);
            ADD_FAILURE() << "imported";
        } catch (const PsdError& error) {
            EXPECT_EQ((folder / "Pset_Zzz.xml").string(), error.file());
            EXPECT_EQ(c.hasLine, error.line() > 0) << error.what();
            const std::string place = error.file() + (c.hasLine ? ":" + std::to_string(error.line()) : std::string()) + ": ";
            EXPECT_EQ(0u, std::string(error.what()).find(place)) << error.what();
        }
        EXPECT_TRUE(library->namespaces().empty()) << "the good files went too";
    }
}

TEST_F(PsdLibrary, ImportsAddToOneNamespaceAndRefuseTakenNamesAndReadOnlyNamespaces) {
    const auto library = propertySetLibrary(newLibrary("lib.vlib"));
    const fs::path folder = folderWith({"Pset_BeamCommon"}, "Pset_DoorCommon.xml", readText(officialFile("Pset_DoorCommon")));
    const uint32_t ns = library->importXml(OdString::fromUtf8(folder.string()), 1, nullptr);
    ASSERT_EQ(1u, library->namespaces().size());
    EXPECT_EQ(OdString(L"in"), library->namespaces()[0]->name()) << "named after the folder";
    EXPECT_EQ(2u, library->namespaces()[0]->propertySets().size());
    EXPECT_TRUE(library->hasPendingEdits()) << "the editor's OK keeps an import";

    // A file of the folder again: its set is there already, so nothing of the import stays.
    const fs::path more = m_dir / "in" / "Pset_ColumnCommon.xml";
    fs::copy_file(officialFile("Pset_ColumnCommon"), more);
    EXPECT_THROW(library->importXml(OdString::fromUtf8(folder.string()), 1, nullptr), PsdError);
    EXPECT_EQ(2u, library->namespaces()[0]->propertySets().size());
    EXPECT_EQ(ns, library->importXml(OdString::fromUtf8(more.string()), 1, nullptr)) << "a single file joins its folder's namespace";
    EXPECT_EQ(3u, library->namespaces()[0]->propertySets().size());
    library->commit();
    const fs::path out = m_dir / "out";
    EXPECT_TRUE(library->exportXml(OdString::fromUtf8(out.string()), 1, nullptr, ns));
    EXPECT_TRUE(readPsd((out / "Pset_ColumnCommon.xml").string()) == readPsd(officialFile("Pset_ColumnCommon")));
    EXPECT_EQ(3, std::distance(fs::directory_iterator(out), fs::directory_iterator()));

    // Two files of one set in one import.
    const fs::path twice = m_dir / "twice";
    fs::create_directories(twice);
    fs::copy_file(officialFile("Pset_WallCommon"), twice / "a.xml");
    fs::copy_file(officialFile("Pset_WallCommon"), twice / "b.xml");
    PropertySetStore store(vantlib::Library::open(OdString::fromUtf8((m_dir / "lib.vlib").string())));
    EXPECT_THROW(importPsdFiles(store, {twice.string()}, {L"Twice", OdString(), true}), PsdError);
    EXPECT_FALSE(store.findNamespace(OdString(L"Twice")));

    const uint32_t readOnly = importPsdFiles(store, {(twice / "a.xml").string()}, {L"Official", OdString(), false});
    EXPECT_THROW(importPsdFiles(store, {officialFile("Pset_SlabCommon")}, {L"official", OdString(), true}),
                 vantlib::ConsistencyError);
    EXPECT_EQ(1u, store.propertySets(readOnly).size());
}

TEST_F(PsdLibrary, ExportsWriteWholeFilesOrNone) {
    auto library = newLibrary("lib.vlib");
    PropertySetStore store(library);
    const uint32_t ns = importPsdFiles(store, {officialFile("Pset_BeamCommon"), officialFile("Pset_WallCommon")},
                                       {L"Two", OdString(), true});
    const auto ids = namespaceSetIds(store, ns);
    ASSERT_EQ(2u, ids.size());

    // One set to one file; several sets need a folder.
    const fs::path single = m_dir / "single" / "Beam.xml";
    EXPECT_EQ(std::vector<std::string>{single.string()}, exportPsdFiles(store, {ids[0]}, single.string()));
    EXPECT_TRUE(readPsd(single.string()) == readPsd(officialFile("Pset_BeamCommon")));
    EXPECT_THROW(exportPsdFiles(store, ids, (m_dir / "both.xml").string()), PsdError);
    EXPECT_FALSE(fs::exists(m_dir / "both.xml"));

    // A folder that cannot be made: under a file.
    std::ofstream(m_dir / "plain-file") << "x";
    try {
        exportPsdFiles(store, ids, (m_dir / "plain-file" / "out").string());
        ADD_FAILURE() << "exported under a file";
    } catch (const PsdError& error) {
        EXPECT_NE(std::string::npos, error.reason().find("cannot be made")) << error.what();
    }

    // The second file cannot be written: the first is not left behind, half or whole.
    const fs::path blocked = m_dir / "blocked";
    fs::create_directories(blocked / "Pset_WallCommon.xml.partial");
    EXPECT_THROW(exportPsdFiles(store, ids, blocked.string()), PsdError);
    EXPECT_FALSE(fs::exists(blocked / "Pset_BeamCommon.xml"));
    EXPECT_FALSE(fs::exists(blocked / "Pset_BeamCommon.xml.partial"));
    EXPECT_TRUE(fs::is_directory(blocked / "Pset_WallCommon.xml.partial")) << "what was there stays";

    // A folder where a file should go.
    const fs::path occupied = m_dir / "occupied";
    fs::create_directories(occupied / "Pset_WallCommon.xml");
    EXPECT_THROW(exportPsdFiles(store, ids, occupied.string()), PsdError);
    EXPECT_FALSE(fs::exists(occupied / "Pset_BeamCommon.xml"));
}

TEST_F(PsdLibrary, WhatTheLibraryChangedIsWhatTheExportWrites) {
    auto library = newLibrary("lib.vlib");
    PropertySetStore store(library);
    const uint32_t ns = importPsdFiles(store, {officialFile("Pset_BeamCommon")}, {L"Beam", OdString(), true});
    const uint32_t beamId = namespaceSetIds(store, ns)[0];

    // A text property turned into a length: the file's IfcLabel no longer says so.
    PropertyDefinitionRecord reference = definitionNamed(store, beamId, "Reference");
    reference.type = storageOf(TypeSpecifier<double>(kRealCode));
    reference.measure = L"LENGTH";
    store.updateDefinition(reference);
    // A value added to the enumeration, one description changed: the other constants keep their aliases.
    PropertyDefinitionRecord status = definitionNamed(store, beamId, "Status");
    auto enumeration = std::dynamic_pointer_cast<EnumTypeSpecifier<OdString>>(specifierFromStorage(status.type));
    auto values = enumeration->values();
    values[0].description = L"built new";
    values.push_back({L"REUSED", L"taken from another building"});
    enumeration->setValues(values);
    status.type = storageOf(*enumeration);
    store.updateDefinition(status);
    // A German alias dropped.
    PropertyDefinitionRecord span = definitionNamed(store, beamId, "Span");
    span.aliases.erase(std::remove_if(span.aliases.begin(), span.aliases.end(),
                                      [](const auto& alias) { return alias.language == OdString(L"de-DE"); }),
                       span.aliases.end());
    store.updateDefinition(span);

    const PsdSet written = readPsdText(writePsdText(psdSetOf(store, beamId)), "written");
    EXPECT_EQ("IfcLengthMeasure", property(written, "Reference").type.dataType);
    const PsdType& statusType = property(written, "Status").type;
    const auto writtenValues = statusType.enumValues();
    ASSERT_EQ(values.size(), writtenValues.size());
    EXPECT_EQ("built new", writtenValues[0].description);
    EXPECT_EQ("REUSED", writtenValues.back().value);
    const PsdSet original = readPsd(officialFile("Pset_BeamCommon"));
    const PsdType& originalStatus = property(original, "Status").type;
    EXPECT_TRUE(statusType.constants[1] == originalStatus.constants[1]) << "aliases of an unchanged constant";
    EXPECT_EQ(originalStatus.constants[0].nameAliases, statusType.constants[0].nameAliases);
    for (const PsdAlias& alias : property(written, "Span").nameAliases)
        EXPECT_NE("de-DE", alias.lang);
    EXPECT_EQ(property(original, "Span").nameAliases.size() - 1, property(written, "Span").nameAliases.size());

    // A set made in the library: the usual data types, the schema version of the official files.
    const uint32_t mine = store.createPropertySet([&] {
        PropertySetRecord set;
        set.namespaceId = ns;
        set.name = L"Office_Doors";
        set.description = L"Doors as the office schedules them.";
        set.applicableClasses = {L"IfcDoor"};
        set.aliases = {{L"de", OdString(), L"Türen im Büro"}};
        return set;
    }());
    PropertyDefinitionRecord width;
    width.setId = mine;
    width.name = L"ClearWidth";
    width.type = storageOf(TypeSpecifier<double>(kRealCode));
    width.measure = L"LENGTH";
    store.createDefinition(width);
    PropertyDefinitionRecord note;
    note.setId = mine;
    note.kind = DefinitionKind::kValue;
    note.name = L"Note";
    store.createDefinition(note);
    const PsdSet made = readPsdText(writePsdText(psdSetOf(store, mine)), "made");
    EXPECT_EQ("IFC4", made.ifcVersion);
    EXPECT_EQ("IfcLengthMeasure", property(made, "ClearWidth").type.dataType);
    EXPECT_EQ("IfcLabel", property(made, "Note").type.dataType) << "value definitions are written as properties";
    ASSERT_EQ(1u, made.definitionAliases.size());
    EXPECT_EQ("Türen im Büro", made.definitionAliases[0].text);

    // What no file can hold is refused by name.
    PropertyDefinitionRecord formula;
    formula.setId = mine;
    formula.name = L"Area";
    formula.type = storageOf(FormulaTypeSpecifier<OdString>(L"Width * Height"));
    store.createDefinition(formula);
    try {
        exportPsdFiles(store, {mine}, (m_dir / "mine.xml").string());
        ADD_FAILURE() << "a formula was written";
    } catch (const PsdError& error) {
        EXPECT_NE(std::string::npos, error.reason().find("'Area'")) << error.what();
    }
    EXPECT_FALSE(fs::exists(m_dir / "mine.xml"));
}

TEST_F(PsdLibrary, AliasListsTheMergeCannotGiveBackAreKeptWhileTheLibraryAgrees) {
    const PsdSet file = readPsdText(R"(<?xml version="1.0" encoding="UTF-8"?>
<PropertySetDef xmlns="http://buildingSMART-tech.org/xml/psd/PSD_IFC4.xsd">
  <Name>Pset_Aliases</Name>
  <PsetDefinitionAliases>
    <PsetDefinitionAlias lang="de" />
    <PsetDefinitionAlias lang="en">Aliases</PsetDefinitionAlias>
  </PsetDefinitionAliases>
  <PropertyDefs>
    <PropertyDef>
      <Name>Width</Name>
      <PropertyType><TypePropertySingleValue><DataType type="IfcLengthMeasure" /></TypePropertySingleValue></PropertyType>
      <NameAliases>
        <NameAlias lang="fr">Largeur</NameAlias>
        <NameAlias lang="en" />
        <NameAlias lang="fr">Largeur bis</NameAlias>
      </NameAliases>
      <DefinitionAliases>
        <DefinitionAlias lang="de">Breite</DefinitionAlias>
        <DefinitionAlias lang="fr">Largeur de la pièce</DefinitionAlias>
      </DefinitionAliases>
    </PropertyDef>
    <PropertyDef>
      <Name>Height</Name>
      <PropertyType><TypePropertySingleValue><DataType type="IfcLengthMeasure" /></TypePropertySingleValue></PropertyType>
      <NameAliases><NameAlias lang="en">Height</NameAlias><NameAlias lang="de">Höhe</NameAlias></NameAliases>
      <DefinitionAliases><DefinitionAlias lang="en">How high</DefinitionAlias></DefinitionAliases>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)",
                                   "aliases.xml");
    PsdLibrarySet mapped = librarySetOf(file);
    EXPECT_TRUE(psdSetOf(mapped.set, mapped.properties, {}) == file) << "empty texts, a language twice, another order";
    EXPECT_EQ(std::string::npos, mapped.properties[1].source.find("Aliases")) << "lists the merge gives back are not kept";

    // Width in the library: fr, en, de with the last French name. A changed alias makes the
    // library's aliases the truth, in the order the file had.
    ASSERT_EQ(3u, mapped.properties[0].aliases.size());
    EXPECT_EQ(OdString(L"Largeur bis"), mapped.properties[0].aliases[0].name);
    mapped.properties[0].aliases[2].name = L"Breite";
    const PsdProperty width = psdSetOf(mapped.set, mapped.properties, {}).properties[0];
    const std::vector<PsdAlias> names = {{"fr", "Largeur bis"}, {"en", ""}, {"de", "Breite"}};
    EXPECT_EQ(names, width.nameAliases);
    EXPECT_EQ(file.properties[0].definitionAliases, width.definitionAliases);
}

// Property-set definitions in the library file: names unique per parent whatever the letter
// case (also against SQL that bypasses the store), order kept and changed, removal of whole
// branches, every field read back as written, and libraries of earlier versions taking them.
#include <filesystem>

#include <sqlite3.h>

#include <vantlib/PropertySets.h>

#include "LibraryStore.h"
#include "Statement.h"
#include "support.h"

using namespace vltest;

namespace {

struct Fixture {
    TempDir dir;
    std::shared_ptr<Library> library = Library::create(dir.file("psets.vlib"), OdDb::kUnitsMillimeters);
    PropertySetStore store{library};

    uint32_t addNamespace(const char* name, bool editable = true) {
        PropertyNamespaceRecord record;
        record.name = W(name);
        record.editable = editable;
        return store.createNamespace(record);
    }
    uint32_t addSet(uint32_t ns, const char* name) {
        PropertySetRecord record;
        record.namespaceId = ns;
        record.name = W(name);
        return store.createPropertySet(record);
    }
    uint32_t addDefinition(uint32_t set, const char* name, DefinitionKind kind = DefinitionKind::kProperty) {
        PropertyDefinitionRecord record;
        record.setId = set;
        record.kind = kind;
        record.name = W(name);
        return store.createDefinition(record);
    }
    std::vector<OdString> definitionNames(uint32_t set, DefinitionKind kind = DefinitionKind::kProperty) {
        std::vector<OdString> names;
        for (const auto& d : store.definitions(set, kind))
            names.push_back(d.name);
        return names;
    }
    int rawExec(const std::string& sql) { return sqlite3_exec(library->store().db(), sql.c_str(), nullptr, nullptr, nullptr); }
};

std::vector<OdString> names(std::initializer_list<const char*> list) {
    std::vector<OdString> result;
    for (const char* n : list)
        result.push_back(W(n));
    return result;
}

}  // namespace

TEST(PropertySetStorage, NamesAreUniquePerParentRegardlessOfCase) {
    Fixture f;
    const uint32_t office = f.addNamespace("Office");
    const uint32_t other = f.addNamespace("Other");
    EXPECT_THROW(f.addNamespace("OFFICE"), ObjectNotUnique);

    const uint32_t walls = f.addSet(office, "PSet_A");
    try {
        f.addSet(office, "pset_a");
        FAIL() << "a set name taken in the namespace was accepted";
    } catch (const ObjectNotUnique& e) {
        EXPECT_NE(std::string::npos, std::string(e.what()).find("pset_a")) << e.what();
        EXPECT_EQ(kPropertySet, e.objectType());
    }
    EXPECT_NO_THROW(f.addSet(other, "pset_a")) << "the same name in another namespace is free";
    EXPECT_THROW(f.addSet(office, ""), ConsistencyError);

    f.addDefinition(walls, "Width");
    EXPECT_THROW(f.addDefinition(walls, "WIDTH"), ObjectNotUnique);
    EXPECT_NO_THROW(f.addDefinition(walls, "Width", DefinitionKind::kValue)) << "value definitions have names of their own";
    const uint32_t doors = f.addSet(office, "Doors");
    EXPECT_NO_THROW(f.addDefinition(doors, "width")) << "official sets repeat names such as Reference in one namespace";

    // Renaming onto a taken name is refused too, and keeping one's own name is not a clash.
    PropertySetRecord set = *f.store.findPropertySet(doors);
    set.name = W("PSET_A");
    EXPECT_THROW(f.store.updatePropertySet(set), ObjectNotUnique);
    set.name = W("DOORS");
    EXPECT_NO_THROW(f.store.updatePropertySet(set));

    // The file itself refuses what the store would refuse.
    EXPECT_EQ(SQLITE_CONSTRAINT, f.rawExec("INSERT INTO lib_pset(namespace_id, position, name) VALUES (" +
                                           std::to_string(office) + ", 9, 'pSeT_a')") & 0xff);
    EXPECT_EQ(SQLITE_CONSTRAINT, f.rawExec("INSERT INTO lib_pset_definition(set_id, kind, position, name) VALUES (" +
                                           std::to_string(walls) + ", 1, 9, 'wIdTh')") & 0xff);
    EXPECT_EQ(SQLITE_CONSTRAINT, f.rawExec("INSERT INTO lib_pset_namespace(position, name) VALUES (9, '')") & 0xff);
}

TEST(PropertySetStorage, EveryFieldIsReadBackAsWritten) {
    Fixture f;
    PropertyNamespaceRecord ns;
    ns.name = W("Pset");
    ns.label = W("Official property sets");
    ns.editable = false;
    ns.id = f.store.createNamespace(ns);
    auto readNs = f.store.findNamespace(W("PSET"));
    ASSERT_TRUE(readNs);
    EXPECT_EQ(ns.label, readNs->label);
    EXPECT_FALSE(readNs->editable);

    PropertySetRecord set;
    set.namespaceId = ns.id;
    set.name = W("Pset_WallCommon");
    set.label = W("Wall common");
    set.description = W("Properties common to the definition of all occurrences of IfcWall.");
    set.visible = false;
    set.perInstance = false;
    set.editable = false;
    set.templateType = W("PSET_TYPEDRIVENOVERRIDE");
    set.applicableTypeValue = W("IfcWall/SOLIDWALL");
    set.applicableClasses = names({"IfcWall", "IfcWallStandardCase"});
    // Texts the stored JSON must escape.
    set.aliases = {{W("de"), W("Wand \"allgemein\""), W("Gemeinsame\tEigenschaften\n\\ \x01")}, {W("fr-FR"), W("Mur"), W("Propriétés")}};
    set.source = R"({"ifdguid":"abc","ifcVersion":"IFC4"})";
    set.id = f.store.createPropertySet(set);
    auto readSet = f.store.findPropertySet(ns.id, W("pset_wallcommon"));
    ASSERT_TRUE(readSet);
    EXPECT_EQ(set.description, readSet->description);
    EXPECT_FALSE(readSet->visible);
    EXPECT_FALSE(readSet->perInstance);
    EXPECT_FALSE(readSet->editable);
    EXPECT_EQ(set.templateType, readSet->templateType);
    EXPECT_EQ(set.applicableTypeValue, readSet->applicableTypeValue);
    EXPECT_EQ(set.applicableClasses, readSet->applicableClasses);
    EXPECT_EQ(set.aliases, readSet->aliases);
    EXPECT_EQ(set.source, readSet->source);
    ASSERT_EQ(1u, f.store.propertySets(ns.id).size());
    EXPECT_EQ(set.applicableClasses, f.store.propertySets(ns.id)[0].applicableClasses) << "the listing carries the classes";

    PropertyDefinitionRecord value;
    value.setId = set.id;
    value.kind = DefinitionKind::kValue;
    value.name = W("NetArea");
    value.label = W("Net area");
    value.description = W("Area without openings");
    value.type.kind = TypeSpecification::kFormula;
    value.type.code = 10;
    value.type.data = R"({"type":"Formula","values":"Width * Height"})";
    value.measure = W("AREA");
    value.aliases = {{W("de"), W("Nettofläche"), W("")}};
    value.source = R"({"dataType":"IfcAreaMeasure"})";
    value.id = f.store.createDefinition(value);
    PropertyDefinitionRecord table;
    table.setId = set.id;
    table.name = W("SoundCurve");
    table.type = {TypeSpecification::kExtended, 10, 4, "<PropertyType><TypePropertyTableValue/></PropertyType>"};
    table.id = f.store.createDefinition(table);

    auto readValue = f.store.findDefinition(value.id);
    ASSERT_TRUE(readValue);
    EXPECT_EQ(DefinitionKind::kValue, readValue->kind);
    EXPECT_EQ(value.label, readValue->label);
    EXPECT_EQ(value.description, readValue->description);
    EXPECT_EQ(value.type, readValue->type);
    EXPECT_EQ(value.measure, readValue->measure);
    EXPECT_EQ(value.aliases, readValue->aliases);
    EXPECT_EQ(value.source, readValue->source);
    EXPECT_EQ(table.type, f.store.findDefinition(table.id)->type) << "an extended kind keeps its text whole";
    EXPECT_EQ(2u, f.store.namespaceDefinitions(ns.id).size());
}

TEST(PropertySetStorage, DefinitionsWrittenTogetherFollowTheRulesOfOneAtATime) {
    Fixture f;
    const uint32_t set = f.addSet(f.addNamespace("Office"), "Walls");
    f.addDefinition(set, "Finish");
    f.addDefinition(set, "Area", DefinitionKind::kValue);
    auto record = [&](const char* name, DefinitionKind kind = DefinitionKind::kProperty) {
        PropertyDefinitionRecord r;
        r.kind = kind;
        r.name = W(name);
        r.aliases = {{W("de"), W(name), W("")}};
        return r;
    };

    const auto ids = f.store.createDefinitions(set, {record("Colour"), record("Volume", DefinitionKind::kValue), record("Height"),
                                                     record("Finish", DefinitionKind::kValue)});
    ASSERT_EQ(4u, ids.size());
    EXPECT_EQ(names({"Finish", "Colour", "Height"}), f.definitionNames(set)) << "appended after what the set had";
    EXPECT_EQ(names({"Area", "Volume", "Finish"}), f.definitionNames(set, DefinitionKind::kValue)) << "names are per kind";
    EXPECT_EQ(W("Height"), f.store.findDefinition(ids[2])->aliases[0].name);
    EXPECT_EQ(set, f.store.findDefinition(ids[0])->setId);

    // A taken name, in the set or earlier in the same call, an empty name, or an unknown set:
    // nothing of the call stays.
    EXPECT_THROW(f.store.createDefinitions(set, {record("Width"), record("COLOUR")}), ObjectNotUnique);
    EXPECT_THROW(f.store.createDefinitions(set, {record("Width"), record("width")}), ObjectNotUnique);
    EXPECT_THROW(f.store.createDefinitions(set, {record("Width"), record("")}), ConsistencyError);
    EXPECT_THROW(f.store.createDefinitions(set + 100, {record("Width")}), ConsistencyError);
    EXPECT_EQ(names({"Finish", "Colour", "Height"}), f.definitionNames(set));
    f.addDefinition(set, "Last");
    EXPECT_EQ(names({"Finish", "Colour", "Height", "Last"}), f.definitionNames(set)) << "positions go on after the call's";
}

TEST(PropertySetStorage, OrderIsKeptAndMovesStayInsideTheList) {
    Fixture f;
    const uint32_t ns = f.addNamespace("Office");
    const uint32_t set = f.addSet(ns, "Walls");
    for (const char* name : {"A", "B", "C", "D"})
        f.addDefinition(set, name);
    f.addDefinition(set, "V1", DefinitionKind::kValue);

    EXPECT_TRUE(f.store.moveDefinition(set, DefinitionKind::kProperty, 0, 2));
    EXPECT_EQ(names({"B", "C", "A", "D"}), f.definitionNames(set));
    EXPECT_TRUE(f.store.moveDefinition(set, DefinitionKind::kProperty, 3, 0));
    EXPECT_EQ(names({"D", "B", "C", "A"}), f.definitionNames(set));
    EXPECT_FALSE(f.store.moveDefinition(set, DefinitionKind::kProperty, 3, 4));
    EXPECT_FALSE(f.store.moveDefinition(set, DefinitionKind::kValue, 0, 1));
    EXPECT_EQ(names({"D", "B", "C", "A"}), f.definitionNames(set));

    // A definition added after moves and removals goes last.
    ASSERT_TRUE(f.store.removeDefinition(f.store.definitions(set, DefinitionKind::kProperty)[1].id));
    f.addDefinition(set, "E");
    EXPECT_EQ(names({"D", "C", "A", "E"}), f.definitionNames(set));
    EXPECT_EQ(names({"V1"}), f.definitionNames(set, DefinitionKind::kValue));

    // Sets and namespaces keep the order they were made in, not the order of their names.
    f.addSet(ns, "Doors");
    f.addSet(ns, "Attics");
    std::vector<OdString> setNames;
    for (const auto& s : f.store.propertySets(ns))
        setNames.push_back(s.name);
    EXPECT_EQ(names({"Walls", "Doors", "Attics"}), setNames);

    // The outline a tree shows holds the same order, each kind apart, and no other namespace.
    const uint32_t other = f.addNamespace("Other");
    f.addDefinition(f.addSet(other, "Elsewhere"), "X");
    f.addDefinition(f.store.propertySets(ns)[2].id, "Z");
    const std::vector<PropertySetOutline> outline = f.store.outline(ns);
    std::vector<OdString> outlined, properties, values;
    for (const auto& entry : outline)
        outlined.push_back(entry.set.name);
    for (const auto& entry : outline[0].properties)
        properties.push_back(entry.name);
    for (const auto& entry : outline[0].values)
        values.push_back(entry.name);
    EXPECT_EQ(setNames, outlined);
    EXPECT_EQ(f.definitionNames(set), properties);
    EXPECT_EQ(names({"V1"}), values);
    EXPECT_TRUE(outline[1].properties.empty());
    ASSERT_EQ(1u, outline[2].properties.size());
    EXPECT_EQ(W("Z"), outline[2].properties[0].name);

    // Classes keep their order and refuse a second assignment of the same type.
    EXPECT_TRUE(f.store.addApplicableClass(set, W("IfcWall")));
    EXPECT_TRUE(f.store.addApplicableClass(set, W("IfcCovering")));
    EXPECT_FALSE(f.store.addApplicableClass(set, W("IFCWALL")));
    EXPECT_TRUE(f.store.removeApplicableClass(set, W("IfcWall")));
    EXPECT_FALSE(f.store.removeApplicableClass(set, W("IfcWall")));
    EXPECT_TRUE(f.store.addApplicableClass(set, W("IfcWall")));
    EXPECT_EQ(names({"IfcCovering", "IfcWall"}), f.store.findPropertySet(set)->applicableClasses);
}

TEST(PropertySetStorage, RemovingANamespaceTakesItsWholeBranch) {
    Fixture f;
    const uint32_t ns = f.addNamespace("Office");
    const uint32_t kept = f.addNamespace("Kept");
    const uint32_t set = f.addSet(ns, "Walls");
    const uint32_t keptSet = f.addSet(kept, "Walls");
    f.addDefinition(set, "A");
    f.addDefinition(set, "B", DefinitionKind::kValue);
    f.addDefinition(keptSet, "A");
    f.store.addApplicableClass(set, W("IfcWall"));

    EXPECT_EQ(1u, f.store.removeDefinitions(set, DefinitionKind::kValue));
    EXPECT_EQ(1u, f.definitionNames(set).size()) << "only the value definitions went";
    EXPECT_TRUE(f.store.removeNamespace(ns));
    EXPECT_FALSE(f.store.removeNamespace(ns));
    EXPECT_FALSE(f.store.findPropertySet(set));
    Statement count(f.library->store().db(),
                    "SELECT (SELECT count(*) FROM lib_pset_definition), (SELECT count(*) FROM lib_pset_class)");
    ASSERT_TRUE(count.step());
    EXPECT_EQ(1, count.integer(0));
    EXPECT_EQ(0, count.integer(1));
    EXPECT_EQ(names({"A"}), f.definitionNames(keptSet));

    EXPECT_THROW(f.addSet(ns, "Orphan"), ConsistencyError);
    EXPECT_THROW(f.addDefinition(set, "Orphan"), ConsistencyError);
}

TEST(PropertySetStorage, WritesFollowTheLibrarysTransactionsAndReadOnlyState) {
    Fixture f;
    const uint32_t ns = f.addNamespace("Office");
    {
        Transaction transaction(f.library);
        f.addSet(ns, "Dropped");
        EXPECT_TRUE(f.store.findPropertySet(ns, W("Dropped")));
    }
    EXPECT_FALSE(f.store.findPropertySet(ns, W("Dropped"))) << "a transaction without commit takes the set with it";

    // A failed write inside a transaction undoes itself only.
    Transaction transaction(f.library);
    const uint32_t set = f.addSet(ns, "Walls");
    EXPECT_THROW(f.addSet(ns, "WALLS"), ObjectNotUnique);
    transaction.commit();
    EXPECT_TRUE(f.store.findPropertySet(set));

    const OdString path = f.library->filename();
    f.library.reset();
    PropertySetStore readOnly(Library::open(path, true));
    ASSERT_EQ(1u, readOnly.namespaces().size());
    PropertyNamespaceRecord record;
    record.name = W("New");
    EXPECT_THROW(readOnly.createNamespace(record), ReadOnly);
}

TEST(PropertySetMigration, AVersionTwoLibraryOpensWithItsProfilesAndTakesPropertySets) {
    TempDir dir;
    const std::string copy = dir.path() + "/v2.vlib";
    std::filesystem::copy_file(std::filesystem::path(VL_VANTLIB_TEST_DATA) / "v2-library.vlib", copy);
    const OdString path = OdString::fromUtf8(copy);
    {
        auto readOnly = Library::open(path, true);
        EXPECT_EQ(2, readOnly->schemaVersion()) << "a read-only open leaves the file as it is";
    }
    const std::string before = dumpLibrary(path);
    {
        auto library = Library::open(path);
        EXPECT_EQ(Library::kSchemaVersion, library->schemaVersion());
        EXPECT_EQ(7u, library->count<Material>());
        ASSERT_EQ(1u, library->count<Profile>());
        std::vector<QcSmartPtr<Profile>> profiles;
        library->get(profiles, ProfileCriteria());
        EXPECT_EQ(W("Concrete C30/37"), profiles[0]->material()->name());

        PropertySetStore store(library);
        EXPECT_TRUE(store.namespaces().empty());
        PropertyNamespaceRecord ns;
        ns.name = W("Office");
        PropertySetRecord set;
        set.namespaceId = store.createNamespace(ns);
        set.name = W("Walls");
        store.createPropertySet(set);
    }
    EXPECT_EQ(before, withoutTables(dumpLibrary(path), "[lib_pset")) << "the migration keeps every row of version 2";
    auto reopened = Library::open(path);
    PropertySetStore store(reopened);
    ASSERT_EQ(1u, store.namespaces().size());
    EXPECT_EQ(1u, store.propertySets(store.namespaces()[0].id).size());
}

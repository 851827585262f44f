// Storing, reading, querying and removing objects of one library.
#include "support.h"

#include <sqlite3.h>

#include <filesystem>
#include <fstream>

using namespace vltest;

namespace {

class LibraryTest : public ::testing::Test {
protected:
    void SetUp() override { library = Library::create(dir.file("lib.vlib"), OdDb::kUnitsMillimeters); }
    TempDir dir;
    std::shared_ptr<Library> library;
};

}  // namespace

TEST_F(LibraryTest, MaterialRoundTripKeepsEveryField) {
    QcSmartPtr<Material> material = sampleMaterial(W("Brick"));
    material->set_comments(W("fired clay"));
    material->set_appearance(W("Masonry.Brick.Red"));
    Pattern& section = material->section_pattern();
    section.set_type(Pattern::kPredefined);
    section.set_name(W("AR-B816"));
    section.set_scale(2.5);
    section.set_angle(0.7853981633974483);
    section.set_annotative(true);
    section.set_background_color(0xC2FF8000u);
    Pattern& elevation = material->elevation_pattern();
    elevation.set_type(Pattern::kUserDefined);
    elevation.set_name(W("_USER"));
    elevation.set_space(12.5);
    elevation.set_cross(true);
    BimAsset* bim = material->bim_asset();
    bim->set_layer_elevation(Layer::create(W("A-WALL-ELEV")));
    bim->set_variable_thickness(true);
    bim->set_union_section(true);
    InformationAsset* info = material->information_asset(true);
    info->set_classification(W("Uniclass Pr_20_93"));
    info->set_unique_code(W("BR-001"));
    info->set_cost(W("42.50"));
    info->set_url(W("https://example.org/brick"));
    PhysicalAsset* physical = material->physical_asset(true);
    physical->set_density(1800.0, W("kg/m^3"));
    physical->set_specific_heat(0.84, W("kJ/kg/K"));

    QcSmartPtr<Material> stored = library->save(material);
    ASSERT_TRUE(stored);
    EXPECT_NE(0u, stored->id());
    EXPECT_EQ(0u, material->id()) << "the caller's object is left as given";

    QcSmartPtr<Material> read = library->get<Material>(stored->id());
    ASSERT_TRUE(read);
    EXPECT_EQ(W("Brick"), read->name());
    EXPECT_EQ(W("fired clay"), read->comments());
    EXPECT_EQ(W("Masonry"), read->material_type()->name());
    EXPECT_NE(0u, read->material_type()->id());
    ASSERT_EQ(2u, read->tags().size());
    EXPECT_EQ(W("Exterior"), read->tags()[0]->name());
    EXPECT_EQ(W("Load bearing"), read->tags()[1]->name());
    EXPECT_EQ(material->section_pattern(), read->section_pattern());
    EXPECT_EQ(material->elevation_pattern(), read->elevation_pattern());
    ASSERT_TRUE(read->bim_asset());
    EXPECT_EQ(W("A-WALL-PATT"), read->bim_asset()->layer()->name());
    EXPECT_EQ(W("A-WALL-ELEV"), read->bim_asset()->layer_elevation()->name());
    EXPECT_EQ((std::set<double>{0.115, 0.175, 0.24}), read->bim_asset()->thicknesses());
    EXPECT_TRUE(read->bim_asset()->variable_thickness());
    EXPECT_TRUE(read->bim_asset()->union_section());
    EXPECT_FALSE(read->bim_asset()->union_elevation());
    ASSERT_TRUE(read->information_asset());
    EXPECT_EQ(W("BR-001"), read->information_asset()->unique_code());
    EXPECT_EQ(W("42.50"), read->information_asset()->cost());
    ASSERT_TRUE(read->physical_asset());
    EXPECT_TRUE(read->physical_asset()->has_density());
    EXPECT_FALSE(read->physical_asset()->has_thermal_conductivity());
    EXPECT_DOUBLE_EQ(0.84, read->physical_asset()->specific_heat().value);
    EXPECT_EQ(W("kJ/kg/K"), read->physical_asset()->specific_heat().unit);
    ASSERT_EQ(1u, read->custom_values().size());
    EXPECT_EQ(W("REI 90"), read->custom_values()[0].value);
    EXPECT_EQ(kMaterial, read->custom_values()[0].property->object_type());
    EXPECT_EQ(library, read->library());
}

TEST_F(LibraryTest, ObjectsReadAreCopiesUntilSaved) {
    QcSmartPtr<Material> stored = library->save(sampleMaterial(W("Brick")));
    QcSmartPtr<Material> first = library->get<Material>(NameKey(W("brick")));
    ASSERT_TRUE(first);
    first->set_description(W("changed"));
    first->clear_tags();
    EXPECT_EQ(W("Brick description"), library->get<Material>(stored->id())->description());

    first->save();
    QcSmartPtr<Material> again = library->get<Material>(stored->id());
    EXPECT_EQ(W("changed"), again->description());
    EXPECT_TRUE(again->tags().empty());
    EXPECT_EQ(1u, library->count<Material>());

    QcSmartPtr<Material> loose = Material::create(W("Loose"));
    EXPECT_THROW(loose->save(), ConsistencyError);
    QcSmartPtr<Material> unnamed = Material::create(OdString());
    EXPECT_THROW(library->save(unnamed), ConsistencyError);
}

TEST_F(LibraryTest, CloneSavesAsNewObjectInSameLibrary) {
    QcSmartPtr<Material> brick = library->save(sampleMaterial(W("Brick")));
    QcSmartPtr<Material> copy = library->get<Material>(brick->id())->cloneObject();
    copy->set_name(W("Brick-2"));
    copy->save();
    EXPECT_NE(0u, copy->id());
    EXPECT_NE(brick->id(), copy->id());
    EXPECT_EQ(2u, library->count<Material>());
    EXPECT_EQ(1u, library->count<MaterialType>()) << "the class is shared by name, not duplicated";
}

TEST_F(LibraryTest, CriteriaSelectByNameClassTagsAndBaseType) {
    auto save = [&](const char* name, const char* cls, std::vector<const char*> tags) {
        QcSmartPtr<Material> m = Material::create(W(name));
        m->set_type(MaterialType::create(W(cls)));
        for (const char* t : tags)
            m->add_tag(W(t));
        return library->save(m);
    };
    auto brick = save("Brick red", "Masonry", {"Exterior", "Load bearing"});
    auto block = save("Block 100%", "Masonry", {"Interior"});
    auto oak = save("Oak", "Wood", {"Exterior"});
    save("Pine_1", "Wood", {});

    std::vector<QcSmartPtr<Material>> found;
    library->get(found, MaterialCriteria());
    EXPECT_EQ(4u, found.size());

    MaterialCriteria byClass;
    byClass.materialClass.equals(W("masonry"));
    library->get(found, byClass);
    ASSERT_EQ(2u, found.size());
    EXPECT_EQ(brick->id(), found[0]->id());
    EXPECT_EQ(block->id(), found[1]->id());

    byClass.materialClass.equals(W("Steel"));
    library->get(found, byClass);
    EXPECT_TRUE(found.empty()) << "a class the library lacks lists nothing";

    MaterialCriteria anyTag;
    anyTag.tags = {W("exterior"), W("Interior")};
    library->get(found, anyTag);
    EXPECT_EQ(3u, found.size());
    MaterialCriteria allTags;
    allTags.tags = {W("Exterior"), W("Load bearing"), W("EXTERIOR")};
    allTags.tagMatch = kAllTags;
    library->get(found, allTags);
    ASSERT_EQ(1u, found.size());
    EXPECT_EQ(brick->id(), found[0]->id());
    ASSERT_EQ(2u, found[0]->tags().size()) << "tags of a filtered result are complete";

    MaterialCriteria classAndTag;
    classAndTag.materialClass.equals(W("Wood"));
    classAndTag.tags = {W("Exterior")};
    library->get(found, classAndTag);
    ASSERT_EQ(1u, found.size());
    EXPECT_EQ(oak->id(), found[0]->id());

    // LIKE wildcards in the text are taken literally.
    library->get(found, StringCriteria(W("100%"), StringCriteria::kContains));
    ASSERT_EQ(1u, found.size());
    EXPECT_EQ(block->id(), found[0]->id());
    library->get(found, StringCriteria().contains(W("e_1")));
    ASSERT_EQ(1u, found.size());
    EXPECT_EQ(W("Pine_1"), found[0]->name());

    std::vector<QcSmartPtr<Material>> byIds;
    library->get(byIds, std::set<unsigned>{oak->id(), brick->id(), 9999});
    ASSERT_EQ(2u, byIds.size());
    EXPECT_EQ(brick->id(), byIds[0]->id());

    auto concrete = library->save(Material::create(W("Concrete")));
    auto slab = sampleComposition(W("Slab 200"), {concrete});
    slab->set_base_type(Composition::kSlab);
    library->save(slab);
    library->save(sampleComposition(W("Wall 300"), {brick, concrete}));
    std::vector<QcSmartPtr<Composition>> compositions;
    CompositionCriteria slabs;
    slabs.baseType = Composition::kSlab;
    library->get(compositions, slabs);
    ASSERT_EQ(1u, compositions.size());
    EXPECT_EQ(W("Slab 200"), compositions[0]->name());
    CompositionCriteria byType;
    byType.compositionType = CompositionType::create(W("exterior WALL"));
    library->get(compositions, byType);
    EXPECT_EQ(2u, compositions.size());
    byType.compositionType = CompositionType::create(W("Roof"));
    library->get(compositions, byType);
    EXPECT_TRUE(compositions.empty());

    std::vector<QcSmartPtr<Tag>> tags;
    library->get(tags);
    EXPECT_EQ(3u, tags.size());
}

TEST_F(LibraryTest, ContainsSearchTakesLongTextsAndWildcardsLiterally) {
    const std::wstring percents(25000, L'%');
    auto wildcards = library->save(Material::create(OdString(L"Odd " + percents + L" name")));
    library->save(Material::create(W("Plain")));
    library->save(Composition::create(W("Wall")));

    std::vector<QcSmartPtr<Material>> found;
    library->get(found, StringCriteria().contains(OdString(percents)));
    ASSERT_EQ(1u, found.size());
    EXPECT_EQ(wildcards->id(), found[0]->id());
    MaterialCriteria byName;
    byName.name.contains(OdString(std::wstring(25000, L'_')));
    library->get(found, byName);
    EXPECT_TRUE(found.empty());
    byName.name.contains(OdString(L"ODD " + percents));
    library->get(found, byName);
    EXPECT_EQ(1u, found.size()) << "letter case is ignored as in names";

    std::vector<QcSmartPtr<Composition>> compositions;
    CompositionCriteria longText;
    longText.name.contains(OdString(std::wstring(50000, L'a')));
    library->get(compositions, longText);
    EXPECT_TRUE(compositions.empty());
    std::vector<QcSmartPtr<Tag>> tags;
    library->get(tags, StringCriteria().contains(OdString(std::wstring(60000, L'x'))));
    EXPECT_TRUE(tags.empty());
}

TEST_F(LibraryTest, CompositionKeepsPliesAndRefusesForeignMaterials) {
    auto brick = library->save(sampleMaterial(W("Brick")));
    auto wool = library->save(Material::create(W("Mineral wool")));
    auto wall = sampleComposition(W("Wall"), {brick, wool, brick});
    wall->set_variable_ply(1);
    wall->set_variable_ply_min_thickness(0.05);
    wall->set_layer(Layer::create(W("A-WALL")));
    wall->set_description(W("cavity wall"));
    auto stored = library->save(wall);

    auto read = library->get<Composition>(stored->id());
    ASSERT_TRUE(read);
    ASSERT_EQ(3u, read->numPlies());
    EXPECT_EQ(W("Mineral wool"), read->ply(1).material()->name());
    EXPECT_EQ(brick->id(), read->ply(2).material()->id());
    EXPECT_EQ(W("Masonry"), read->ply(0).material()->material_type()->name());
    EXPECT_DOUBLE_EQ(0.115, read->ply(0).thickness());
    EXPECT_EQ(1, read->variable_ply());
    EXPECT_DOUBLE_EQ(0.05, read->variable_ply_min_thickness());
    EXPECT_EQ(W("A-WALL"), read->layer()->name());
    EXPECT_EQ(W("Exterior wall"), read->composition_type()->name());
    EXPECT_EQ(Composition::kWall, read->type());
    EXPECT_EQ(kComposition, read->objectType());

    TempDir other;
    auto foreign = Library::create(other.file("other.vlib"), OdDb::kUnitsMillimeters);
    auto steel = foreign->save(Material::create(W("Steel")));
    EXPECT_THROW(library->save(sampleComposition(W("Frame"), {steel})), ConsistencyError);
    EXPECT_EQ(1u, library->count<Composition>());
}

TEST_F(LibraryTest, RemoveRefusesReferencedObjects) {
    RecordingReactor reactor;
    auto brick = library->save(sampleMaterial(W("Brick")));
    auto sand = library->save(Material::create(W("Sand")));
    auto loam = library->save(Material::create(W("Loam")));
    auto wall = library->save(sampleComposition(W("Wall"), {brick}));

    EXPECT_EQ(Library::kReferenced, library->remove(brick));
    EXPECT_EQ(Library::kNotFound, library->remove<Material>(4242));
    std::set<unsigned> kept = library->remove<Material>(std::set<unsigned>{brick->id(), sand->id(), 4242});
    EXPECT_EQ(std::set<unsigned>{brick->id()}, kept);
    EXPECT_FALSE(library->get<Material>(sand->id()));

    reactor.removeAnswer = [&](const ObjectKey& key) { return key.id == loam->id() ? kRemoveVeto : kRemoveAllow; };
    EXPECT_EQ(Library::kVetoed, library->remove(loam));
    EXPECT_TRUE(library->get<Material>(loam->id()));

    auto masonry = library->get<MaterialType>(NameKey(W("Masonry")));
    EXPECT_EQ(Library::kReferenced, library->remove(masonry));
    EXPECT_TRUE(isMaterialClassUsed(library, masonry));

    EXPECT_EQ(Library::kRemoved, library->remove(wall));
    EXPECT_EQ(Library::kRemoved, library->remove(brick));
    EXPECT_FALSE(isMaterialClassUsed(library, masonry));
    EXPECT_EQ(Library::kRemoved, library->remove(masonry));

    sqlite3* db = nullptr;
    sqlite3_open(library->filename().toUtf8().c_str(), &db);
    sqlite3_stmt* stmt = nullptr;
    sqlite3_prepare_v2(db, "SELECT count(*) FROM lib_object_tag WHERE object_type = 4 AND object_id = ?", -1, &stmt, nullptr);
    sqlite3_bind_int(stmt, 1, int(brick->id()));
    ASSERT_EQ(SQLITE_ROW, sqlite3_step(stmt));
    EXPECT_EQ(0, sqlite3_column_int(stmt, 0)) << "tags of a removed material go with it";
    sqlite3_finalize(stmt);
    sqlite3_close(db);
}

TEST_F(LibraryTest, PurgeRemovesOnlyUnusedTagsAndLayers) {
    auto brick = sampleMaterial(W("Brick"));
    brick->add_tag(W("Temporary"));
    brick = library->save(brick);
    brick->remove_tag(W("Temporary"));
    brick->bim_asset()->set_layer_elevation(Layer::create(W("A-ELEV")));
    brick->save();
    auto wall = sampleComposition(W("Wall"), {brick});
    wall->set_layer(Layer::create(W("A-WALL")));
    library->save(wall);
    library->save(Layer::create(W("Unused layer")));

    EXPECT_EQ(3u, library->count<Tag>());
    EXPECT_EQ(1u, library->purge<Tag>());
    EXPECT_FALSE(library->get<Tag>(NameKey(W("Temporary"))));
    EXPECT_TRUE(library->get<Tag>(NameKey(W("Exterior"))));
    EXPECT_EQ(1u, library->purge<Layer>());
    EXPECT_EQ(3u, library->count<Layer>());
    EXPECT_EQ(0u, library->purge<Tag>());
}

TEST_F(LibraryTest, CustomPropertiesByKindAndUse) {
    library->save(CustomProperty::create(W("U value"), kComposition));
    library->save(CustomProperty::create(W("Supplier"), kUnknownObject));
    library->save(sampleMaterial(W("Brick")));  // brings "Fire rating" for materials

    auto forMaterials = getCustomProperties(library, kMaterial);
    ASSERT_EQ(2u, forMaterials.size());
    EXPECT_EQ(W("Fire rating"), forMaterials[0]->name());
    EXPECT_EQ(W("Supplier"), forMaterials[1]->name());
    EXPECT_EQ(3u, getCustomProperties(library, kUnknownObject).size());

    EXPECT_TRUE(isCustomPropUsed(library, forMaterials[0]));
    EXPECT_FALSE(isCustomPropUsed(library, forMaterials[1]));
    EXPECT_EQ(Library::kReferenced, library->remove(forMaterials[0]));
    EXPECT_EQ(Library::kRemoved, library->remove(forMaterials[1]));
}

TEST_F(LibraryTest, SetClassUsesTheLibrarysClasses) {
    library->save(MaterialType::create(W("Metal")));
    auto brick = library->save(sampleMaterial(W("Brick")));
    EXPECT_TRUE(setClass(brick, W("metal")));
    EXPECT_EQ(W("Metal"), brick->material_type()->name());
    EXPECT_FALSE(setClass(brick, W("Glass")));
    EXPECT_EQ(W("Metal"), brick->material_type()->name());
    EXPECT_TRUE(setClass(brick, OdString()));
    EXPECT_FALSE(brick->material_type());
    EXPECT_EQ(2u, library->count<MaterialType>()) << "nothing is stored until the material is saved";
}

TEST_F(LibraryTest, PropertiesOfTheLibrary) {
    EXPECT_FALSE(library->isReadOnly());
    EXPECT_EQ(36, library->guid().getLength());
    EXPECT_EQ(OdDb::kUnitsMillimeters, library->unit());
    EXPECT_FALSE(library->isImperial());
    EXPECT_EQ(dir.file("lib.vlib"), getImplFilename(*library));
    library->set_description(W("Office standards"));
    OdString guid = library->guid();
    library.reset();

    auto reopened = Library::open(dir.file("lib.vlib"));
    EXPECT_EQ(guid, reopened->guid());
    EXPECT_EQ(W("Office standards"), reopened->description());

    auto imperial = Library::create(dir.file("imperial.vlib"), OdDb::kUnitsInches);
    EXPECT_TRUE(imperial->isImperial());
    EXPECT_NE(guid, imperial->guid());
    EXPECT_THROW(Library::create(dir.file("imperial.vlib"), OdDb::kUnitsInches), AlreadyExists);
}

TEST(LibraryEmbedded, LivesBesideTheDrawingsOwnTables) {
    TempDir dir;
    OdString drawing = dir.file("house.vldwg");
    sqlite3* db = nullptr;
    ASSERT_EQ(SQLITE_OK, sqlite3_open(drawing.toUtf8().c_str(), &db));
    sqlite3_exec(db, "CREATE TABLE drawing_meta(key TEXT, value TEXT); INSERT INTO drawing_meta VALUES ('version', '3');",
                 nullptr, nullptr, nullptr);
    EXPECT_FALSE(Library::containsLibrary(drawing));
    EXPECT_THROW(Library::open(drawing), NotALibrary);

    // The drawing keeps its own connection open meanwhile.
    auto library = Library::create(drawing, OdDb::kUnitsMeters);
    library->save(sampleMaterial(W("Brick")));
    library.reset();
    sqlite3_close(db);
    EXPECT_TRUE(Library::containsLibrary(drawing));
    std::string dump = dumpLibrary(drawing);
    EXPECT_NE(std::string::npos, dump.find("Brick"));

    ASSERT_EQ(SQLITE_OK, sqlite3_open(drawing.toUtf8().c_str(), &db));
    sqlite3_stmt* stmt = nullptr;
    sqlite3_prepare_v2(db, "SELECT value FROM drawing_meta WHERE key = 'version'", -1, &stmt, nullptr);
    ASSERT_EQ(SQLITE_ROW, sqlite3_step(stmt));
    EXPECT_STREQ("3", reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0)));
    sqlite3_finalize(stmt);
    sqlite3_close(db);
    EXPECT_EQ(1u, Library::open(drawing)->count<Material>());
}

// Material cards of a public material database: names and descriptions with non-ASCII text
// survive storage unchanged.
TEST(LibraryRealData, MaterialCardsRoundTrip) {
    std::filesystem::path cards = std::filesystem::path(VL_TEST_DATA_DIR) / "materials" / "freecad-0.20" / "StandardMaterial";
    ASSERT_TRUE(std::filesystem::exists(cards)) << "test data missing: " << cards;
    TempDir dir;
    auto library = Library::create(dir.file("cards.vlib"), OdDb::kUnitsMillimeters);
    std::map<std::wstring, OdString> expected;
    for (const auto& entry : std::filesystem::directory_iterator(cards)) {
        std::ifstream in(entry.path());
        std::string line, name, description;
        while (std::getline(in, line)) {
            if (line.rfind("Name = ", 0) == 0 && name.empty())
                name = line.substr(7);
            else if (line.rfind("Description = ", 0) == 0 && description.empty())
                description = line.substr(14);
        }
        if (name.empty())
            continue;
        auto material = Material::create(OdString::fromUtf8(name));
        material->set_description(OdString::fromUtf8(description));
        if (library->isNameUsed(kMaterial, material->name()))
            continue;
        library->save(material);
        expected[material->name().str()] = material->description();
    }
    ASSERT_GT(expected.size(), 10u);
    std::vector<QcSmartPtr<Material>> all;
    library->get(all, StringCriteria());
    ASSERT_EQ(expected.size(), all.size());
    for (const auto& material : all)
        EXPECT_EQ(expected[material->name().str()], material->description()) << material->name().toUtf8();
}

// The exchange document: what it keeps of every kind, the round trip through an empty library,
// the clash answers, the unit conversion and the choice of kinds.
#include "ExchangeFixture.h"

#include <cmath>

namespace vltest {

void ExchangeTest::fillSample(const std::shared_ptr<Library>& library) {
    Transaction transaction(library);
    library->set_description(W("Office library \u00B7 2026"));
    library->save(Tag::create(W("unused tag")));
    library->save(Layer::create(W("Z-UNUSED")));
    library->save(CompositionType::create(W("Partitions")));
    library->save(CustomProperty::create(W("Any \"thing\" \\ here"), kUnknownObject));
    library->save(CustomProperty::create(W("Rating"), kComposition));

    auto brick = Material::create(W("Brick \u00C4"));
    brick->set_description(W("Solid clay brick"));
    brick->set_comments(W("line one\nline two \"quoted\""));
    brick->set_type(MaterialType::create(W("Masonry")));
    brick->set_appearance(W("Masonry - Brick"));
    Pattern& section = brick->section_pattern();
    section.set_type(Pattern::kUserDefined);
    section.set_name(W("_USER"));
    section.set_space(3.5);
    section.set_angle(M_PI / 3);
    section.set_cross(true);
    section.set_background_color(0xC3FF8040u);
    Pattern& elevation = brick->elevation_pattern();
    elevation.set_type(Pattern::kCustom);
    elevation.set_name(W("BRICK-STRETCHER"));
    elevation.set_scale(0.1);
    elevation.set_annotative(true);
    BimAsset* bim = brick->bim_asset(true);
    bim->set_layer(Layer::create(W("A-SECT")));
    bim->set_layer_elevation(Layer::create(W("A-ELEV")));
    bim->set_default_function(kFunctionStructure);
    bim->set_thicknesses({115.0, 175.0, 240.0, 0.1 + 0.2});
    bim->set_variable_thickness(true);
    bim->set_union_section(true);
    InformationAsset* info = brick->information_asset(true);
    info->set_classification(W("Uniclass Pr_20_93"));
    info->set_unique_code(W("B-001"));
    info->set_cost(W("42"));
    info->set_url(W("https://example.org/brick"));
    PhysicalAsset* physical = brick->physical_asset(true);
    physical->set_density(1800.0, W("kg/m\u00B3"));
    physical->set_specific_heat(0.84e3, W("J/(kg\u00B7K)"));
    brick->add_tag(W("masonry"));
    brick->add_tag(W("exterior"));
    brick->set_custom_value(CustomProperty::create(W("Fire class"), kMaterial), W("A1"));
    brick->set_custom_value(CustomProperty::create(W("Any \"thing\" \\ here"), kUnknownObject), W("\u00FC"));
    brick = library->save(brick);

    auto insulation = Material::create(W("insulation"));
    insulation->information_asset(true);  // present without a unique code
    insulation->physical_asset(true)->set_thermal_conductivity(0.035, W("W/(m\u00B7K)"));
    insulation = library->save(insulation);
    auto plain = library->save(Material::create(W("Plain")));

    auto wall = Composition::create(W("Wall 1"), Composition::Type(Composition::kWall | Composition::kCovering));
    wall->set_description(W("External wall"));
    wall->set_type(CompositionType::create(W("External walls")));
    wall->set_layer(Layer::create(W("A-WALL")));
    wall->append_ply(Ply(brick, 175.0, kFunctionStructure));
    wall->append_ply(Ply(insulation, 120.0, kFunctionInsulation));
    wall->append_ply(Ply(brick, 115.0, kFunctionFinish1));
    wall->set_variable_ply(1);
    wall->set_variable_ply_min_thickness(60.0);
    wall->add_tag(W("exterior"));
    wall->set_custom_value(CustomProperty::create(W("Rating"), kComposition), W("REI 90"));
    library->save(wall);
    auto empty = Composition::create(W("empty"), Composition::kSlab);
    library->save(empty);
    (void)plain;
    transaction.commit();
}

namespace {

ImportCounts countsOf(const ImportReport& report, ObjectType type) {
    for (const auto& entry : report.kinds)
        if (entry.type == type)
            return entry.counts;
    ADD_FAILURE() << "no counts for kind " << type;
    return {};
}

}  // namespace

TEST_F(ExchangeTest, RoundTripThroughAnEmptyLibraryGivesTheSameBytesAndObjects) {
    auto source = newLibrary("source.vlib");
    fillSample(source);
    const std::string first = exportLibrary(*source);

    auto copy = newLibrary("copy.vlib");
    const ImportReport report = importLibrary(copy, first);
    EXPECT_FALSE(report.converted);
    EXPECT_EQ(countsOf(report, kMaterial).created, 3u);
    EXPECT_EQ(countsOf(report, kComposition).created, 2u);
    EXPECT_EQ(report.total().skipped + report.total().overwritten + report.total().renamed, 0u);
    EXPECT_EQ(exportLibrary(*copy), first);

    // The objects themselves, beyond the document agreeing with itself.
    EXPECT_EQ(copy->description(), W("Office library \u00B7 2026"));
    EXPECT_TRUE(copy->get<Tag>(NameKey(W("unused tag"))));
    auto brick = copy->get<Material>(NameKey(W("Brick \u00C4")));
    ASSERT_TRUE(brick);
    EXPECT_EQ(brick->comments(), W("line one\nline two \"quoted\""));
    EXPECT_EQ(brick->section_pattern().angle(), M_PI / 3);
    EXPECT_EQ(brick->section_pattern().background_color(), 0xC3FF8040u);
    EXPECT_FALSE(brick->elevation_pattern().has_background_color());
    EXPECT_TRUE(brick->elevation_pattern().annotative());
    EXPECT_EQ(brick->bim_asset()->thicknesses().count(0.1 + 0.2), 1u);
    EXPECT_EQ(brick->bim_asset()->layer_elevation()->name(), W("A-ELEV"));
    EXPECT_EQ(brick->information_asset()->unique_code(), W("B-001"));
    EXPECT_EQ(brick->physical_asset()->density().unit, W("kg/m\u00B3"));
    EXPECT_FALSE(brick->physical_asset()->has_thermal_conductivity());
    EXPECT_FALSE(copy->get<Material>(NameKey(W("insulation")))->information_asset()->has_unique_code());
    EXPECT_FALSE(copy->get<Material>(NameKey(W("Plain")))->bim_asset());
    auto wall = copy->get<Composition>(NameKey(W("Wall 1")));
    ASSERT_TRUE(wall);
    EXPECT_EQ(unsigned(wall->type()), unsigned(Composition::kWall | Composition::kCovering));
    ASSERT_EQ(wall->numPlies(), 3u);
    EXPECT_EQ(wall->ply(1).material()->name(), W("insulation"));
    EXPECT_EQ(wall->variable_ply(), 1);
    EXPECT_EQ(wall->custom_values().size(), 1u);
    EXPECT_FALSE(copy->get<Composition>(NameKey(W("empty")))->has_variable_ply());
}

TEST_F(ExchangeTest, ClashesAreSkippedOverwrittenOrRenamedAndPliesFollowARename) {
    auto source = newLibrary("source.vlib");
    fillSample(source);
    const std::string document = exportLibrary(*source);

    auto target = newLibrary("target.vlib");
    auto existing = Material::create(W("BRICK \u00C4"));  // the same name, other letter case
    existing->set_description(W("theirs"));
    existing = target->save(existing);
    target->save(MaterialType::create(W("masonry")));

    ImportReport skipped = importLibrary(target, document, ClashAnswer::kSkip);
    EXPECT_EQ(countsOf(skipped, kMaterial).skipped, 1u);
    EXPECT_EQ(countsOf(skipped, kMaterial).created, 2u);
    EXPECT_EQ(countsOf(skipped, kMaterialType).skipped, 1u);
    EXPECT_EQ(target->get<Material>(existing->id())->description(), W("theirs"));
    EXPECT_EQ(countsOf(skipped, kComposition).created, 2u);
    // The wall uses the library's material of that name.
    EXPECT_EQ(target->get<Composition>(NameKey(W("Wall 1")))->ply(0).material()->id(), existing->id());

    ImportReport overwritten = importLibrary(target, document, ClashAnswer::kOverwrite);
    EXPECT_EQ(countsOf(overwritten, kMaterial).overwritten, 3u);
    EXPECT_EQ(countsOf(overwritten, kComposition).overwritten, 2u);
    auto brick = target->get<Material>(existing->id());
    EXPECT_EQ(brick->name(), W("Brick \u00C4"));
    EXPECT_EQ(brick->description(), W("Solid clay brick"));
    EXPECT_EQ(target->count<Material>(), 3u);

    ImportReport renamed = importLibrary(target, document, ClashAnswer::kRename);
    EXPECT_EQ(countsOf(renamed, kMaterial).renamed, 3u);
    ASSERT_EQ(renamed.renames.size(), 5u);
    EXPECT_EQ(renamed.renames[0].to, W("Brick \u00C4_2"));
    auto wall = target->get<Composition>(NameKey(W("Wall 1_2")));
    ASSERT_TRUE(wall);
    EXPECT_EQ(wall->ply(0).material()->name(), W("Brick \u00C4_2"));
    EXPECT_EQ(wall->ply(1).material()->name(), W("insulation_2"));
    EXPECT_EQ(target->count<Material>(), 6u);
}

TEST_F(ExchangeTest, LengthsAreConvertedIntoALibraryOfAnotherUnit) {
    auto source = newLibrary("source.vlib");
    fillSample(source);
    auto imperial = newLibrary("imperial.vlib", OdDb::kUnitsInches);
    const ImportReport report = importLibrary(imperial, exportLibrary(*source));
    EXPECT_TRUE(report.converted);
    EXPECT_EQ(report.documentUnit, OdDb::kUnitsMillimeters);
    EXPECT_EQ(report.libraryUnit, OdDb::kUnitsInches);
    auto wall = imperial->get<Composition>(NameKey(W("Wall 1")));
    EXPECT_DOUBLE_EQ(wall->ply(0).thickness(), 175.0 / 25.4);
    EXPECT_DOUBLE_EQ(wall->variable_ply_min_thickness(), 60.0 / 25.4);
    auto brick = imperial->get<Material>(NameKey(W("Brick \u00C4")));
    EXPECT_DOUBLE_EQ(*brick->bim_asset()->thicknesses().rbegin(), 240.0 / 25.4);
    // Hatch spacing is a drawing distance of the pattern, not a thickness.
    EXPECT_EQ(brick->section_pattern().space(), 3.5);
}

TEST_F(ExchangeTest, ChosenKindsBringWhatTheyReferToAndNothingElse) {
    auto source = newLibrary("source.vlib");
    fillSample(source);
    const std::string document = exportLibrary(*source, {kComposition});
    auto target = newLibrary("target.vlib");
    importLibrary(target, document);
    EXPECT_EQ(target->count<Composition>(), 2u);
    // The wall's materials, not the unused one.
    EXPECT_EQ(target->count<Material>(), 2u);
    EXPECT_FALSE(target->get<Material>(NameKey(W("Plain"))));
    EXPECT_TRUE(target->get<MaterialType>(NameKey(W("Masonry"))));
    EXPECT_TRUE(target->get<CustomProperty>(NameKey(W("Fire class"))));
    EXPECT_FALSE(target->get<Tag>(NameKey(W("unused tag"))));
    EXPECT_FALSE(target->get<CompositionType>(NameKey(W("Partitions"))));

    auto tagsOnly = newLibrary("tags.vlib");
    importLibrary(tagsOnly, exportLibrary(*source, {kTag}));
    EXPECT_EQ(tagsOnly->count<Tag>(), source->count<Tag>());
    EXPECT_EQ(tagsOnly->count<Material>(), 0u);
}

TEST_F(ExchangeTest, ReferencesMayNameObjectsTheLibraryAlreadyHas) {
    auto target = newLibrary("target.vlib");
    target->save(Material::create(W("Concrete")));
    target->save(CustomProperty::create(W("Rating"), kComposition));
    const ImportReport report = importLibrary(target, R"({"format": "vantlib-library", "version": 1,
        "unit": "meters", "compositions": [{"name": "Slab", "plies": [{"material": "concrete", "thickness": 0.2}],
        "customValues": {"rating": "REI 60"}}]})");
    EXPECT_TRUE(report.converted);
    auto slab = target->get<Composition>(NameKey(W("Slab")));
    ASSERT_TRUE(slab);
    EXPECT_DOUBLE_EQ(slab->ply(0).thickness(), 200.0);
    EXPECT_EQ(slab->custom_values().at(0).property->name(), W("Rating"));
}

}  // namespace vltest

// Profiles in the exchange document: standards, profile names and profiles of every kind of
// section survive the round trip, follow the library's unit, and meet clashes per name.
#include "ExchangeFixture.h"

#include <vantlib/Profile.h>

namespace vltest {

namespace {

ProfileGeometry plateWithHole() {
    ProfileGeometry geometry;
    geometry.outer = {ProfileEdge(Vector2d(0, 0)), ProfileEdge(Vector2d(100, 0)), ProfileEdge(Vector2d(100, 50), 0.5),
                      ProfileEdge(Vector2d(0, 50))};
    geometry.holes = {{ProfileEdge(Vector2d(40, 20), 1.0), ProfileEdge(Vector2d(60, 20), 1.0)}};
    return geometry;
}

void fillProfiles(const std::shared_ptr<Library>& library) {
    Transaction transaction(library);
    auto steel = library->save(Material::create(W("S235")));
    auto standard = ProfileStandard::create(W("EN 10365"));
    auto ipe = library->save(ProfileName::create(standard, W("IPE"), kProfileStructuralSteel));
    auto angles = library->save(ProfileName::create(standard, W("L"), kProfileStructuralSteel));
    auto own = library->save(ProfileName::create(QcSmartPtr<ProfileStandard>(), W("Ducts"),
                                                 ProfileType(kProfileHvac | kProfileGeneric)));
    auto ipe200 = IShapeProfile::create(ipe, W("200"));
    ipe200->set_overall_depth(200);
    ipe200->set_overall_width(100);
    ipe200->set_web_thickness(5.6);
    ipe200->set_flange_thickness(8.5);
    ipe200->set_fillet_radius(12);
    ipe200->set_description(W("Rolled \"I\" section"));
    ipe200->set_material(steel);
    ipe200->set_offset(Vector2d(0.25, -100));
    library->save(ipe200);
    auto angle = LShapeProfile::create(angles, W("100x10"));
    angle->set_depth(100);
    angle->set_thickness(10);
    angle->set_leg_slope(0.05);
    library->save(angle);
    auto plate = CustomProfile::create(own, W("Plate"));
    plate->set_geometry(plateWithHole());
    library->save(plate);
    transaction.commit();
}

ImportCounts profileCounts(const ImportReport& report, ObjectType type) {
    for (const auto& entry : report.kinds)
        if (entry.type == type)
            return entry.counts;
    ADD_FAILURE() << "no counts for kind " << type;
    return {};
}

// The names of the sample have the types they are looked up with here.
QcSmartPtr<Profile> profileOf(const Library& library, const OdString& standard, const OdString& name, const OdString& size) {
    uint32_t standardId = 0;
    if (!standard.isEmpty())
        standardId = library.get<ProfileStandard>(NameKey(standard))->id();
    const ProfileType type = standard.isEmpty() ? ProfileType(kProfileHvac | kProfileGeneric) : kProfileStructuralSteel;
    auto profileName = library.get<ProfileName>(ProfileNameKey(name, standardId, type));
    if (!profileName)
        return QcSmartPtr<Profile>();
    return library.get<Profile>(ProfileKey(profileName->id(), size));
}

}  // namespace

TEST_F(ExchangeTest, ProfilesRoundTripWithTheirNamesStandardsShapesAndOutlines) {
    auto source = newLibrary("source.vlib");
    fillProfiles(source);
    const std::string first = exportLibrary(*source);

    auto copy = newLibrary("copy.vlib");
    const ImportReport report = importLibrary(copy, first);
    EXPECT_EQ(profileCounts(report, kProfileStandard).created, 1u);
    EXPECT_EQ(profileCounts(report, kProfileName).created, 3u);
    EXPECT_EQ(profileCounts(report, kConstructionProfile).created, 3u);
    EXPECT_EQ(exportLibrary(*copy), first);

    auto ipe = profileOf(*copy, W("EN 10365"), W("IPE"), W("200"));
    ASSERT_TRUE(ipe);
    EXPECT_EQ(ipe->objectType(), kIShapeProfile);
    EXPECT_EQ(ipe->parameter(ShapeParameter::kWebThickness), 5.6);
    EXPECT_EQ(ipe->description(), W("Rolled \"I\" section"));
    EXPECT_EQ(ipe->material()->name(), W("S235"));
    EXPECT_EQ(ipe->offset(), Vector2d(0.25, -100));
    EXPECT_EQ(ipe->name()->type(), kProfileStructuralSteel);
    auto angle = profileOf(*copy, W("EN 10365"), W("L"), W("100x10"));
    ASSERT_TRUE(angle);
    EXPECT_FALSE(angle->has_offset());
    // An equal-leg angle stays without a width; an optional parameter that was set stays set.
    EXPECT_FALSE(angle->hasParameter(ShapeParameter::kWidth));
    EXPECT_TRUE(angle->hasParameter(ShapeParameter::kLegSlope));
    EXPECT_FALSE(angle->hasParameter(ShapeParameter::kEdgeRadius));
    auto plate = profileOf(*copy, OdString(), W("Ducts"), W("Plate"));
    ASSERT_TRUE(plate);
    EXPECT_EQ(plate->name()->type(), ProfileType(kProfileHvac | kProfileGeneric));
    EXPECT_TRUE(static_cast<CustomProfile&>(*plate).geometry() == plateWithHole());
}

TEST_F(ExchangeTest, ProfileLengthsFollowTheLibrarysUnitButSlopesDoNot) {
    auto source = newLibrary("source.vlib");
    fillProfiles(source);
    auto imperial = newLibrary("imperial.vlib", OdDb::kUnitsInches);
    importLibrary(imperial, exportLibrary(*source));
    auto ipe = profileOf(*imperial, W("EN 10365"), W("IPE"), W("200"));
    EXPECT_DOUBLE_EQ(ipe->parameter(ShapeParameter::kOverallDepth), 200 / 25.4);
    EXPECT_DOUBLE_EQ(ipe->offset().y, -100 / 25.4);
    auto angle = profileOf(*imperial, W("EN 10365"), W("L"), W("100x10"));
    EXPECT_EQ(angle->parameter(ShapeParameter::kLegSlope), 0.05);
    auto plate = profileOf(*imperial, OdString(), W("Ducts"), W("Plate"));
    EXPECT_DOUBLE_EQ(static_cast<CustomProfile&>(*plate).geometry().outer[1].start.x, 100 / 25.4);
    EXPECT_EQ(static_cast<CustomProfile&>(*plate).geometry().outer[2].bulge, 0.5);
}

TEST_F(ExchangeTest, AProfileClashesOnlyWithinItsProfileName) {
    auto source = newLibrary("source.vlib");
    fillProfiles(source);
    const std::string document = exportLibrary(*source);
    auto target = newLibrary("target.vlib");
    {
        // "200" of another name is no clash; IPE 200 of the document is.
        Transaction transaction(target);
        auto other = target->save(ProfileName::create(ProfileStandard::create(W("EN 10365")), W("HEA"),
                                                      kProfileStructuralSteel));
        auto hea = RectangleProfile::create(other, W("200"));
        hea->set_x_dim(1);
        hea->set_y_dim(1);
        target->save(hea);
        transaction.commit();
    }
    ImportReport report = importLibrary(target, document);
    EXPECT_EQ(profileCounts(report, kConstructionProfile).created, 3u);
    EXPECT_EQ(profileCounts(report, kProfileStandard).skipped, 1u);

    report = importLibrary(target, document, ClashAnswer::kRename);
    EXPECT_EQ(profileCounts(report, kConstructionProfile).renamed, 3u);
    EXPECT_EQ(profileCounts(report, kProfileName).skipped, 3u);
    EXPECT_TRUE(profileOf(*target, W("EN 10365"), W("IPE"), W("200_2")));
    EXPECT_FALSE(profileOf(*target, W("EN 10365"), W("HEA"), W("200_2")));
}

TEST_F(ExchangeTest, ProfilesThatCannotBeReadLeaveTheLibraryAlone) {
    auto source = newLibrary("source.vlib");
    fillProfiles(source);
    const std::string document = exportLibrary(*source);
    auto damaged = [&](const std::string& from, const std::string& to) {
        std::string text = document;
        const size_t at = text.find(from);
        EXPECT_NE(at, std::string::npos) << from;
        return text.replace(at, from.size(), to);
    };
    const std::pair<std::string, std::string> faults[] = {
        {"\"shape\": \"IShape\"", "\"shape\": \"Star\""},
        {"\"overall_depth\"", "\"girth\""},
        {"\"web_thickness\": 5.6", "\"web_thickness\": \"5.6\""},
        {"\"name\": \"IPE\",\n      \"standard\"", "\"name\": \"IPX\",\n      \"standard\""},
        {"\"structuralSteel\"", "\"steel\""},
        {"\"outer\": [", "\"outer\": [[1, 2], "},
    };
    int n = 0;
    for (const auto& fault : faults) {
        auto target = newLibrary(("target" + std::to_string(++n) + ".vlib").c_str());
        EXPECT_THROW(importLibrary(target, damaged(fault.first, fault.second)), ExchangeError) << fault.second;
        EXPECT_EQ(target->count<Profile>(), 0u);
        EXPECT_EQ(target->count<ProfileName>(), 0u);
    }
}

TEST_F(ExchangeTest, ChosenProfilesBringTheirNamesStandardsAndMaterials) {
    auto source = newLibrary("source.vlib");
    fillProfiles(source);
    {
        Transaction transaction(source);
        source->save(Material::create(W("Unused")));
        source->save(ProfileStandard::create(W("Unused standard")));
        transaction.commit();
    }
    auto target = newLibrary("target.vlib");
    importLibrary(target, exportLibrary(*source, {kConstructionProfile}));
    EXPECT_EQ(target->count<Profile>(), 3u);
    EXPECT_EQ(target->count<ProfileName>(), 3u);
    EXPECT_EQ(target->count<ProfileStandard>(), 1u);
    EXPECT_EQ(target->count<Material>(), 1u);
    EXPECT_TRUE(target->get<Material>(NameKey(W("S235"))));

    auto materials = newLibrary("materials.vlib");
    importLibrary(materials, exportLibrary(*source, {kMaterial}));
    EXPECT_EQ(materials->count<Material>(), 2u);
    EXPECT_EQ(materials->count<Profile>(), 0u);
    EXPECT_EQ(materials->count<ProfileName>(), 0u);
}

}  // namespace vltest

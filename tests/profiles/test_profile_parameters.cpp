// Reading typed dimensions, writing them into profiles of each class through the shape table,
// the type and shape choices, and the numbered size of a copy.
#include <algorithm>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include <OdStringWx.h>

#include <vantlib/vantlib.h>

#include "DrawingWithLibraries.h"
#include "app/profiles/ProfileParameters.h"

namespace {

using P = vantlib::ShapeParameter;

TEST(ProfileParameters, TypedTextBecomesADimensionThatIsNeverNegative) {
    const auto length = [](const wxString& text) { return vl_app::parameterValue(text, true, OdDb::kUnitsMillimeters); };
    EXPECT_DOUBLE_EQ(length("120.5"), 120.5);
    EXPECT_DOUBLE_EQ(length("  80 "), 80.0);
    EXPECT_EQ(length(""), 0.0);
    EXPECT_EQ(length("-5"), 0.0);
    EXPECT_EQ(length("abc"), 0.0);
    EXPECT_EQ(length("12abc"), 0.0);
    // Rounding noise just below zero is no negative dimension and stays as it is.
    EXPECT_DOUBLE_EQ(length("-0.00000000001"), -1e-11);
    // Slopes are plain numbers in radians.
    EXPECT_DOUBLE_EQ(vl_app::parameterValue("0.25", false, OdDb::kUnitsMillimeters), 0.25);
    EXPECT_EQ(vl_app::parameterValue("-0.25", false, OdDb::kUnitsMillimeters), 0.0);
}

// Field values by control name; fields not named read 0.
vl_app::ParameterSource fields(std::map<std::string, double> values) {
    return [values](const char* control) {
        const auto found = values.find(control);
        return found == values.end() ? 0.0 : found->second;
    };
}

TEST(ProfileParameters, EditingWritesRequiredDimensionsAndOnlyThoseOptionalOnesAProfileHas) {
    const auto read = fields({{"ISHAPE_HEIGHT", 300}, {"ISHAPE_WIDTH", 150}, {"ISHAPE_WTHICK", 7.1},
                              {"ISHAPE_FTHICK", 10.7}, {"ISHAPE_FRADIUS", 15}});
    vantlib::IShapeProfile bare;
    vl_app::updateProfile(&bare, read);
    EXPECT_EQ(bare.overall_depth(), 300);
    EXPECT_EQ(bare.flange_thickness(), 10.7);
    EXPECT_FALSE(bare.has_fillet_radius());

    vantlib::IShapeProfile rounded;
    rounded.set_fillet_radius(12);
    vl_app::updateProfile(&rounded, read);
    EXPECT_EQ(rounded.fillet_radius(), 15);

    vl_app::updateProfile(static_cast<vantlib::IShapeProfile*>(nullptr), read);

    // A hollow rectangle's outer dimensions are the rectangle's.
    vantlib::RectangleHollowProfile hollow;
    vl_app::updateProfile(&hollow, fields({{"RECT_H_SHAPE_Y_DIM", 100}, {"RECT_H_SHAPE_X_DIM", 50},
                                           {"RECT_H_SHAPE_WALL_THICK", 4}, {"RECT_H_IFRADIUS", 2}}));
    EXPECT_EQ(hollow.y_dim(), 100);
    EXPECT_EQ(hollow.x_dim(), 50);
    EXPECT_EQ(hollow.wall_thickness(), 4);
    EXPECT_FALSE(hollow.has_inner_fillet_radius());
}

TEST(ProfileParameters, EachProfileIsFilledFromThePanelOfItsOwnClass) {
    // The asymmetric I extends the I-shape: it must be filled from its own fields.
    const auto read = fields({{"ISHAPE_HEIGHT", 1}, {"ASYM_ISHAPE_HEIGHT", 400}, {"ASYM_ISHAPE_FWIDTH", 120},
                              {"CIRCULAR_SHAPE_RADIUS", 1}, {"CIRCULAR_H_SHAPE_RADIUS", 60},
                              {"CIRCULAR_H_SHAPE_WTHICK", 5}});
    bool customSeen = false;
    const auto custom = [&](vantlib::CustomProfile&) { customSeen = true; };

    vantlib::AsymmetricIShapeProfile asymmetric;
    ASSERT_TRUE(vl_app::updateProfileOfItsClass(asymmetric, read, custom));
    EXPECT_EQ(asymmetric.overall_depth(), 400);
    EXPECT_EQ(asymmetric.top_flange_width(), 120);

    vantlib::CircleHollowProfile tube;
    ASSERT_TRUE(vl_app::updateProfileOfItsClass(tube, read, custom));
    EXPECT_EQ(tube.radius(), 60);
    EXPECT_EQ(tube.wall_thickness(), 5);
    EXPECT_FALSE(customSeen);

    vantlib::CustomProfile outline;
    ASSERT_TRUE(vl_app::updateProfileOfItsClass(outline, read, custom));
    EXPECT_TRUE(customSeen);

    // Every shape class is known, and the fields of its panel reach it.
    for (const vantlib::ProfileClass* shape : vantlib::ProfileClass::all()) {
        const auto profile = shape->createEmpty();
        EXPECT_TRUE(vl_app::updateProfileOfItsClass(*profile, [](const char*) { return 7.0; }, custom))
            << shape->shortName();
        for (const vantlib::ShapeParameterInfo& info : shape->parameters()) {
            if (!info.optional) {
                EXPECT_EQ(profile->parameter(info.id), 7.0) << shape->shortName() << " " << info.key;
            }
        }
    }
}

TEST(ProfileParameters, ChoicesAndLabels) {
    EXPECT_EQ(vl_app::sortedTypeLabels(), (std::vector<wxString>{"Electrical", "Generic", "HVAC", "Piping",
                                                                  "Structural Concrete", "Structural Steel"}));
    const std::vector<wxString> shapes = vl_app::parametricShapeLabels();
    EXPECT_EQ(shapes.size(), 16u);
    EXPECT_EQ(std::count(shapes.begin(), shapes.end(), "Custom profile"), 0);
    EXPECT_EQ(vl_app::getShapeReverseTranslation("I-shape profile"), "IShape");
    EXPECT_EQ(vl_app::getShapeReverseTranslation("Asymmetric I-shape"), "AsymmetricIShape");
    EXPECT_EQ(vl_app::getShapeReverseTranslation("Hollow circle profile"), "CircleHollow");
    EXPECT_TRUE(vl_app::getShapeReverseTranslation("Hexagon").empty());

    const vl_app::FullNameParts ipe = vl_app::splitFullName("IPE 200");
    EXPECT_EQ(ipe.name, "IPE");
    EXPECT_EQ(ipe.size, "200");
    const vl_app::FullNameParts words = vl_app::splitFullName("HE 200 A");
    EXPECT_EQ(words.name, "HE");
    EXPECT_EQ(words.size, "A");
    EXPECT_TRUE(vl_app::splitFullName("Beam").size.empty());
}

class NumberedSizes : public vl_test::DrawingWithLibraries {};

TEST_F(NumberedSizes, AFreeSizeStaysAndTakenOnesAreNumberedFromTwo) {
    auto standard = project->save(vantlib::ProfileStandard::create(L"user"));
    auto name = project->save(vantlib::ProfileName::create(standard, L"Beam", vantlib::kProfileGeneric));
    const auto store = [&](const wchar_t* size) {
        auto profile = vantlib::RectangleProfile::create(name, size);
        profile->set_x_dim(10);
        profile->set_y_dim(20);
        project->save(QcSmartPtr<vantlib::Profile>(profile));
    };
    vantlib::ProfileKey key(name->id(), L"300");
    EXPECT_EQ(vl_app::newProfileObjectName(project, "300", key), "300");
    store(L"300");
    EXPECT_EQ(vl_app::newProfileObjectName(project, "300", key), "300-2");
    store(L"300-2");
    EXPECT_EQ(vl_app::newProfileObjectName(project, "300", key), "300-3");
    // A numbered size starts again from its base.
    EXPECT_EQ(vl_app::newProfileObjectName(project, "300-2", key), "300-3");
    // The key's profile name decides where sizes are taken: another name has them all free.
    vantlib::ProfileKey other(name->id() + 100, L"300");
    EXPECT_EQ(vl_app::newProfileObjectName(project, "300", other), "300");
    EXPECT_EQ(vl_app::newProfileObjectName(nullptr, "300", key), "300");
}

TEST(ProfileParameters, IdenticalMeansEveryFieldTheUserSees) {
    auto standard = vantlib::ProfileStandard::create(L"user");
    auto name = vantlib::ProfileName::create(standard, L"Beam", vantlib::kProfileGeneric);
    auto a = vantlib::RectangleProfile::create(name, L"100");
    auto b = vantlib::RectangleProfile::create(name, L"100");
    EXPECT_TRUE(vl_app::identicalProfiles(*a, *b));
    b->set_description(L"painted");
    EXPECT_FALSE(vl_app::identicalProfiles(*a, *b));
    auto c = vantlib::RectangleProfile::create(name, L"100x1");
    EXPECT_FALSE(vl_app::identicalProfiles(*a, *c));
    auto d = vantlib::RoundedRectangleProfile::create(name, L"100");
    EXPECT_FALSE(vl_app::identicalProfiles(*a, *d));
}

}  // namespace

// The shape table of the profiles dialog against the data module's shape classes, and the type
// labels the filters show and parse.
#include <set>

#include <gtest/gtest.h>

#include <vantlib/vantlib.h>

#include "app/profiles/ProfileShapes.h"

namespace {

TEST(ProfileShapes, EveryClassHasAPanelRowForEachOfItsDimensions) {
    for (const vantlib::ProfileClass* shape : vantlib::ProfileClass::all()) {
        const vl_app::ShapePanel* panel = vl_app::shapePanel(shape->type());
        ASSERT_TRUE(panel) << shape->shortName();
        EXPECT_STREQ(panel->shortName, shape->shortName());
        std::set<vantlib::ShapeParameter> shown;
        for (const vl_app::ShapeRow& row : panel->rows) {
            EXPECT_TRUE(shape->parameter(row.parameter)) << row.control << " is no dimension of " << shape->shortName();
            EXPECT_TRUE(shown.insert(row.parameter).second) << row.control << " repeats a dimension";
        }
        for (const vantlib::ShapeParameterInfo& parameter : shape->parameters())
            EXPECT_TRUE(shown.count(parameter.id)) << parameter.key << " of " << shape->shortName() << " has no row";
    }
    EXPECT_FALSE(vl_app::shapePanel(vantlib::kMaterial));
}

TEST(ProfileShapes, ShapeLabelsLeadBackToTheirClass) {
    for (const vl_app::ShapePanel& panel : vl_app::shapePanels())
        EXPECT_EQ(vl_app::shapeShortName(vl_app::shapeLabel(panel.type, true)), panel.shortName);
    EXPECT_TRUE(vl_app::shapeShortName("Hexagon").empty());
    EXPECT_TRUE(vl_app::shapeShortName("").empty());
}

TEST(ProfileShapes, TypeLabelsParseBackAndUnknownOnesAreGeneric) {
    EXPECT_EQ(vl_app::profileTypeFromLabel("Electrical"), vantlib::kProfileElectrical);
    EXPECT_EQ(vl_app::profileTypeFromLabel("Structural Steel"), vantlib::kProfileStructuralSteel);
    EXPECT_EQ(vl_app::profileTypeFromLabel("structural steel"), vantlib::kProfileGeneric);
    EXPECT_EQ(vl_app::profileTypeFromLabel("Timber"), vantlib::kProfileGeneric);
}

}  // namespace

// Section geometry: published areas of rolled sections, exact areas of simple shapes, extents,
// centroids, refusals of impossible shapes, and the comparison of sections.
#include <cmath>

#include <gtest/gtest.h>

#include <section/SectionGeometry.h>
#include <vantlib/Exception.h>

using namespace vantlib;
using section::properties;

namespace {

QcSmartPtr<ProfileName> steel() {
    return ProfileName::create(ProfileStandard::create(OdString(L"EN")), OdString(L"S"), kProfileStructuralSteel);
}

QcSmartPtr<IShapeProfile> iShape(double h, double b, double tw, double tf, double r) {
    auto p = IShapeProfile::create(steel(), OdString(L"x"));
    p->set_overall_depth(h);
    p->set_overall_width(b);
    p->set_web_thickness(tw);
    p->set_flange_thickness(tf);
    p->set_fillet_radius(r);
    return p;
}

QcSmartPtr<LShapeProfile> angle(double h, double t, double r1, double r2) {
    auto p = LShapeProfile::create(steel(), OdString(L"x"));
    p->set_depth(h);
    p->set_thickness(t);
    p->set_fillet_radius(r1);
    p->set_edge_radius(r2);
    return p;
}

}  // namespace

TEST(SectionAreas, RolledSectionsMatchPublishedValues) {
    // Areas in cm² from the section tables; the outlines are in millimetres.
    EXPECT_NEAR(properties(*iShape(200, 100, 5.6, 8.5, 12)).area / 100.0, 28.48, 28.48 * 0.01);
    EXPECT_NEAR(properties(*iShape(190, 200, 6.5, 10, 18)).area / 100.0, 53.83, 53.83 * 0.01);
    EXPECT_NEAR(properties(*angle(100, 10, 12, 6)).area / 100.0, 19.2, 19.2 * 0.01);

    // UPN 200: h 200, b 75, tw 8.5, tf 11.5, r1 11.5, r2 6, flange slope 8 %: 32.2 cm².
    auto upn = UShapeProfile::create(steel(), OdString(L"200"));
    upn->set_depth(200);
    upn->set_flange_width(75);
    upn->set_web_thickness(8.5);
    upn->set_flange_thickness(11.5);
    upn->set_fillet_radius(11.5);
    upn->set_edge_radius(6);
    upn->set_flange_slope(std::atan(0.08));
    EXPECT_NEAR(properties(*upn).area / 100.0, 32.2, 32.2 * 0.01);

    // Hot-finished RHS 200x100x8 (outer radius 1.5 t, inner radius t): 44.8 cm².
    auto rhs = RectangleHollowProfile::create(steel(), OdString(L"200x100x8"));
    rhs->set_x_dim(100);
    rhs->set_y_dim(200);
    rhs->set_wall_thickness(8);
    rhs->set_outer_fillet_radius(12);
    rhs->set_inner_fillet_radius(8);
    const section::SectionProperties box = properties(*rhs);
    EXPECT_NEAR(box.area / 100.0, 44.8, 44.8 * 0.01);
    EXPECT_NEAR(box.grossArea, 200.0 * 100.0 - (4 - M_PI) * 144.0, 1e-6);
}

TEST(SectionAreas, SimpleShapesAreExact) {
    auto tube = CircleHollowProfile::create(steel(), OdString(L"t"));
    tube->set_radius(50);
    tube->set_wall_thickness(5);
    const section::SectionProperties p = properties(*tube);
    EXPECT_NEAR(p.area, M_PI * (2500 - 2025), 1e-6);
    EXPECT_NEAR(p.grossArea, M_PI * 2500, 1e-6);
    EXPECT_NEAR(p.extents.width(), 100, 1e-9);
    EXPECT_NEAR(p.extents.min.y, -50, 1e-9);

    auto ellipse = EllipseProfile::create(steel(), OdString(L"e"));
    ellipse->set_semi_axis_1(40);
    ellipse->set_semi_axis_2(20);
    EXPECT_NEAR(properties(*ellipse).area, M_PI * 800, M_PI * 800 * 1e-3);
    EXPECT_NEAR(properties(*ellipse).extents.width(), 80, 1e-9);

    // A right triangle drawn as a trapezium without a top: centroid a third up from the base.
    auto wedge = TrapeziumProfile::create(steel(), OdString(L"w"));
    wedge->set_y_dim(30);
    wedge->set_bottom_x_dim(60);
    wedge->set_top_x_dim(0);
    wedge->set_top_x_offset(0);
    const section::SectionProperties w = properties(*wedge);
    EXPECT_NEAR(w.area, 900, 1e-9);
    EXPECT_NEAR(w.centroid.x, -10, 1e-9);
    EXPECT_NEAR(w.centroid.y, -5, 1e-9);
}

TEST(SectionGeometry, CentroidAndExtentsFollowTheShape) {
    // An equal angle: the centroid lies on the diagonal, towards the heel (published e = 28.2 mm
    // from the heel for L 100x10).
    const section::SectionProperties l = properties(*angle(100, 10, 12, 6));
    EXPECT_NEAR(l.extents.width(), 100, 1e-9);
    EXPECT_NEAR(l.extents.height(), 100, 1e-9);
    EXPECT_NEAR(l.centroid.x, l.centroid.y, 1e-9);
    EXPECT_NEAR(l.centroid.x + 50.0, 28.2, 0.3);

    // A symmetric I-shape has its centroid at the centre of its extents; a rounded corner never
    // widens the extents.
    const section::SectionProperties i = properties(*iShape(200, 100, 5.6, 8.5, 12));
    EXPECT_NEAR(i.centroid.x, 0, 1e-9);
    EXPECT_NEAR(i.centroid.y, 0, 1e-9);
    EXPECT_NEAR(i.extents.width(), 100, 1e-9);

    auto rounded = RoundedRectangleProfile::create(steel(), OdString(L"r"));
    rounded->set_x_dim(80);
    rounded->set_y_dim(40);
    rounded->set_rounding_radius(20);  // a stadium: the ends are half circles
    const section::SectionProperties s = properties(*rounded);
    EXPECT_NEAR(s.area, 40 * 40 + M_PI * 400, 1e-6);
    EXPECT_NEAR(s.extents.height(), 40, 1e-9);
}

TEST(SectionGeometry, EveryShapeWithTypicalDimensionsMakesASection) {
    for (const ProfileClass* shape : ProfileClass::all()) {
        if (shape->type() == kCustomProfile)
            continue;
        QcSmartPtr<Profile> p = shape->createEmpty();
        // Dimensions that fit every shape: slopes and offsets stay at 0.
        const std::map<ShapeParameter, double> values{
            {ShapeParameter::kOverallDepth, 200}, {ShapeParameter::kOverallWidth, 100},
            {ShapeParameter::kTopFlangeWidth, 80}, {ShapeParameter::kWebThickness, 6},
            {ShapeParameter::kFlangeThickness, 10}, {ShapeParameter::kTopFlangeThickness, 8},
            {ShapeParameter::kFilletRadius, 5}, {ShapeParameter::kDepth, 120}, {ShapeParameter::kWidth, 60},
            {ShapeParameter::kThickness, 8}, {ShapeParameter::kFlangeWidth, 60}, {ShapeParameter::kGirth, 20},
            {ShapeParameter::kWallThickness, 3}, {ShapeParameter::kInternalFilletRadius, 3},
            {ShapeParameter::kHeadDepth2, 40}, {ShapeParameter::kHeadDepth3, 20}, {ShapeParameter::kBaseDepth1, 10},
            {ShapeParameter::kBaseDepth2, 30}, {ShapeParameter::kBaseDepth3, 20},
            {ShapeParameter::kOverallHeight, 150}, {ShapeParameter::kHeadWidth, 60},
            {ShapeParameter::kBaseWidth2, 120}, {ShapeParameter::kBaseWidth4, 40}, {ShapeParameter::kRadius, 40},
            {ShapeParameter::kSemiAxis1, 40}, {ShapeParameter::kSemiAxis2, 20}, {ShapeParameter::kXDim, 80},
            {ShapeParameter::kYDim, 50}, {ShapeParameter::kBottomXDim, 60}, {ShapeParameter::kTopXDim, 30},
            {ShapeParameter::kRoundingRadius, 5}, {ShapeParameter::kInnerFilletRadius, 2},
            {ShapeParameter::kOuterFilletRadius, 5}};
        for (const ShapeParameterInfo& info : shape->parameters())
            if (!info.optional && values.count(info.id))
                p->setParameter(info.id, values.at(info.id));
        if (shape->type() == kCraneRailAShapeProfile || shape->type() == kCraneRailFShapeProfile)
            p->setParameter(ShapeParameter::kRadius, 5);
        SCOPED_TRACE(shape->shortName());
        EXPECT_EQ(section::sectionFault(*p), OdString());
        const section::SectionProperties props = properties(*p);
        EXPECT_GT(props.area, 0);
        EXPECT_LE(props.area, props.extents.width() * props.extents.height() + 1e-9);
        // Outlines are centred on their extents.
        EXPECT_NEAR(props.extents.min.x, -props.extents.max.x, 1e-9);
        EXPECT_NEAR(props.extents.min.y, -props.extents.max.y, 1e-9);
    }
}

TEST(SectionValidity, ImpossibleShapesAreRefusedWithAReason) {
    EXPECT_NE(section::sectionFault(*iShape(0, 100, 5.6, 8.5, 12)), OdString());
    const OdString thickWeb = section::sectionFault(*iShape(200, 100, 120, 8.5, 0));
    EXPECT_NE(thickWeb.find(L"web"), -1) << thickWeb.c_str();
    EXPECT_NE(section::sectionFault(*iShape(200, 100, 5.6, 120, 0)), OdString());
    EXPECT_NE(section::sectionFault(*iShape(200, 100, 5.6, 8.5, 60)), OdString());
    EXPECT_NE(section::sectionFault(*angle(100, 10, 12, 16)), OdString());
    EXPECT_THROW(section::outline(*iShape(200, -100, 5.6, 8.5, 12)), ConsistencyError);

    auto tube = CircleHollowProfile::create(steel(), OdString(L"t"));
    tube->set_radius(50);
    tube->set_wall_thickness(50);
    EXPECT_NE(section::sectionFault(*tube), OdString());
    EXPECT_NE(section::sectionFault(*CustomProfile::create(steel(), OdString(L"c"))), OdString());
}

TEST(SectionCompare, SameShapeWithinToleranceInEitherUnit) {
    auto a = iShape(200, 100, 5.6, 8.5, 12);
    EXPECT_TRUE(section::sameSection(*a, *iShape(200.1, 100, 5.6, 8.5, 12)));
    EXPECT_FALSE(section::sameSection(*a, *iShape(202, 100, 5.6, 8.5, 12)));
    // The same beam in centimetres.
    EXPECT_TRUE(section::sameSection(*a, *iShape(20, 10, 0.56, 0.85, 1.2), 10.0));
    // An absent fillet is the same as a zero one; another shape never matches.
    auto noFillet = iShape(200, 100, 5.6, 8.5, 0);
    auto unset = IShapeProfile::create(steel(), OdString(L"y"));
    unset->set_overall_depth(200);
    unset->set_overall_width(100);
    unset->set_web_thickness(5.6);
    unset->set_flange_thickness(8.5);
    EXPECT_TRUE(section::sameSection(*noFillet, *unset));
    EXPECT_FALSE(section::sameSection(*a, *angle(100, 10, 12, 6)));
}

TEST(SectionCompare, CustomOutlinesTurnedAndMirrored) {
    auto plate = CustomProfile::create(steel(), OdString(L"p"));
    ProfileGeometry g;
    g.outer = {ProfileEdge({0, 0}), ProfileEdge({60, 0}, 1.0), ProfileEdge({60, 20}), ProfileEdge({0, 20})};
    g.holes.push_back({ProfileEdge({10, 5}), ProfileEdge({10, 15}), ProfileEdge({20, 15}), ProfileEdge({20, 5})});
    plate->set_geometry(g);
    const section::SectionProperties p = properties(*plate);
    EXPECT_NEAR(p.area, 60 * 20 + M_PI * 50 - 100, 1e-6);
    EXPECT_NEAR(p.extents.width(), 70, 1e-9);

    const ProfileGeometry turned = section::turned(section::outline(*plate), true);
    const section::SectionProperties t = section::properties(turned);
    EXPECT_NEAR(t.area, p.area, 1e-6);
    EXPECT_NEAR(t.extents.width(), p.extents.height(), 1e-9);
    EXPECT_NEAR(t.centroid.y, p.centroid.x, 1e-9);
    const section::SectionProperties m = section::properties(section::mirrored(section::outline(*plate), true));
    EXPECT_NEAR(m.area, p.area, 1e-6);
    EXPECT_NEAR(m.centroid.x, -p.centroid.x, 1e-9);

    auto twice = CustomProfile::create(steel(), OdString(L"q"));
    twice->set_geometry(section::turned(section::turned(section::outline(*plate), false), true));
    EXPECT_TRUE(section::sameSection(*plate, *twice));
}

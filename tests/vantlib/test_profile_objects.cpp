// Construction profiles in memory: the shape classes, their dimensions and custom outlines.
#include "support.h"

#include <cmath>
#include <cstring>
#include <set>

using namespace vltest;

namespace {

QcSmartPtr<ProfileName> ipe() {
    return ProfileName::create(ProfileStandard::create(W("EN 10365")), W("IPE"), kProfileStructuralSteel);
}

class EveryShape : public ::testing::TestWithParam<const ProfileClass*> {};

std::string shapeName(const ::testing::TestParamInfo<const ProfileClass*>& info) { return info.param->shortName(); }

std::vector<const ProfileClass*> parametricShapes() {
    std::vector<const ProfileClass*> shapes;
    for (const ProfileClass* c : ProfileClass::all())
        if (c->type() != kCustomProfile)
            shapes.push_back(c);
    return shapes;
}

}  // namespace

TEST(ProfileObjects, ClassesCoverTheProfileTypesOnceWithTheirRelations) {
    ASSERT_EQ(16u, parametricShapes().size());
    std::set<ObjectType> types;
    for (const ProfileClass* c : ProfileClass::all()) {
        EXPECT_GE(c->type(), kFirstProfileShape);
        EXPECT_LE(c->type(), kLastProfileShape);
        EXPECT_TRUE(types.insert(c->type()).second) << c->shortName();
        EXPECT_EQ(c, ProfileClass::byType(c->type()));
        EXPECT_EQ(c, ProfileClass::byName(c->className()));
        EXPECT_EQ(c, ProfileClass::byName(W(c->shortName())));
        EXPECT_EQ(c, ProfileClass::byName(W("vantlib::") + W(c->shortName())));
    }
    EXPECT_EQ(W("vantlib::IShapeProfile"), IShapeProfile::desc().className());
    EXPECT_EQ(nullptr, ProfileClass::byName(W("vantlib::Bogus")));
    EXPECT_EQ(nullptr, ProfileClass::byType(kConstructionProfile));

    EXPECT_TRUE(IShapeProfile::desc().isBaseOf(AsymmetricIShapeProfile::desc()));
    EXPECT_FALSE(AsymmetricIShapeProfile::desc().isBaseOf(IShapeProfile::desc()));
    EXPECT_TRUE(CircleProfile::desc().isBaseOf(CircleHollowProfile::desc()));
    EXPECT_TRUE(RectangleProfile::desc().isBaseOf(RectangleHollowProfile::desc()));
    EXPECT_TRUE(RectangleProfile::desc().isBaseOf(RoundedRectangleProfile::desc()));
    EXPECT_FALSE(RectangleProfile::desc().isBaseOf(TrapeziumProfile::desc()));

    // The C++ relations match the descriptors: the editors set base dimensions through the
    // base class.
    QcSmartPtr<AsymmetricIShapeProfile> asym = AsymmetricIShapeProfile::create(ipe(), W("1"));
    IShapeProfile& asI = *asym;
    asI.set_overall_depth(300);
    EXPECT_EQ(300, asym->overall_depth());
    QcSmartPtr<RectangleHollowProfile> box = RectangleHollowProfile::create(ipe(), W("1"));
    static_cast<RectangleProfile&>(*box).set_x_dim(80);
    EXPECT_EQ(80, box->x_dim());
    EXPECT_EQ(&RectangleHollowProfile::desc(), &box->isA());
}

TEST_P(EveryShape, RequiredDimensionsReadZeroAndOptionalOnesAreAbsentUntilSet) {
    const ProfileClass& shape = *GetParam();
    QcSmartPtr<Profile> profile = shape.createEmpty();
    EXPECT_EQ(shape.type(), profile->objectType());
    EXPECT_EQ(&shape, &profile->isA());
    ASSERT_FALSE(shape.parameters().empty());
    std::set<std::string> keys;
    double value = 1.5;
    for (const ShapeParameterInfo& p : shape.parameters()) {
        EXPECT_TRUE(keys.insert(p.key).second) << p.key;
        EXPECT_EQ(!p.optional, profile->hasParameter(p.id)) << p.key;
        EXPECT_EQ(0.0, profile->parameter(p.id)) << p.key;
        profile->setParameter(p.id, value);
        value += 1.0;
    }
    // A derived shape has every dimension of its base, optional where the base's is.
    if (const ProfileClass* base = shape.parent()) {
        for (const ShapeParameterInfo& p : base->parameters()) {
            const ShapeParameterInfo* inherited = shape.parameter(p.id);
            ASSERT_TRUE(inherited) << p.key;
            EXPECT_EQ(p.optional, inherited->optional) << p.key;
        }
    }

    QcSmartPtr<Profile> copy = profile->cloneObject();
    value = 1.5;
    for (const ShapeParameterInfo& p : shape.parameters()) {
        EXPECT_TRUE(copy->hasParameter(p.id));
        EXPECT_EQ(value, copy->parameter(p.id)) << p.key;
        copy->clearParameter(p.id);
        EXPECT_EQ(!p.optional, copy->hasParameter(p.id)) << p.key;
        EXPECT_EQ(value, profile->parameter(p.id)) << "the clone shares its dimensions";
        value += 1.0;
    }

    // A dimension of another shape is refused rather than silently kept.
    for (ShapeParameter foreign : {ShapeParameter::kGirth, ShapeParameter::kRoundingRadius}) {
        if (shape.parameter(foreign))
            continue;
        EXPECT_THROW(profile->setParameter(foreign, 1.0), ConsistencyError);
        EXPECT_THROW(profile->parameter(foreign), ConsistencyError);
    }
    EXPECT_THROW(profile->setParameter(shape.parameters().front().id, std::nan("")), ConsistencyError);
}

INSTANTIATE_TEST_SUITE_P(Shapes, EveryShape, ::testing::ValuesIn(parametricShapes()), shapeName);

// Each named accessor reads and writes the dimension whose stored key bears its name, and
// the has_ query follows it.
#define EXPECT_ACCESSOR(profile, accessor)                                                  \
    do {                                                                                    \
        const ShapeParameterInfo* info = (profile)->isA().parameter(#accessor);             \
        ASSERT_TRUE(info) << #accessor;                                                     \
        (profile)->set_##accessor(++value);                                                 \
        EXPECT_EQ(value, (profile)->parameter(info->id)) << #accessor;                      \
        EXPECT_EQ(value, (profile)->accessor()) << #accessor;                               \
        EXPECT_TRUE((profile)->has_##accessor()) << #accessor;                              \
        ++covered[(profile)->objectType()];                                                 \
    } while (false)

TEST(ProfileObjects, NamedAccessorsMatchTheStoredDimensions) {
    double value = 0.0;
    std::map<ObjectType, size_t> covered;
    auto asym = AsymmetricIShapeProfile::create(ipe(), W("a"));
    EXPECT_ACCESSOR(asym, overall_depth); EXPECT_ACCESSOR(asym, overall_width); EXPECT_ACCESSOR(asym, top_flange_width);
    EXPECT_ACCESSOR(asym, web_thickness); EXPECT_ACCESSOR(asym, flange_thickness);
    EXPECT_ACCESSOR(asym, top_flange_thickness); EXPECT_ACCESSOR(asym, fillet_radius);
    EXPECT_ACCESSOR(asym, top_flange_fillet_radius); EXPECT_ACCESSOR(asym, centre_of_gravity_in_y);
    auto i = IShapeProfile::create(ipe(), W("i"));
    EXPECT_ACCESSOR(i, overall_depth); EXPECT_ACCESSOR(i, overall_width); EXPECT_ACCESSOR(i, web_thickness);
    EXPECT_ACCESSOR(i, flange_thickness); EXPECT_ACCESSOR(i, fillet_radius);
    auto l = LShapeProfile::create(ipe(), W("l"));
    EXPECT_ACCESSOR(l, depth); EXPECT_ACCESSOR(l, width); EXPECT_ACCESSOR(l, thickness); EXPECT_ACCESSOR(l, fillet_radius);
    EXPECT_ACCESSOR(l, edge_radius); EXPECT_ACCESSOR(l, leg_slope); EXPECT_ACCESSOR(l, centre_of_gravity_in_x);
    EXPECT_ACCESSOR(l, centre_of_gravity_in_y);
    auto u = UShapeProfile::create(ipe(), W("u"));
    EXPECT_ACCESSOR(u, depth); EXPECT_ACCESSOR(u, flange_width); EXPECT_ACCESSOR(u, web_thickness);
    EXPECT_ACCESSOR(u, flange_thickness); EXPECT_ACCESSOR(u, fillet_radius); EXPECT_ACCESSOR(u, edge_radius);
    EXPECT_ACCESSOR(u, flange_slope); EXPECT_ACCESSOR(u, centre_of_gravity_in_x);
    auto c = CShapeProfile::create(ipe(), W("c"));
    EXPECT_ACCESSOR(c, depth); EXPECT_ACCESSOR(c, girth); EXPECT_ACCESSOR(c, width); EXPECT_ACCESSOR(c, wall_thickness);
    EXPECT_ACCESSOR(c, internal_fillet_radius); EXPECT_ACCESSOR(c, centre_of_gravity_in_x);
    auto z = ZShapeProfile::create(ipe(), W("z"));
    EXPECT_ACCESSOR(z, depth); EXPECT_ACCESSOR(z, flange_width); EXPECT_ACCESSOR(z, web_thickness);
    EXPECT_ACCESSOR(z, flange_thickness); EXPECT_ACCESSOR(z, edge_radius); EXPECT_ACCESSOR(z, fillet_radius);
    auto t = TShapeProfile::create(ipe(), W("t"));
    EXPECT_ACCESSOR(t, depth); EXPECT_ACCESSOR(t, flange_width); EXPECT_ACCESSOR(t, web_thickness);
    EXPECT_ACCESSOR(t, flange_thickness); EXPECT_ACCESSOR(t, fillet_radius); EXPECT_ACCESSOR(t, flange_edge_radius);
    EXPECT_ACCESSOR(t, web_edge_radius); EXPECT_ACCESSOR(t, web_slope); EXPECT_ACCESSOR(t, flange_slope);
    EXPECT_ACCESSOR(t, centre_of_gravity_in_y);
    auto ra = CraneRailAShapeProfile::create(ipe(), W("ra"));
    EXPECT_ACCESSOR(ra, head_depth_3); EXPECT_ACCESSOR(ra, head_depth_2); EXPECT_ACCESSOR(ra, base_depth_1);
    EXPECT_ACCESSOR(ra, base_depth_3); EXPECT_ACCESSOR(ra, base_depth_2); EXPECT_ACCESSOR(ra, overall_height);
    EXPECT_ACCESSOR(ra, base_width_2); EXPECT_ACCESSOR(ra, head_width); EXPECT_ACCESSOR(ra, base_width_4);
    EXPECT_ACCESSOR(ra, web_thickness); EXPECT_ACCESSOR(ra, radius); EXPECT_ACCESSOR(ra, centre_of_gravity_in_y);
    auto rf = CraneRailFShapeProfile::create(ipe(), W("rf"));
    EXPECT_ACCESSOR(rf, head_depth_3); EXPECT_ACCESSOR(rf, head_depth_2); EXPECT_ACCESSOR(rf, base_depth_1);
    EXPECT_ACCESSOR(rf, base_depth_2); EXPECT_ACCESSOR(rf, overall_height); EXPECT_ACCESSOR(rf, head_width);
    EXPECT_ACCESSOR(rf, web_thickness); EXPECT_ACCESSOR(rf, radius); EXPECT_ACCESSOR(rf, centre_of_gravity_in_y);
    auto circle = CircleProfile::create(ipe(), W("o"));
    EXPECT_ACCESSOR(circle, radius);
    auto tube = CircleHollowProfile::create(ipe(), W("oo"));
    EXPECT_ACCESSOR(tube, radius); EXPECT_ACCESSOR(tube, wall_thickness);
    auto ellipse = EllipseProfile::create(ipe(), W("e"));
    EXPECT_ACCESSOR(ellipse, semi_axis_2); EXPECT_ACCESSOR(ellipse, semi_axis_1);
    auto rect = RectangleProfile::create(ipe(), W("r"));
    EXPECT_ACCESSOR(rect, y_dim); EXPECT_ACCESSOR(rect, x_dim);
    auto box = RectangleHollowProfile::create(ipe(), W("rh"));
    EXPECT_ACCESSOR(box, y_dim); EXPECT_ACCESSOR(box, x_dim); EXPECT_ACCESSOR(box, wall_thickness);
    EXPECT_ACCESSOR(box, inner_fillet_radius); EXPECT_ACCESSOR(box, outer_fillet_radius);
    auto rounded = RoundedRectangleProfile::create(ipe(), W("rr"));
    EXPECT_ACCESSOR(rounded, y_dim); EXPECT_ACCESSOR(rounded, x_dim); EXPECT_ACCESSOR(rounded, rounding_radius);
    auto trapezium = TrapeziumProfile::create(ipe(), W("tr"));
    EXPECT_ACCESSOR(trapezium, y_dim); EXPECT_ACCESSOR(trapezium, bottom_x_dim); EXPECT_ACCESSOR(trapezium, top_x_dim);
    EXPECT_ACCESSOR(trapezium, top_x_offset);

    // Every dimension of every shape has its accessor.
    for (const ProfileClass* shape : parametricShapes())
        EXPECT_EQ(shape->parameters().size(), covered[shape->type()]) << shape->shortName();
}

#undef EXPECT_ACCESSOR

TEST(ProfileObjects, IdentityIsStandardNameAndSize) {
    QcSmartPtr<IShapeProfile> profile = IShapeProfile::create(ipe(), W("200"));
    EXPECT_EQ(W("200"), profile->size());
    EXPECT_EQ(W("IPE"), profile->name()->Object::name());
    EXPECT_EQ(kProfileStructuralSteel, profile->name()->type());
    EXPECT_EQ(W("EN 10365"), profile->name()->standard()->name());
    EXPECT_EQ(W("EN 10365 IPE 200"), profile->displayName());
    EXPECT_EQ(kIShapeProfile, profile->objectType());

    profile->set_name(ProfileName::create(QcSmartPtr<ProfileStandard>(), W("Plate"), kProfileGeneric));
    profile->set_size(OdString());
    EXPECT_EQ(W("Plate"), profile->displayName());

    EXPECT_FALSE(profile->has_offset());
    profile->set_offset(Vector2d(0, 0));
    EXPECT_TRUE(profile->has_offset()) << "an offset at the centre is still an offset";
    QcSmartPtr<Profile> copy = profile->cloneObject();
    EXPECT_TRUE(copy->has_offset());
    profile->clear_offset();
    EXPECT_FALSE(profile->has_offset());
    EXPECT_TRUE(copy->has_offset());
}

TEST(ProfileObjects, CustomOutlinesMustBoundASection) {
    QcSmartPtr<CustomProfile> custom = CustomProfile::create(ipe(), W("plate"));
    EXPECT_TRUE(custom->geometry().empty());
    EXPECT_TRUE(custom->isA().parameters().empty());

    ProfileGeometry plate;
    plate.outer = {ProfileEdge(Vector2d(0, 0)), ProfileEdge(Vector2d(100, 0)), ProfileEdge(Vector2d(100, 50), 1.0),
                   ProfileEdge(Vector2d(0, 50))};
    // A round hole of two half circles.
    plate.holes.push_back({ProfileEdge(Vector2d(20, 25), 1.0), ProfileEdge(Vector2d(30, 25), 1.0)});
    custom->set_geometry(plate);
    EXPECT_EQ(plate, custom->geometry());
    EXPECT_EQ(plate, custom->cloneObject()->geometry());

    ProfileGeometry bad = plate;
    bad.holes[0] = {ProfileEdge(Vector2d(20, 25)), ProfileEdge(Vector2d(30, 25))};
    EXPECT_THROW(custom->set_geometry(bad), ConsistencyError);
    bad = plate;
    bad.outer.insert(bad.outer.begin() + 1, ProfileEdge(Vector2d(0, 0)));
    EXPECT_THROW(custom->set_geometry(bad), ConsistencyError);
    bad = plate;
    bad.outer.resize(1);
    EXPECT_THROW(custom->set_geometry(bad), ConsistencyError);
    bad = plate;
    bad.outer.back().start = bad.outer.front().start;  // closing edge of no length
    EXPECT_THROW(custom->set_geometry(bad), ConsistencyError);
    EXPECT_EQ(plate, custom->geometry()) << "a refused outline leaves the profile as it was";
}

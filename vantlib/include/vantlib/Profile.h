#pragma once
// Construction profiles: cross-sections of beams, columns, ducts and pipes. A profile belongs
// to a profile name (such as "IPE"), which belongs to a standard (such as "EN 10365"); the
// profile itself adds its size ("200"). Its section is one of sixteen parametric shapes or a
// custom outline taken from drawing geometry.
#include <array>
#include <string>
#include <vector>

#include <vantlib/Material.h>

namespace vantlib {

struct Vector2d {
    double x = 0.0;
    double y = 0.0;

    Vector2d() = default;
    Vector2d(double xValue, double yValue) : x(xValue), y(yValue) {}
    friend bool operator==(const Vector2d& a, const Vector2d& b) { return a.x == b.x && a.y == b.y; }
    friend bool operator!=(const Vector2d& a, const Vector2d& b) { return !(a == b); }
};

// Finds a profile: the id of its profile name and its size.
struct ProfileKey {
    uint32_t nameId = 0;
    OdString size;

    ProfileKey() = default;
    ProfileKey(uint32_t profileNameId, const OdString& sizeText) : nameId(profileNameId), size(sizeText) {}
};

// Trade a profile name serves; bit flags, so a query can ask for several at once.
enum ProfileType : uint32_t {
    kProfileGeneric = 1,
    kProfileStructuralConcrete = 2,
    kProfileStructuralSteel = 4,
    kProfileHvac = 8,
    kProfilePiping = 16,
    kProfileElectrical = 32,
    kAnyProfileType = 0xFFFFFFFFu,
};

// Finds a profile name: its text, the id of its standard (0: none) and its type.
struct ProfileNameKey {
    OdString name;
    uint32_t standardId = 0;
    ProfileType type = kProfileGeneric;

    ProfileNameKey() = default;
    ProfileNameKey(const OdString& nameText, uint32_t standard, ProfileType profileType)
        : name(nameText), standardId(standard), type(profileType) {}
};

class ProfileStandard : public NamedObject<ProfileStandard, kProfileStandard> {
public:
    explicit ProfileStandard(const OdString& name = OdString()) : NamedObject(name) {}
};

class ProfileName : public Object {
public:
    static constexpr ObjectType kType = kProfileName;

    static QcSmartPtr<ProfileName> create(const QcSmartPtr<ProfileStandard>& standard, const OdString& name,
                                          ProfileType type);
    ProfileName() : Object(kProfileName) {}

    // Trade of the name. (Hides Object::type(); use objectType() for the kind of object.)
    ProfileType type() const { return m_type; }
    void set_type(ProfileType type) { m_type = type; }
    // Null when the name belongs to no standard.
    const QcSmartPtr<ProfileStandard>& standard() const { return m_standard; }
    void set_standard(const QcSmartPtr<ProfileStandard>& standard) { m_standard = standard; }

    QcSmartPtr<ProfileName> cloneObject() const {
        return QcSmartPtr<ProfileName>(static_cast<ProfileName*>(cloneUnstored()));
    }

protected:
    Object* cloneImpl() const override { return new ProfileName(*this); }

private:
    QcSmartPtr<ProfileStandard> m_standard;
    ProfileType m_type = kProfileGeneric;
};

// Every dimension any shape has. The key (ShapeParameterInfo::key) is what libraries store,
// so a parameter keeps its key once released.
enum class ShapeParameter : uint32_t {
    kOverallDepth, kOverallWidth, kTopFlangeWidth, kWebThickness, kFlangeThickness, kTopFlangeThickness,
    kFilletRadius, kTopFlangeFilletRadius, kCentreOfGravityInX, kCentreOfGravityInY, kDepth, kWidth,
    kThickness, kEdgeRadius, kLegSlope, kFlangeWidth, kFlangeSlope, kGirth, kWallThickness,
    kInternalFilletRadius, kFlangeEdgeRadius, kWebEdgeRadius, kWebSlope, kHeadDepth2, kHeadDepth3,
    kBaseDepth1, kBaseDepth2, kBaseDepth3, kOverallHeight, kHeadWidth, kBaseWidth2, kBaseWidth4, kRadius,
    kSemiAxis1, kSemiAxis2, kXDim, kYDim, kBottomXDim, kTopXDim, kTopXOffset, kInnerFilletRadius,
    kOuterFilletRadius, kRoundingRadius,
};

struct ShapeParameterInfo {
    ShapeParameter id;
    const char* key;  // stored name, e.g. "overall_depth"
    // An optional parameter is absent until it is set; a required one reads 0 until then.
    bool optional;
};

class Profile;

// Describes one profile class: its names, its object type, the class it extends and its
// parameters (inherited ones included, in the order the editors show them).
class ProfileClass {
public:
    ObjectType type() const { return m_type; }
    // "IShape"
    const char* shortName() const { return m_shortName; }
    // "vantlib::IShapeProfile"
    OdString className() const;
    // Null for the classes that extend Profile directly.
    const ProfileClass* parent() const { return m_parent; }
    const std::vector<ShapeParameterInfo>& parameters() const { return m_parameters; }
    const ShapeParameterInfo* parameter(ShapeParameter id) const;
    const ShapeParameterInfo* parameter(const char* key) const;
    // True for this class and every class that extends it.
    bool isBaseOf(const ProfileClass& other) const;
    // An empty profile of the class.
    QcSmartPtr<Profile> createEmpty() const { return m_create(); }

    // The seventeen classes (sixteen shapes, then the custom profile), in object type order.
    static const std::vector<const ProfileClass*>& all();
    // Null when unknown.
    static const ProfileClass* byType(ObjectType type);
    // Accepts the class name ("vantlib::IShapeProfile"), the short name ("IShape") and the
    // short name in the namespace ("vantlib::IShape").
    static const ProfileClass* byName(const OdString& name);

    ProfileClass(ObjectType type, const char* shortName, const char* cppName, const ProfileClass* parent,
                 std::vector<ShapeParameterInfo> parameters, QcSmartPtr<Profile> (*create)());

private:
    ObjectType m_type;
    const char* m_shortName;
    const char* m_cppName;
    const ProfileClass* m_parent;
    std::vector<ShapeParameterInfo> m_parameters;
    QcSmartPtr<Profile> (*m_create)();
};

// A profile of any shape. Its size text is the object's own name (Object::name, set_size): a
// profile is identified by its profile name and its size.
class Profile : public Object {
public:
    static constexpr ObjectType kType = kConstructionProfile;

    // Profile name; hides Object::name(), which is the size.
    const QcSmartPtr<ProfileName>& name() const { return m_profileName; }
    void set_name(const QcSmartPtr<ProfileName>& name) { m_profileName = name; }
    const OdString& size() const { return Object::name(); }
    void set_size(const OdString& size) { Object::set_name(size); }
    // Standard, name and size, separated by blanks (what is missing is left out).
    OdString displayName() const override;

    const OdString& description() const { return m_description; }
    void set_description(const OdString& text) { m_description = text; }
    // Null when none.
    const QcSmartPtr<Material>& material() const { return m_material; }
    void set_material(const QcSmartPtr<Material>& material) { m_material = material; }

    // Where the element's axis lies relative to the section's centre.
    bool has_offset() const { return m_hasOffset; }
    const Vector2d& offset() const { return m_offset; }
    void set_offset(const Vector2d& offset) { m_offset = offset; m_hasOffset = true; }
    void clear_offset() { m_offset = Vector2d(); m_hasOffset = false; }

    virtual const ProfileClass& isA() const = 0;

    // Generic access to the shape's dimensions; a parameter the class lacks throws
    // ConsistencyError.
    // False also for a parameter the class lacks.
    bool hasParameter(ShapeParameter id) const;
    // 0 when absent.
    double parameter(ShapeParameter id) const;
    void setParameter(ShapeParameter id, double value);
    // Makes an optional parameter absent again; a required one returns to 0.
    void clearParameter(ShapeParameter id);

    // Most dimensions a class may have.
    static constexpr size_t kMaxParameters = 16;

    QcSmartPtr<Profile> cloneObject() const { return QcSmartPtr<Profile>(static_cast<Profile*>(cloneUnstored())); }

protected:
    explicit Profile(ObjectType type) : Object(type) {}
    // Puts the class's required parameters in place (at 0).
    void initParameters();

private:
    // Position of the parameter in the class's list; throws ConsistencyError when it lacks it.
    size_t slot(ShapeParameter id) const;

    QcSmartPtr<ProfileName> m_profileName;
    OdString m_description;
    QcSmartPtr<Material> m_material;
    Vector2d m_offset;
    bool m_hasOffset = false;
    // Values by position in the class's parameter list, and which of them are present: a
    // list of profiles is read often and whole, so a profile holds no allocation of its own.
    std::array<double, kMaxParameters> m_values{};
    uint32_t m_present = 0;
};

// ---- The parametric shapes. Each class has create(name, size), desc() and, per dimension,
// the getter, the setter and the has_ query.

#define VL_PROFILE_CLASS(Class, Kind)                                                                        \
public:                                                                                                       \
    static constexpr ObjectType kType = Kind;                                                                 \
    static const ProfileClass& desc();                                                                        \
    const ProfileClass& isA() const override { return desc(); }                                               \
    static QcSmartPtr<Class> create(const QcSmartPtr<ProfileName>& name, const OdString& size) {              \
        QcSmartPtr<Class> profile(new Class());                                                               \
        profile->set_name(name);                                                                              \
        profile->set_size(size);                                                                              \
        return profile;                                                                                       \
    }                                                                                                         \
    Class() : Class(Kind) { initParameters(); }                                                               \
    QcSmartPtr<Class> cloneObject() const { return QcSmartPtr<Class>(static_cast<Class*>(cloneUnstored())); } \
                                                                                                              \
protected:                                                                                                    \
    Object* cloneImpl() const override { return new Class(*this); }

#define VL_SHAPE_PARAMETER(accessor, id)                                                  \
public:                                                                                   \
    double accessor() const { return parameter(ShapeParameter::id); }                     \
    void set_##accessor(double value) { setParameter(ShapeParameter::id, value); }         \
    bool has_##accessor() const { return hasParameter(ShapeParameter::id); }

class IShapeProfile : public Profile {
    VL_PROFILE_CLASS(IShapeProfile, kIShapeProfile)
    explicit IShapeProfile(ObjectType type) : Profile(type) {}
    VL_SHAPE_PARAMETER(overall_depth, kOverallDepth)
    VL_SHAPE_PARAMETER(overall_width, kOverallWidth)
    VL_SHAPE_PARAMETER(web_thickness, kWebThickness)
    VL_SHAPE_PARAMETER(flange_thickness, kFlangeThickness)
    VL_SHAPE_PARAMETER(fillet_radius, kFilletRadius)
};

// An I-shape whose top flange differs from the bottom one; the I-shape's flange dimensions
// are those of the bottom flange.
class AsymmetricIShapeProfile : public IShapeProfile {
    VL_PROFILE_CLASS(AsymmetricIShapeProfile, kAsymmetricIShapeProfile)
    explicit AsymmetricIShapeProfile(ObjectType type) : IShapeProfile(type) {}
    VL_SHAPE_PARAMETER(top_flange_width, kTopFlangeWidth)
    VL_SHAPE_PARAMETER(top_flange_thickness, kTopFlangeThickness)
    VL_SHAPE_PARAMETER(top_flange_fillet_radius, kTopFlangeFilletRadius)
    VL_SHAPE_PARAMETER(centre_of_gravity_in_y, kCentreOfGravityInY)
};

class LShapeProfile : public Profile {
    VL_PROFILE_CLASS(LShapeProfile, kLShapeProfile)
    explicit LShapeProfile(ObjectType type) : Profile(type) {}
    VL_SHAPE_PARAMETER(depth, kDepth)
    // Absent for an equal-leg angle.
    VL_SHAPE_PARAMETER(width, kWidth)
    VL_SHAPE_PARAMETER(thickness, kThickness)
    VL_SHAPE_PARAMETER(fillet_radius, kFilletRadius)
    VL_SHAPE_PARAMETER(edge_radius, kEdgeRadius)
    VL_SHAPE_PARAMETER(leg_slope, kLegSlope)
    VL_SHAPE_PARAMETER(centre_of_gravity_in_x, kCentreOfGravityInX)
    VL_SHAPE_PARAMETER(centre_of_gravity_in_y, kCentreOfGravityInY)
};

class UShapeProfile : public Profile {
    VL_PROFILE_CLASS(UShapeProfile, kUShapeProfile)
    explicit UShapeProfile(ObjectType type) : Profile(type) {}
    VL_SHAPE_PARAMETER(depth, kDepth)
    VL_SHAPE_PARAMETER(flange_width, kFlangeWidth)
    VL_SHAPE_PARAMETER(web_thickness, kWebThickness)
    VL_SHAPE_PARAMETER(flange_thickness, kFlangeThickness)
    VL_SHAPE_PARAMETER(fillet_radius, kFilletRadius)
    VL_SHAPE_PARAMETER(edge_radius, kEdgeRadius)
    VL_SHAPE_PARAMETER(flange_slope, kFlangeSlope)
    VL_SHAPE_PARAMETER(centre_of_gravity_in_x, kCentreOfGravityInX)
};

class CShapeProfile : public Profile {
    VL_PROFILE_CLASS(CShapeProfile, kCShapeProfile)
    explicit CShapeProfile(ObjectType type) : Profile(type) {}
    VL_SHAPE_PARAMETER(depth, kDepth)
    VL_SHAPE_PARAMETER(girth, kGirth)
    VL_SHAPE_PARAMETER(width, kWidth)
    VL_SHAPE_PARAMETER(wall_thickness, kWallThickness)
    VL_SHAPE_PARAMETER(internal_fillet_radius, kInternalFilletRadius)
    VL_SHAPE_PARAMETER(centre_of_gravity_in_x, kCentreOfGravityInX)
};

class ZShapeProfile : public Profile {
    VL_PROFILE_CLASS(ZShapeProfile, kZShapeProfile)
    explicit ZShapeProfile(ObjectType type) : Profile(type) {}
    VL_SHAPE_PARAMETER(depth, kDepth)
    VL_SHAPE_PARAMETER(flange_width, kFlangeWidth)
    VL_SHAPE_PARAMETER(web_thickness, kWebThickness)
    VL_SHAPE_PARAMETER(flange_thickness, kFlangeThickness)
    VL_SHAPE_PARAMETER(edge_radius, kEdgeRadius)
    VL_SHAPE_PARAMETER(fillet_radius, kFilletRadius)
};

class TShapeProfile : public Profile {
    VL_PROFILE_CLASS(TShapeProfile, kTShapeProfile)
    explicit TShapeProfile(ObjectType type) : Profile(type) {}
    VL_SHAPE_PARAMETER(depth, kDepth)
    VL_SHAPE_PARAMETER(flange_width, kFlangeWidth)
    VL_SHAPE_PARAMETER(web_thickness, kWebThickness)
    VL_SHAPE_PARAMETER(flange_thickness, kFlangeThickness)
    VL_SHAPE_PARAMETER(fillet_radius, kFilletRadius)
    VL_SHAPE_PARAMETER(flange_edge_radius, kFlangeEdgeRadius)
    VL_SHAPE_PARAMETER(web_edge_radius, kWebEdgeRadius)
    VL_SHAPE_PARAMETER(web_slope, kWebSlope)
    VL_SHAPE_PARAMETER(flange_slope, kFlangeSlope)
    VL_SHAPE_PARAMETER(centre_of_gravity_in_y, kCentreOfGravityInY)
};

class CraneRailAShapeProfile : public Profile {
    VL_PROFILE_CLASS(CraneRailAShapeProfile, kCraneRailAShapeProfile)
    explicit CraneRailAShapeProfile(ObjectType type) : Profile(type) {}
    VL_SHAPE_PARAMETER(head_depth_3, kHeadDepth3)
    VL_SHAPE_PARAMETER(head_depth_2, kHeadDepth2)
    VL_SHAPE_PARAMETER(base_depth_1, kBaseDepth1)
    VL_SHAPE_PARAMETER(base_depth_3, kBaseDepth3)
    VL_SHAPE_PARAMETER(base_depth_2, kBaseDepth2)
    VL_SHAPE_PARAMETER(overall_height, kOverallHeight)
    VL_SHAPE_PARAMETER(base_width_2, kBaseWidth2)
    VL_SHAPE_PARAMETER(head_width, kHeadWidth)
    VL_SHAPE_PARAMETER(base_width_4, kBaseWidth4)
    VL_SHAPE_PARAMETER(web_thickness, kWebThickness)
    VL_SHAPE_PARAMETER(radius, kRadius)
    VL_SHAPE_PARAMETER(centre_of_gravity_in_y, kCentreOfGravityInY)
};

class CraneRailFShapeProfile : public Profile {
    VL_PROFILE_CLASS(CraneRailFShapeProfile, kCraneRailFShapeProfile)
    explicit CraneRailFShapeProfile(ObjectType type) : Profile(type) {}
    VL_SHAPE_PARAMETER(head_depth_3, kHeadDepth3)
    VL_SHAPE_PARAMETER(head_depth_2, kHeadDepth2)
    VL_SHAPE_PARAMETER(base_depth_1, kBaseDepth1)
    VL_SHAPE_PARAMETER(base_depth_2, kBaseDepth2)
    VL_SHAPE_PARAMETER(overall_height, kOverallHeight)
    VL_SHAPE_PARAMETER(head_width, kHeadWidth)
    VL_SHAPE_PARAMETER(web_thickness, kWebThickness)
    VL_SHAPE_PARAMETER(radius, kRadius)
    VL_SHAPE_PARAMETER(centre_of_gravity_in_y, kCentreOfGravityInY)
};

class CircleProfile : public Profile {
    VL_PROFILE_CLASS(CircleProfile, kCircleProfile)
    explicit CircleProfile(ObjectType type) : Profile(type) {}
    VL_SHAPE_PARAMETER(radius, kRadius)
};

class CircleHollowProfile : public CircleProfile {
    VL_PROFILE_CLASS(CircleHollowProfile, kCircleHollowProfile)
    explicit CircleHollowProfile(ObjectType type) : CircleProfile(type) {}
    VL_SHAPE_PARAMETER(wall_thickness, kWallThickness)
};

class EllipseProfile : public Profile {
    VL_PROFILE_CLASS(EllipseProfile, kEllipseProfile)
    explicit EllipseProfile(ObjectType type) : Profile(type) {}
    // Half axes along x (a) and y (b).
    VL_SHAPE_PARAMETER(semi_axis_1, kSemiAxis1)
    VL_SHAPE_PARAMETER(semi_axis_2, kSemiAxis2)
};

class RectangleProfile : public Profile {
    VL_PROFILE_CLASS(RectangleProfile, kRectangleProfile)
    explicit RectangleProfile(ObjectType type) : Profile(type) {}
    VL_SHAPE_PARAMETER(y_dim, kYDim)
    VL_SHAPE_PARAMETER(x_dim, kXDim)
};

class RectangleHollowProfile : public RectangleProfile {
    VL_PROFILE_CLASS(RectangleHollowProfile, kRectangleHollowProfile)
    explicit RectangleHollowProfile(ObjectType type) : RectangleProfile(type) {}
    VL_SHAPE_PARAMETER(wall_thickness, kWallThickness)
    VL_SHAPE_PARAMETER(inner_fillet_radius, kInnerFilletRadius)
    VL_SHAPE_PARAMETER(outer_fillet_radius, kOuterFilletRadius)
};

class RoundedRectangleProfile : public RectangleProfile {
    VL_PROFILE_CLASS(RoundedRectangleProfile, kRoundedRectangleProfile)
    explicit RoundedRectangleProfile(ObjectType type) : RectangleProfile(type) {}
    VL_SHAPE_PARAMETER(rounding_radius, kRoundingRadius)
};

class TrapeziumProfile : public Profile {
    VL_PROFILE_CLASS(TrapeziumProfile, kTrapeziumProfile)
    explicit TrapeziumProfile(ObjectType type) : Profile(type) {}
    VL_SHAPE_PARAMETER(y_dim, kYDim)
    VL_SHAPE_PARAMETER(bottom_x_dim, kBottomXDim)
    VL_SHAPE_PARAMETER(top_x_dim, kTopXDim)
    // Shift of the top edge's start against the bottom edge's start.
    VL_SHAPE_PARAMETER(top_x_offset, kTopXOffset)
};

// ---- Custom outlines.

// One edge of a loop: from `start` to the next edge's start (the first one's for the last
// edge). `bulge` is 0 for a straight line, otherwise the tangent of a quarter of the arc's
// sweep angle, positive counter-clockwise, as polylines store arcs.
struct ProfileEdge {
    Vector2d start;
    double bulge = 0.0;

    ProfileEdge() = default;
    ProfileEdge(const Vector2d& point, double arcBulge = 0.0) : start(point), bulge(arcBulge) {}
    friend bool operator==(const ProfileEdge& a, const ProfileEdge& b) { return a.start == b.start && a.bulge == b.bulge; }
};

// A closed loop of lines and arcs.
using ProfileLoop = std::vector<ProfileEdge>;

// Why a loop cannot bound a section; empty when it can.
OdString loopFault(const ProfileLoop& loop);

struct ProfileGeometry {
    ProfileLoop outer;
    std::vector<ProfileLoop> holes;

    bool empty() const { return outer.empty(); }
    friend bool operator==(const ProfileGeometry& a, const ProfileGeometry& b) {
        return a.outer == b.outer && a.holes == b.holes;
    }
};

class CustomProfile : public Profile {
    VL_PROFILE_CLASS(CustomProfile, kCustomProfile)
    explicit CustomProfile(ObjectType type) : Profile(type) {}

public:
    const ProfileGeometry& geometry() const { return m_geometry; }
    // Throws ConsistencyError, leaving the profile unchanged, when the outer loop or a hole
    // cannot bound a section (fewer than two corners, a zero-length edge, two corners joined
    // by lines only).
    void set_geometry(const ProfileGeometry& geometry);

private:
    ProfileGeometry m_geometry;
};

// A profile whose shape class this version does not know (written by a later version). It is
// listed and shown like any profile, without dimensions; its stored class and dimensions are
// kept as read, so saving or copying it loses nothing.
class UnknownShapeProfile : public Profile {
public:
    static constexpr ObjectType kType = kConstructionProfile;
    static const ProfileClass& desc();
    const ProfileClass& isA() const override { return desc(); }

    UnknownShapeProfile(unsigned storedType, std::string storedParameters, std::string storedGeometry)
        : Profile(kConstructionProfile), m_storedType(storedType), m_storedParameters(std::move(storedParameters)),
          m_storedGeometry(std::move(storedGeometry)) {}

    // The class number, dimensions and outline as the file holds them.
    unsigned storedType() const { return m_storedType; }
    const std::string& storedParameters() const { return m_storedParameters; }
    const std::string& storedGeometry() const { return m_storedGeometry; }

protected:
    Object* cloneImpl() const override { return new UnknownShapeProfile(*this); }

private:
    unsigned m_storedType;
    std::string m_storedParameters;
    std::string m_storedGeometry;
};

// Why the profile's dimensions make no section (no depth, a web thicker than the flange is
// wide, radii larger than the parts they round, ...); empty when they make one. Libraries
// refuse to save a profile with a fault.
OdString shapeFault(const Profile& profile);

#undef VL_SHAPE_PARAMETER
#undef VL_PROFILE_CLASS

}  // namespace vantlib

// Construction profiles: the class descriptors with their parameter lists, and the checks of
// custom outlines.
#include <vantlib/Profile.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include <vantlib/Criteria.h>
#include <vantlib/Exception.h>

#include "Text.h"

namespace vantlib {

QcSmartPtr<ProfileName> ProfileName::create(const QcSmartPtr<ProfileStandard>& standard, const OdString& name,
                                            ProfileType type) {
    QcSmartPtr<ProfileName> profileName(new ProfileName());
    profileName->set_name(name);
    profileName->set_standard(standard);
    profileName->set_type(type);
    return profileName;
}

// ---- Class descriptors

ProfileClass::ProfileClass(ObjectType type, const char* shortName, const char* cppName, const ProfileClass* parent,
                           std::vector<ShapeParameterInfo> parameters, QcSmartPtr<Profile> (*create)())
    : m_type(type), m_shortName(shortName), m_cppName(cppName), m_parent(parent), m_parameters(std::move(parameters)),
      m_create(create) {
    if (m_parameters.size() > Profile::kMaxParameters)
        throw ConsistencyError(OdString::formatted(L"Profile class %s has too many parameters", shortName));
}

OdString ProfileClass::className() const { return OdString(L"vantlib::") + OdString::fromUtf8(m_cppName); }

const ShapeParameterInfo* ProfileClass::parameter(ShapeParameter id) const {
    for (const ShapeParameterInfo& info : m_parameters)
        if (info.id == id)
            return &info;
    return nullptr;
}

const ShapeParameterInfo* ProfileClass::parameter(const char* key) const {
    for (const ShapeParameterInfo& info : m_parameters)
        if (std::strcmp(info.key, key) == 0)
            return &info;
    return nullptr;
}

bool ProfileClass::isBaseOf(const ProfileClass& other) const {
    for (const ProfileClass* c = &other; c; c = c->parent())
        if (c == this)
            return true;
    return false;
}

const std::vector<const ProfileClass*>& ProfileClass::all() {
    static const std::vector<const ProfileClass*> classes{
        &AsymmetricIShapeProfile::desc(), &IShapeProfile::desc(),         &LShapeProfile::desc(),
        &UShapeProfile::desc(),           &CShapeProfile::desc(),         &ZShapeProfile::desc(),
        &TShapeProfile::desc(),           &CraneRailAShapeProfile::desc(), &CraneRailFShapeProfile::desc(),
        &CircleProfile::desc(),           &CircleHollowProfile::desc(),   &EllipseProfile::desc(),
        &RectangleProfile::desc(),        &RectangleHollowProfile::desc(), &RoundedRectangleProfile::desc(),
        &TrapeziumProfile::desc(),        &CustomProfile::desc()};
    return classes;
}

const ProfileClass* ProfileClass::byType(ObjectType type) {
    for (const ProfileClass* c : all())
        if (c->type() == type)
            return c;
    return nullptr;
}

const ProfileClass* ProfileClass::byName(const OdString& name) {
    const OdString prefix(L"vantlib::");
    OdString bare = name.left(prefix.getLength()) == prefix ? name.mid(prefix.getLength()) : name;
    for (const ProfileClass* c : all())
        if (bare == OdString::fromUtf8(c->m_shortName) || bare == OdString::fromUtf8(c->m_cppName))
            return c;
    return nullptr;
}

namespace {

template <class T>
QcSmartPtr<Profile> createEmptyProfile() {
    return QcSmartPtr<Profile>(new T());
}

using P = ShapeParameter;
constexpr bool kRequired = false;
constexpr bool kOptional = true;

}  // namespace

// The parameter lists follow the order of the editors' panels.
const ProfileClass& IShapeProfile::desc() {
    static const ProfileClass c(kIShapeProfile, "IShape", "IShapeProfile", nullptr,
                                {{P::kOverallDepth, "overall_depth", kRequired},
                                 {P::kOverallWidth, "overall_width", kRequired},
                                 {P::kWebThickness, "web_thickness", kRequired},
                                 {P::kFlangeThickness, "flange_thickness", kRequired},
                                 {P::kFilletRadius, "fillet_radius", kOptional}},
                                createEmptyProfile<IShapeProfile>);
    return c;
}

const ProfileClass& AsymmetricIShapeProfile::desc() {
    static const ProfileClass c(kAsymmetricIShapeProfile, "AsymmetricIShape", "AsymmetricIShapeProfile",
                                &IShapeProfile::desc(),
                                {{P::kOverallDepth, "overall_depth", kRequired},
                                 {P::kOverallWidth, "overall_width", kRequired},
                                 {P::kTopFlangeWidth, "top_flange_width", kRequired},
                                 {P::kWebThickness, "web_thickness", kRequired},
                                 {P::kFlangeThickness, "flange_thickness", kRequired},
                                 {P::kTopFlangeThickness, "top_flange_thickness", kOptional},
                                 {P::kFilletRadius, "fillet_radius", kOptional},
                                 {P::kTopFlangeFilletRadius, "top_flange_fillet_radius", kOptional},
                                 {P::kCentreOfGravityInY, "centre_of_gravity_in_y", kOptional}},
                                createEmptyProfile<AsymmetricIShapeProfile>);
    return c;
}

const ProfileClass& LShapeProfile::desc() {
    static const ProfileClass c(kLShapeProfile, "LShape", "LShapeProfile", nullptr,
                                {{P::kDepth, "depth", kRequired},
                                 {P::kWidth, "width", kOptional},
                                 {P::kThickness, "thickness", kRequired},
                                 {P::kFilletRadius, "fillet_radius", kOptional},
                                 {P::kEdgeRadius, "edge_radius", kOptional},
                                 {P::kLegSlope, "leg_slope", kOptional},
                                 {P::kCentreOfGravityInX, "centre_of_gravity_in_x", kOptional},
                                 {P::kCentreOfGravityInY, "centre_of_gravity_in_y", kOptional}},
                                createEmptyProfile<LShapeProfile>);
    return c;
}

const ProfileClass& UShapeProfile::desc() {
    static const ProfileClass c(kUShapeProfile, "UShape", "UShapeProfile", nullptr,
                                {{P::kDepth, "depth", kRequired},
                                 {P::kFlangeWidth, "flange_width", kRequired},
                                 {P::kWebThickness, "web_thickness", kRequired},
                                 {P::kFlangeThickness, "flange_thickness", kRequired},
                                 {P::kFilletRadius, "fillet_radius", kOptional},
                                 {P::kEdgeRadius, "edge_radius", kOptional},
                                 {P::kFlangeSlope, "flange_slope", kOptional},
                                 {P::kCentreOfGravityInX, "centre_of_gravity_in_x", kOptional}},
                                createEmptyProfile<UShapeProfile>);
    return c;
}

const ProfileClass& CShapeProfile::desc() {
    static const ProfileClass c(kCShapeProfile, "CShape", "CShapeProfile", nullptr,
                                {{P::kDepth, "depth", kRequired},
                                 {P::kGirth, "girth", kRequired},
                                 {P::kWidth, "width", kRequired},
                                 {P::kWallThickness, "wall_thickness", kRequired},
                                 {P::kInternalFilletRadius, "internal_fillet_radius", kOptional},
                                 {P::kCentreOfGravityInX, "centre_of_gravity_in_x", kOptional}},
                                createEmptyProfile<CShapeProfile>);
    return c;
}

const ProfileClass& ZShapeProfile::desc() {
    static const ProfileClass c(kZShapeProfile, "ZShape", "ZShapeProfile", nullptr,
                                {{P::kDepth, "depth", kRequired},
                                 {P::kFlangeWidth, "flange_width", kRequired},
                                 {P::kWebThickness, "web_thickness", kRequired},
                                 {P::kFlangeThickness, "flange_thickness", kRequired},
                                 {P::kEdgeRadius, "edge_radius", kOptional},
                                 {P::kFilletRadius, "fillet_radius", kOptional}},
                                createEmptyProfile<ZShapeProfile>);
    return c;
}

const ProfileClass& TShapeProfile::desc() {
    static const ProfileClass c(kTShapeProfile, "TShape", "TShapeProfile", nullptr,
                                {{P::kDepth, "depth", kRequired},
                                 {P::kFlangeWidth, "flange_width", kRequired},
                                 {P::kWebThickness, "web_thickness", kRequired},
                                 {P::kFlangeThickness, "flange_thickness", kRequired},
                                 {P::kFilletRadius, "fillet_radius", kOptional},
                                 {P::kFlangeEdgeRadius, "flange_edge_radius", kOptional},
                                 {P::kWebEdgeRadius, "web_edge_radius", kOptional},
                                 {P::kWebSlope, "web_slope", kOptional},
                                 {P::kFlangeSlope, "flange_slope", kOptional},
                                 {P::kCentreOfGravityInY, "centre_of_gravity_in_y", kOptional}},
                                createEmptyProfile<TShapeProfile>);
    return c;
}

const ProfileClass& CraneRailAShapeProfile::desc() {
    static const ProfileClass c(kCraneRailAShapeProfile, "CraneRailAShape", "CraneRailAShapeProfile", nullptr,
                                {{P::kHeadDepth3, "head_depth_3", kRequired},
                                 {P::kHeadDepth2, "head_depth_2", kRequired},
                                 {P::kBaseDepth1, "base_depth_1", kRequired},
                                 {P::kBaseDepth3, "base_depth_3", kRequired},
                                 {P::kBaseDepth2, "base_depth_2", kRequired},
                                 {P::kOverallHeight, "overall_height", kRequired},
                                 {P::kBaseWidth2, "base_width_2", kRequired},
                                 {P::kHeadWidth, "head_width", kRequired},
                                 {P::kBaseWidth4, "base_width_4", kRequired},
                                 {P::kWebThickness, "web_thickness", kRequired},
                                 {P::kRadius, "radius", kOptional},
                                 {P::kCentreOfGravityInY, "centre_of_gravity_in_y", kOptional}},
                                createEmptyProfile<CraneRailAShapeProfile>);
    return c;
}

const ProfileClass& CraneRailFShapeProfile::desc() {
    static const ProfileClass c(kCraneRailFShapeProfile, "CraneRailFShape", "CraneRailFShapeProfile", nullptr,
                                {{P::kHeadDepth3, "head_depth_3", kRequired},
                                 {P::kHeadDepth2, "head_depth_2", kRequired},
                                 {P::kBaseDepth1, "base_depth_1", kRequired},
                                 {P::kBaseDepth2, "base_depth_2", kRequired},
                                 {P::kOverallHeight, "overall_height", kRequired},
                                 {P::kHeadWidth, "head_width", kRequired},
                                 {P::kWebThickness, "web_thickness", kRequired},
                                 {P::kRadius, "radius", kOptional},
                                 {P::kCentreOfGravityInY, "centre_of_gravity_in_y", kOptional}},
                                createEmptyProfile<CraneRailFShapeProfile>);
    return c;
}

const ProfileClass& CircleProfile::desc() {
    static const ProfileClass c(kCircleProfile, "Circle", "CircleProfile", nullptr,
                                {{P::kRadius, "radius", kRequired}}, createEmptyProfile<CircleProfile>);
    return c;
}

const ProfileClass& CircleHollowProfile::desc() {
    static const ProfileClass c(kCircleHollowProfile, "CircleHollow", "CircleHollowProfile", &CircleProfile::desc(),
                                {{P::kRadius, "radius", kRequired}, {P::kWallThickness, "wall_thickness", kRequired}},
                                createEmptyProfile<CircleHollowProfile>);
    return c;
}

const ProfileClass& EllipseProfile::desc() {
    static const ProfileClass c(kEllipseProfile, "Ellipse", "EllipseProfile", nullptr,
                                {{P::kSemiAxis2, "semi_axis_2", kRequired}, {P::kSemiAxis1, "semi_axis_1", kRequired}},
                                createEmptyProfile<EllipseProfile>);
    return c;
}

const ProfileClass& RectangleProfile::desc() {
    static const ProfileClass c(kRectangleProfile, "Rectangle", "RectangleProfile", nullptr,
                                {{P::kYDim, "y_dim", kRequired}, {P::kXDim, "x_dim", kRequired}},
                                createEmptyProfile<RectangleProfile>);
    return c;
}

const ProfileClass& RectangleHollowProfile::desc() {
    static const ProfileClass c(kRectangleHollowProfile, "RectangleHollow", "RectangleHollowProfile",
                                &RectangleProfile::desc(),
                                {{P::kYDim, "y_dim", kRequired},
                                 {P::kXDim, "x_dim", kRequired},
                                 {P::kWallThickness, "wall_thickness", kRequired},
                                 {P::kInnerFilletRadius, "inner_fillet_radius", kOptional},
                                 {P::kOuterFilletRadius, "outer_fillet_radius", kOptional}},
                                createEmptyProfile<RectangleHollowProfile>);
    return c;
}

const ProfileClass& RoundedRectangleProfile::desc() {
    static const ProfileClass c(kRoundedRectangleProfile, "RoundedRectangle", "RoundedRectangleProfile",
                                &RectangleProfile::desc(),
                                {{P::kYDim, "y_dim", kRequired},
                                 {P::kXDim, "x_dim", kRequired},
                                 {P::kRoundingRadius, "rounding_radius", kRequired}},
                                createEmptyProfile<RoundedRectangleProfile>);
    return c;
}

const ProfileClass& TrapeziumProfile::desc() {
    static const ProfileClass c(kTrapeziumProfile, "Trapezium", "TrapeziumProfile", nullptr,
                                {{P::kYDim, "y_dim", kRequired},
                                 {P::kBottomXDim, "bottom_x_dim", kRequired},
                                 {P::kTopXDim, "top_x_dim", kRequired},
                                 {P::kTopXOffset, "top_x_offset", kRequired}},
                                createEmptyProfile<TrapeziumProfile>);
    return c;
}

const ProfileClass& CustomProfile::desc() {
    static const ProfileClass c(kCustomProfile, "CustomShape", "CustomProfile", nullptr, {},
                                createEmptyProfile<CustomProfile>);
    return c;
}

// Not among all(): no profile of this class can be made, only read.
const ProfileClass& UnknownShapeProfile::desc() {
    static const ProfileClass c(kConstructionProfile, "UnknownShape", "UnknownShapeProfile", nullptr, {},
                                [] { return QcSmartPtr<Profile>(); });
    return c;
}

// ---- Profile

OdString Profile::displayName() const {
    OdString text;
    auto append = [&text](const OdString& part) {
        if (part.isEmpty())
            return;
        if (!text.isEmpty())
            text += L' ';
        text += part;
    };
    if (m_profileName) {
        if (m_profileName->standard())
            append(m_profileName->standard()->name());
        append(m_profileName->Object::name());
    }
    append(size());
    return text;
}

size_t Profile::slot(ShapeParameter id) const {
    const std::vector<ShapeParameterInfo>& parameters = isA().parameters();
    for (size_t i = 0; i < parameters.size(); ++i)
        if (parameters[i].id == id)
            return i;
    throw ConsistencyError(OdString::formatted(L"A profile of shape %s has no parameter %u", isA().shortName(),
                                               unsigned(id)));
}

bool Profile::hasParameter(ShapeParameter id) const {
    const std::vector<ShapeParameterInfo>& parameters = isA().parameters();
    for (size_t i = 0; i < parameters.size(); ++i)
        if (parameters[i].id == id)
            return (m_present >> i) & 1u;
    return false;
}

double Profile::parameter(ShapeParameter id) const {
    const size_t i = slot(id);
    return (m_present >> i) & 1u ? m_values[i] : 0.0;
}

void Profile::setParameter(ShapeParameter id, double value) {
    const size_t i = slot(id);
    if (!std::isfinite(value))
        throw ConsistencyError(OdString::formatted(L"A profile dimension must be a number (%s)", isA().parameters()[i].key));
    m_values[i] = value;
    m_present |= 1u << i;
}

void Profile::clearParameter(ShapeParameter id) {
    const size_t i = slot(id);
    m_values[i] = 0.0;
    if (isA().parameters()[i].optional)
        m_present &= ~(1u << i);
}

void Profile::initParameters() {
    const std::vector<ShapeParameterInfo>& parameters = isA().parameters();
    for (size_t i = 0; i < parameters.size(); ++i)
        if (!parameters[i].optional)
            m_present |= 1u << i;
}

// ---- Custom outlines

OdString loopFault(const ProfileLoop& loop) {
    if (loop.size() < 2)
        return OdString(L"A loop needs at least two corners");
    bool hasArc = false;
    for (size_t i = 0; i < loop.size(); ++i) {
        const ProfileEdge& edge = loop[i];
        const ProfileEdge& next = loop[(i + 1) % loop.size()];
        if (!std::isfinite(edge.start.x) || !std::isfinite(edge.start.y) || !std::isfinite(edge.bulge))
            return OdString(L"A loop corner is not a number");
        if (edge.start == next.start)
            return OdString::formatted(L"Edge %u of a loop has no length", unsigned(i + 1));
        hasArc = hasArc || edge.bulge != 0.0;
    }
    if (loop.size() == 2 && !hasArc)
        return OdString(L"Two corners joined by straight lines enclose nothing");
    return OdString();
}

void CustomProfile::set_geometry(const ProfileGeometry& geometry) {
    OdString fault = loopFault(geometry.outer);
    if (!fault.isEmpty())
        throw ConsistencyError(OdString(L"Outline: ") + fault);
    for (size_t i = 0; i < geometry.holes.size(); ++i) {
        fault = loopFault(geometry.holes[i]);
        if (!fault.isEmpty())
            throw ConsistencyError(OdString::formatted(L"Hole %u: %ls", unsigned(i + 1), fault.c_str()));
    }
    m_geometry = geometry;
}

// ---- Queries held in memory

bool ProfilesPanelQuery::matches(const Profile& profile) const { return Matcher(*this)(profile); }

ProfilesPanelQuery::Matcher::Matcher(const ProfilesPanelQuery& query)
    : m_query(query), m_anyClass(query.className.isEmpty()),
      m_class(m_anyClass ? nullptr : ProfileClass::byName(query.className)), m_text(foldCase(query.text.text())) {}

bool ProfilesPanelQuery::Matcher::operator()(const Profile& profile) const {
    const ProfileName* name = profile.name().get();
    const ProfileStandard* standard = name ? name->standard().get() : nullptr;
    if (m_query.type != kAnyProfileType && (!name || (name->type() & m_query.type) == 0))
        return false;
    // An unknown class matches nothing.
    if (!m_anyClass && m_class != &profile.isA())
        return false;
    if (!m_query.standards.empty() &&
        (!standard || std::none_of(m_query.standards.begin(), m_query.standards.end(),
                                   [standard](const OdString& wanted) { return sameName(wanted, standard->name()); })))
        return false;
    if (!name ? !m_query.name.isAny() : !m_query.name.matches(name->Object::name()))
        return false;
    if (m_query.text.isAny())
        return true;
    // The text the library searches: standard, profile name, size and description.
    std::wstring searched;
    if (standard)
        searched += standard->name().str() + L' ';
    if (name)
        searched += name->Object::name().str() + L' ';
    searched += profile.size().str() + L' ' + profile.description().str();
    if (m_query.text.mode() != StringCriteria::kContains)
        return m_query.text.matches(OdString(searched.c_str()));
    for (wchar_t& ch : searched)
        if (ch >= L'A' && ch <= L'Z')
            ch = wchar_t(ch - L'A' + L'a');
    return searched.find(m_text) != std::wstring::npos;
}

}  // namespace vantlib

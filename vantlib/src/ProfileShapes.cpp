// The conditions under which a shape's dimensions describe a section that can exist. They are
// checked on the dimensions alone; radii are checked against the straight parts they round.
#include <cmath>

#include <vantlib/Profile.h>
#include <vantlib/Translations.h>

// The reasons are English texts that the module translates; the marker lets the catalogue
// extraction find them.
#ifndef wxTRANSLATE
#define wxTRANSLATE(text) L"" text
#endif

namespace vantlib {
namespace {

using P = ShapeParameter;

// Dimensions that are positions or angles rather than lengths may be negative or zero.
bool isSignedParameter(ShapeParameter id) {
    return id == P::kCentreOfGravityInX || id == P::kCentreOfGravityInY || id == P::kTopXOffset;
}

// "web_thickness" as words: "web thickness".
OdString dimensionWords(const char* key) {
    OdString words = OdString::fromUtf8(key);
    words.replace(L"_", L" ");
    return words;
}

bool isSlope(ShapeParameter id) { return id == P::kLegSlope || id == P::kFlangeSlope || id == P::kWebSlope; }

// Collects the first fault found.
class Rules {
public:
    explicit Rules(const Profile& profile) : m_profile(profile) {}

    double operator()(ShapeParameter id) const { return m_profile.parameter(id); }

    void require(bool condition, const wchar_t* reason) {
        if (m_fault.isEmpty() && !condition)
            m_fault = OdString(reason);
    }
    void positive(ShapeParameter id, const wchar_t* reason) { require((*this)(id) > 0.0, reason); }

    OdString fault() const { return m_fault.isEmpty() ? m_fault : translate(m_fault); }

private:
    const Profile& m_profile;
    OdString m_fault;
};

void iShapeRules(Rules& r, bool asymmetric, const Profile& profile) {
    r.positive(P::kOverallDepth, wxTRANSLATE("The overall depth must be greater than zero."));
    r.positive(P::kOverallWidth, wxTRANSLATE("The overall width must be greater than zero."));
    r.positive(P::kWebThickness, wxTRANSLATE("The web thickness must be greater than zero."));
    r.positive(P::kFlangeThickness, wxTRANSLATE("The flange thickness must be greater than zero."));
    const double depth = r(P::kOverallDepth), web = r(P::kWebThickness), fillet = r(P::kFilletRadius);
    double topWidth = r(P::kOverallWidth), topThickness = r(P::kFlangeThickness), topFillet = fillet;
    if (asymmetric) {
        if (profile.hasParameter(P::kTopFlangeWidth))
            topWidth = r(P::kTopFlangeWidth);
        if (profile.hasParameter(P::kTopFlangeThickness))
            topThickness = r(P::kTopFlangeThickness);
        if (profile.hasParameter(P::kTopFlangeFilletRadius))
            topFillet = r(P::kTopFlangeFilletRadius);
        r.require(topWidth > 0.0, wxTRANSLATE("The top flange width must be greater than zero."));
        r.require(topThickness > 0.0, wxTRANSLATE("The top flange thickness must be greater than zero."));
    }
    r.require(web < r(P::kOverallWidth) && web < topWidth, wxTRANSLATE("The web is thicker than a flange is wide."));
    r.require(r(P::kFlangeThickness) + topThickness < depth, wxTRANSLATE("The flanges are together thicker than the depth."));
    r.require(2.0 * fillet <= r(P::kOverallWidth) - web && 2.0 * topFillet <= topWidth - web,
              wxTRANSLATE("A fillet radius is larger than the flange outstand."));
    r.require(fillet + topFillet <= depth - r(P::kFlangeThickness) - topThickness,
              wxTRANSLATE("The fillet radii are larger than the web between the flanges."));
}

void lShapeRules(Rules& r, const Profile& profile) {
    r.positive(P::kDepth, wxTRANSLATE("The depth must be greater than zero."));
    r.positive(P::kThickness, wxTRANSLATE("The thickness must be greater than zero."));
    const double depth = r(P::kDepth), thickness = r(P::kThickness);
    const double width = profile.hasParameter(P::kWidth) ? r(P::kWidth) : depth;
    r.require(width > 0.0, wxTRANSLATE("The width must be greater than zero."));
    r.require(thickness < depth && thickness < width, wxTRANSLATE("The thickness is not less than the length of a leg."));
    r.require(r(P::kFilletRadius) <= std::min(depth, width) - thickness, wxTRANSLATE("The fillet radius is larger than the legs."));
    r.require(r(P::kEdgeRadius) <= thickness, wxTRANSLATE("The edge radius is larger than the thickness."));
}

void channelRules(Rules& r, ShapeParameter width) {
    r.positive(P::kDepth, wxTRANSLATE("The depth must be greater than zero."));
    r.positive(width, wxTRANSLATE("The flange width must be greater than zero."));
    r.positive(P::kWebThickness, wxTRANSLATE("The web thickness must be greater than zero."));
    r.positive(P::kFlangeThickness, wxTRANSLATE("The flange thickness must be greater than zero."));
    r.require(r(P::kWebThickness) < r(width), wxTRANSLATE("The web is thicker than the flange is wide."));
    r.require(2.0 * r(P::kFlangeThickness) < r(P::kDepth), wxTRANSLATE("The flanges are together thicker than the depth."));
    r.require(r(P::kFilletRadius) <= std::min(r(width) - r(P::kWebThickness),
                                              r(P::kDepth) / 2.0 - r(P::kFlangeThickness)),
              wxTRANSLATE("The fillet radius is larger than the flange outstand."));
    r.require(r(P::kEdgeRadius) <= r(P::kFlangeThickness), wxTRANSLATE("The edge radius is larger than the flange thickness."));
}

void railRules(Rules& r, bool baseWidths) {
    r.positive(P::kOverallHeight, wxTRANSLATE("The overall height must be greater than zero."));
    r.positive(P::kHeadWidth, wxTRANSLATE("The head width must be greater than zero."));
    r.positive(P::kWebThickness, wxTRANSLATE("The web thickness must be greater than zero."));
    r.positive(P::kBaseDepth1, wxTRANSLATE("The base depth must be greater than zero."));
    r.positive(P::kHeadDepth3, wxTRANSLATE("The head depth must be greater than zero."));
    r.require(r(P::kHeadDepth3) <= r(P::kHeadDepth2), wxTRANSLATE("The head's edge is deeper than the head."));
    r.require(r(P::kBaseDepth1) <= r(P::kBaseDepth2), wxTRANSLATE("The base's edge is deeper than the base."));
    r.require(r(P::kBaseDepth2) + r(P::kHeadDepth2) < r(P::kOverallHeight),
              wxTRANSLATE("The head and the base are together higher than the rail."));
    r.require(r(P::kWebThickness) < r(P::kHeadWidth), wxTRANSLATE("The web is thicker than the head is wide."));
    if (baseWidths) {
        r.positive(P::kBaseWidth2, wxTRANSLATE("The base width must be greater than zero."));
        r.require(r(P::kBaseDepth1) <= r(P::kBaseDepth3) && r(P::kBaseDepth3) <= r(P::kBaseDepth2),
                  wxTRANSLATE("The base depths must grow from the base's edge to the web."));
        r.require(r(P::kWebThickness) <= r(P::kBaseWidth4) && r(P::kBaseWidth4) <= r(P::kBaseWidth2),
                  wxTRANSLATE("The base narrows wrongly towards the web."));
    }
    r.require(2.0 * r(P::kRadius) <= std::min(r(P::kHeadWidth), r(P::kHeadDepth3)),
              wxTRANSLATE("The radius is larger than the head."));
}

void rectangleRules(Rules& r, ObjectType type) {
    r.positive(P::kXDim, wxTRANSLATE("The X dimension must be greater than zero."));
    r.positive(P::kYDim, wxTRANSLATE("The Y dimension must be greater than zero."));
    const double half = std::min(r(P::kXDim), r(P::kYDim)) / 2.0;
    if (type == kRectangleHollowProfile) {
        const double wall = r(P::kWallThickness);
        r.require(wall > 0.0, wxTRANSLATE("The wall thickness must be greater than zero."));
        r.require(wall < half, wxTRANSLATE("The walls leave no hollow."));
        r.require(r(P::kOuterFilletRadius) <= half, wxTRANSLATE("The outer fillet radius is larger than half the section."));
        r.require(r(P::kInnerFilletRadius) <= half - wall, wxTRANSLATE("The inner fillet radius is larger than half the hollow."));
    } else if (type == kRoundedRectangleProfile) {
        r.require(r(P::kRoundingRadius) <= half, wxTRANSLATE("The rounding radius is larger than half the section."));
    }
}

}  // namespace

OdString shapeFault(const Profile& profile) {
    const ProfileClass& shape = profile.isA();
    for (const ShapeParameterInfo& info : shape.parameters()) {
        if (!profile.hasParameter(info.id) || isSignedParameter(info.id))
            continue;
        const double value = profile.parameter(info.id);
        if (value < 0.0)
            return OdString::formatted(translate(wxTRANSLATE("The dimension \"%ls\" is negative.")).c_str(),
                                       dimensionWords(info.key).c_str());
        if (isSlope(info.id) && value >= M_PI / 4.0)
            return OdString::formatted(translate(wxTRANSLATE("The slope \"%ls\" must be less than 45 degrees.")).c_str(),
                                       dimensionWords(info.key).c_str());
    }
    Rules r(profile);
    switch (shape.type()) {
    case kIShapeProfile: iShapeRules(r, false, profile); break;
    case kAsymmetricIShapeProfile: iShapeRules(r, true, profile); break;
    case kLShapeProfile: lShapeRules(r, profile); break;
    case kUShapeProfile:
    case kZShapeProfile:
        channelRules(r, P::kFlangeWidth);
        break;
    case kTShapeProfile:
        r.positive(P::kDepth, wxTRANSLATE("The depth must be greater than zero."));
        r.positive(P::kFlangeWidth, wxTRANSLATE("The flange width must be greater than zero."));
        r.positive(P::kWebThickness, wxTRANSLATE("The web thickness must be greater than zero."));
        r.positive(P::kFlangeThickness, wxTRANSLATE("The flange thickness must be greater than zero."));
        r.require(r(P::kWebThickness) < r(P::kFlangeWidth), wxTRANSLATE("The web is thicker than the flange is wide."));
        r.require(r(P::kFlangeThickness) < r(P::kDepth), wxTRANSLATE("The flange is thicker than the depth."));
        r.require(2.0 * r(P::kFilletRadius) <= r(P::kFlangeWidth) - r(P::kWebThickness),
                  wxTRANSLATE("The fillet radius is larger than the flange outstand."));
        break;
    case kCShapeProfile:
        r.positive(P::kDepth, wxTRANSLATE("The depth must be greater than zero."));
        r.positive(P::kWidth, wxTRANSLATE("The width must be greater than zero."));
        r.positive(P::kWallThickness, wxTRANSLATE("The wall thickness must be greater than zero."));
        r.require(2.0 * r(P::kWallThickness) < std::min(r(P::kDepth), r(P::kWidth)), wxTRANSLATE("The walls leave no hollow."));
        r.require(r(P::kGirth) <= r(P::kDepth) / 2.0, wxTRANSLATE("The girth is longer than half the depth."));
        r.require(r(P::kGirth) == 0.0 || r(P::kGirth) >= r(P::kWallThickness) + r(P::kInternalFilletRadius) * 2.0,
                  wxTRANSLATE("The lips are shorter than their bends."));
        r.require(r(P::kInternalFilletRadius) * 2.0 + r(P::kWallThickness) * 2.0 <= r(P::kWidth),
                  wxTRANSLATE("The fillet radius is larger than the flanges."));
        break;
    case kCraneRailAShapeProfile: railRules(r, true); break;
    case kCraneRailFShapeProfile: railRules(r, false); break;
    case kCircleProfile:
    case kCircleHollowProfile:
        r.positive(P::kRadius, wxTRANSLATE("The radius must be greater than zero."));
        if (shape.type() == kCircleHollowProfile) {
            r.positive(P::kWallThickness, wxTRANSLATE("The wall thickness must be greater than zero."));
            r.require(r(P::kWallThickness) < r(P::kRadius), wxTRANSLATE("The wall is thicker than the radius."));
        }
        break;
    case kEllipseProfile:
        r.positive(P::kSemiAxis1, wxTRANSLATE("The semi-axis a must be greater than zero."));
        r.positive(P::kSemiAxis2, wxTRANSLATE("The semi-axis b must be greater than zero."));
        break;
    case kRectangleProfile:
    case kRectangleHollowProfile:
    case kRoundedRectangleProfile:
        rectangleRules(r, shape.type());
        break;
    case kTrapeziumProfile:
        r.positive(P::kYDim, wxTRANSLATE("The Y dimension must be greater than zero."));
        r.positive(P::kBottomXDim, wxTRANSLATE("The bottom X dimension must be greater than zero."));
        break;
    case kCustomProfile:
        r.require(!static_cast<const CustomProfile&>(profile).geometry().empty(), wxTRANSLATE("The custom profile has no outline."));
        break;
    default:
        break;
    }
    return r.fault();
}

}  // namespace vantlib

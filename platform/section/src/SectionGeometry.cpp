// Outlines of the parametric shapes and the properties of closed loops of lines and arcs.
// Each shape is first a polygon whose corners carry the radius that rounds them; rounding
// turns a corner into two tangent points joined by an arc, so every shape with fillets, edge
// radii or slopes goes through the same few lines.
#include <section/SectionGeometry.h>

#include <algorithm>
#include <cmath>

#include <vantlib/Exception.h>

namespace section {
namespace {

using vantlib::ConsistencyError;
using vantlib::Profile;
using vantlib::ProfileEdge;
using P = vantlib::ShapeParameter;

Vector2d operator+(const Vector2d& a, const Vector2d& b) { return {a.x + b.x, a.y + b.y}; }
Vector2d operator-(const Vector2d& a, const Vector2d& b) { return {a.x - b.x, a.y - b.y}; }
Vector2d operator*(const Vector2d& a, double f) { return {a.x * f, a.y * f}; }
double dot(const Vector2d& a, const Vector2d& b) { return a.x * b.x + a.y * b.y; }
double cross(const Vector2d& a, const Vector2d& b) { return a.x * b.y - a.y * b.x; }
double length(const Vector2d& a) { return std::hypot(a.x, a.y); }

struct Corner {
    Vector2d point;
    double radius = 0.0;
};

// Where the line through `a` along `da` meets the line through `b` along `db`.
Vector2d intersection(const Vector2d& a, const Vector2d& da, const Vector2d& b, const Vector2d& db) {
    const double denominator = cross(da, db);
    if (std::fabs(denominator) < 1e-15)
        throw ConsistencyError(OdString(L"The faces of the section do not meet."));
    return a + da * (cross(b - a, db) / denominator);
}

// The corners of a counter-clockwise polygon with their rounds, as a loop of lines and arcs.
ProfileLoop roundCorners(std::vector<Corner> corners) {
    double size = 0.0;
    for (const Corner& c : corners)
        size = std::max({size, std::fabs(c.point.x), std::fabs(c.point.y)});
    const double eps = 1e-9 * std::max(size, 1e-300);
    // Corners that coincide (a zero-length lip, a triangle drawn as a trapezium) are one corner.
    for (size_t i = 0; i < corners.size() && corners.size() > 2;) {
        Corner& next = corners[(i + 1) % corners.size()];
        if (length(next.point - corners[i].point) <= eps) {
            next.radius = std::max(next.radius, corners[i].radius);
            corners.erase(corners.begin() + long(i));
        } else {
            ++i;
        }
    }
    const size_t n = corners.size();
    std::vector<double> tangent(n, 0.0), bulge(n, 0.0);
    std::vector<Vector2d> toPrevious(n), toNext(n);
    for (size_t i = 0; i < n; ++i) {
        const Vector2d& p = corners[i].point;
        const Vector2d a = corners[(i + n - 1) % n].point - p, b = corners[(i + 1) % n].point - p;
        toPrevious[i] = a * (1.0 / length(a));
        toNext[i] = b * (1.0 / length(b));
        const double r = corners[i].radius;
        const double angle = std::acos(std::clamp(dot(toPrevious[i], toNext[i]), -1.0, 1.0));
        if (r <= 0.0 || angle > M_PI - 1e-9)
            continue;
        tangent[i] = r / std::tan(angle / 2.0);
        const double sweep = M_PI - angle;
        // A left turn of a counter-clockwise polygon is a convex corner, rounded outwards.
        const bool convex = cross(p - corners[(i + n - 1) % n].point, corners[(i + 1) % n].point - p) > 0.0;
        bulge[i] = (convex ? 1.0 : -1.0) * std::tan(sweep / 4.0);
    }
    for (size_t i = 0; i < n; ++i) {
        const size_t j = (i + 1) % n;
        if (tangent[i] + tangent[j] > length(corners[j].point - corners[i].point) + eps)
            throw ConsistencyError(OdString(L"The radii are larger than the faces they round."));
    }
    ProfileLoop loop;
    for (size_t i = 0; i < n; ++i) {
        const Vector2d& p = corners[i].point;
        if (tangent[i] == 0.0) {
            loop.emplace_back(p);
            continue;
        }
        loop.emplace_back(p + toPrevious[i] * tangent[i], bulge[i]);
        const Vector2d end = p + toNext[i] * tangent[i];
        const size_t j = (i + 1) % n;
        const Vector2d nextStart = corners[j].point + toPrevious[j] * tangent[j];
        if (length(nextStart - end) > eps)
            loop.emplace_back(end);
    }
    return loop;
}

ProfileLoop reversed(const ProfileLoop& loop) {
    ProfileLoop result;
    const size_t n = loop.size();
    for (size_t k = 0; k < n; ++k) {
        const size_t i = n - 1 - k;
        result.emplace_back(loop[(i + 1) % n].start, -loop[i].bulge);
    }
    return result;
}

ProfileLoop circle(double radius) { return {ProfileEdge({radius, 0.0}, 1.0), ProfileEdge({-radius, 0.0}, 1.0)}; }

ProfileLoop rectangle(double width, double height, double radius) {
    const double x = width / 2.0, y = height / 2.0;
    return roundCorners({{{-x, -y}, radius}, {{x, -y}, radius}, {{x, y}, radius}, {{-x, y}, radius}});
}

ProfileLoop ellipse(double a, double b) {
    // Fine enough that the area is within a ten-thousandth; corners lie on both axes so the
    // extents are exact.
    constexpr int kCorners = 256;
    ProfileLoop loop;
    for (int i = 0; i < kCorners; ++i) {
        const double t = 2.0 * M_PI * i / kCorners;
        loop.emplace_back(Vector2d(a * std::cos(t), b * std::sin(t)));
    }
    return loop;
}

double optional(const Profile& profile, P id, double fallback) {
    return profile.hasParameter(id) ? profile.parameter(id) : fallback;
}

ProfileLoop iShape(const Profile& p, bool asymmetric) {
    const double h = p.parameter(P::kOverallDepth), tw = p.parameter(P::kWebThickness);
    const double wb = p.parameter(P::kOverallWidth), tb = p.parameter(P::kFlangeThickness);
    const double rb = p.parameter(P::kFilletRadius);
    double wt = wb, tt = tb, rt = rb;
    if (asymmetric) {
        wt = optional(p, P::kTopFlangeWidth, wb);
        tt = optional(p, P::kTopFlangeThickness, tb);
        rt = optional(p, P::kTopFlangeFilletRadius, rb);
    }
    return roundCorners({{{-wb / 2, 0}}, {{wb / 2, 0}}, {{wb / 2, tb}}, {{tw / 2, tb}, rb}, {{tw / 2, h - tt}, rt},
                         {{wt / 2, h - tt}}, {{wt / 2, h}}, {{-wt / 2, h}}, {{-wt / 2, h - tt}},
                         {{-tw / 2, h - tt}, rt}, {{-tw / 2, tb}, rb}, {{-wb / 2, tb}}});
}

ProfileLoop lShape(const Profile& p) {
    const double h = p.parameter(P::kDepth), w = optional(p, P::kWidth, h), t = p.parameter(P::kThickness);
    const double s = p.parameter(P::kLegSlope), r1 = p.parameter(P::kFilletRadius), r2 = p.parameter(P::kEdgeRadius);
    // Sloped legs keep their thickness at the toes and thicken towards the heel.
    const Vector2d inner = intersection({w, t}, {-std::cos(s), std::sin(s)}, {t, h}, {std::sin(s), -std::cos(s)});
    return roundCorners({{{0, 0}}, {{w, 0}}, {{w, t}, r2}, {inner, r1}, {{t, h}, r2}, {{0, h}}});
}

ProfileLoop uShape(const Profile& p) {
    const double h = p.parameter(P::kDepth), b = p.parameter(P::kFlangeWidth), tw = p.parameter(P::kWebThickness);
    const double tf = p.parameter(P::kFlangeThickness), s = p.parameter(P::kFlangeSlope);
    const double r1 = p.parameter(P::kFilletRadius), r2 = p.parameter(P::kEdgeRadius);
    // A sloped flange has its thickness halfway across the flange width (as the tables give it).
    const double middle = b / 2.0;
    const double toe = tf - (b - middle) * std::tan(s), root = tf + (middle - tw) * std::tan(s);
    if (toe <= 0.0 || 2.0 * root >= h)
        throw ConsistencyError(OdString(L"The flange slope makes the flanges too thin or too thick."));
    return roundCorners({{{0, 0}}, {{b, 0}}, {{b, toe}, r2}, {{tw, root}, r1}, {{tw, h - root}, r1},
                         {{b, h - toe}, r2}, {{b, h}}, {{0, h}}});
}

ProfileLoop cShape(const Profile& p) {
    const double h = p.parameter(P::kDepth), w = p.parameter(P::kWidth), t = p.parameter(P::kWallThickness);
    const double g = p.parameter(P::kGirth), r = p.parameter(P::kInternalFilletRadius), ro = r > 0.0 ? r + t : 0.0;
    if (g <= t)
        return roundCorners({{{0, 0}, ro}, {{w, 0}}, {{w, t}}, {{t, t}, r}, {{t, h - t}, r}, {{w, h - t}}, {{w, h}},
                             {{0, h}, ro}});
    return roundCorners({{{0, 0}, ro}, {{w, 0}, ro}, {{w, g}}, {{w - t, g}}, {{w - t, t}, r}, {{t, t}, r},
                         {{t, h - t}, r}, {{w - t, h - t}, r}, {{w - t, h - g}}, {{w, h - g}}, {{w, h}, ro},
                         {{0, h}, ro}});
}

ProfileLoop zShape(const Profile& p) {
    const double h = p.parameter(P::kDepth), b = p.parameter(P::kFlangeWidth), tw = p.parameter(P::kWebThickness);
    const double tf = p.parameter(P::kFlangeThickness);
    const double edge = p.parameter(P::kEdgeRadius), fillet = p.parameter(P::kFilletRadius);
    const double x = tw / 2.0, toe = b - tw / 2.0;
    return roundCorners({{{-x, 0}}, {{toe, 0}}, {{toe, tf}, edge}, {{x, tf}, fillet}, {{x, h}}, {{-toe, h}},
                         {{-toe, h - tf}, edge}, {{-x, h - tf}, fillet}});
}

ProfileLoop tShape(const Profile& p) {
    const double h = p.parameter(P::kDepth), b = p.parameter(P::kFlangeWidth), tw = p.parameter(P::kWebThickness);
    const double tf = p.parameter(P::kFlangeThickness);
    const double s1 = p.parameter(P::kWebSlope), s2 = p.parameter(P::kFlangeSlope);
    const double r1 = p.parameter(P::kFilletRadius), r2 = p.parameter(P::kFlangeEdgeRadius);
    const double r3 = p.parameter(P::kWebEdgeRadius);
    // The web has its thickness halfway down, the flange halfway along its outstand.
    const double webMiddle = (h - tf) / 2.0, flangeMiddle = (b / 2.0 + tw / 2.0) / 2.0;
    const double webToe = tw / 2.0 - webMiddle * std::tan(s1);
    const double flangeToe = h - tf + (b / 2.0 - flangeMiddle) * std::tan(s2);
    if (webToe <= 0.0 || flangeToe >= h)
        throw ConsistencyError(OdString(L"The slopes make the web or the flange too thin."));
    const Vector2d root = intersection({tw / 2.0, webMiddle}, {std::sin(s1), std::cos(s1)},
                                       {flangeMiddle, h - tf}, {std::cos(s2), std::sin(s2)});
    return roundCorners({{{-webToe, 0}, r3}, {{webToe, 0}, r3}, {root, r1}, {{b / 2, flangeToe}, r2}, {{b / 2, h}},
                         {{-b / 2, h}}, {{-b / 2, flangeToe}, r2}, {{-root.x, root.y}, r1}});
}

// Rails: a base, a web and a head, symmetric about the web. The base's top slopes from its
// edge (base depth 1) over a step (base depth 3, base width 4; the edge itself for the F rail)
// to the web (base depth 2); the head widens from the web likewise; its top corners are rounded.
ProfileLoop rail(const Profile& p, bool aShape) {
    const double h = p.parameter(P::kOverallHeight), head = p.parameter(P::kHeadWidth);
    const double t = p.parameter(P::kWebThickness), r = p.parameter(P::kRadius);
    const double hd2 = p.parameter(P::kHeadDepth2), hd3 = p.parameter(P::kHeadDepth3);
    const double bd1 = p.parameter(P::kBaseDepth1), bd2 = p.parameter(P::kBaseDepth2);
    const double base = aShape ? p.parameter(P::kBaseWidth2) : head;
    const double step = aShape ? p.parameter(P::kBaseWidth4) : base;
    const double stepDepth = aShape ? p.parameter(P::kBaseDepth3) : bd1;
    std::vector<Corner> right{{{base / 2, 0}},         {{base / 2, bd1}},       {{step / 2, stepDepth}},
                              {{t / 2, bd2}},          {{t / 2, h - hd2}},      {{head / 2, h - hd3}},
                              {{head / 2, h}, r}};
    // Counter-clockwise: bottom left, along the right side upwards, back down the left side.
    std::vector<Corner> loop{{{-base / 2, 0}}};
    loop.insert(loop.end(), right.begin(), right.end());
    for (auto it = right.rbegin(); it != right.rend() - 1; ++it)
        loop.push_back({{-it->point.x, it->point.y}, it->radius});
    return roundCorners(loop);
}

ProfileLoop trapezium(const Profile& p) {
    const double h = p.parameter(P::kYDim), bottom = p.parameter(P::kBottomXDim), top = p.parameter(P::kTopXDim);
    const double offset = p.parameter(P::kTopXOffset);
    return roundCorners({{{0, 0}}, {{bottom, 0}}, {{offset + top, h}}, {{offset, h}}});
}

void translate(ProfileLoop& loop, const Vector2d& by) {
    for (ProfileEdge& edge : loop)
        edge.start = edge.start + by;
}

struct ArcParts {
    Vector2d centre;
    double radius = 0.0;
    double sweep = 0.0;  // signed, counter-clockwise positive
};

ArcParts arcOf(const Vector2d& a, const Vector2d& b, double bulge) {
    ArcParts arc;
    arc.sweep = 4.0 * std::atan(bulge);
    const double chord = length(b - a);
    arc.radius = chord / (2.0 * std::fabs(std::sin(arc.sweep / 2.0)));
    const Vector2d direction = (b - a) * (1.0 / chord);
    const Vector2d right(direction.y, -direction.x);
    // For a counter-clockwise arc the arc bulges to the right of the chord and the centre lies
    // at the sagitta's far end.
    const double sign = bulge > 0 ? 1.0 : -1.0;
    const Vector2d middle = (a + b) * 0.5 + right * (bulge * chord / 2.0);
    arc.centre = middle - right * (sign * arc.radius);
    return arc;
}

struct LoopMoments {
    double area = 0.0;
    Vector2d moment;  // first moments of area
};

LoopMoments moments(const ProfileLoop& loop) {
    LoopMoments m;
    for (size_t i = 0; i < loop.size(); ++i) {
        const Vector2d& a = loop[i].start;
        const Vector2d& b = loop[(i + 1) % loop.size()].start;
        const double c = cross(a, b);
        m.area += c / 2.0;
        m.moment = m.moment + (a + b) * (c / 6.0);
        if (loop[i].bulge == 0.0)
            continue;
        const ArcParts arc = arcOf(a, b, loop[i].bulge);
        const double theta = std::fabs(arc.sweep);
        const double segment = arc.radius * arc.radius / 2.0 * (theta - std::sin(theta));
        const double fromCentre = 4.0 * arc.radius * std::pow(std::sin(theta / 2.0), 3) / (3.0 * (theta - std::sin(theta)));
        const Vector2d middle = (a + b) * 0.5 + Vector2d((b - a).y, -(b - a).x) * (loop[i].bulge / 2.0);
        const Vector2d outwards = (middle - arc.centre) * (1.0 / length(middle - arc.centre));
        const double signedSegment = loop[i].bulge > 0 ? segment : -segment;
        m.area += signedSegment;
        m.moment = m.moment + (arc.centre + outwards * fromCentre) * signedSegment;
    }
    return m;
}

bool angleWithin(double angle, double start, double sweep) {
    double relative = sweep > 0 ? angle - start : start - angle;
    relative = std::fmod(relative, 2.0 * M_PI);
    if (relative < 0)
        relative += 2.0 * M_PI;
    return relative <= std::fabs(sweep);
}

}  // namespace

double loopArea(const ProfileLoop& loop) { return moments(loop).area; }

Extents loopExtents(const ProfileLoop& loop) {
    Extents e{{HUGE_VAL, HUGE_VAL}, {-HUGE_VAL, -HUGE_VAL}};
    auto add = [&e](const Vector2d& p) {
        e.min = {std::min(e.min.x, p.x), std::min(e.min.y, p.y)};
        e.max = {std::max(e.max.x, p.x), std::max(e.max.y, p.y)};
    };
    for (size_t i = 0; i < loop.size(); ++i) {
        const Vector2d& a = loop[i].start;
        add(a);
        if (loop[i].bulge == 0.0)
            continue;
        const ArcParts arc = arcOf(a, loop[(i + 1) % loop.size()].start, loop[i].bulge);
        const double start = std::atan2(a.y - arc.centre.y, a.x - arc.centre.x);
        for (int quarter = 0; quarter < 4; ++quarter) {
            const double angle = quarter * M_PI / 2.0;
            if (angleWithin(angle, start, arc.sweep))
                add(arc.centre + Vector2d(std::cos(angle), std::sin(angle)) * arc.radius);
        }
    }
    return e;
}

SectionProperties properties(const ProfileGeometry& geometry) {
    SectionProperties result;
    if (geometry.outer.empty())
        return result;
    LoopMoments outer = moments(geometry.outer);
    const double sense = outer.area < 0 ? -1.0 : 1.0;
    result.grossArea = outer.area * sense;
    double area = result.grossArea;
    Vector2d moment = outer.moment * sense;
    for (const ProfileLoop& hole : geometry.holes) {
        const LoopMoments m = moments(hole);
        const double holeSense = m.area < 0 ? -1.0 : 1.0;
        area -= m.area * holeSense;
        moment = moment - m.moment * holeSense;
    }
    result.area = area;
    result.extents = loopExtents(geometry.outer);
    if (area > 0)
        result.centroid = moment * (1.0 / area);
    return result;
}

ProfileGeometry outline(const Profile& profile) {
    const OdString fault = vantlib::shapeFault(profile);
    if (!fault.isEmpty())
        throw ConsistencyError(fault);
    ProfileGeometry g;
    switch (profile.isA().type()) {
    case vantlib::kIShapeProfile: g.outer = iShape(profile, false); break;
    case vantlib::kAsymmetricIShapeProfile: g.outer = iShape(profile, true); break;
    case vantlib::kLShapeProfile: g.outer = lShape(profile); break;
    case vantlib::kUShapeProfile: g.outer = uShape(profile); break;
    case vantlib::kCShapeProfile: g.outer = cShape(profile); break;
    case vantlib::kZShapeProfile: g.outer = zShape(profile); break;
    case vantlib::kTShapeProfile: g.outer = tShape(profile); break;
    case vantlib::kCraneRailAShapeProfile: g.outer = rail(profile, true); break;
    case vantlib::kCraneRailFShapeProfile: g.outer = rail(profile, false); break;
    case vantlib::kCircleProfile: g.outer = circle(profile.parameter(P::kRadius)); break;
    case vantlib::kCircleHollowProfile:
        g.outer = circle(profile.parameter(P::kRadius));
        g.holes.push_back(reversed(circle(profile.parameter(P::kRadius) - profile.parameter(P::kWallThickness))));
        break;
    case vantlib::kEllipseProfile:
        g.outer = ellipse(profile.parameter(P::kSemiAxis1), profile.parameter(P::kSemiAxis2));
        break;
    case vantlib::kRectangleProfile:
        g.outer = rectangle(profile.parameter(P::kXDim), profile.parameter(P::kYDim), 0.0);
        break;
    case vantlib::kRoundedRectangleProfile:
        g.outer = rectangle(profile.parameter(P::kXDim), profile.parameter(P::kYDim),
                            profile.parameter(P::kRoundingRadius));
        break;
    case vantlib::kRectangleHollowProfile: {
        const double x = profile.parameter(P::kXDim), y = profile.parameter(P::kYDim);
        const double t = profile.parameter(P::kWallThickness);
        g.outer = rectangle(x, y, profile.parameter(P::kOuterFilletRadius));
        g.holes.push_back(reversed(rectangle(x - 2 * t, y - 2 * t, profile.parameter(P::kInnerFilletRadius))));
        break;
    }
    case vantlib::kTrapeziumProfile: g.outer = trapezium(profile); break;
    case vantlib::kCustomProfile: g = static_cast<const vantlib::CustomProfile&>(profile).geometry(); break;
    default: throw ConsistencyError(OdString(L"The profile has no known shape."));
    }
    const Extents e = loopExtents(g.outer);
    const Vector2d toCentre = (e.min + e.max) * -0.5;
    translate(g.outer, toCentre);
    for (ProfileLoop& hole : g.holes)
        translate(hole, toCentre);
    return g;
}

OdString sectionFault(const Profile& profile) {
    try {
        const SectionProperties p = properties(outline(profile));
        if (!(p.area > 0.0))
            return OdString(L"The outline encloses no area.");
        return OdString();
    } catch (const ConsistencyError& error) {
        return error.message();
    }
}

SectionProperties properties(const Profile& profile) { return properties(outline(profile)); }

bool sameSection(const Profile& a, const Profile& b, double scale, double tolerance) {
    if (a.isA().type() != b.isA().type())
        return false;
    const SectionProperties pa = properties(a);
    const double size = std::max(pa.extents.width(), pa.extents.height());
    const double allowed = tolerance * size;
    if (a.isA().type() != vantlib::kCustomProfile) {
        for (const vantlib::ShapeParameterInfo& info : a.isA().parameters()) {
            if (info.id == P::kCentreOfGravityInX || info.id == P::kCentreOfGravityInY)
                continue;
            const bool slope = info.id == P::kLegSlope || info.id == P::kFlangeSlope || info.id == P::kWebSlope;
            const double difference = std::fabs(a.parameter(info.id) - b.parameter(info.id) * (slope ? 1.0 : scale));
            if (difference > (slope ? tolerance : allowed))
                return false;
        }
        return true;
    }
    const SectionProperties pb = properties(b);
    auto near = [allowed, scale](const Vector2d& p, const Vector2d& q) {
        return std::fabs(p.x - q.x * scale) <= allowed && std::fabs(p.y - q.y * scale) <= allowed;
    };
    return std::fabs(pa.area - pb.area * scale * scale) <= allowed * size && near(pa.extents.min, pb.extents.min) &&
           near(pa.extents.max, pb.extents.max) && near(pa.centroid, pb.centroid);
}

namespace {

template <class Map>
ProfileGeometry transformed(const ProfileGeometry& geometry, Map map, bool flipsSense) {
    auto apply = [&](const ProfileLoop& loop) {
        ProfileLoop result;
        for (const ProfileEdge& edge : loop)
            result.emplace_back(map(edge.start), flipsSense ? -edge.bulge : edge.bulge);
        return flipsSense ? reversed(result) : result;
    };
    ProfileGeometry result;
    result.outer = apply(geometry.outer);
    for (const ProfileLoop& hole : geometry.holes)
        result.holes.push_back(apply(hole));
    return result;
}

}  // namespace

ProfileGeometry turned(const ProfileGeometry& geometry, bool left) {
    if (left)
        return transformed(geometry, [](const Vector2d& p) { return Vector2d(-p.y, p.x); }, false);
    return transformed(geometry, [](const Vector2d& p) { return Vector2d(p.y, -p.x); }, false);
}

ProfileGeometry mirrored(const ProfileGeometry& geometry, bool horizontal) {
    if (horizontal)
        return transformed(geometry, [](const Vector2d& p) { return Vector2d(-p.x, p.y); }, true);
    return transformed(geometry, [](const Vector2d& p) { return Vector2d(p.x, -p.y); }, true);
}

}  // namespace section

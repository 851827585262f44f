#include "DrawingOutlines.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <OdDbCircle.h>
#include <OdDbPolyline.h>
#include <section/SectionGeometry.h>
#include <vantlib/Exception.h>

namespace outlines {

namespace {

double cross(const OdGePoint2d& o, const OdGePoint2d& a, const OdGePoint2d& b) {
    return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}

// Proper crossing of two segments; touching end points do not count, so neighbouring pieces
// of an outline never report one.
bool segmentsCross(const OdGePoint2d& a, const OdGePoint2d& b, const OdGePoint2d& c, const OdGePoint2d& d) {
    const double d1 = cross(c, d, a), d2 = cross(c, d, b), d3 = cross(a, b, c), d4 = cross(a, b, d);
    return ((d1 > 0 && d2 < 0) || (d1 < 0 && d2 > 0)) && ((d3 > 0 && d4 < 0) || (d3 < 0 && d4 > 0));
}

bool crossesItself(const std::vector<OdGePoint2d>& points) {
    const size_t n = points.size();
    for (size_t i = 0; i < n; ++i)
        for (size_t j = i + 2; j < n; ++j) {
            if (i == 0 && j == n - 1)
                continue;  // the closing piece meets the first one
            if (segmentsCross(points[i], points[(i + 1) % n], points[j], points[(j + 1) % n]))
                return true;
        }
    return false;
}

double segmentDistance(const OdGePoint2d& p, const OdGePoint2d& a, const OdGePoint2d& b) {
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double length2 = dx * dx + dy * dy;
    double t = length2 > 0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy) / length2 : 0.0;
    t = std::clamp(t, 0.0, 1.0);
    return std::hypot(p.x - (a.x + t * dx), p.y - (a.y + t * dy));
}

bool encloses(const std::vector<OdGePoint2d>& polygon, const OdGePoint2d& p) {
    bool inside = false;
    for (size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
        const OdGePoint2d& a = polygon[i];
        const OdGePoint2d& b = polygon[j];
        if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x)
            inside = !inside;
    }
    return inside;
}

vantlib::ProfileLoop reversed(const vantlib::ProfileLoop& loop) {
    vantlib::ProfileLoop result;
    const size_t n = loop.size();
    for (size_t k = 0; k < n; ++k)
        result.emplace_back(loop[(n - k) % n].start, -loop[(n - k - 1) % n].bulge);
    return result;
}

// Corners of a polyline without repeated points; a closing corner equal to the first goes.
vantlib::ProfileLoop polylineLoop(const OdDbPolyline& polyline, bool& closed) {
    vantlib::ProfileLoop loop;
    for (unsigned i = 0; i < polyline.numVerts(); ++i) {
        const OdGePoint2d p = polyline.getPointAt(i);
        const vantlib::Vector2d corner(p.x, p.y);
        if (!loop.empty() && loop.back().start == corner)
            loop.back().bulge = polyline.getBulgeAt(i);
        else
            loop.emplace_back(corner, polyline.getBulgeAt(i));
    }
    closed = polyline.isClosed();
    // An open polyline that ends where it starts is closed all the same.
    if (loop.size() > 2 && loop.back().start == loop.front().start) {
        loop.pop_back();
        closed = true;
    }
    return loop;
}

}  // namespace

void Bounds::add(const OdGePoint2d& point) {
    if (empty) {
        min = max = point;
        empty = false;
        return;
    }
    min.x = std::min(min.x, point.x);
    min.y = std::min(min.y, point.y);
    max.x = std::max(max.x, point.x);
    max.y = std::max(max.y, point.y);
}

bool Bounds::contains(const Bounds& other) const {
    return !empty && !other.empty && other.min.x >= min.x && other.min.y >= min.y && other.max.x <= max.x &&
           other.max.y <= max.y;
}

DrawnOutline drawnOutline(const OdSmartPtr<OdDbEntity>& entity) {
    DrawnOutline result;
    if (OdSmartPtr<OdDbCircle> circle = OdDbCircle::cast(entity.get())) {
        result.entity = entity;
        result.points = circle->samplePoints();
        result.closed = true;
        const OdGePoint2d c = circle->center();
        const double r = circle->radius();
        result.loop = {vantlib::ProfileEdge(vantlib::Vector2d(c.x + r, c.y), 1.0),
                       vantlib::ProfileEdge(vantlib::Vector2d(c.x - r, c.y), 1.0)};
    } else if (OdSmartPtr<OdDbPolyline> polyline = OdDbPolyline::cast(entity.get())) {
        result.entity = entity;
        result.points = polyline->samplePoints();
        result.loop = polylineLoop(*polyline, result.closed);
        if (result.closed && polyline->numVerts() > 0 && !polyline->isClosed())
            result.points.pop_back();
    } else {
        return result;
    }
    if (!result.closed) {
        result.fault = OutlineFault::kOpen;
    } else if (!vantlib::loopFault(result.loop).isEmpty()) {
        result.fault = OutlineFault::kEnclosesNothing;
    } else if (crossesItself(result.points)) {
        result.fault = OutlineFault::kCrossesItself;
    } else {
        const double signedArea = section::loopArea(result.loop);
        if (!(std::fabs(signedArea) > 0.0))
            result.fault = OutlineFault::kEnclosesNothing;
        else if (signedArea < 0)
            result.loop = reversed(result.loop);
        result.area = std::fabs(signedArea);
    }
    if (result.fault != OutlineFault::kNone) {
        result.loop.clear();
        result.area = 0.0;
    }
    for (const OdGePoint2d& p : result.points)
        result.bounds.add(p);
    return result;
}

std::vector<DrawnOutline> drawnOutlines(OdDbDatabase& db) {
    std::vector<DrawnOutline> result;
    for (const OdDbObjectId& id : db.entityIds()) {
        DrawnOutline outline = drawnOutline(OdDbEntity::cast(id.openObject().get()));
        if (outline.entity)
            result.push_back(std::move(outline));
    }
    return result;
}

Bounds boundsOf(const std::vector<DrawnOutline>& outlines) {
    Bounds bounds;
    for (const DrawnOutline& outline : outlines)
        if (!outline.bounds.empty) {
            bounds.add(outline.bounds.min);
            bounds.add(outline.bounds.max);
        }
    return bounds;
}

int outlineAt(const std::vector<DrawnOutline>& outlines, const OdGePoint2d& point, double tolerance) {
    int nearest = -1;
    double nearestDistance = tolerance;
    for (size_t i = 0; i < outlines.size(); ++i) {
        const Bounds& b = outlines[i].bounds;
        if (b.empty || point.x < b.min.x - tolerance || point.x > b.max.x + tolerance || point.y < b.min.y - tolerance ||
            point.y > b.max.y + tolerance)
            continue;
        const std::vector<OdGePoint2d>& p = outlines[i].points;
        const size_t pieces = outlines[i].closed ? p.size() : p.size() - 1;
        for (size_t k = 0; k < pieces && p.size() > 1; ++k) {
            const double distance = segmentDistance(point, p[k], p[(k + 1) % p.size()]);
            if (distance <= nearestDistance) {
                nearestDistance = distance;
                nearest = static_cast<int>(i);
            }
        }
    }
    if (nearest != -1)
        return nearest;
    double smallest = std::numeric_limits<double>::infinity();
    for (size_t i = 0; i < outlines.size(); ++i)
        if (outlines[i].fault == OutlineFault::kNone && outlines[i].area < smallest &&
            point.x >= outlines[i].bounds.min.x && point.x <= outlines[i].bounds.max.x &&
            point.y >= outlines[i].bounds.min.y && point.y <= outlines[i].bounds.max.y &&
            encloses(outlines[i].points, point)) {
            smallest = outlines[i].area;
            nearest = static_cast<int>(i);
        }
    return nearest;
}

bool liesInside(const DrawnOutline& inner, const DrawnOutline& outer) {
    if (&inner == &outer || outer.fault != OutlineFault::kNone || inner.points.empty() || inner.area >= outer.area ||
        !outer.bounds.contains(inner.bounds))
        return false;
    for (const OdGePoint2d& p : inner.points)
        if (!encloses(outer.points, p))
            return false;
    return true;
}

std::vector<int> holesOf(const std::vector<DrawnOutline>& outlines, int outer) {
    std::vector<int> inside;
    if (outer < 0 || outer >= static_cast<int>(outlines.size()))
        return inside;
    for (size_t i = 0; i < outlines.size(); ++i)
        if (outlines[i].fault == OutlineFault::kNone && liesInside(outlines[i], outlines[outer]))
            inside.push_back(static_cast<int>(i));
    std::vector<int> holes;
    for (int candidate : inside) {
        const bool surrounded = std::any_of(inside.begin(), inside.end(), [&](int other) {
            return other != candidate && liesInside(outlines[candidate], outlines[other]);
        });
        if (!surrounded)
            holes.push_back(candidate);
    }
    return holes;
}

vantlib::ProfileGeometry profileGeometry(const OdArray<OdSmartPtr<OdDbEntity>>& picked, double scale) {
    std::vector<DrawnOutline> loops;
    for (unsigned i = 0; i < picked.size(); ++i) {
        DrawnOutline outline = drawnOutline(picked[i]);
        if (!outline.entity)
            throw vantlib::ConsistencyError(
                OdString::formatted(L"Picked entity %u is neither a polyline nor a circle.", i + 1));
        switch (outline.fault) {
        case OutlineFault::kOpen:
            throw vantlib::ConsistencyError(OdString::formatted(
                L"Picked outline %u is open: only a closed polyline or a circle bounds a section.", i + 1));
        case OutlineFault::kCrossesItself:
            throw vantlib::ConsistencyError(OdString::formatted(L"Picked outline %u crosses itself.", i + 1));
        case OutlineFault::kEnclosesNothing:
            throw vantlib::ConsistencyError(OdString::formatted(L"Picked outline %u encloses no area.", i + 1));
        case OutlineFault::kNone: break;
        }
        loops.push_back(std::move(outline));
    }
    if (loops.empty())
        throw vantlib::ConsistencyError(OdString(L"No outline was picked."));
    const auto outer = std::max_element(loops.begin(), loops.end(),
                                        [](const DrawnOutline& a, const DrawnOutline& b) { return a.area < b.area; });
    for (size_t i = 0; i < loops.size(); ++i)
        if (&loops[i] != &*outer && !liesInside(loops[i], *outer))
            throw vantlib::ConsistencyError(
                OdString::formatted(L"Picked outline %u lies outside the outer outline.", unsigned(i + 1)));

    const section::Extents extents = section::loopExtents(outer->loop);
    const vantlib::Vector2d centre((extents.min.x + extents.max.x) / 2, (extents.min.y + extents.max.y) / 2);
    auto placed = [&](const vantlib::ProfileLoop& loop) {
        vantlib::ProfileLoop result;
        for (const vantlib::ProfileEdge& edge : loop)
            result.emplace_back(vantlib::Vector2d((edge.start.x - centre.x) * scale, (edge.start.y - centre.y) * scale),
                                edge.bulge);
        return result;
    };
    vantlib::ProfileGeometry geometry;
    geometry.outer = placed(outer->loop);
    for (const DrawnOutline& loop : loops)
        if (&loop != &*outer)
            geometry.holes.push_back(placed(reversed(loop.loop)));
    return geometry;
}

OdArray<OdSmartPtr<OdDbEntity>> outlineEntities(const vantlib::ProfileGeometry& geometry) {
    OdArray<OdSmartPtr<OdDbEntity>> result;
    if (geometry.empty())
        return result;
    std::vector<const vantlib::ProfileLoop*> loops{&geometry.outer};
    for (const vantlib::ProfileLoop& hole : geometry.holes)
        loops.push_back(&hole);
    for (const vantlib::ProfileLoop* loop : loops) {
        OdSmartPtr<OdDbPolyline> polyline = OdDbPolyline::createObject();
        for (const vantlib::ProfileEdge& edge : *loop)
            polyline->addVertexAt(polyline->numVerts(), OdGePoint2d(edge.start.x, edge.start.y), edge.bulge);
        polyline->setClosed(true);
        result.append(OdSmartPtr<OdDbEntity>(polyline.get()));
    }
    return result;
}

}  // namespace outlines

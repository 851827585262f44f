#pragma once
// The drawing's planar outlines (polylines and circles) as the studio shows them for picking a
// custom profile: their points, which one a click picks, which outlines lie inside which, and
// the profile geometry that a picked outline and its holes make. No widgets.
#include <vector>

#include <OdArray.h>
#include <OdDbDatabase.h>
#include <OdDbEntity.h>
#include <OdGePoint2d.h>
#include <OdSmartPtr.h>

#include <vantlib/Profile.h>

namespace outlines {

// Why an outline cannot bound a section.
enum class OutlineFault { kNone, kOpen, kCrossesItself, kEnclosesNothing };

struct Bounds {
    OdGePoint2d min;
    OdGePoint2d max;
    bool empty = true;
    void add(const OdGePoint2d& point);
    bool contains(const Bounds& other) const;
};

struct DrawnOutline {
    OdSmartPtr<OdDbEntity> entity;
    // The outline as straight pieces; a closed one does not repeat its first point.
    std::vector<OdGePoint2d> points;
    bool closed = false;
    // The outline as a loop of lines and arcs, counter-clockwise; empty when it has a fault.
    vantlib::ProfileLoop loop;
    double area = 0.0;  // enclosed area; 0 with a fault
    OutlineFault fault = OutlineFault::kNone;
    Bounds bounds;  // of the points
};

// The outline of a polyline or circle; null entity for any other entity.
DrawnOutline drawnOutline(const OdSmartPtr<OdDbEntity>& entity);
// Every polyline and circle of the drawing, in drawing order.
std::vector<DrawnOutline> drawnOutlines(OdDbDatabase& db);
Bounds boundsOf(const std::vector<DrawnOutline>& outlines);

// The outline a click at `point` picks: the one whose line passes within `tolerance` of it
// (the nearest), otherwise the smallest closed outline around it; -1 for none.
int outlineAt(const std::vector<DrawnOutline>& outlines, const OdGePoint2d& point, double tolerance);
// Whether closed outline `inner` lies inside closed outline `outer`.
bool liesInside(const DrawnOutline& inner, const DrawnOutline& outer);
// The holes of a picked outline: the closed outlines inside it that no other outline inside
// it surrounds (an island inside a hole is no hole of the outer outline).
std::vector<int> holesOf(const std::vector<DrawnOutline>& outlines, int outer);

// The geometry of a custom profile from picked outlines: the largest is the outer loop
// (counter-clockwise), the others its holes (clockwise). Lengths are multiplied by `scale`
// (drawing unit to the profile's unit) and the centre of the extents moves to the origin.
// Throws vantlib::ConsistencyError naming the first outline that is open, crosses itself,
// encloses nothing or lies outside the outer one.
vantlib::ProfileGeometry profileGeometry(const OdArray<OdSmartPtr<OdDbEntity>>& picked, double scale);

// A geometry as drawing outlines: one closed polyline per loop, the outer loop first.
OdArray<OdSmartPtr<OdDbEntity>> outlineEntities(const vantlib::ProfileGeometry& geometry);

}  // namespace outlines

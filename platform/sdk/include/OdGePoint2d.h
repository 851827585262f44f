#pragma once
// Points of the drawing plane and the arc segments of polylines, which store an arc as the
// "bulge" of its chord: the tangent of a quarter of its sweep angle, positive counter-clockwise.
#include <vector>

struct OdGePoint2d {
    double x = 0.0;
    double y = 0.0;

    OdGePoint2d() = default;
    OdGePoint2d(double xValue, double yValue) : x(xValue), y(yValue) {}
    friend bool operator==(const OdGePoint2d& a, const OdGePoint2d& b) { return a.x == b.x && a.y == b.y; }
    friend bool operator!=(const OdGePoint2d& a, const OdGePoint2d& b) { return !(a == b); }
    double distanceTo(const OdGePoint2d& other) const;
};

// The default angle step of the straight pieces that stand for an arc (5 degrees).
constexpr double kOdGeArcStep = 0.0872664625997165;

// Appends the points that follow `start` on the segment to `end`: only `end` for a straight
// segment (bulge 0), otherwise points on the arc no more than `maxStep` radians apart, `end`
// last.
void odgeAppendSegmentPoints(std::vector<OdGePoint2d>& points, const OdGePoint2d& start, const OdGePoint2d& end,
                             double bulge, double maxStep = kOdGeArcStep);

#include "OdGePoint2d.h"

#include <algorithm>
#include <cmath>

double OdGePoint2d::distanceTo(const OdGePoint2d& other) const { return std::hypot(other.x - x, other.y - y); }

void odgeAppendSegmentPoints(std::vector<OdGePoint2d>& points, const OdGePoint2d& start, const OdGePoint2d& end,
                             double bulge, double maxStep) {
    const double chord = start.distanceTo(end);
    if (bulge == 0.0 || chord == 0.0) {
        points.push_back(end);
        return;
    }
    const double sweep = 4.0 * std::atan(bulge);
    const double radius = chord / (2.0 * std::sin(std::fabs(sweep) / 2.0));
    // The centre lies on the chord's perpendicular bisector, to the left of a counter-clockwise
    // chord; beyond half a turn the distance below turns negative and puts it on the right.
    const double mx = (start.x + end.x) / 2.0, my = (start.y + end.y) / 2.0;
    const double ux = (end.x - start.x) / chord, uy = (end.y - start.y) / chord;
    const double sagitta = bulge * chord / 2.0;
    const double toCentre = radius - std::fabs(sagitta);
    const double side = bulge > 0 ? 1.0 : -1.0;
    const double cx = mx - uy * toCentre * side;
    const double cy = my + ux * toCentre * side;
    const double startAngle = std::atan2(start.y - cy, start.x - cx);
    const int steps = std::max(1, static_cast<int>(std::ceil(std::fabs(sweep) / std::max(maxStep, 1e-3))));
    for (int i = 1; i < steps; ++i) {
        const double angle = startAngle + sweep * i / steps;
        points.emplace_back(cx + radius * std::cos(angle), cy + radius * std::sin(angle));
    }
    points.push_back(end);
}

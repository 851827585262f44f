#include "app/profiles/AxisOffset.h"

#include <cmath>

namespace vl_app {

namespace {
constexpr double kTolerance = 1e-6;
bool near(double a, double b) { return std::fabs(a - b) < kTolerance; }
}  // namespace

const std::array<AxisPointInfo, 9>& axisPoints() {
    static const std::array<AxisPointInfo, 9> points{{
        {AxisPoint::kTopLeft, "RADIOBTN_TOP_LEFT", -0.5, 0.5},
        {AxisPoint::kTopMiddle, "RADIOBTN_TOP_MIDDLE", 0.0, 0.5},
        {AxisPoint::kTopRight, "RADIOBTN_TOP_RIGHT", 0.5, 0.5},
        {AxisPoint::kMiddleLeft, "RADIOBTN_MIDDLE_LEFT", -0.5, 0.0},
        {AxisPoint::kCenter, "RADIOBTN_CENTER", 0.0, 0.0},
        {AxisPoint::kMiddleRight, "RADIOBTN_MIDDLE_RIGHT", 0.5, 0.0},
        {AxisPoint::kBottomLeft, "RADIOBTN_BOTTOM_LEFT", -0.5, -0.5},
        {AxisPoint::kBottomMiddle, "RADIOBTN_BOTTOM_MIDDLE", 0.0, -0.5},
        {AxisPoint::kBottomRight, "RADIOBTN_BOTTOM_RIGHT", 0.5, -0.5},
    }};
    return points;
}

vantlib::Vector2d axisPointPosition(AxisPoint point, double width, double height) {
    if (point == AxisPoint::kNone)
        return vantlib::Vector2d();
    const AxisPointInfo& info = axisPoints()[static_cast<size_t>(point)];
    return vantlib::Vector2d(info.column * width, info.row * height);
}

AxisPoint matchAxisPoint(const vantlib::Vector2d& offset, double width, double height) {
    const double halfWidth = width * 0.5, halfHeight = height * 0.5;
    // Columns first, then the rows top, middle, bottom.
    for (const double column : {-1.0, 0.0, 1.0}) {
        if (!near(offset.x, column * halfWidth))
            continue;
        for (const double row : {1.0, 0.0, -1.0})
            if (near(offset.y, row * halfHeight))
                return static_cast<AxisPoint>(int(1.0 - row) * 3 + int(column + 1.0));
        return AxisPoint::kNone;
    }
    return AxisPoint::kNone;
}

AxisPlacement splitOffset(const vantlib::Vector2d& offset, double width, double height) {
    AxisPlacement placement;
    placement.point = matchAxisPoint(offset, width, height);
    if (placement.point == AxisPoint::kNone)
        placement.extra = offset;
    return placement;
}

vantlib::Vector2d composeOffset(const AxisPlacement& placement, double width, double height) {
    const vantlib::Vector2d at = axisPointPosition(placement.point, width, height);
    return vantlib::Vector2d(at.x + placement.extra.x, at.y + placement.extra.y);
}

}  // namespace vl_app

#pragma once
// Where a profile's axis lies in its section: one of nine points of the section's extents
// (centre at the origin) plus an extra shift. No widgets.
#include <array>

#include <vantlib/Profile.h>

namespace vl_app {

enum class AxisPoint { kNone = -1, kTopLeft, kTopMiddle, kTopRight, kMiddleLeft, kCenter, kMiddleRight,
                       kBottomLeft, kBottomMiddle, kBottomRight };

struct AxisPointInfo {
    AxisPoint point;
    const char* radioButton;  // the control that stands for the point
    double column;            // x as a fraction of the width: -0.5, 0 or 0.5
    double row;               // y as a fraction of the height
};

// The nine points, rows top to bottom, columns left to right.
const std::array<AxisPointInfo, 9>& axisPoints();

// The point's position for extents of `width` × `height`; kNone is the centre.
vantlib::Vector2d axisPointPosition(AxisPoint point, double width, double height);

// The point an offset lies on, every coordinate within 1e-6; kNone when it lies on none.
AxisPoint matchAxisPoint(const vantlib::Vector2d& offset, double width, double height);

// How a stored offset shows in the dialog: the point it lies on with no extra shift, or no
// point and the whole offset as the shift. Either way the point's position plus the shift
// gives the offset back, so that Apply without a change stores what was there.
struct AxisPlacement {
    AxisPoint point = AxisPoint::kNone;
    vantlib::Vector2d extra;
};
AxisPlacement splitOffset(const vantlib::Vector2d& offset, double width, double height);
vantlib::Vector2d composeOffset(const AxisPlacement& placement, double width, double height);

// The host setting that says what changing an offset keeps in place; its values are the
// indices of the behaviour choice.
inline constexpr const wchar_t* kOffsetBehaviorSetting = L"ProfileOffsetBehavior";
enum OffsetBehavior : short { kKeepAxis = 0, kKeepSolid = 1 };

}  // namespace vl_app

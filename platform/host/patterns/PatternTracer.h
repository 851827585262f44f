#pragma once
// Geometry of a hatch pattern inside a rectangular window: the dash segments and dots of every
// line family, clipped to the window. Pure geometry, shared by the previews and the tests.
#include <cstddef>
#include <vector>

#include "HatchPattern.h"

namespace ca {

struct PatternPoint {
    double x = 0.0;
    double y = 0.0;
};

struct PatternSegment {
    PatternPoint start;
    PatternPoint end;
};

struct PatternWindow {
    double minX = 0.0, minY = 0.0, maxX = 0.0, maxY = 0.0;
};

struct TracedPattern {
    std::vector<PatternSegment> segments;
    std::vector<PatternPoint> dots;
    bool truncated = false;  // the element budget ran out before the window was covered
};

// The line families of a pattern placed with `scale` and rotated by `angleRadians` about the
// pattern origin, as a drawing places them.
std::vector<PatternLineFamily> placedLineFamilies(const std::vector<PatternLineFamily>& lines, double scale,
                                                  double angleRadians);

// Traces `lines` (already placed) inside `window`. A family whose delta-y is zero has a single
// line; a family of gaps only, or with numbers that are not finite, draws nothing. Stops with
// `truncated` set after `maxElements` segments and dots, or once a family has looked at
// `maxElements` lines and dash positions (drawn or not) or the picture at four times that, so
// that any pattern traces in bounded time.
TracedPattern tracePattern(const std::vector<PatternLineFamily>& lines, const PatternWindow& window,
                           size_t maxElements = 200000);

// Typical distance between repeated features of the pattern at scale 1: the widest spacing of
// its continuous line families, or for dashed families the side of a square holding one feature
// of all of them together. Used to choose a preview scale that shows a few repetitions.
double characteristicSize(const std::vector<PatternLineFamily>& lines);

}  // namespace ca

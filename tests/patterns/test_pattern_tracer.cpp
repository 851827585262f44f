// Geometry of traced patterns: line placement, dashes, dots, and closed shapes in the host file.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include <unistd.h>

#include "PatParser.h"
#include "PatternCatalogue.h"
#include "PatternTracer.h"

using namespace ca;

namespace {

PatternLineFamily family(double angle, double x, double y, double dx, double dy, std::vector<double> dashes = {}) {
    PatternLineFamily line;
    line.angleDegrees = angle;
    line.originX = x;
    line.originY = y;
    line.deltaX = dx;
    line.deltaY = dy;
    line.dashes = std::move(dashes);
    return line;
}

double distance(const PatternPoint& a, const PatternPoint& b) { return std::hypot(a.x - b.x, a.y - b.y); }

double distanceToSegment(const PatternPoint& p, const PatternSegment& s) {
    double vx = s.end.x - s.start.x, vy = s.end.y - s.start.y;
    double length2 = vx * vx + vy * vy;
    double t = length2 > 0 ? ((p.x - s.start.x) * vx + (p.y - s.start.y) * vy) / length2 : 0.0;
    t = std::clamp(t, 0.0, 1.0);
    return distance(p, {s.start.x + t * vx, s.start.y + t * vy});
}

using Runs = std::vector<std::pair<double, double>>;

Runs runsOnRow(const TracedPattern& traced, double y) {
    Runs runs;
    for (const auto& s : traced.segments)
        if (std::fabs(s.start.y - y) < 1e-9 && std::fabs(s.end.y - y) < 1e-9) runs.push_back({s.start.x, s.end.x});
    for (auto& run : runs) {
        run.first = std::round(run.first * 1e6) / 1e6;
        run.second = std::round(run.second * 1e6) / 1e6;
    }
    std::sort(runs.begin(), runs.end());
    return runs;
}

}  // namespace

TEST(PatternTracer, ContinuousFamilyFillsWindowAtItsSpacing) {
    auto traced = tracePattern({family(0, 0, 1, 0, 3)}, PatternWindow{0, 0, 10, 10});
    ASSERT_EQ(traced.segments.size(), 4u);  // y = 1, 4, 7, 10
    for (size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(traced.segments[i].start.y, 1.0 + 3.0 * i, 1e-9);
        EXPECT_NEAR(std::min(traced.segments[i].start.x, traced.segments[i].end.x), 0.0, 1e-9);
        EXPECT_NEAR(std::max(traced.segments[i].start.x, traced.segments[i].end.x), 10.0, 1e-9);
    }
    EXPECT_FALSE(traced.truncated);
}

TEST(PatternTracer, DashesStartAtTheLineOriginAndShiftByDeltaX) {
    // 2 on, 2 off from x = 1 on y = 0; the next line, at y = 5, starts one unit further along.
    auto traced = tracePattern({family(0, 1, 0, 1, 5, {2, -2})}, PatternWindow{0, -1, 8, 6});
    EXPECT_EQ(runsOnRow(traced, 0), (Runs{{1, 3}, {5, 7}}));
    EXPECT_EQ(runsOnRow(traced, 5), (Runs{{2, 4}, {6, 8}}));
    EXPECT_EQ(traced.segments.size(), 4u);
}

TEST(PatternTracer, ZeroDashesAreDotsAndBudgetTruncates) {
    auto traced = tracePattern({family(0, 0, 0, 0, 2, {0, -2})}, PatternWindow{-0.5, -0.5, 5, 5});
    EXPECT_TRUE(traced.segments.empty());
    EXPECT_EQ(traced.dots.size(), 9u);  // x and y in {0, 2, 4}

    auto limited = tracePattern({family(0, 0, 0, 0, 0.001)}, PatternWindow{0, 0, 100, 100}, 1000);
    EXPECT_TRUE(limited.truncated);
    EXPECT_EQ(limited.segments.size(), 1000u);
}

// Patterns that once made the tracer walk a line without end. A trace that does not finish
// within the alarm ends the program, which fails the test instead of hanging the run.
TEST(PatternTracer, PatternsThatDrawNothingOrCannotAdvanceEndInBoundedTime) {
    const PatternWindow window{-500, -500, 500, 500};
    ::alarm(20);
    const auto gapsOnly = parsePatText("*GAPS\n45, 0,0, 0,10, -1e-9\n", OdString(L"gaps.pat"));
    ASSERT_EQ(gapsOnly.size(), 1u);
    const TracedPattern nothing = tracePattern(gapsOnly[0].lines, window);
    EXPECT_TRUE(nothing.segments.empty() && nothing.dots.empty());
    EXPECT_FALSE(nothing.truncated) << "a family that draws nothing is skipped, not cut short";

    // Far from the origin a dash this small no longer moves the position along the line.
    const PatternWindow farAway{1e9, 1e9, 1e9 + 1000, 1e9 + 1000};
    const TracedPattern stuck = tracePattern({family(0, 0, 0, 0, 10, {1e-12, -1e-12})}, farAway);
    EXPECT_TRUE(stuck.truncated);

    // Many dense families of tiny dashes: the budget of the picture ends the trace.
    std::vector<PatternLineFamily> many(50, family(30, 0, 0, 0, 0.01, {1e-6, -1}));
    const TracedPattern dense = tracePattern(many, window, 1000);
    EXPECT_TRUE(dense.truncated);
    EXPECT_LE(dense.segments.size() + dense.dots.size(), 1000u);
    ::alarm(0);
}

TEST(PatternTracer, PlacementScalesAndRotatesAboutThePatternOrigin) {
    auto placed = placedLineFamilies({family(30, 1, 0, 0.5, 3, {2, -1})}, 2.0, 3.141592653589793 / 2);
    ASSERT_EQ(placed.size(), 1u);
    EXPECT_NEAR(placed[0].angleDegrees, 120.0, 1e-9);
    EXPECT_NEAR(placed[0].originX, 0.0, 1e-9);
    EXPECT_NEAR(placed[0].originY, 2.0, 1e-9);
    EXPECT_DOUBLE_EQ(placed[0].deltaX, 1.0);
    EXPECT_DOUBLE_EQ(placed[0].deltaY, 6.0);
    EXPECT_EQ(placed[0].dashes, (std::vector<double>{4, -2}));
}

// Shapes drawn from several families must meet: every end of a segment well inside the window
// lies on another segment. A wrong origin or dash in the host file leaves loose ends.
TEST(PatternTracer, HostShapesHaveNoLooseEnds) {
    PatternCatalogue catalogue;
    for (const wchar_t* name : {L"SQUARE", L"BRICK", L"BLOCK", L"STONE", L"CONCRETE", L"GRAVEL", L"INSUL", L"ZIGZAG",
                                L"HONEY", L"TRIANG"}) {
        SCOPED_TRACE(OdString(name).toUtf8());
        const HatchPattern& pattern = catalogue.get(name).pattern;
        auto traced = tracePattern(pattern.lines, PatternWindow{-60, -60, 60, 60});
        ASSERT_FALSE(traced.segments.empty());
        size_t looseEnds = 0;
        for (size_t i = 0; i < traced.segments.size(); ++i) {
            for (const PatternPoint& end : {traced.segments[i].start, traced.segments[i].end}) {
                if (std::fabs(end.x) > 50 || std::fabs(end.y) > 50) continue;
                bool joined = false;
                for (size_t j = 0; j < traced.segments.size() && !joined; ++j)
                    joined = j != i && distanceToSegment(end, traced.segments[j]) < 1e-4;
                if (!joined) ++looseEnds;
            }
        }
        EXPECT_EQ(looseEnds, 0u);
    }
}

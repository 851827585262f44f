#include "PatternTracer.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace ca {

namespace {

constexpr double kPi = 3.141592653589793;
constexpr double kTiny = 1e-12;

double dot(const PatternPoint& a, const PatternPoint& b) { return a.x * b.x + a.y * b.y; }

// Range of t for which start + t * direction lies inside the window; false when the line
// misses it. Slab clipping against both axes.
bool clipLine(const PatternPoint& start, const PatternPoint& direction, const PatternWindow& window, double& tMin,
              double& tMax) {
    tMin = -HUGE_VAL;
    tMax = HUGE_VAL;
    const double starts[2] = {start.x, start.y};
    const double directions[2] = {direction.x, direction.y};
    const double lows[2] = {window.minX, window.minY};
    const double highs[2] = {window.maxX, window.maxY};
    for (int axis = 0; axis < 2; ++axis) {
        if (std::fabs(directions[axis]) < kTiny) {
            if (starts[axis] < lows[axis] || starts[axis] > highs[axis]) return false;
            continue;
        }
        double t1 = (lows[axis] - starts[axis]) / directions[axis];
        double t2 = (highs[axis] - starts[axis]) / directions[axis];
        if (t1 > t2) std::swap(t1, t2);
        tMin = std::max(tMin, t1);
        tMax = std::min(tMax, t2);
    }
    return tMin < tMax;
}

// A family whose dash sequence holds only gaps draws nothing, however long it is walked.
bool drawsNothing(const PatternLineFamily& family) {
    return !family.dashes.empty() &&
           std::all_of(family.dashes.begin(), family.dashes.end(), [](double dash) { return dash < 0.0; });
}

bool isFinite(const PatternLineFamily& family) {
    const double numbers[] = {family.angleDegrees, family.originX, family.originY, family.deltaX, family.deltaY};
    return std::all_of(std::begin(numbers), std::end(numbers), [](double n) { return std::isfinite(n); }) &&
           std::all_of(family.dashes.begin(), family.dashes.end(), [](double n) { return std::isfinite(n); });
}

// Every line and every dash position the tracer looks at is a step, whether it draws or not, so
// that gaps too small to move the position along, or lines that all miss the window, still end
// the trace: a family gets at most `maxElements` steps, the whole picture a few times that.
class Tracer {
public:
    Tracer(const PatternWindow& window, size_t maxElements)
        : m_window(window), m_budget(maxElements), m_familySteps(maxElements),
          m_pictureSteps(kPictureStepsPerElement * std::max<size_t>(maxElements, 1)) {}

    void traceFamily(const PatternLineFamily& family) {
        if (drawsNothing(family) || !isFinite(family)) return;
        m_stepsInFamily = 0;
        double angle = family.angleDegrees * kPi / 180.0;
        PatternPoint along{std::cos(angle), std::sin(angle)};
        PatternPoint across{-along.y, along.x};
        PatternPoint origin{family.originX, family.originY};

        // Lines n with offset n * deltaY across the family that can meet the window.
        long first = 0, last = 0;
        if (std::fabs(family.deltaY) > kTiny) {
            const PatternPoint corners[4] = {{m_window.minX, m_window.minY},
                                             {m_window.maxX, m_window.minY},
                                             {m_window.minX, m_window.maxY},
                                             {m_window.maxX, m_window.maxY}};
            double low = HUGE_VAL, high = -HUGE_VAL;
            for (const PatternPoint& corner : corners) {
                double offset = dot(corner, across) - dot(origin, across);
                low = std::min(low, offset);
                high = std::max(high, offset);
            }
            double a = low / family.deltaY, b = high / family.deltaY;
            if (a > b) std::swap(a, b);
            if (std::fabs(a) > 1e15 || std::fabs(b) > 1e15) {
                m_result.truncated = true;  // window too far from the origin for this spacing
                return;
            }
            // More lines than the budget can never be drawn; limit before converting.
            a = std::ceil(a);
            b = std::min(std::floor(b), a + static_cast<double>(m_budget));
            first = static_cast<long>(a);
            last = static_cast<long>(b);
        }
        for (long n = first; n <= last && step(); ++n) {
            double k = static_cast<double>(n);
            PatternPoint start{origin.x + k * (family.deltaX * along.x + family.deltaY * across.x),
                               origin.y + k * (family.deltaX * along.y + family.deltaY * across.y)};
            traceLine(family, start, along);
        }
    }

    TracedPattern result() { return std::move(m_result); }

private:
    static constexpr size_t kPictureStepsPerElement = 4;

    bool truncated() const { return m_result.truncated; }

    // False once the family or the picture has used up its steps.
    bool step() {
        if (truncated() || m_stepsInFamily >= m_familySteps || m_stepsInPicture >= m_pictureSteps) {
            m_result.truncated = true;
            return false;
        }
        ++m_stepsInFamily;
        ++m_stepsInPicture;
        return true;
    }

    bool spend() {
        if (m_used >= m_budget) {
            m_result.truncated = true;
            return false;
        }
        ++m_used;
        return true;
    }

    PatternPoint at(const PatternPoint& start, const PatternPoint& along, double t) const {
        return {start.x + t * along.x, start.y + t * along.y};
    }

    void traceLine(const PatternLineFamily& family, const PatternPoint& start, const PatternPoint& along) {
        double tMin = 0.0, tMax = 0.0;
        if (!clipLine(start, along, m_window, tMin, tMax)) return;
        if (family.isContinuous()) {
            if (spend()) m_result.segments.push_back({at(start, along, tMin), at(start, along, tMax)});
            return;
        }
        // The dash sequence starts at the line's own start point and repeats in both directions.
        double period = family.dashPeriod();
        double t = std::floor(tMin / period) * period;
        while (t < tMax && !truncated()) {
            for (double dash : family.dashes) {
                if (!step()) return;
                double length = std::fabs(dash);
                if (dash == 0.0) {
                    if (t >= tMin && t <= tMax && spend()) m_result.dots.push_back(at(start, along, t));
                } else if (dash > 0.0) {
                    double from = std::max(t, tMin), to = std::min(t + length, tMax);
                    if (from < to && spend())
                        m_result.segments.push_back({at(start, along, from), at(start, along, to)});
                }
                t += length;
                if (t >= tMax || truncated()) break;
            }
        }
    }

    PatternWindow m_window;
    size_t m_budget;
    size_t m_used = 0;
    size_t m_familySteps;
    size_t m_pictureSteps;
    size_t m_stepsInFamily = 0;
    size_t m_stepsInPicture = 0;
    TracedPattern m_result;
};

}  // namespace

std::vector<PatternLineFamily> placedLineFamilies(const std::vector<PatternLineFamily>& lines, double scale,
                                                  double angleRadians) {
    double c = std::cos(angleRadians), s = std::sin(angleRadians);
    std::vector<PatternLineFamily> placed;
    placed.reserve(lines.size());
    for (const PatternLineFamily& line : lines) {
        PatternLineFamily family = line;
        family.angleDegrees = line.angleDegrees + angleRadians * 180.0 / kPi;
        family.originX = scale * (c * line.originX - s * line.originY);
        family.originY = scale * (s * line.originX + c * line.originY);
        family.deltaX = scale * line.deltaX;
        family.deltaY = scale * line.deltaY;
        for (double& dash : family.dashes) dash *= scale;
        placed.push_back(std::move(family));
    }
    return placed;
}

TracedPattern tracePattern(const std::vector<PatternLineFamily>& lines, const PatternWindow& window,
                           size_t maxElements) {
    Tracer tracer(window, maxElements);
    for (const PatternLineFamily& family : lines) tracer.traceFamily(family);
    return tracer.result();
}

double characteristicSize(const std::vector<PatternLineFamily>& lines) {
    double widestSpacing = 0.0;
    double featureDensity = 0.0;  // dashed features per unit area, all dashed families together
    double longestPeriod = 0.0;
    for (const PatternLineFamily& family : lines) {
        double spacing = std::fabs(family.deltaY);
        if (family.isContinuous()) {
            widestSpacing = std::max(widestSpacing, spacing);
        } else {
            double period = family.dashPeriod();
            longestPeriod = std::max(longestPeriod, period);
            if (spacing > kTiny) featureDensity += 1.0 / (period * spacing);
        }
    }
    double size = widestSpacing;
    if (featureDensity > 0.0) size = std::max(size, 1.0 / std::sqrt(featureDensity));
    if (size <= kTiny) size = longestPeriod;  // only single lines: their dash period
    return size > kTiny ? size : 1.0;
}

}  // namespace ca

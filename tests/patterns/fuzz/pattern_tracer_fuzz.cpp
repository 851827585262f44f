// libFuzzer harness: any text the .pat reader accepts must trace in bounded time and within the
// element budget, at the scales and window sizes the previews use and at extreme ones.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "PatParser.h"
#include "PatternTracer.h"

namespace {

constexpr size_t kBudget = 20000;

void traceEverywhere(const std::vector<ca::PatternLineFamily>& lines) {
    const double feature = ca::characteristicSize(lines);
    for (double scale : {1.0, 1e-6, 1e6})
        for (double repetitions : {0.5, 4.0, 1e7})
            for (double offset : {0.0, 1e9}) {
                const std::vector<ca::PatternLineFamily> placed = ca::placedLineFamilies(lines, scale, 0.3);
                const double half = repetitions * feature * scale;
                const ca::PatternWindow window{offset - half, offset - half, offset + half, offset + half};
                const ca::TracedPattern traced = ca::tracePattern(placed, window, kBudget);
                if (traced.segments.size() + traced.dots.size() > kBudget)
                    std::abort();
            }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::vector<ca::HatchPattern> patterns;
    try {
        patterns = ca::parsePatText(text, OdString(L"fuzz.pat"));
    } catch (const ca::PatParseError&) {
        return 0;
    }
    for (const ca::HatchPattern& pattern : patterns)
        traceEverywhere(pattern.lines);
    return 0;
}

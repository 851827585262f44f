#include "HatchPattern.h"

#include <cmath>

namespace ca {

const wchar_t* const kUserPatternName = L"_USER";
const wchar_t* const kSolidPatternName = L"SOLID";

bool PatternLineFamily::isContinuous() const {
    // A sequence of zero total length cannot repeat; it is drawn as a continuous line.
    return dashes.empty() || dashPeriod() <= 0.0;
}

double PatternLineFamily::dashPeriod() const {
    double period = 0.0;
    for (double dash : dashes) period += std::fabs(dash);
    return period;
}

bool HatchPattern::isSolidFill() const { return isSolidFillName(name); }

bool isSolidFillName(const OdString& name) { return name.iCompare(kSolidPatternName) == 0; }

bool isUserPatternName(const OdString& name) { return name.iCompare(kUserPatternName) == 0; }

}  // namespace ca

#include "OdUnits.h"

#include <cmath>

#include "OdError.h"

namespace {

// Length of one unit in metres as an exact fraction. Ratios of two such fractions are reduced
// before the single division, so inch/foot/mile/yard conversions come out exact (12, 5280, ...).
// The parsec is defined through pi and is the only unit handled in floating point.
struct MetreFraction {
    __int128 numerator;
    __int128 denominator;
};

constexpr __int128 pow10(int exponent) {
    __int128 value = 1;
    for (int i = 0; i < exponent; ++i) value *= 10;
    return value;
}

// Astronomical unit as fixed by the IAU in 2012; light year = Julian year times c.
constexpr __int128 kAstronomicalUnitMetres = 149597870700LL;
constexpr __int128 kLightYearMetres = 9460730472580800LL;

bool isInRange(OdDb::UnitsValue unit) { return unit >= OdDb::kUnitsUndefined && unit <= OdDb::kUnitsMax; }

MetreFraction metreFraction(OdDb::UnitsValue unit) {
    switch (unit) {
    case OdDb::kUnitsInches: return {254, pow10(4)};
    case OdDb::kUnitsFeet: return {3048, pow10(4)};
    case OdDb::kUnitsMiles: return {1609344, pow10(3)};
    case OdDb::kUnitsMillimeters: return {1, pow10(3)};
    case OdDb::kUnitsCentimeters: return {1, pow10(2)};
    case OdDb::kUnitsMeters: return {1, 1};
    case OdDb::kUnitsKilometers: return {pow10(3), 1};
    case OdDb::kUnitsMicroinches: return {254, pow10(10)};
    case OdDb::kUnitsMils: return {254, pow10(7)};
    case OdDb::kUnitsYards: return {9144, pow10(4)};
    case OdDb::kUnitsAngstroms: return {1, pow10(10)};
    case OdDb::kUnitsNanometers: return {1, pow10(9)};
    case OdDb::kUnitsMicrons: return {1, pow10(6)};
    case OdDb::kUnitsDecimeters: return {1, 10};
    case OdDb::kUnitsDekameters: return {10, 1};
    case OdDb::kUnitsHectometers: return {100, 1};
    case OdDb::kUnitsGigameters: return {pow10(9), 1};
    case OdDb::kUnitsAstronomical: return {kAstronomicalUnitMetres, 1};
    case OdDb::kUnitsLightYears: return {kLightYearMetres, 1};
    case OdDb::kUnitsUSSurveyFeet: return {1200, 3937};
    case OdDb::kUnitsUSSurveyInch: return {100, 3937};
    case OdDb::kUnitsUSSurveyYard: return {3600, 3937};
    case OdDb::kUnitsUSSurveyMile: return {6336000, 3937};
    default: return {0, 1};
    }
}

// One parsec is the distance at which one astronomical unit subtends one arc second.
long double parsecMetres() {
    const long double pi = 3.141592653589793238462643383279502884L;
    return static_cast<long double>(kAstronomicalUnitMetres) * 648000.0L / pi;
}

long double metresAsLongDouble(OdDb::UnitsValue unit) {
    if (unit == OdDb::kUnitsParsecs) return parsecMetres();
    MetreFraction f = metreFraction(unit);
    return static_cast<long double>(f.numerator) / static_cast<long double>(f.denominator);
}

__int128 gcd(__int128 a, __int128 b) {
    while (b != 0) {
        __int128 t = a % b;
        a = b;
        b = t;
    }
    return a;
}

}  // namespace

double oddbMetersPerUnit(OdDb::UnitsValue unit) {
    if (!isInRange(unit) || unit == OdDb::kUnitsUndefined) return 0.0;
    return static_cast<double>(metresAsLongDouble(unit));
}

double oddbGetUnitsConversion(OdDb::UnitsValue from, OdDb::UnitsValue to) {
    if (!isInRange(from) || !isInRange(to))
        throw OdError(eInvalidInput, OdString::formatted(L"Unknown drawing unit %d", isInRange(from) ? int(to) : int(from)));
    if (from == to || from == OdDb::kUnitsUndefined || to == OdDb::kUnitsUndefined) return 1.0;
    if (from == OdDb::kUnitsParsecs || to == OdDb::kUnitsParsecs)
        return static_cast<double>(metresAsLongDouble(from) / metresAsLongDouble(to));

    MetreFraction a = metreFraction(from);
    MetreFraction b = metreFraction(to);
    __int128 numerator = a.numerator * b.denominator;
    __int128 denominator = a.denominator * b.numerator;
    __int128 common = gcd(numerator, denominator);
    numerator /= common;
    denominator /= common;
    return static_cast<double>(static_cast<long double>(numerator) / static_cast<long double>(denominator));
}

bool oddbIsImperialUnit(OdDb::UnitsValue unit) {
    switch (unit) {
    case OdDb::kUnitsInches:
    case OdDb::kUnitsFeet:
    case OdDb::kUnitsMiles:
    case OdDb::kUnitsMicroinches:
    case OdDb::kUnitsMils:
    case OdDb::kUnitsYards:
    case OdDb::kUnitsUSSurveyFeet:
    case OdDb::kUnitsUSSurveyInch:
    case OdDb::kUnitsUSSurveyYard:
    case OdDb::kUnitsUSSurveyMile:
        return true;
    default:
        return false;
    }
}

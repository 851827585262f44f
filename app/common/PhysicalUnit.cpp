#include "app/common/PhysicalUnit.h"

#include <cmath>

#include <wx/intl.h>

#include <CaUnits.h>
#include <OdNumberText.h>
#include <OdStringWx.h>
#include <OdUnits.h>

namespace vl_app {

namespace {
const wchar_t* const kCubed = L"\u00B3";
}  // namespace

void PhysicalUnit::value(double value, Unit unit) {
    m_value = value;
    m_unit = unit;
}

double PhysicalUnit::value(Unit unit) const {
    if (!isUnitSupported(unit))
        return m_value;
    return m_value * conversionFactor(m_unit, unit);
}

void PhysicalUnit::unit(Unit unit) {
    if (!isUnitSupported(unit))
        return;
    m_value = value(unit);
    m_unit = unit;
}

PhysicalUnit::Unit PhysicalUnit::unit() const { return m_unit; }

wxString PhysicalUnit::formattedValue(Unit unit) const {
    const Unit shown = unit == kNone ? m_unit : unit;
    // A point before the decimals whatever the locale, as the editor reads values back.
    return toWx(OdString(OdNumberText::general(value(shown)))) + " " + abbr(shown);
}

wxString PhysicalUnit::abbr(Unit unit) {
    switch (unit) {
    case kNone: return wxString();
    // Only the words of the density symbols translate; the superscript stays.
    case kKgPerM3: return _("kg/m") + kCubed;
    case kGPerCm3: return _("g/cm") + kCubed;
    case kKgPerDm3: return _("kg/dm") + kCubed;
    case kLbsPerFt3: return _("lbs/ft") + kCubed;
    case kLbsPerIn3: return _("lbs/in") + kCubed;
    default: return unitId(unit);
    }
}

wxString PhysicalUnit::unitId(Unit unit) {
    switch (unit) {
    case kNone: return wxString();
    case kKgPerM3: return wxString(L"kg/m\u00B3");
    case kGPerCm3: return wxString(L"g/cm\u00B3");
    case kKgPerDm3: return wxString(L"kg/dm\u00B3");
    case kLbsPerFt3: return wxString(L"lbs/ft\u00B3");
    case kLbsPerIn3: return wxString(L"lbs/in\u00B3");
    case kWPerMK: return wxString(L"W/(m\u00B7K)");
    case kBtuPerHrFtF: return wxString(L"BTU/(hr\u00B7ft\u00B7\u00B0F)");
    case kJPerKgK: return wxString(L"J/(kg\u00B7K)");
    case kCalPerGC: return wxString(L"Cal/(g\u00B7C)");
    case kBtuPerLbsF: return wxString(L"BTU/(lbs\u00B7\u00B0F)");
    }
    return wxString();
}

PhysicalUnit::Unit PhysicalUnit::unitByAbbr(const wxString& symbol) {
    static const std::map<wxString, Unit> units = [] {
        std::map<wxString, Unit> bySymbol;
        for (uint32_t value = kNone; value <= kBtuPerLbsF; ++value)
            bySymbol.emplace(abbr(static_cast<Unit>(value)), static_cast<Unit>(value));
        return bySymbol;
    }();
    const auto found = units.find(symbol);
    return found == units.end() ? kNone : found->second;
}

double PhysicalUnit::conversionFactorFromMap(Unit from, Unit to, const std::map<Unit, double>& factors) const {
    if (!isUnitSupported(from) || !isUnitSupported(to))
        return 1.0;
    const auto fromFactor = factors.find(from);
    const auto toFactor = factors.find(to);
    if (fromFactor == factors.end() || toFactor == factors.end())
        return 1.0;
    return 1.0 / toFactor->second * fromFactor->second;
}

namespace {
void appendSymbols(wxArrayString& symbols, PhysicalUnit::Unit first, PhysicalUnit::Unit last) {
    for (uint32_t value = first; value <= last; ++value)
        symbols.Add(PhysicalUnit::abbr(static_cast<PhysicalUnit::Unit>(value)));
}
}  // namespace

bool Density::isUnitSupported(Unit unit) const { return unit >= kKgPerM3 && unit <= kLbsPerIn3; }

void Density::units(wxArrayString& symbols) { appendSymbols(symbols, kKgPerM3, kLbsPerIn3); }

double Density::conversionFactor(Unit from, Unit to) const {
    if (!isUnitSupported(from) || !isUnitSupported(to))
        return 1.0;
    static const std::map<Unit, wxString> massUnits = {
        {kKgPerM3, "kg"}, {kGPerCm3, "g"}, {kKgPerDm3, "kg"}, {kLbsPerFt3, "lbs"}, {kLbsPerIn3, "lbs"},
    };
    static const std::map<Unit, OdDb::UnitsValue> lengthUnits = {
        {kKgPerM3, OdDb::kUnitsMeters}, {kGPerCm3, OdDb::kUnitsCentimeters}, {kKgPerDm3, OdDb::kUnitsDecimeters},
        {kLbsPerFt3, OdDb::kUnitsFeet},  {kLbsPerIn3, OdDb::kUnitsInches},
    };
    double mass = 1.0;
    double converted = 0.0;
    if (ca::cvunit(1.0, massUnits.at(from), massUnits.at(to), &converted))
        mass = converted;
    const double length = oddbGetUnitsConversion(lengthUnits.at(from), lengthUnits.at(to));
    return length > 0.0 ? mass / std::pow(length, 3.0) : mass;
}

bool ThermalConductivity::isUnitSupported(Unit unit) const { return unit == kWPerMK || unit == kBtuPerHrFtF; }

void ThermalConductivity::units(wxArrayString& symbols) { appendSymbols(symbols, kWPerMK, kBtuPerHrFtF); }

double ThermalConductivity::conversionFactor(Unit from, Unit to) const {
    static const std::map<Unit, double> wattsPerMetreKelvin = {{kWPerMK, 1.0}, {kBtuPerHrFtF, 1.729577205626935}};
    return conversionFactorFromMap(from, to, wattsPerMetreKelvin);
}

bool SpecificHeat::isUnitSupported(Unit unit) const { return unit >= kJPerKgK && unit <= kBtuPerLbsF; }

void SpecificHeat::units(wxArrayString& symbols) { appendSymbols(symbols, kJPerKgK, kBtuPerLbsF); }

double SpecificHeat::conversionFactor(Unit from, Unit to) const {
    static const std::map<Unit, double> joulesPerKilogramKelvin = {{kJPerKgK, 1.0}, {kCalPerGC, 4186.8}, {kBtuPerLbsF, 4186.8}};
    return conversionFactorFromMap(from, to, joulesPerKilogramKelvin);
}

}  // namespace vl_app

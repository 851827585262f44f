#include "CaUnits.h"

#include <algorithm>
#include <cmath>
#include <map>

#include <wx/intl.h>

#include "CaApp.h"
#include "DrawingVariables.h"
#include "OdNumberText.h"
#include "OdStringWx.h"
#include "OdUnitsFormatter.h"

namespace ca {

namespace {

enum class UnitKind { Mass, Length, Area, Volume, Time };

struct UnitDef {
    UnitKind kind;
    double toBase;  // how many base units (kg, m, m², m³, s) one unit is worth
};

// Exact definitions: the pound is 0.45359237 kg and the inch 0.0254 m by international
// agreement; everything imperial derives from those two.
const std::map<wxString, UnitDef>& unitTable() {
    constexpr double lb = 0.45359237;
    constexpr double in = 0.0254;
    constexpr double ft = 12 * in;
    constexpr double yd = 3 * ft;
    static const std::map<wxString, UnitDef> table = {
        {"kg", {UnitKind::Mass, 1.0}},          {"g", {UnitKind::Mass, 1e-3}},
        {"mg", {UnitKind::Mass, 1e-6}},         {"t", {UnitKind::Mass, 1000.0}},
        {"tonne", {UnitKind::Mass, 1000.0}},    {"lb", {UnitKind::Mass, lb}},
        {"lbs", {UnitKind::Mass, lb}},          {"pound", {UnitKind::Mass, lb}},
        {"oz", {UnitKind::Mass, lb / 16}},      {"ton", {UnitKind::Mass, 2000 * lb}},
        {"m", {UnitKind::Length, 1.0}},         {"mm", {UnitKind::Length, 1e-3}},
        {"cm", {UnitKind::Length, 1e-2}},       {"dm", {UnitKind::Length, 1e-1}},
        {"km", {UnitKind::Length, 1e3}},        {"um", {UnitKind::Length, 1e-6}},
        {"in", {UnitKind::Length, in}},         {"ft", {UnitKind::Length, ft}},
        {"yd", {UnitKind::Length, yd}},         {"mi", {UnitKind::Length, 5280 * ft}},
        {"m2", {UnitKind::Area, 1.0}},          {"cm2", {UnitKind::Area, 1e-4}},
        {"mm2", {UnitKind::Area, 1e-6}},        {"km2", {UnitKind::Area, 1e6}},
        {"ha", {UnitKind::Area, 1e4}},          {"in2", {UnitKind::Area, in * in}},
        {"ft2", {UnitKind::Area, ft * ft}},     {"yd2", {UnitKind::Area, yd * yd}},
        {"acre", {UnitKind::Area, 4840 * yd * yd}},
        {"m3", {UnitKind::Volume, 1.0}},        {"cm3", {UnitKind::Volume, 1e-6}},
        {"mm3", {UnitKind::Volume, 1e-9}},      {"l", {UnitKind::Volume, 1e-3}},
        {"ml", {UnitKind::Volume, 1e-6}},       {"in3", {UnitKind::Volume, in * in * in}},
        {"ft3", {UnitKind::Volume, ft * ft * ft}}, {"yd3", {UnitKind::Volume, yd * yd * yd}},
        {"gal", {UnitKind::Volume, 231 * in * in * in}},
        {"s", {UnitKind::Time, 1.0}},           {"min", {UnitKind::Time, 60.0}},
        {"h", {UnitKind::Time, 3600.0}},        {"day", {UnitKind::Time, 86400.0}},
    };
    return table;
}

const UnitDef* findUnit(const wxString& name) {
    wxString key = name;
    key.Trim().Trim(false);
    key.MakeLower();
    key.Replace(wxString::FromUTF8("\xC2\xB2"), "2");  // superscript two
    key.Replace(wxString::FromUTF8("\xC2\xB3"), "3");  // superscript three
    key.Replace("^", "");
    key.Replace(wxString::FromUTF8("\xC2\xB5"), "u");  // micro sign
    const auto& table = unitTable();
    auto it = table.find(key);
    return it == table.end() ? nullptr : &it->second;
}

// Decimals with a point whatever the process locale, as the length formatter writes them.
wxString decimal(double value, int decimals) { return toWx(OdString(OdNumberText::fixed(value, decimals))); }

// "-0.00" reads as a different number to users; show it as zero.
wxString withoutNegativeZero(wxString text) {
    if (text.StartsWith("-") && text.find_first_of("123456789") == wxString::npos)
        text.erase(0, 1);
    return text;
}

wxString formatDms(double degrees, int precision) {
    if (precision <= 0)
        return decimal(degrees, 0) + "d";
    // Work in units of the last shown field so that rounding carries into the larger ones.
    if (precision <= 2) {
        long minutes = std::lround(degrees * 60.0);
        return wxString::Format("%ldd%ld'", minutes / 60, minutes % 60);
    }
    const int secondDecimals = std::clamp(precision - 4, 0, 4);
    const double scale = std::pow(10.0, secondDecimals);
    const long long ticks = std::llround(degrees * 3600.0 * scale);
    const long long perMinute = static_cast<long long>(60 * scale);
    const long long perDegree = 60 * perMinute;
    const long long d = ticks / perDegree;
    const long long m = (ticks % perDegree) / perMinute;
    const double s = static_cast<double>(ticks % perMinute) / scale;
    return wxString::Format("%lldd%lld'", d, m) + decimal(s, secondDecimals) + "\"";
}

}  // namespace

bool cvunit(double value, const wxString& fromUnit, const wxString& toUnit, double* result) {
    const UnitDef* from = findUnit(fromUnit);
    const UnitDef* to = findUnit(toUnit);
    if (!from || !to || from->kind != to->kind || !result)
        return false;
    *result = from->toBase == to->toBase ? value : value * from->toBase / to->toBase;
    return true;
}

wxString rtos(double value, int mode, int precision) {
    host::DrawingVariables vars = host::activeDrawingVariables();
    if (mode >= 0)
        vars.length.lunits = mode;
    if (precision >= 0)
        vars.length.luprec = precision;
    return toWx(OdUnitsFormatter::formatL(value, vars.length));
}

wxString angtos(double radians, int mode, int precision) {
    precision = std::min(std::max(precision, 0), 8);
    double angle = std::fmod(radians, 2 * M_PI);
    if (angle < 0)
        angle += 2 * M_PI;
    const double degrees = angle * 180.0 / M_PI;
    switch (mode) {
    case 1:
        return formatDms(degrees, precision);
    case 2:
        return withoutNegativeZero(decimal(degrees * 400.0 / 360.0, precision) + "g");
    case 3:
        return withoutNegativeZero(decimal(angle, precision) + "r");
    case 4: {
        // Bearing: from north or south, turned towards east or west.
        const double tolerance = 1e-10;
        if (std::fabs(degrees - 90.0) < tolerance) return "N";
        if (std::fabs(degrees - 270.0) < tolerance) return "S";
        if (degrees < tolerance || degrees > 360.0 - tolerance) return "E";
        if (std::fabs(degrees - 180.0) < tolerance) return "W";
        if (degrees < 90.0) return "N " + formatDms(90.0 - degrees, precision) + " E";
        if (degrees < 180.0) return "N " + formatDms(degrees - 90.0, precision) + " W";
        if (degrees < 270.0) return "S " + formatDms(270.0 - degrees, precision) + " W";
        return "S " + formatDms(degrees - 270.0, precision) + " E";
    }
    default:
        return withoutNegativeZero(decimal(degrees, precision));
    }
}

wxString unitsToString(OdDb::UnitsValue units) {
    switch (units) {
    case OdDb::kUnitsUndefined: return _("Unitless");
    case OdDb::kUnitsInches: return _("Inches");
    case OdDb::kUnitsFeet: return _("Feet");
    case OdDb::kUnitsMiles: return _("Miles");
    case OdDb::kUnitsMillimeters: return _("Millimeters");
    case OdDb::kUnitsCentimeters: return _("Centimeters");
    case OdDb::kUnitsMeters: return _("Meters");
    case OdDb::kUnitsKilometers: return _("Kilometers");
    case OdDb::kUnitsMicroinches: return _("Microinches");
    case OdDb::kUnitsMils: return _("Mils");
    case OdDb::kUnitsYards: return _("Yards");
    case OdDb::kUnitsAngstroms: return _("Angstroms");
    case OdDb::kUnitsNanometers: return _("Nanometers");
    case OdDb::kUnitsMicrons: return _("Microns");
    case OdDb::kUnitsDecimeters: return _("Decimeters");
    case OdDb::kUnitsDekameters: return _("Dekameters");
    case OdDb::kUnitsHectometers: return _("Hectometers");
    case OdDb::kUnitsGigameters: return _("Gigameters");
    case OdDb::kUnitsAstronomical: return _("Astronomical Units");
    case OdDb::kUnitsLightYears: return _("Light Years");
    case OdDb::kUnitsParsecs: return _("Parsecs");
    case OdDb::kUnitsUSSurveyFeet: return _("US Survey Feet");
    case OdDb::kUnitsUSSurveyInch: return _("US Survey Inches");
    case OdDb::kUnitsUSSurveyYard: return _("US Survey Yards");
    case OdDb::kUnitsUSSurveyMile: return _("US Survey Miles");
    }
    return _("Unknown units");
}

}  // namespace ca

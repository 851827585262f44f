#pragma once
// Drawing length units (INSUNITS values) and exact conversions between them.
namespace OdDb {
enum UnitsValue {
    kUnitsUndefined = 0,
    kUnitsInches = 1,
    kUnitsFeet = 2,
    kUnitsMiles = 3,
    kUnitsMillimeters = 4,
    kUnitsCentimeters = 5,
    kUnitsMeters = 6,
    kUnitsKilometers = 7,
    kUnitsMicroinches = 8,
    kUnitsMils = 9,
    kUnitsYards = 10,
    kUnitsAngstroms = 11,
    kUnitsNanometers = 12,
    kUnitsMicrons = 13,
    kUnitsDecimeters = 14,
    kUnitsDekameters = 15,
    kUnitsHectometers = 16,
    kUnitsGigameters = 17,
    kUnitsAstronomical = 18,
    kUnitsLightYears = 19,
    kUnitsParsecs = 20,
    kUnitsUSSurveyFeet = 21,
    kUnitsUSSurveyInch = 22,
    kUnitsUSSurveyYard = 23,
    kUnitsUSSurveyMile = 24,
    kUnitsMax = kUnitsUSSurveyMile
};
}  // namespace OdDb

// Factor that converts a length in `from` into `to` (value_in_to = value_in_from * factor).
// Undefined units convert with factor 1; a value outside 0-24 throws OdError(eInvalidInput).
double oddbGetUnitsConversion(OdDb::UnitsValue from, OdDb::UnitsValue to);
// Metres in one unit; 0 for undefined or out-of-range values.
double oddbMetersPerUnit(OdDb::UnitsValue unit);
// True for the inch-foot family of units and their US survey forms.
bool oddbIsImperialUnit(OdDb::UnitsValue unit);

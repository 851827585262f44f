#include <gtest/gtest.h>

#include <cmath>

#include "../support/DecimalCommaLocale.h"
#include "OdError.h"
#include "OdNumberText.h"
#include "OdTypedValue.h"
#include "OdUnits.h"
#include "OdUnitsFormatter.h"

namespace {

OdDb::UnitsValue unit(int value) { return static_cast<OdDb::UnitsValue>(value); }

double parse(const wchar_t* text) { return OdUnitsFormatter::unformatL(text); }

OdResult parseError(const wchar_t* text) {
    try {
        OdUnitsFormatter::unformatL(text);
    } catch (const OdError& e) {
        return e.code();
    }
    return eOk;
}

}  // namespace

TEST(UnitsConversion, ImperialRatiosAreExact) {
    EXPECT_EQ(oddbGetUnitsConversion(OdDb::kUnitsFeet, OdDb::kUnitsInches), 12.0);
    EXPECT_EQ(oddbGetUnitsConversion(OdDb::kUnitsMiles, OdDb::kUnitsFeet), 5280.0);
    EXPECT_EQ(oddbGetUnitsConversion(OdDb::kUnitsYards, OdDb::kUnitsInches), 36.0);
    EXPECT_EQ(oddbGetUnitsConversion(OdDb::kUnitsInches, OdDb::kUnitsMils), 1000.0);
    EXPECT_EQ(oddbGetUnitsConversion(OdDb::kUnitsInches, OdDb::kUnitsMillimeters), 25.4);
    EXPECT_EQ(oddbGetUnitsConversion(OdDb::kUnitsUSSurveyMile, OdDb::kUnitsUSSurveyFeet), 5280.0);
    EXPECT_EQ(oddbGetUnitsConversion(OdDb::kUnitsUSSurveyFeet, OdDb::kUnitsUSSurveyInch), 12.0);
    EXPECT_EQ(oddbGetUnitsConversion(OdDb::kUnitsUSSurveyFeet, OdDb::kUnitsMeters), 1200.0 / 3937.0);
    // The survey foot is slightly longer than the international foot (2 parts per million).
    EXPECT_NEAR(oddbGetUnitsConversion(OdDb::kUnitsUSSurveyFeet, OdDb::kUnitsFeet), 1.000002, 1e-9);
}

TEST(UnitsConversion, AstronomicalUnitsUseTheirDefinitions) {
    EXPECT_EQ(oddbGetUnitsConversion(OdDb::kUnitsAstronomical, OdDb::kUnitsMeters), 149597870700.0);
    EXPECT_EQ(oddbGetUnitsConversion(OdDb::kUnitsLightYears, OdDb::kUnitsKilometers), 9460730472580.8);
    EXPECT_NEAR(oddbGetUnitsConversion(OdDb::kUnitsParsecs, OdDb::kUnitsAstronomical), 206264.80624709636, 1e-8);
    EXPECT_NEAR(oddbGetUnitsConversion(OdDb::kUnitsParsecs, OdDb::kUnitsLightYears), 3.261563777, 1e-9);
    EXPECT_EQ(oddbGetUnitsConversion(OdDb::kUnitsAngstroms, OdDb::kUnitsNanometers), 0.1);
    EXPECT_EQ(oddbGetUnitsConversion(OdDb::kUnitsGigameters, OdDb::kUnitsHectometers), 1e7);
}

TEST(UnitsConversion, EveryPairRoundTripsAndUndefinedIsNeutral) {
    for (int a = 1; a <= OdDb::kUnitsMax; ++a) {
        EXPECT_GT(oddbMetersPerUnit(unit(a)), 0.0) << a;
        for (int b = 1; b <= OdDb::kUnitsMax; ++b) {
            double there = oddbGetUnitsConversion(unit(a), unit(b));
            double back = oddbGetUnitsConversion(unit(b), unit(a));
            EXPECT_NEAR(there * back, 1.0, 1e-14) << a << " -> " << b;
            EXPECT_NEAR(there, oddbMetersPerUnit(unit(a)) / oddbMetersPerUnit(unit(b)), std::fabs(there) * 1e-14);
        }
        EXPECT_EQ(oddbGetUnitsConversion(unit(a), OdDb::kUnitsUndefined), 1.0);
        EXPECT_EQ(oddbGetUnitsConversion(OdDb::kUnitsUndefined, unit(a)), 1.0);
    }
    EXPECT_EQ(oddbMetersPerUnit(OdDb::kUnitsUndefined), 0.0);
    EXPECT_EQ(oddbMetersPerUnit(unit(25)), 0.0);
    EXPECT_THROW(oddbGetUnitsConversion(unit(25), OdDb::kUnitsMeters), OdError);
    EXPECT_THROW(oddbGetUnitsConversion(OdDb::kUnitsMeters, unit(-1)), OdError);
}

struct FormatCase {
    double value;
    int lunits, luprec, dimzin, unitmode;
    const wchar_t* expected;
};

TEST(UnitsFormatter, WritesEveryNotation) {
    const FormatCase cases[] = {
        {15.5, 1, 4, 0, 0, L"1.5500E+01"},
        {15.5, 1, 4, 8, 0, L"1.55E+01"},
        {-0.00155, 1, 2, 0, 0, L"-1.55E-03"},
        {0.0, 1, 4, 0, 0, L"0.0000E+00"},
        {15.5, 2, 4, 0, 0, L"15.5000"},
        {15.5, 2, 4, 8, 0, L"15.5"},
        {2.0, 2, 4, 8, 0, L"2"},
        {0.5, 2, 4, 4, 0, L".5000"},
        {-0.5, 2, 4, 12, 0, L"-.5"},
        {0.0, 2, 2, 12, 0, L"0"},
        {1234.5678, 2, 0, 0, 0, L"1235"},
        {18.5, 3, 4, 0, 0, L"1'-6.5000\""},
        {18.5, 3, 4, 8, 0, L"1'-6.5\""},
        {18.5, 3, 4, 0, 1, L"1'6.5000\""},
        {6.0, 3, 2, 0, 0, L"6.00\""},
        {6.0, 3, 2, 1, 0, L"0'-6.00\""},
        {0.5, 3, 2, 4, 0, L".50\""},
        {18.5, 4, 4, 0, 0, L"1'-6 1/2\""},
        {18.5, 4, 4, 0, 1, L"1'6-1/2\""},
        {-18.5, 4, 4, 0, 0, L"-1'-6 1/2\""},
        {18.25, 4, 4, 0, 0, L"1'-6 1/4\""},
        {18.75, 4, 1, 0, 0, L"1'-7\""},
        {1.0 / 3.0, 4, 4, 0, 0, L"5/16\""},
        {12.5, 4, 4, 0, 0, L"1'-0 1/2\""},
        {18.5, 5, 4, 0, 0, L"18 1/2"},
        {18.5, 5, 4, 0, 1, L"18-1/2"},
        {0.75, 5, 4, 0, 0, L"3/4"},
        {-0.75, 5, 2, 0, 0, L"-3/4"},
        {0.0, 5, 4, 0, 0, L"0"},
    };
    for (const FormatCase& c : cases)
        EXPECT_EQ(OdUnitsFormatter::formatL(c.value, c.lunits, c.luprec, c.dimzin, c.unitmode), OdString(c.expected))
            << c.value << " lunits " << c.lunits << " dimzin " << c.dimzin << " unitmode " << c.unitmode;
}

TEST(UnitsFormatter, FeetAndInchZeroSuppression) {
    // dimzin 0: no zero feet, no exactly-zero inches; 1: both; 2: feet only; 3: inches only.
    const FormatCase cases[] = {
        {6.0, 4, 4, 0, 0, L"6\""},      {6.0, 4, 4, 1, 0, L"0'-6\""},  {6.0, 4, 4, 2, 0, L"0'-6\""},
        {6.0, 4, 4, 3, 0, L"6\""},      {24.0, 4, 4, 0, 0, L"2'"},     {24.0, 4, 4, 1, 0, L"2'-0\""},
        {24.0, 4, 4, 2, 0, L"2'"},      {24.0, 4, 4, 3, 0, L"2'-0\""}, {0.0, 4, 4, 0, 0, L"0\""},
        {0.0, 4, 4, 1, 0, L"0'-0\""},   {0.0, 4, 4, 2, 0, L"0'"},      {0.5, 4, 4, 1, 0, L"0'-0 1/2\""},
        {0.5, 4, 4, 0, 0, L"1/2\""},    {12.0, 3, 2, 0, 0, L"1'"},     {12.0, 3, 2, 3, 0, L"1'-0.00\""},
    };
    for (const FormatCase& c : cases)
        EXPECT_EQ(OdUnitsFormatter::formatL(c.value, c.lunits, c.luprec, c.dimzin, c.unitmode), OdString(c.expected))
            << c.value << " lunits " << c.lunits << " dimzin " << c.dimzin;
}

TEST(UnitsFormatter, RoundingCarriesIntoTheNextUnit) {
    EXPECT_EQ(OdUnitsFormatter::formatL(11.999, 4, 4, 1, 0), OdString(L"1'-0\""));
    EXPECT_EQ(OdUnitsFormatter::formatL(11.999, 4, 4, 0, 0), OdString(L"1'"));
    EXPECT_EQ(OdUnitsFormatter::formatL(23.99999, 3, 2, 1, 0), OdString(L"2'-0.00\""));
    EXPECT_EQ(OdUnitsFormatter::formatL(0.99999, 5, 4, 0, 0), OdString(L"1"));
    EXPECT_EQ(OdUnitsFormatter::formatL(7.97, 5, 3, 0, 0), OdString(L"8"));
    EXPECT_EQ(OdUnitsFormatter::formatL(9.99999, 2, 2, 0, 0), OdString(L"10.00"));
    // A negative length that rounds to nothing carries no sign.
    EXPECT_EQ(OdUnitsFormatter::formatL(-0.00001, 2, 4, 0, 0), OdString(L"0.0000"));
    EXPECT_EQ(OdUnitsFormatter::formatL(-0.01, 4, 4, 0, 0), OdString(L"0\""));
}

TEST(UnitsFormatter, RejectsBadSettingsAndValues) {
    EXPECT_THROW(OdUnitsFormatter::formatL(1.0, 0, 4), OdError);
    EXPECT_THROW(OdUnitsFormatter::formatL(1.0, 6, 4), OdError);
    EXPECT_THROW(OdUnitsFormatter::formatL(1.0, 2, 9), OdError);
    EXPECT_THROW(OdUnitsFormatter::formatL(1.0, 2, -1), OdError);
    EXPECT_THROW(OdUnitsFormatter::formatL(std::nan(""), 2, 4), OdError);
    EXPECT_THROW(OdUnitsFormatter::formatL(INFINITY, 4, 4), OdError);
    EXPECT_THROW(OdUnitsFormatter::formatL(1e300, 4, 4), OdError);
}

TEST(UnitsParser, AcceptsEveryWrittenForm) {
    EXPECT_DOUBLE_EQ(parse(L"1'-6 1/2\""), 18.5);
    EXPECT_DOUBLE_EQ(parse(L"1'6-1/2\""), 18.5);
    EXPECT_DOUBLE_EQ(parse(L"1'-6.5\""), 18.5);
    EXPECT_DOUBLE_EQ(parse(L"1'6.5\""), 18.5);
    EXPECT_DOUBLE_EQ(parse(L"1' 6\""), 18.0);
    EXPECT_DOUBLE_EQ(parse(L"2'"), 24.0);
    EXPECT_DOUBLE_EQ(parse(L"3/4\""), 0.75);
    EXPECT_DOUBLE_EQ(parse(L"18.5"), 18.5);
    EXPECT_DOUBLE_EQ(parse(L"1.85E+01"), 18.5);
    EXPECT_DOUBLE_EQ(parse(L"-1.5e-3"), -0.0015);
    EXPECT_DOUBLE_EQ(parse(L"18 1/2"), 18.5);
    EXPECT_DOUBLE_EQ(parse(L"18-1/2"), 18.5);
    EXPECT_DOUBLE_EQ(parse(L"-1'-6 1/2\""), -18.5);
    EXPECT_DOUBLE_EQ(parse(L"-.5"), -0.5);
    EXPECT_DOUBLE_EQ(parse(L"+4"), 4.0);
    EXPECT_DOUBLE_EQ(parse(L"  7 \t"), 7.0);
    EXPECT_DOUBLE_EQ(parse(L"0'-0 1/2\""), 0.5);
}

TEST(UnitsParser, RejectsEverythingElse) {
    for (const wchar_t* bad : {L"", L"   ", L"abc", L"1..2", L"1'-", L"12abc", L"1/0", L"1/", L"1.5/2", L"--1", L"1'-6\"x",
                               L"1e", L"1 1/2 3", L"'6\"", L"1''", L"- 5", L"1,5", L"6\"'", L"1'-+6\""})
        EXPECT_EQ(parseError(bad), eInvalidInput) << OdString(bad).toUtf8();
}

TEST(UnitsParser, RoundTripsThroughEveryNotation) {
    const double values[] = {0.0, 0.5, -0.75, 1.0 / 3.0, 11.999, 12.0, 18.5, -18.5, 123.456, 1000.0625, 0.001};
    for (int lunits = 1; lunits <= 5; ++lunits) {
        for (int luprec : {0, 2, 4, 8}) {
            for (int dimzin : {0, 1, 2, 3, 4, 8, 12}) {
                for (int unitmode : {0, 1}) {
                    for (double value : values) {
                        OdString text = OdUnitsFormatter::formatL(value, lunits, luprec, dimzin, unitmode);
                        double step = (lunits == 4 || lunits == 5) ? 1.0 / (1 << luprec) : std::pow(10.0, -luprec);
                        double tolerance = lunits == 1 ? std::fabs(value) * step + 1e-12 : step / 2 + 1e-9;
                        double back = 0.0;
                        ASSERT_NO_THROW(back = OdUnitsFormatter::unformatL(text)) << text.toUtf8();
                        EXPECT_NEAR(back, value, tolerance) << text.toUtf8() << " lunits " << lunits << " dimzin " << dimzin;
                    }
                }
            }
        }
    }
}

// The toolkit sets the user's locale; lengths and stored values must still read and write with
// a point.
TEST(UnitsUnderADecimalCommaLocale, ReadAndWriteWithAPoint) {
    DecimalCommaLocale german;
    ASSERT_TRUE(german.active()) << "the locale de_DE.UTF-8 is missing: run tools/install-deps.sh";
    EXPECT_DOUBLE_EQ(parse(L"1.5"), 1.5);
    EXPECT_DOUBLE_EQ(parse(L"0.001"), 0.001);
    EXPECT_DOUBLE_EQ(parse(L"2.5e-3"), 0.0025);
    EXPECT_DOUBLE_EQ(parse(L"1'-6.5\""), 18.5);
    EXPECT_DOUBLE_EQ(parse(L"3 1/2"), 3.5);
    EXPECT_EQ(parseError(L"1,5"), eInvalidInput) << "a comma is not a decimal separator in a drawing";

    EXPECT_EQ(OdUnitsFormatter::formatL(15.5, 2, 4), OdString(L"15.5000"));
    EXPECT_EQ(OdUnitsFormatter::formatL(15.5, 1, 2), OdString(L"1.55E+01"));
    EXPECT_EQ(OdUnitsFormatter::formatL(0.125, 5, 3), OdString(L"1/8"));

    EXPECT_EQ(OdNumberText::general(2400.5), L"2400.5");
    EXPECT_EQ(OdNumberText::general(0.000012), L"1.2e-05");
    EXPECT_EQ(OdTypedValue(0.25).toText(), OdString(L"double:0.25"));
    EXPECT_DOUBLE_EQ(OdTypedValue::fromText(L"double:1.5").asDouble(), 1.5);
    EXPECT_DOUBLE_EQ(OdTypedValue::fromText(OdTypedValue(0.1).toText()).asDouble(), 0.1);
}

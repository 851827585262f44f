// Unit conversion by name and the formatting of reals, angles and unit names.
#include <gtest/gtest.h>

#include <cmath>

#include "../support/DecimalCommaLocale.h"
#include "CaUnits.h"
#include "OdError.h"

TEST(Cvunit, MassConversionsUseExactFactors) {
    double result = 0;
    ASSERT_TRUE(ca::cvunit(1.0, "kg", "lbs", &result));
    EXPECT_DOUBLE_EQ(result, 1.0 / 0.45359237);
    ASSERT_TRUE(ca::cvunit(16.0, "oz", "lb", &result));
    EXPECT_DOUBLE_EQ(result, 1.0);
    ASSERT_TRUE(ca::cvunit(2.5, "t", "kg", &result));
    EXPECT_DOUBLE_EQ(result, 2500.0);
    ASSERT_TRUE(ca::cvunit(1.0, "kg", "g", &result));
    EXPECT_DOUBLE_EQ(result, 1000.0);
    ASSERT_TRUE(ca::cvunit(3.0, " KG ", "Kg", &result));
    EXPECT_EQ(result, 3.0) << "same unit, any case: the value unchanged";
}

TEST(Cvunit, OtherKindsConvertWithinTheirKind) {
    double result = 0;
    ASSERT_TRUE(ca::cvunit(1.0, "ft", "in", &result));
    EXPECT_DOUBLE_EQ(result, 12.0);
    ASSERT_TRUE(ca::cvunit(1.0, "m3", "l", &result));
    EXPECT_DOUBLE_EQ(result, 1000.0);
    ASSERT_TRUE(ca::cvunit(1.0, wxString::FromUTF8("m\xC2\xB2"), "cm2", &result));
    EXPECT_DOUBLE_EQ(result, 10000.0);
}

TEST(Cvunit, UnknownNamesAndMixedKindsFailWithoutTouchingTheResult) {
    double result = -7.0;
    EXPECT_FALSE(ca::cvunit(1.0, "kg", "furlong", &result));
    EXPECT_FALSE(ca::cvunit(1.0, "kg", "m", &result));
    EXPECT_FALSE(ca::cvunit(1.0, "", "kg", &result));
    EXPECT_EQ(result, -7.0);
    EXPECT_FALSE(ca::cvunit(1.0, "kg", "g", nullptr));
}

TEST(Rtos, FormatsInTheRequestedModeAndRejectsBadModes) {
    EXPECT_EQ(ca::rtos(15.5, 2, 2), "15.50");
    EXPECT_EQ(ca::rtos(15.5, 4, 4), "1'-3 1/2\"");
    EXPECT_EQ(ca::rtos(1.0 / 3.0), "0.3333") << "decimal with 4 places without a drawing";
    EXPECT_THROW(ca::rtos(1.0, 9, 2), OdError);
}

TEST(Angtos, WritesAPointUnderADecimalCommaLocale) {
    DecimalCommaLocale german;
    ASSERT_TRUE(german.active()) << "the locale de_DE.UTF-8 is missing: run tools/install-deps.sh";
    EXPECT_EQ(ca::angtos(M_PI / 4, 0, 2), "45.00");
    EXPECT_EQ(ca::angtos(M_PI / 4, 2, 1), "50.0g");
    EXPECT_EQ(ca::angtos(1.0, 3, 3), "1.000r");
    EXPECT_EQ(ca::angtos(M_PI / 4 + M_PI / 360 + M_PI / 648000.0 / 4, 1, 6), "45d30'0.25\"");
}

TEST(Angtos, WritesEachAngleFormat) {
    const double quarter = M_PI / 4;
    EXPECT_EQ(ca::angtos(quarter, 0, 2), "45.00");
    EXPECT_EQ(ca::angtos(-M_PI / 2, 0, 0), "270") << "negative angles wrap into one turn";
    EXPECT_EQ(ca::angtos(quarter + M_PI / 360, 1, 4), "45d30'0\"");
    EXPECT_EQ(ca::angtos(quarter, 2, 1), "50.0g");
    EXPECT_EQ(ca::angtos(1.0, 3, 3), "1.000r");
    EXPECT_EQ(ca::angtos(quarter, 4, 2), "N 45d0' E");
    EXPECT_EQ(ca::angtos(M_PI, 4, 2), "W");
    EXPECT_EQ(ca::angtos(M_PI * 1.25, 4, 0), "S 45d W");
}

TEST(UnitsToString, NamesEveryDrawingUnit) {
    EXPECT_EQ(ca::unitsToString(OdDb::kUnitsMillimeters), "Millimeters");
    EXPECT_EQ(ca::unitsToString(OdDb::kUnitsUSSurveyFeet), "US Survey Feet");
    for (int unit = 0; unit <= OdDb::kUnitsMax; ++unit)
        EXPECT_NE(ca::unitsToString(static_cast<OdDb::UnitsValue>(unit)), "Unknown units") << unit;
    EXPECT_EQ(ca::unitsToString(static_cast<OdDb::UnitsValue>(99)), "Unknown units");
}

// Physical quantities, the unit editor's conversion and lengths in each drawing notation.
#include <gtest/gtest.h>

#include <CaUnits.h>

#include "LibraryFixture.h"
#include "app/common/Distances.h"
#include "app/common/PhysicalUnit.h"
#include "app/common/PropertyGridEditors.h"

using namespace vl_app;
using vl_app_test::LibraryFixture;

TEST(PhysicalUnits, DensityConvertsMassOverCubedLength) {
    Density density(1.0, PhysicalUnit::kKgPerM3);
    EXPECT_NEAR(density.value(PhysicalUnit::kGPerCm3), 0.001, 1e-15);
    EXPECT_NEAR(density.value(PhysicalUnit::kKgPerDm3), 0.001, 1e-15);
    double kgInLbs = 0.0;
    ASSERT_TRUE(ca::cvunit(1.0, "kg", "lbs", &kgInLbs));
    EXPECT_NEAR(density.value(PhysicalUnit::kLbsPerFt3), kgInLbs * std::pow(0.3048, 3.0), 1e-12);
    EXPECT_NEAR(Density(1.0, PhysicalUnit::kLbsPerIn3).value(PhysicalUnit::kLbsPerFt3), 1728.0, 1e-9);

    // Units of another quantity neither convert nor change the stored unit.
    EXPECT_EQ(density.value(PhysicalUnit::kWPerMK), 1.0);
    density.unit(PhysicalUnit::kWPerMK);
    EXPECT_EQ(density.unit(), PhysicalUnit::kKgPerM3);

    density.unit(PhysicalUnit::kGPerCm3);
    EXPECT_EQ(density.unit(), PhysicalUnit::kGPerCm3);
    EXPECT_NEAR(density.value(PhysicalUnit::kKgPerM3), 1.0, 1e-12);
}

TEST(PhysicalUnits, TableQuantitiesConvertThroughTheirBaseUnit) {
    EXPECT_NEAR(ThermalConductivity(1.0, PhysicalUnit::kBtuPerHrFtF).value(PhysicalUnit::kWPerMK), 1.729577205626935,
                1e-15);
    EXPECT_NEAR(ThermalConductivity(1.729577205626935, PhysicalUnit::kWPerMK).value(PhysicalUnit::kBtuPerHrFtF), 1.0,
                1e-15);
    EXPECT_NEAR(SpecificHeat(1.0, PhysicalUnit::kCalPerGC).value(PhysicalUnit::kJPerKgK), 4186.8, 1e-9);
    EXPECT_NEAR(SpecificHeat(1.0, PhysicalUnit::kCalPerGC).value(PhysicalUnit::kBtuPerLbsF), 1.0, 1e-15);
    // A default object has no unit yet and converts nothing.
    EXPECT_EQ(SpecificHeat().value(PhysicalUnit::kJPerKgK), 0.0);
    EXPECT_EQ(SpecificHeat(5.0, PhysicalUnit::kNone).value(PhysicalUnit::kCalPerGC), 5.0);
}

TEST(PhysicalUnits, SymbolsListsAndLookUp) {
    EXPECT_EQ(Density(1000.0, PhysicalUnit::kKgPerM3).formattedValue(PhysicalUnit::kNone), wxString(L"1000 kg/m\u00B3"));
    EXPECT_EQ(SpecificHeat(1.0, PhysicalUnit::kCalPerGC).formattedValue(PhysicalUnit::kJPerKgK),
              wxString(L"4186.8 J/(kg\u00B7K)"));
    wxArrayString symbols;
    ThermalConductivity().supportedUnits(symbols);
    Density::units(symbols);
    ASSERT_EQ(symbols.size(), 7u);
    EXPECT_EQ(symbols[1], wxString(L"BTU/(hr\u00B7ft\u00B7\u00B0F)"));
    EXPECT_EQ(symbols[6], wxString(L"lbs/in\u00B3"));
    for (uint32_t unit = 0; unit <= PhysicalUnit::kBtuPerLbsF; ++unit)
        EXPECT_EQ(PhysicalUnit::unitByAbbr(PhysicalUnit::abbr(PhysicalUnit::Unit(unit))), PhysicalUnit::Unit(unit));
    EXPECT_EQ(PhysicalUnit::unitByAbbr("kg/m3"), PhysicalUnit::kNone);
    EXPECT_EQ(PhysicalUnit::unitId(PhysicalUnit::kKgPerM3), wxString(L"kg/m\u00B3"));
}

TEST(PhysicalUnitEditor, SwitchingTheUnitKeepsTheQuantity) {
    EXPECT_EQ(physicalUnitSymbols(kQuantitySpecificHeat).size(), 3u);
    EXPECT_TRUE(physicalUnitSymbols(99).empty());
    EXPECT_NEAR(convertPhysicalValue(kQuantityDensity, 2400.0, PhysicalUnit::abbr(PhysicalUnit::kKgPerM3),
                                     PhysicalUnit::abbr(PhysicalUnit::kGPerCm3)),
                2.4, 1e-12);
    EXPECT_EQ(convertPhysicalValue(99, 7.0, "a", "b"), 7.0);
    EXPECT_EQ(registerPhysicalUnitEditor(), registerPhysicalUnitEditor());
    EXPECT_EQ(registerPhysicalUnitEditor()->GetName(), "VLPhysicalUnitEditor");
}

using Distances = LibraryFixture;

TEST_F(Distances, FormatAndParseInEachNotation) {
    struct Case {
        int lunits;
        int luprec;
        double value;
        const char* text;
    };
    const Case cases[] = {
        {1, 2, 15.5, "1.55E+01"},
        {2, 1, 15.5, "15.5"},
        {3, 2, 18.5, "1'-6.50\""},
        {4, 1, 18.5, "1'-6 1/2\""},
        {5, 1, 15.5, "15 1/2"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.lunits);
        db->setLUNITS(c.lunits);
        db->setLUPREC(c.luprec);
        db->setDIMZIN(0);
        const wxString text = formatDistance(c.value, OdDb::kUnitsMillimeters, true);
        EXPECT_EQ(text, c.lunits == 2 ? wxString(c.text) + " mm" : wxString(c.text));
        double parsed = 0.0;
        ASSERT_TRUE(parseDistance(parsed, c.text, OdDb::kUnitsMillimeters));
        EXPECT_DOUBLE_EQ(parsed, c.value);
    }
}

TEST_F(Distances, ScalingOfInsertedContentConvertsBothWays) {
    db->setLUNITS(2);
    db->setLUPREC(2);
    db->setDIMZIN(8);
    db->setSysVar(L"SCALINGUNITS", OdTypedValue(int(OdDb::kUnitsCentimeters)));
    db->setINSUNITSSCALING(1);
    double parsed = 0.0;
    ASSERT_TRUE(parseDistance(parsed, "2.5", OdDb::kUnitsMillimeters));
    EXPECT_DOUBLE_EQ(parsed, 25.0);
    EXPECT_EQ(formatDistance(25.0, OdDb::kUnitsMillimeters, false), "2.5");
    db->setINSUNITSSCALING(0);
    EXPECT_EQ(formatDistance(25.0, OdDb::kUnitsMillimeters, false), "25");
}

TEST_F(Distances, MalformedTextLeavesTheValueAlone) {
    double value = 7.0;
    EXPECT_FALSE(parseDistance(value, "12 apples", OdDb::kUnitsMillimeters));
    EXPECT_FALSE(parseDistance(value, "", OdDb::kUnitsMillimeters));
    EXPECT_EQ(value, 7.0);
    db->setLUNITS(2);
    db->setLUPREC(0);
    EXPECT_EQ(arrStr(std::set<double>{200.0, 50.0}, OdDb::kUnitsMillimeters), vl_app_test::strings({"50", "200"}));
}

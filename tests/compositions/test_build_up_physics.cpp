// R, U and mass per area of real build-ups against values worked out by hand, and the texts
// that say why a value is missing.
#include <gtest/gtest.h>

#include <vantlib/BuildUpPhysics.h>
#include <vantlib/Composition.h>

#include "app/compositions/CompositionPhysicsText.h"
#include "app/compositions/PlyGrid.h"

namespace {

using vantlib::Composition;

QcSmartPtr<vantlib::Material> material(const wchar_t* name, double conductivity, double density,
                                       const wchar_t* conductivityUnit = L"W/(m\u00B7K)",
                                       const wchar_t* densityUnit = L"kg/m\u00B3") {
    auto result = vantlib::Material::create(name);
    if (conductivity > 0.0)
        result->physical_asset(true)->set_thermal_conductivity(conductivity, conductivityUnit);
    if (density > 0.0)
        result->physical_asset(true)->set_density(density, densityUnit);
    return result;
}

void add(Composition& composition, const QcSmartPtr<vantlib::Material>& of, double thickness) {
    composition.append_ply(vantlib::Ply(of, thickness, vantlib::kFunctionStructure));
}

// 15 mm plaster, 200 mm concrete, 160 mm EPS, 10 mm render (mm library), from inside out as
// the order does not change the sums.
QcSmartPtr<Composition> externalWall(Composition::Type type = Composition::kWall) {
    auto wall = Composition::create(L"Concrete ETICS", type);
    add(*wall, material(L"Plaster", 0.70, 1400), 15);
    add(*wall, material(L"Concrete", 2.3, 2400), 200);
    add(*wall, material(L"EPS", 0.035, 20), 160);
    add(*wall, material(L"Render", 0.87, 1800), 10);
    return wall;
}

TEST(BuildUpPhysics, WallRoofAndSlabMatchHandCalculations) {
    // R = 0.015/0.70 + 0.200/2.3 + 0.160/0.035 + 0.010/0.87 = 4.6913 m²K/W;
    // U = 1 / (0.13 + 4.6913 + 0.04) = 0.2057 W/(m²K); mass = 21 + 480 + 3.2 + 18 = 522.2 kg/m².
    const auto wall = externalWall();
    const auto values = vantlib::buildUpPhysics(*wall, OdDb::kUnitsMillimeters);
    ASSERT_TRUE(values.hasThermalValues());
    ASSERT_TRUE(values.hasMass());
    EXPECT_NEAR(values.resistance, 4.69131, 1e-4);
    EXPECT_NEAR(values.transmittance, 0.205706, 1e-5);
    EXPECT_NEAR(values.massPerArea, 522.2, 1e-6);

    // Flat roof: 180 mm concrete, 200 mm XPS (0.035, 30), 50 mm gravel (2.0, 1800), heat upward:
    // R = 5.8175, U = 1 / (0.10 + 5.8175 + 0.04) = 0.16785, mass = 432 + 6 + 90 = 528.
    auto roof = Composition::create(L"Flat roof", Composition::kRoof);
    add(*roof, material(L"Gravel", 2.0, 1800), 50);
    add(*roof, material(L"XPS", 0.035, 30), 200);
    add(*roof, material(L"Concrete", 2.3, 2400), 180);
    const auto roofValues = vantlib::buildUpPhysics(*roof, OdDb::kUnitsMillimeters);
    EXPECT_NEAR(roofValues.resistance, 5.81755, 1e-4);
    EXPECT_NEAR(roofValues.transmittance, 0.167854, 1e-5);
    EXPECT_NEAR(roofValues.massPerArea, 528.0, 1e-6);

    // Slab in metres: 60 mm screed (1.4, 2000), 30 mm impact insulation (0.035, 20), 200 mm
    // concrete, heat downward: R = 0.98696, U = 1 / (0.17 + 0.98696 + 0.04) = 0.83545.
    auto slab = Composition::create(L"Floor", Composition::kSlab);
    add(*slab, material(L"Screed", 1.4, 2000), 0.06);
    add(*slab, material(L"Impact", 0.035, 20), 0.03);
    add(*slab, material(L"Concrete", 2.3, 2400), 0.2);
    const auto slabValues = vantlib::buildUpPhysics(*slab, OdDb::kUnitsMeters);
    EXPECT_NEAR(slabValues.resistance, 0.986957, 1e-5);
    EXPECT_NEAR(slabValues.transmittance, 0.835452, 1e-5);
    EXPECT_NEAR(slabValues.massPerArea, 600.6, 1e-6);
}

TEST(BuildUpPhysics, ImperialValuesInImperialUnits) {
    // One inch of a material of 0.25 Btu/(h·ft·°F) and 100 lb/ft³ in an inch library:
    // R = (1/12 ft) / 0.25 = 1/3 h·ft²·°F/Btu, mass = 100 x 1/12 = 8.33 lb/ft².
    auto board = Composition::create(L"Board", Composition::kWall);
    add(*board, material(L"Board", 0.25, 100, L"BTU/(hr\u00B7ft\u00B7\u00B0F)", L"lbs/ft\u00B3"), 1.0);
    const auto values = vantlib::buildUpPhysics(*board, OdDb::kUnitsInches);
    EXPECT_NEAR(values.resistance * vantlib::kResistanceToImperial, 1.0 / 3.0, 1e-4);
    EXPECT_NEAR(values.massPerArea * vantlib::kMassPerAreaToImperial, 100.0 / 12.0, 1e-4);
    const auto texts = vl_app::physicsTexts(*board, values, true);
    EXPECT_TRUE(texts.resistance.Contains(L"0.33 h\u00B7ft\u00B2\u00B7\u00B0F/Btu")) << texts.resistance;
    EXPECT_TRUE(texts.massPerArea.Contains(L"8.33 lb/ft\u00B2")) << texts.massPerArea;
    EXPECT_TRUE(texts.transmittance.Contains(L"W/(m\u00B2K)")) << "SI first";
}

TEST(BuildUpPhysics, MissingValuesNameThePlyInsteadOfANumber) {
    auto wall = externalWall();
    wall->insert_ply(1, vantlib::Ply(material(L"Air gap", 0.0, 0.0), 40, vantlib::kFunctionNone));
    const auto values = vantlib::buildUpPhysics(*wall, OdDb::kUnitsMillimeters);
    EXPECT_FALSE(values.hasThermalValues());
    EXPECT_FALSE(values.hasMass());
    EXPECT_EQ(values.missingConductivity, 1);
    const wxString summary = vl_app::physicsSummary(*wall, OdDb::kUnitsMillimeters);
    EXPECT_FALSE(summary.Contains("R =")) << summary;
    EXPECT_FALSE(summary.Contains("Mass per area:")) << summary;
    EXPECT_TRUE(summary.Contains("\"Air gap\" has no thermal conductivity")) << summary;
    EXPECT_TRUE(summary.Contains("\"Air gap\" has no density")) << summary;

    // A density in a unit nobody knows counts as missing, not as kg/m³.
    auto odd = Composition::create(L"Odd", Composition::kWall);
    add(*odd, material(L"Odd", 1.0, 5.0, L"W/(m\u00B7K)", L"stone/league\u00B3"), 100);
    EXPECT_FALSE(vantlib::buildUpPhysics(*odd, OdDb::kUnitsMillimeters).hasMass());
}

TEST(BuildUpPhysics, VariablePlyCountsWithItsMinimumAndEmptyCompositionHasNoValues) {
    auto wall = externalWall();
    wall->set_variable_ply(2);  // the EPS: 160 mm drawn, 100 mm at least
    wall->set_variable_ply_min_thickness(100);
    const auto values = vantlib::buildUpPhysics(*wall, OdDb::kUnitsMillimeters);
    EXPECT_TRUE(values.variableAtMinimum);
    EXPECT_NEAR(values.resistance, 0.015 / 0.70 + 0.2 / 2.3 + 0.1 / 0.035 + 0.01 / 0.87, 1e-9);
    EXPECT_NEAR(values.massPerArea, 21 + 480 + 2 + 18, 1e-9);
    EXPECT_TRUE(vl_app::physicsSummary(*wall, OdDb::kUnitsMillimeters).Contains("minimum thickness"));

    const auto empty = Composition::create(L"Empty", Composition::kWall);
    const auto none = vantlib::buildUpPhysics(*empty, OdDb::kUnitsMillimeters);
    EXPECT_FALSE(none.hasThermalValues());
    EXPECT_FALSE(none.hasMass());
    EXPECT_TRUE(vl_app::physicsSummary(*empty, OdDb::kUnitsMillimeters).empty());
    EXPECT_EQ(vl_app::CmpThickness(empty, OdDb::kUnitsMillimeters).total(), 0.0);
}

TEST(CmpThickness, TotalMinimumAndVariableWords) {
    auto wall = externalWall();
    EXPECT_DOUBLE_EQ(vl_app::CmpThickness(wall, OdDb::kUnitsMillimeters).total(), 385.0);
    wall->set_variable_ply(1);
    wall->set_variable_ply_min_thickness(-5);
    const vl_app::CmpThickness variable(wall, OdDb::kUnitsMillimeters);
    EXPECT_DOUBLE_EQ(variable.minimum(), 185.0) << "a negative minimum counts as 0";
    EXPECT_TRUE(variable.format().StartsWith(L"\u2265 185")) << variable.format();

    auto fill = Composition::create(L"Fill", Composition::kWall);
    add(*fill, material(L"Concrete", 2.3, 2400), 200);
    fill->set_variable_ply(0);
    EXPECT_EQ(vl_app::CmpThickness(fill, OdDb::kUnitsMillimeters).format(), _("variable"));
}

TEST(PlyThickness, TypedInTheLibrarysUnitOrRefused) {
    double value = 7.0;
    EXPECT_TRUE(vl_app::parsePlyThickness(value, "12.5", OdDb::kUnitsMillimeters));
    EXPECT_DOUBLE_EQ(value, 12.5);
    EXPECT_TRUE(vl_app::parsePlyThickness(value, "1'-2 1/2\"", OdDb::kUnitsInches));
    EXPECT_DOUBLE_EQ(value, 14.5);
    EXPECT_TRUE(vl_app::parsePlyThickness(value, "3.75", OdDb::kUnitsInches));
    EXPECT_DOUBLE_EQ(value, 3.75);
    EXPECT_TRUE(vl_app::parsePlyThickness(value, "0", OdDb::kUnitsMillimeters)) << "a ply may be drawn without thickness";
    value = 7.0;
    for (const char* refused : {"", "abc", "-1", "12,5mm!", "1e6"})
        EXPECT_FALSE(vl_app::parsePlyThickness(value, refused, OdDb::kUnitsMillimeters)) << refused;
    EXPECT_FALSE(vl_app::parsePlyThickness(value, "5000", OdDb::kUnitsInches)) << "127 m is no ply";
    EXPECT_DOUBLE_EQ(value, 7.0) << "a refused text leaves the value";
}

}  // namespace

// Material cards from the shared test data (both forms), exact values, and cards that cannot be
// read next to ones that can.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include <vantlib/MaterialCards.h>

#include "support.h"

namespace vltest {

namespace {

const std::string kCards = std::string(VL_TEST_DATA_DIR) + "/materials";

void writeFile(const std::string& path, const std::string& text) { std::ofstream(path, std::ios::binary) << text; }

PhysicalAsset physicalOf(const std::shared_ptr<Library>& library, const char* name) {
    const auto material = library->get<Material>(NameKey(W(name)));
    if (!material || !material->physical_asset())
        throw std::runtime_error(std::string("no physical values for ") + name);
    return *material->physical_asset();
}

}  // namespace

TEST(MaterialCards, EverySharedCardImportsWithItsValuesConvertedExactly) {
    TempDir dir;
    auto library = Library::create(dir.file("cards.vlib"), OdDb::kUnitsMillimeters);
    // 29 INI-style cards (24 standard, 5 fluid) and 2 YAML cards; three names occur twice
    // (None, Aluminum Generic, Concrete), so renaming keeps every card.
    const CardImportReport report = importMaterialCards(library, {kCards}, ClashAnswer::kRename);
    EXPECT_EQ(report.cardsFound, 31u);
    EXPECT_EQ(report.imported.size(), 31u);
    EXPECT_TRUE(report.failed.empty()) << report.failed.front().what();
    EXPECT_EQ(library->count<Material>(), 31u);
    EXPECT_EQ(report.import.renames.size(), 3u);

    const PhysicalAsset aluminium = physicalOf(library, "Aluminum Generic");
    EXPECT_EQ(aluminium.density().value, 2700.0);
    EXPECT_EQ(aluminium.density().unit, W("kg/m\u00B3"));
    EXPECT_EQ(aluminium.thermal_conductivity().value, 237.0);
    EXPECT_EQ(aluminium.thermal_conductivity().unit, W("W/(m\u00B7K)"));
    EXPECT_EQ(aluminium.specific_heat().value, 897.0);
    EXPECT_EQ(aluminium.specific_heat().unit, W("J/(kg\u00B7K)"));
    // Decimal commas, and kJ into J without a rounding step.
    const PhysicalAsset graphite = physicalOf(library, "Graphite");
    EXPECT_EQ(graphite.density().value, 1750.0);
    EXPECT_EQ(graphite.thermal_conductivity().value, 96.0);
    EXPECT_EQ(graphite.specific_heat().value, 720.0);
    EXPECT_EQ(physicalOf(library, "Nitrogen").thermal_conductivity().value, 25.83e-3);
    EXPECT_EQ(physicalOf(library, "Air").specific_heat().value, 1010.0);
    EXPECT_EQ(physicalOf(library, "Argon").specific_heat().value, 520.0);
    // The building cards carry a density only.
    auto wood = library->get<Material>(NameKey(W("Wood")));
    ASSERT_TRUE(wood);
    EXPECT_TRUE(wood->physical_asset()->has_density());
    EXPECT_FALSE(wood->physical_asset()->has_thermal_conductivity());
    // The kind of material as the class; the folder when a card names none.
    EXPECT_EQ(library->get<Material>(NameKey(W("Aluminum Generic")))->material_type()->name(), W("Aluminium"));
    EXPECT_EQ(library->get<Material>(NameKey(W("Water")))->material_type()->name(), W("FluidMaterial"));
    EXPECT_EQ(library->get<Material>(NameKey(W("TEMPLATE")))->material_type()->name(), W("StandardMaterial"));
    EXPECT_FALSE(library->get<Material>(NameKey(W("TEMPLATE")))->physical_asset());
}

TEST(MaterialCards, TheYamlCardReadsLikeItsIniTwin) {
    const MaterialCard yaml = readMaterialCard(kCards + "/freecad-1.x/Aluminum-Generic.FCMat");
    const MaterialCard ini = readMaterialCard(kCards + "/freecad-0.20/StandardMaterial/Aluminum-Generic.FCMat");
    EXPECT_EQ(yaml.name, W("Aluminum Generic"));
    EXPECT_EQ(yaml.name, ini.name);
    EXPECT_EQ(yaml.className, ini.className);
    EXPECT_EQ(yaml.density, ini.density);
    EXPECT_EQ(yaml.thermalConductivity, ini.thermalConductivity);
    EXPECT_EQ(yaml.specificHeat, ini.specificHeat);
    EXPECT_EQ(readMaterialCard(kCards + "/freecad-1.x/Concrete-Generic.FCMat").density, 2400.0);
}

TEST(MaterialCards, UnreadableCardsAreReportedWithFileAndLineAndTheOthersImported) {
    TempDir dir;
    const std::string folder = dir.path() + "/cards";
    std::filesystem::create_directory(folder);
    writeFile(folder + "/a-good.FCMat", "; fine\n[General]\nName = Good\n[Mechanical]\nDensity = 1.5 g/cm^3\n");
    writeFile(folder + "/b-word.FCMat", "[General]\nName = Heavy\n\n[Mechanical]\nDensity = heavy kg/m^3\n");
    writeFile(folder + "/c-unit.FCMat", "[General]\nName = Stone\n[Thermal]\nSpecificHeat = 800 BTU/lb/F\n");
    writeFile(folder + "/d-broken.FCMat", "---\nGeneral:\n  Name: Broken\n   Description: indented too far\n");
    writeFile(folder + "/e-binary.FCMat", std::string("\x89PNG\r\n\x1a\n\0\0\0", 11));
    writeFile(folder + "/f-line.FCMat", "[General]\nName = Odd\nthis is not a key\n");
    writeFile(folder + "/g-yaml-value.FCMat",
              "---\nGeneral:\n  Name: \"Foam\"\nModels:\n  Thermal:\n    ThermalConductivity: \"0,0,3 W/m/K\"\n");
    auto library = Library::create(dir.file("cards.vlib"), OdDb::kUnitsInches);

    const CardImportReport report = importMaterialCards(library, {folder});
    EXPECT_EQ(report.cardsFound, 7u);
    ASSERT_EQ(report.imported.size(), 1u);
    ASSERT_EQ(report.failed.size(), 6u);
    EXPECT_EQ(report.failed[0].file(), folder + "/b-word.FCMat");
    EXPECT_EQ(report.failed[0].line(), 5);
    EXPECT_NE(report.failed[0].reason().find("'heavy'"), std::string::npos);
    EXPECT_EQ(report.failed[1].line(), 4);
    EXPECT_NE(report.failed[1].reason().find("'BTU/lb/F'"), std::string::npos);
    EXPECT_EQ(report.failed[2].file(), folder + "/d-broken.FCMat");
    EXPECT_EQ(report.failed[2].line(), 4);
    EXPECT_EQ(report.failed[3].line(), 0);
    EXPECT_EQ(report.failed[4].line(), 3);
    EXPECT_EQ(report.failed[5].line(), 6);
    EXPECT_NE(std::string(report.failed[5].what()).find("g-yaml-value.FCMat:6: "), std::string::npos);

    EXPECT_EQ(library->count<Material>(), 1u);
    EXPECT_EQ(physicalOf(library, "Good").density().value, 1500.0);
    EXPECT_THROW(importMaterialCards(library, {folder + "/missing.FCMat"}), ExchangeError);
}

}  // namespace vltest

// Reading the official definition files: what each kind of element becomes in the model.
#include <gtest/gtest.h>

#include <algorithm>

#include "PsdTestData.h"

using namespace vl_db;
using psd_test::officialFile;
using psd_test::property;

namespace {

PsdSet official(const char* name) { return readPsd(officialFile(name)); }

TEST(PsdRead, EveryOfficialFileReadsAndTheFolderIsFoundInPathOrder) {
    const std::vector<std::string> files = findPsdFiles({psd_test::officialFolder()});
    ASSERT_EQ(files.size(), 27u);
    EXPECT_TRUE(std::is_sorted(files.begin(), files.end()));
    size_t propertySets = 0, quantitySets = 0, properties = 0;
    for (const std::string& file : files) {
        const PsdSet set = readPsd(file);
        EXPECT_FALSE(set.name.empty()) << file;
        (set.kind == PsdSetKind::kPropertySet ? propertySets : quantitySets)++;
        properties += set.properties.size();
    }
    EXPECT_EQ(propertySets, 26u);
    EXPECT_EQ(quantitySets, 1u);
    EXPECT_EQ(properties, 242u + 11u);
    EXPECT_THROW(findPsdFiles({psd_test::officialFolder() + "/missing"}), PsdError);
}

TEST(PsdRead, WallCommonKeepsSetFieldsAliasesAndTheEnumerationWithDescriptions) {
    const PsdSet wall = official("Pset_WallCommon");
    EXPECT_EQ(wall.kind, PsdSetKind::kPropertySet);
    EXPECT_EQ(wall.name, "Pset_WallCommon");
    EXPECT_EQ(wall.definition,
              "Properties common to the definition of all occurrences of IfcWall and IfcWallStandardCase.");
    EXPECT_EQ(wall.templateType, "PSET_TYPEDRIVENOVERRIDE");
    EXPECT_EQ(wall.ifdGuid, "9f80f380d21511e1800000215ad4efdf");
    EXPECT_EQ(wall.ifcVersion, "IFC4");
    EXPECT_EQ(wall.applicableClasses, std::vector<std::string>{"IfcWall"});
    EXPECT_EQ(wall.applicableTypeValue, "IfcWall");
    EXPECT_EQ(wall.properties.front().name, "Reference");

    const PsdProperty& reference = property(wall, "Reference");
    EXPECT_EQ(reference.type.kind, PsdTypeKind::kSingleValue);
    EXPECT_EQ(reference.type.dataType, "IfcIdentifier");
    EXPECT_EQ(reference.type.primitive, PsdPrimitive::kString);
    ASSERT_EQ(reference.nameAliases.size(), 5u);
    EXPECT_EQ(reference.nameAliases[0], (PsdAlias{"de-DE", "Bauteiltyp"}));
    EXPECT_EQ(reference.nameAliases[3], (PsdAlias{"ja-JP", "参照記号"}));
    ASSERT_EQ(reference.definitionAliases.size(), 5u);
    EXPECT_EQ(reference.definitionAliases[1], (PsdAlias{"en", ""}));  // listed without text
    EXPECT_EQ(reference.definitionAliases[2].text.rfind("Référence à", 0), 0u);

    const PsdType& status = property(wall, "Status").type;
    ASSERT_EQ(status.kind, PsdTypeKind::kEnumeration);
    EXPECT_EQ(status.enumListName, "PEnum_ElementStatus");
    EXPECT_EQ(status.enumItems,
              (std::vector<std::string>{"NEW", "EXISTING", "DEMOLISH", "TEMPORARY", "OTHER", "NOTKNOWN", "UNSET"}));
    const std::vector<PsdEnumValue> values = status.enumValues();
    ASSERT_EQ(values.size(), 7u);
    EXPECT_EQ(values[0], (PsdEnumValue{"NEW", "element designed as new addition"}));
    EXPECT_EQ(values[6].value, "UNSET");
    EXPECT_EQ(status.constants[0].nameAliases, std::vector<PsdAlias>{(PsdAlias{"en", "New"})});
}

TEST(PsdRead, DataTypesGiveThePrimitiveAndTheMeasure) {
    struct Case {
        const char* file;
        const char* property;
        const char* dataType;
        PsdPrimitive primitive;
        const char* measure;
    };
    const Case cases[] = {
        {"Pset_SpatialZoneCommon", "IsExternal", "IfcBoolean", PsdPrimitive::kBoolean, ""},
        {"Pset_AirTerminalTypeCommon", "NumberOfSlots", "IfcInteger", PsdPrimitive::kInteger, ""},
        {"Pset_StairCommon", "NumberOfRiser", "IfcCountMeasure", PsdPrimitive::kInteger, ""},
        {"Pset_AirTerminalTypeCommon", "AirDiffusionPerformanceIndex", "IfcReal", PsdPrimitive::kReal, ""},
        {"Pset_BeamCommon", "Span", "IfcPositiveLengthMeasure", PsdPrimitive::kReal, "LENGTH"},
        {"Pset_SpaceCommon", "GrossPlannedArea", "IfcAreaMeasure", PsdPrimitive::kReal, "AREA"},
        {"Pset_WallCommon", "ThermalTransmittance", "IfcThermalTransmittanceMeasure", PsdPrimitive::kReal, ""},
        {"Pset_ActionRequest", "RequestComments", "IfcText", PsdPrimitive::kString, ""},
        {"Pset_WallCommon", "AcousticRating", "IfcLabel", PsdPrimitive::kString, ""},
    };
    for (const Case& c : cases) {
        const PsdSet set = official(c.file);
        const PsdType& type = property(set, c.property).type;
        EXPECT_EQ(type.kind, PsdTypeKind::kSingleValue) << c.property;
        EXPECT_EQ(type.dataType, c.dataType) << c.property;
        EXPECT_EQ(type.primitive, c.primitive) << c.property;
        EXPECT_EQ(type.measure, c.measure) << c.property;
    }

    // Types the files do not use, and the way back from primitive and measure to a type.
    PsdPrimitive primitive;
    std::string measure;
    ASSERT_TRUE(psdDataType("IfcVolumeMeasure", primitive, measure));
    EXPECT_EQ(measure, "VOLUME");
    ASSERT_TRUE(psdDataType("IfcMassMeasure", primitive, measure));
    EXPECT_EQ(measure, "MASS");
    ASSERT_TRUE(psdDataType("IfcTimeStamp", primitive, measure));
    EXPECT_EQ(primitive, PsdPrimitive::kInteger);
    EXPECT_FALSE(psdDataType("IfcLengthmeasure", primitive, measure));  // names are case-sensitive
    for (PsdPrimitive p : {PsdPrimitive::kBoolean, PsdPrimitive::kInteger, PsdPrimitive::kReal, PsdPrimitive::kString}) {
        ASSERT_TRUE(psdDataType(defaultPsdDataType(p, ""), primitive, measure));
        EXPECT_EQ(primitive, p);
        EXPECT_EQ(measure, "");
    }
    for (const char* m : {"LENGTH", "AREA", "VOLUME", "MASS"}) {
        ASSERT_TRUE(psdDataType(defaultPsdDataType(PsdPrimitive::kReal, m), primitive, measure));
        EXPECT_EQ(measure, m);
    }
}

TEST(PsdRead, KindsTheEditorCannotEditAreKeptWholeAsXml) {
    struct Case {
        const char* file;
        const char* property;
        const char* kind;
        const char* contains;
    };
    const Case cases[] = {
        {"Pset_ActionRequest", "RequestSourceName", "TypePropertyReferenceValue", "reftype=\"IfcPerson\""},
        {"Pset_BuildingUse", "RentalRatesInCategoryNow", "TypePropertyBoundedValue", "<DataType type="},
        {"Pset_BuildingUse", "TenureModesAvailableNow", "TypePropertyListValue", "<ListValue>"},
        {"Pset_MaterialSteel", "Relaxations", "TypePropertyTableValue", "<DefiningValue>"},
        {"Pset_MaterialWoodBasedBeam", "InPlane", "TypeComplexProperty", "name=\"CP_MaterialMechanicalBeam\""},
    };
    for (const Case& c : cases) {
        const PsdSet set = official(c.file);
        const PsdType& type = property(set, c.property).type;
        ASSERT_EQ(type.kind, PsdTypeKind::kExtended) << c.property;
        EXPECT_EQ(type.extendedKind, c.kind);
        EXPECT_EQ(type.xml.rfind("<PropertyType>", 0), 0u) << type.xml;
        EXPECT_NE(type.xml.find(c.contains), std::string::npos) << type.xml;
        EXPECT_EQ(type.xml.find("xmlns"), std::string::npos) << type.xml;
    }
    // A complex property keeps its nested definitions with their texts and types.
    const PsdSet woodBeam = official("Pset_MaterialWoodBasedBeam");
    const std::string& complex = property(woodBeam, "InPlane").type.xml;
    EXPECT_NE(complex.find("<PropertyDef ifdguid=\"51595aaa4ef9451f922cb3f3919f8ed6\"><Name>YoungModulus</Name>"),
              std::string::npos)
        << complex;
    EXPECT_NE(complex.find("TypePropertyTableValue"), std::string::npos);
}

TEST(PsdRead, EmptyElementsAndAnEmptyEnumListRead) {
    const PsdSet zone = official("Pset_SpatialZoneCommon");
    EXPECT_EQ(zone.definition, "");
    EXPECT_EQ(zone.templateType, "");
    EXPECT_TRUE(zone.applicableClasses.empty());
    EXPECT_TRUE(zone.definitionAliases.empty());
    ASSERT_EQ(zone.properties.size(), 2u);
    const PsdProperty& reference = zone.properties[0];
    EXPECT_EQ(reference.definition, "");
    EXPECT_EQ(reference.type.kind, PsdTypeKind::kSingleValue);
    EXPECT_EQ(reference.type.dataType, "");  // <DataType /> declares none: text
    EXPECT_EQ(reference.type.primitive, PsdPrimitive::kString);
    EXPECT_TRUE(reference.nameAliases.empty());

    // Pset_BeamCommon names the values of Status only as constants.
    const PsdSet beam = official("Pset_BeamCommon");
    const PsdType& status = property(beam, "Status").type;
    ASSERT_EQ(status.kind, PsdTypeKind::kEnumeration);
    EXPECT_TRUE(status.enumItems.empty());
    EXPECT_EQ(status.enumListName, "");
    const std::vector<PsdEnumValue> values = status.enumValues();
    ASSERT_EQ(values.size(), 7u);
    EXPECT_EQ(values[3], (PsdEnumValue{"TEMPORARY",
                                       "element will exist only temporarily (such as a temporary support structure)"}));
}

TEST(PsdRead, TheQuantitySetReadsAsQuantitiesWithMeasures) {
    const PsdSet wall = official("Qto_WallBaseQuantities");
    EXPECT_EQ(wall.kind, PsdSetKind::kQuantitySet);
    EXPECT_EQ(wall.applicableClasses, std::vector<std::string>{"IfcWall"});
    ASSERT_EQ(wall.properties.size(), 11u);
    const PsdProperty& length = property(wall, "Length");
    EXPECT_EQ(length.type.kind, PsdTypeKind::kQuantity);
    EXPECT_EQ(length.type.dataType, "Q_LENGTH");
    EXPECT_EQ(length.type.primitive, PsdPrimitive::kReal);
    EXPECT_EQ(length.type.measure, "LENGTH");
    EXPECT_EQ(length.nameAliases[0], (PsdAlias{"de-DE", "Länge"}));
    EXPECT_EQ(property(wall, "GrossFootprintArea").type.measure, "AREA");
    size_t volumes = 0, masses = 0;
    for (const PsdProperty& p : wall.properties) {
        volumes += p.type.measure == "VOLUME";
        masses += p.type.measure == "MASS";
    }
    EXPECT_EQ(volumes, 2u);
    EXPECT_EQ(masses, 2u);  // Q_WEIGHT
    EXPECT_EQ(wall.definitionAliases.size(), 3u);
}

TEST(PsdRead, TheOfficialFolderIsFoundBesideOrAboveThePrograms) {
    const std::string bin = VL_BIN_DIR;
    const std::string folder = findOfficialPsdFolder(bin);
    ASSERT_FALSE(folder.empty());
    EXPECT_EQ(findPsdFiles({folder + "/IFC4_ADD2_TC1"}).size(), 27u);
    EXPECT_EQ(findOfficialPsdFolder(bin + "/modules"), folder);
    EXPECT_EQ(findOfficialPsdFolder(psd_test::officialFolder()), "");
}

}  // namespace

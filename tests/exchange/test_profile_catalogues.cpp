// Steel section catalogues: the shared real tables with their counts and dimensions, bad rows
// and entities reported with file and line, whole-file faults that import nothing, and the IFC
// export read back with the same parameters.
#include "ExchangeFixture.h"

#include <fstream>
#include <map>

#include <vantlib/ProfileCatalogues.h>

namespace vltest {

namespace {

const std::string kData = std::string(VL_TEST_DATA_DIR) + "/profiles/";

std::map<std::string, size_t> countsOf(const CatalogueImportReport& report) {
    return std::map<std::string, size_t>(report.classes.begin(), report.classes.end());
}

const CatalogueProfile* findRead(const CatalogueContent& content, const std::string& name, const char* size) {
    for (const CatalogueProfile& p : content.profiles)
        if (p.name == name && p.profile->size() == OdString::fromUtf8(size))
            return &p;
    return nullptr;
}

void expectIpe200(const CatalogueContent& content, const std::string& name = "IPE") {
    const CatalogueProfile* ipe = findRead(content, name, "200");
    ASSERT_TRUE(ipe);
    EXPECT_EQ(ipe->profile->objectType(), kIShapeProfile);
    EXPECT_EQ(ipe->profile->parameter(ShapeParameter::kOverallDepth), 200);
    EXPECT_EQ(ipe->profile->parameter(ShapeParameter::kOverallWidth), 100);
    EXPECT_EQ(ipe->profile->parameter(ShapeParameter::kWebThickness), 5.6);
    EXPECT_EQ(ipe->profile->parameter(ShapeParameter::kFlangeThickness), 8.5);
}

std::vector<std::string> reasons(const std::vector<CatalogueError>& errors) {
    std::vector<std::string> texts;
    for (const CatalogueError& e : errors)
        texts.push_back(std::to_string(e.line()) + " " + e.reason());
    return texts;
}

const char* const kSmallIfc =
    "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\nFILE_NAME('','',(''),(''),'','','');\n"
    "FILE_SCHEMA(('IFC4'));\nENDSEC;\nDATA;\n"
    "#1=IFCSIUNIT(*,.LENGTHUNIT.,$,.METRE.);\n"
    "#2=IFCSIUNIT(*,.PLANEANGLEUNIT.,$,.RADIAN.);\n"
    "#3=IFCMEASUREWITHUNIT(IFCPLANEANGLEMEASURE(0.0174532925199433),#2);\n"
    "#4=IFCCONVERSIONBASEDUNIT(#5,.PLANEANGLEUNIT.,'degree',#3);\n"
    "#5=IFCDIMENSIONALEXPONENTS(0,0,0,0,0,0,0);\n"
    "#6=IFCUNITASSIGNMENT((#1,#4));\n"
    "#10=IFCISHAPEPROFILEDEF(.AREA.,'IPE200',$,0.1,0.2,0.0056,0.0085,0.012,$,$);\n"
    "#11=IFCUSHAPEPROFILEDEF(.AREA.,'UPN 100',$,0.1,0.05,0.006,0.0085,$,$,IFCPLANEANGLEMEASURE(8.));\n"
    "#12=IFCLSHAPEPROFILEDEF(.AREA.,'L100x10',$,0.1,$,0.01,0.012,0.006);\n"
    "#13=IFCCIRCLEPROFILEDEF(.AREA.,'It''s round \\X2\\00D8\\X0\\',$,-0.01);\n"
    "#14=IFCRECTANGLEPROFILEDEF(.AREA.,'Flat 10',$,'ten',0.01);\n"
    "#15=IFCRECTANGLEHOLLOWPROFILEDEF(.AREA.,'40-2.6',$,0.04,0.04,0.0026,$,$);\n"
    "#16=IFCCIRCLEHOLLOWPROFILEDEF(.AREA.,'21.3-2.3',$,0.01065 0.0023);\n"
    "ENDSEC;\nEND-ISO-10303-21;\n";

}  // namespace

TEST_F(ExchangeTest, TheSharedSectionTablesImportWithTheirCountsAndDimensions) {
    auto library = newLibrary("steel.vlib");
    const std::vector<std::string> tables = {kData + "bolts/profile_c.blt", kData + "bolts/profile_hollow.blt",
                                             kData + "bolts/profile_i.blt", kData + "bolts/profile_l.blt",
                                             kData + "bolts/profile_z.blt"};
    const CatalogueImportReport report = importProfileCatalogues(library, tables);
    const std::map<std::string, size_t> expected = {
        {"HEA", 24}, {"HEAA", 24}, {"HEB", 24}, {"HEM", 24}, {"IPE", 24}, {"IPEa", 16}, {"IPEo", 13},
        {"IPEr", 15}, {"IPEv", 5},  {"INP", 21}, {"UPN", 14}, {"UPE", 14}, {"UAP", 9},  {"L", 39},
        {"CHS", 220}, {"SHS", 106}, {"RHS", 112}, {"Z", 6}};
    EXPECT_EQ(countsOf(report), expected);
    EXPECT_TRUE(report.skipped.empty()) << ::testing::PrintToString(reasons(report.skipped));
    EXPECT_EQ(library->count<Profile>(), 710u);

    const CatalogueContent shapes = readSectionTable(kData + "bolts/profile_i.blt");
    expectIpe200(shapes);
    const CatalogueContent hollow = readSectionTable(kData + "bolts/profile_hollow.blt");
    const CatalogueProfile* chs = findRead(hollow, "CHS", "21.3-2.3");
    ASSERT_TRUE(chs);
    EXPECT_EQ(chs->profile->parameter(ShapeParameter::kRadius), 21.3 / 2);
    EXPECT_EQ(chs->type, kProfileStructuralSteel);
    const CatalogueContent angles = readSectionTable(kData + "bolts/profile_l.blt");
    const CatalogueProfile* equal = findRead(angles, "L", "100x10");
    const CatalogueProfile* unequal = findRead(angles, "L", "200x100x10");
    ASSERT_TRUE(equal && unequal);
    EXPECT_FALSE(equal->profile->hasParameter(ShapeParameter::kWidth));
    EXPECT_EQ(unequal->profile->parameter(ShapeParameter::kWidth), 100);
    EXPECT_EQ(equal->profile->parameter(ShapeParameter::kEdgeRadius), 6);
}

TEST_F(ExchangeTest, ThePresetTableAndTheIfcLibraryImportWithTheirCounts) {
    const CatalogueContent presets = readPresetTable(kData + "freecad/profiles.csv");
    EXPECT_EQ(presets.profiles.size(), 1171u);
    EXPECT_TRUE(presets.skipped.empty());
    expectIpe200(presets);
    // The category HEA also lists HEAA sections; timber is no steel.
    EXPECT_TRUE(findRead(presets, "HEAA", "100"));
    auto timber = std::find_if(presets.profiles.begin(), presets.profiles.end(),
                               [](const CatalogueProfile& p) { return p.catalogueClass == "Eurocode timber"; });
    ASSERT_NE(timber, presets.profiles.end());
    EXPECT_EQ(timber->type, kProfileGeneric);

    auto library = newLibrary("eu.vlib");
    const CatalogueImportReport report = importProfileCatalogues(library, {kData + "ifcopenshell/IFC4_EU_Steel.ifc"});
    const std::map<std::string, size_t> expected = {
        {"IfcIShapeProfileDef", 191}, {"IfcUShapeProfileDef", 37}, {"IfcLShapeProfileDef", 39},
        {"IfcZShapeProfileDef", 6},   {"IfcCircleHollowProfileDef", 220}, {"IfcRectangleHollowProfileDef", 218}};
    EXPECT_EQ(countsOf(report), expected);
    EXPECT_TRUE(report.skipped.empty());
    EXPECT_EQ(library->count<Profile>(), 711u);
    const CatalogueContent eu = readIfcProfiles(kData + "ifcopenshell/IFC4_EU_Steel.ifc");
    expectIpe200(eu);
    const CatalogueProfile* shs = findRead(eu, "SHS", "40-2.6");
    ASSERT_TRUE(shs);
    EXPECT_EQ(shs->profile->parameter(ShapeParameter::kOuterFilletRadius), 3.9);
}

TEST_F(ExchangeTest, BadRowsAreReportedWithTheirLinesAndTheRestImports) {
    const std::string yaml =
        "classes:\n"
        "  - id: ibeam_hea\n"
        "    standards: {standard: DIN 1025-3}\n"
        "    parameters:\n"
        "      tables:\n"
        "        index: type\n"
        "        columns: [h,b,tw,tf,r]\n"
        "        data:\n"
        "          HEA100: [96, 100, 5, 8, 12]\n"
        "          HEA120: [114, 120, 5, 8]\n"
        "          HEA140: [133, 140, five, 8.5, 12]\n"
        "          HEA160: [152, -160, 6, 9, 15]\n"
        "          HEA180: [0, 180, 6, 9.5, 15]\n"
        "  - id: star_beam\n"
        "    parameters:\n"
        "      tables: {index: type, columns: [h], data: {S1: [1]}}\n"
        "  - id: cbeam_upe\n"
        "    parameters:\n"
        "      tables: {index: type, columns: [h,b,tw], data: {UPE80: [80, 50, 4]}}\n";
    const CatalogueContent table = readSectionTableText(yaml, "t.blt");
    ASSERT_EQ(table.profiles.size(), 1u);
    EXPECT_EQ(table.profiles[0].standard, "DIN 1025-3");
    EXPECT_EQ(reasons(table.skipped),
              (std::vector<std::string>{"10 the row 'HEA120' has 4 values for 5 columns",
                                        "11 the row 'HEA140' has a value of 'tw' that is not a number",
                                        "12 the row 'HEA160' has a negative overall_width",
                                        "13 the row 'HEA180' has a zero overall_depth",
                                        "14 the class 'star_beam' is unknown",
                                        "19 the table of class 'cbeam_upe' lacks the column 'tf'"}));

    const std::string csv =
        "# comment\n\nIPE,IPE200,H,100,200,5.6,8.5\r\nIPE,IPE220,H,110,220,5.9\nIPE,IPE240,Q,1,2\n"
        "CHS,CHS21.3x2.6,C,21.3,x\nRHS,RHS1,RH,-1,2,3\n";
    const CatalogueContent presets = readPresetTableText(csv, "p.csv");
    ASSERT_EQ(presets.profiles.size(), 1u);
    EXPECT_EQ(reasons(presets.skipped),
              (std::vector<std::string>{"4 the row has 3 dimensions where class H has 4",
                                        "5 the row has the unknown class 'Q'",
                                        "6 the row has the dimension 'x', which is not a number",
                                        "7 the row has a negative x_dim"}));

    const CatalogueContent ifc = readIfcProfilesText(kSmallIfc, "s.ifc");
    EXPECT_EQ(reasons(ifc.skipped),
              (std::vector<std::string>{"20 expected ',' or ')' between values",
                                        "16 #12 IfcLShapeProfileDef has 8 attributes, not 9",
                                        "17 #13 IfcCircleProfileDef has a negative radius",
                                        "18 #14 IfcRectangleProfileDef has attribute 4, which is not a number"}));
    ASSERT_EQ(ifc.profiles.size(), 3u);
    // Metres and degrees, as the file's units say.
    expectIpe200(ifc);
    const CatalogueProfile* upn = findRead(ifc, "UPN", "100");
    ASSERT_TRUE(upn);
    EXPECT_DOUBLE_EQ(upn->profile->parameter(ShapeParameter::kFlangeSlope), 8 * 0.0174532925199433);
    EXPECT_FALSE(upn->profile->hasParameter(ShapeParameter::kFilletRadius));
    EXPECT_TRUE(findRead(ifc, "SHS", "40-2.6"));
}

TEST_F(ExchangeTest, AnIfc2x3FileIsReadWithItsOwnAttributes) {
    // IFC2x3 adds centres of gravity and has the crane rails; inches by a conversion-based unit.
    const std::string ifc2x3 =
        "ISO-10303-21;\nHEADER;\nFILE_SCHEMA(('IFC2X3'));\nENDSEC;\nDATA;\n"
        "#1=IFCSIUNIT(*,.LENGTHUNIT.,$,.METRE.);\n"
        "#2=IFCMEASUREWITHUNIT(IFCLENGTHMEASURE(0.0254),#1);\n"
        "#3=IFCCONVERSIONBASEDUNIT(#4,.LENGTHUNIT.,'INCH',#2);\n"
        "#4=IFCDIMENSIONALEXPONENTS(1,0,0,0,0,0,0);\n"
        "#5=IFCUNITASSIGNMENT((#3));\n"
        "#6=IFCLSHAPEPROFILEDEF(.AREA.,'L4x4',#9,4.,$,0.5,0.375,$,$,1.2,1.2);\n"
        "#7=IFCCRANERAILFSHAPEPROFILEDEF(.AREA.,'F1',$,4.,2.,1.,2.,1.,1.,1.,1.,2.);\n"
        "#8=IFCISHAPEPROFILEDEF(.AREA.,'W8x31',#9,8.,8.,0.285,0.435,$,$,$);\n"
        "#9=IFCAXIS2PLACEMENT2D(#10,$);\n#10=IFCCARTESIANPOINT((0.,0.));\n"
        "ENDSEC;\nEND-ISO-10303-21;\n";
    const CatalogueContent content = readIfcProfilesText(ifc2x3, "old.ifc");
    ASSERT_EQ(content.profiles.size(), 2u);
    EXPECT_EQ(reasons(content.skipped), (std::vector<std::string>{"13 #8 IfcIShapeProfileDef has 10 attributes, not 8"}));
    const CatalogueProfile* angle = findRead(content, "L", "4x4");
    ASSERT_TRUE(angle);
    EXPECT_DOUBLE_EQ(angle->profile->parameter(ShapeParameter::kDepth), 4 * 25.4);
    EXPECT_DOUBLE_EQ(angle->profile->parameter(ShapeParameter::kCentreOfGravityInY), 1.2 * 25.4);
    const CatalogueProfile* rail = findRead(content, "F", "1");
    ASSERT_TRUE(rail);
    EXPECT_EQ(rail->profile->objectType(), kCraneRailFShapeProfile);
    EXPECT_DOUBLE_EQ(rail->profile->parameter(ShapeParameter::kHeadWidth), 2 * 25.4);
}

TEST_F(ExchangeTest, AFileThatCannotBeReadImportsNothing) {
    auto write = [&](const char* name, const std::string& text) {
        const std::string path = dir.file(name).toUtf8();
        std::ofstream(path, std::ios::binary) << text;
        return path;
    };
    const std::string good = write("good.csv", "IPE,IPE200,H,100,200,5.6,8.5\n");
    const std::string full = kSmallIfc;
    const std::pair<std::string, std::string> broken[] = {
        {write("truncated.ifc", full.substr(0, full.find("#15="))), "truncated"},
        {write("cut.ifc", full.substr(0, full.find("ENDSEC;\nEND-ISO"))), "truncated"},
        {write("empty.ifc", "ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n#1=IFCPROJECT('x',$,$,$,$,$,$,$,$);\nENDSEC;\n"
                            "END-ISO-10303-21;\n"),
         "holds no parameterized profile definitions"},
        {write("text.ifc", "hello"), "not an ISO 10303-21 file"},
        {write("bad.blt", "classes: [unclosed\n"), "is not a YAML section table"},
        {write("nothing.csv", "# only a comment\n"), "holds no rows"},
        {write("table.txt", "x"), "is no section table"},
    };
    auto library = newLibrary("target.vlib");
    for (const auto& file : broken) {
        try {
            importProfileCatalogues(library, {good, file.first});
            ADD_FAILURE() << file.first << " imported";
        } catch (const CatalogueError& e) {
            EXPECT_NE(std::string(e.what()).find(file.second), std::string::npos) << e.what();
            EXPECT_EQ(e.file(), file.first);
        }
        EXPECT_EQ(library->count<Profile>(), 0u);
    }
    EXPECT_EQ(importProfileCatalogues(library, {good}).import.total().created, 2u);
}

TEST_F(ExchangeTest, TheIfcExportReadsBackWithTheSameParameters) {
    auto library = newLibrary("source.vlib");
    {
        Transaction transaction(library);
        auto name = library->save(ProfileName::create(ProfileStandard::create(W("EN 10365")), W("IPE"),
                                                      kProfileStructuralSteel));
        // One profile of every shape IFC4 has, every parameter set: dimensions that make a
        // section, each made distinct by its own eighth so that no two can be swapped unseen.
        const std::map<ShapeParameter, double> typical{
            {ShapeParameter::kOverallDepth, 200}, {ShapeParameter::kOverallWidth, 100},
            {ShapeParameter::kTopFlangeWidth, 80}, {ShapeParameter::kWebThickness, 6},
            {ShapeParameter::kFlangeThickness, 10}, {ShapeParameter::kTopFlangeThickness, 8},
            {ShapeParameter::kFilletRadius, 5}, {ShapeParameter::kTopFlangeFilletRadius, 4},
            {ShapeParameter::kCentreOfGravityInX, 20}, {ShapeParameter::kCentreOfGravityInY, 30},
            {ShapeParameter::kDepth, 120}, {ShapeParameter::kWidth, 60}, {ShapeParameter::kThickness, 8},
            {ShapeParameter::kEdgeRadius, 2}, {ShapeParameter::kLegSlope, 0.0625},
            {ShapeParameter::kFlangeWidth, 60}, {ShapeParameter::kFlangeSlope, 0.0625}, {ShapeParameter::kGirth, 20},
            {ShapeParameter::kWallThickness, 3}, {ShapeParameter::kInternalFilletRadius, 3},
            {ShapeParameter::kFlangeEdgeRadius, 2}, {ShapeParameter::kWebEdgeRadius, 2},
            {ShapeParameter::kWebSlope, 0.0625}, {ShapeParameter::kOuterFilletRadius, 5},
            {ShapeParameter::kInnerFilletRadius, 2}, {ShapeParameter::kRadius, 40}, {ShapeParameter::kSemiAxis1, 40},
            {ShapeParameter::kSemiAxis2, 20}, {ShapeParameter::kXDim, 80}, {ShapeParameter::kYDim, 50},
            {ShapeParameter::kBottomXDim, 60}, {ShapeParameter::kTopXDim, 30}, {ShapeParameter::kTopXOffset, 10},
            {ShapeParameter::kRoundingRadius, 5}};
        for (const ProfileClass* shape : ProfileClass::all()) {
            if (shape->type() == kCustomProfile || shape->type() == kCraneRailAShapeProfile ||
                shape->type() == kCraneRailFShapeProfile)
                continue;
            QcSmartPtr<Profile> profile = shape->createEmpty();
            profile->set_name(name);
            profile->set_size(OdString::fromUtf8(std::string(shape->shortName()) + "1"));
            double eighth = 0.0;
            for (const ShapeParameterInfo& info : shape->parameters()) {
                const bool slope = info.id == ShapeParameter::kLegSlope || info.id == ShapeParameter::kFlangeSlope ||
                                   info.id == ShapeParameter::kWebSlope;
                profile->setParameter(info.id, typical.at(info.id) + (slope ? eighth / 64 : eighth));
                eighth += 0.125;
            }
            library->save(profile);
        }
        auto plate = CustomProfile::create(name, W("plate"));
        plate->set_geometry({{ProfileEdge(Vector2d(0, 0)), ProfileEdge(Vector2d(1, 0)), ProfileEdge(Vector2d(0, 1))}, {}});
        library->save(plate);
        transaction.commit();
    }
    const IfcExport exported = exportIfcProfiles(*library);
    EXPECT_EQ(exported.written, 14u);
    EXPECT_EQ(exported.leftOut, 1u);
    const CatalogueContent back = readIfcProfilesText(exported.text, "export.ifc");
    EXPECT_TRUE(back.skipped.empty()) << ::testing::PrintToString(reasons(back.skipped));
    ASSERT_EQ(back.profiles.size(), 14u);
    std::vector<QcSmartPtr<Profile>> originals;
    library->get(originals, ProfileCriteria());
    for (const CatalogueProfile& read : back.profiles) {
        EXPECT_EQ(read.standard, "EN 10365");
        EXPECT_EQ(read.name, "IPE");
        auto original = std::find_if(originals.begin(), originals.end(),
                                     [&](const auto& p) { return p->size() == read.profile->size(); });
        ASSERT_NE(original, originals.end()) << read.profile->size().toUtf8();
        EXPECT_EQ((*original)->objectType(), read.profile->objectType());
        // The I-shapes' centre of gravity has no attribute in IFC4; everything else comes back.
        for (const ShapeParameterInfo& info : (*original)->isA().parameters()) {
            if (info.id != ShapeParameter::kCentreOfGravityInX && info.id != ShapeParameter::kCentreOfGravityInY) {
                EXPECT_EQ(read.profile->parameter(info.id), (*original)->parameter(info.id))
                    << read.profile->size().toUtf8() << " " << info.key;
            }
        }
    }
}

}  // namespace vltest

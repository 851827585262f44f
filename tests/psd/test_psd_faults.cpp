// Broken definition files: each is refused with a message that names the file and the line to
// look at. The variants are made in memory from the official files, which stay untouched.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <unistd.h>

#include "PsdTestData.h"

using namespace vl_db;
using psd_test::lineOf;
using psd_test::replaced;

namespace {

const std::string& wallText() {
    static const std::string text = psd_test::readText(psd_test::officialFile("Pset_WallCommon"));
    return text;
}

// Reads the text and returns the error; fails the test when the text reads.
PsdError refusal(const std::string& text, const std::string& file = "broken.xml") {
    try {
        readPsdText(text, file);
    } catch (const PsdError& e) {
        return e;
    }
    ADD_FAILURE() << "read without error: " << text.substr(0, 120);
    return PsdError(file, -1, "");
}

void expectRefused(const std::string& text, int line, const std::string& reasonPart) {
    const PsdError e = refusal(text);
    EXPECT_EQ(e.file(), "broken.xml");
    EXPECT_EQ(e.line(), line) << e.what();
    EXPECT_NE(e.reason().find(reasonPart), std::string::npos) << e.what();
    if (line > 0) {
        EXPECT_EQ(std::string(e.what()).rfind("broken.xml:" + std::to_string(line) + ": ", 0), 0u) << e.what();
    }
}

TEST(PsdFaults, TextThatIsNoDefinitionFileIsRefused) {
    expectRefused("", 0, "no XML element");
    expectRefused("Pset_WallCommon;Reference;IfcIdentifier\n", 0, "no XML element");
    expectRefused("<?xml version=\"1.0\"?>\n<PropertySetDef>\n  <Name>A</Name>\n  <Definition>x</Defin\n", 4,
                  "not valid XML");
    // Cut in the middle: the parser's complaint is placed on a line of the file, not past it.
    const std::string cut = wallText().substr(0, wallText().size() / 2);
    const PsdError truncated = refusal(cut);
    EXPECT_GT(truncated.line(), 1);
    EXPECT_LE(truncated.line(), lineOf(cut + "\x01", "\x01"));

    expectRefused("<?xml version=\"1.0\"?>\n<PropertySet>\n  <Name>A</Name>\n</PropertySet>\n", 2,
                  "root element is <PropertySet>");
    expectRefused(replaced(wallText(), "http://buildingSMART-tech.org/xml/psd/PSD_IFC4.xsd\">",
                           "http://www.w3.org/1999/xhtml\">"),
                  2, "namespace 'http://www.w3.org/1999/xhtml'");
}

TEST(PsdFaults, MissingNamesUnknownTypesAndDuplicatesNameTheirLine) {
    const std::string& wall = wallText();
    expectRefused(replaced(wall, "  <Name>Pset_WallCommon</Name>\n", ""), 2, "the set has no <Name>");
    expectRefused(replaced(wall, "<Name>Pset_WallCommon</Name>", "<Name>  </Name>"), 4, "empty <Name>");
    expectRefused(replaced(wall, "      <Name>Reference</Name>\n", ""), lineOf(wall, "<PropertyDef "),
                  "a property has no <Name>");
    expectRefused(replaced(wall, "<Name>NEW</Name>", "<Name />"), lineOf(wall, "<Name>NEW</Name>"),
                  "a constant of the enumeration of 'Status'");

    const std::string unknown = replaced(wall, "IfcIdentifier", "IfcIdentifierMeasure");
    expectRefused(unknown, lineOf(wall, "IfcIdentifier"), "unknown data type 'IfcIdentifierMeasure'");

    // Names clash without regard to case; the message points at both.
    const std::string twice = replaced(wall, "<Name>AcousticRating</Name>", "<Name>REFERENCE</Name>");
    const PsdError e = refusal(twice);
    EXPECT_EQ(e.line(), lineOf(wall, "<Name>AcousticRating</Name>") - 1) << e.what();
    EXPECT_NE(e.reason().find("a second property named 'REFERENCE' (the first is on line " +
                              std::to_string(lineOf(wall, "<Name>Reference</Name>") - 1) + ")"),
              std::string::npos)
        << e.what();

    expectRefused(replaced(wall, "<EnumItem>EXISTING</EnumItem>", "<EnumItem>NEW</EnumItem>"),
                  lineOf(wall, "<EnumItem>EXISTING</EnumItem>"), "lists 'NEW' twice");
    expectRefused(replaced(wall, "<EnumItem>EXISTING</EnumItem>", "<EnumItem/>"),
                  lineOf(wall, "<EnumItem>EXISTING</EnumItem>"), "empty <EnumItem>");
    expectRefused(replaced(wall, "<ClassName>IfcWall</ClassName>", "<ClassName/>"),
                  lineOf(wall, "<ClassName>"), "empty <ClassName>");
    const std::string noType = replaced(wall,
                                        "<PropertyType>\n        <TypePropertySingleValue>\n          <DataType "
                                        "type=\"IfcIdentifier\" />\n        </TypePropertySingleValue>\n      "
                                        "</PropertyType>",
                                        "<PropertyType />");
    expectRefused(noType, lineOf(wall, "<PropertyType>"), "'Reference' has an empty <PropertyType>");

    const std::string qto = psd_test::readText(psd_test::officialFile("Qto_WallBaseQuantities"));
    expectRefused(replaced(qto, "<QtoType>Q_WEIGHT</QtoType>", "<QtoType>Q_WEIGHTS</QtoType>"),
                  lineOf(qto, "<QtoType>Q_WEIGHT</QtoType>"), "unknown quantity type 'Q_WEIGHTS'");
}

TEST(PsdFaults, OnlyUtf8AndLatin1TextIsRead) {
    const std::string& wall = wallText();
    // A file that says it is in another encoding.
    expectRefused(replaced(wall, "<?xml version=\"1.0\"?>", "<?xml version=\"1.0\" encoding=\"windows-1252\"?>"), 1,
                  "encoded in 'windows-1252'");
    // A Latin-1 file that does not say so: refused at the line of the first such byte.
    const std::string latin1 = replaced(wall, "Référence", "R\xE9" "f\xE9rence");
    expectRefused(latin1, lineOf(wall, "Référence"), "not UTF-8 (byte 0xE9)");
    // A Latin-1 file that says so is read, converted to UTF-8.
    const PsdSet declared = readPsdText("<?xml version='1.0' encoding='ISO-8859-1'?>\n<PropertySetDef>\n"
                                        "  <Name>Pset_Fa\xE7" "ade</Name>\n  <Definition>Gr\xF6\xDF" "e</Definition>\n"
                                        "</PropertySetDef>\n",
                                        "latin1.xml");
    EXPECT_EQ(declared.name, "Pset_Façade");
    EXPECT_EQ(declared.definition, "Größe");
    // Byte order marks: UTF-8 is read, UTF-16 refused.
    EXPECT_EQ(readPsdText("\xEF\xBB\xBF" + wall, "bom.xml"), readPsdText(wall, "plain.xml"));
    expectRefused(std::string("\xFF\xFE<\0?\0x\0m\0l\0", 12), 0, "UTF-16");
    expectRefused(std::string("<\0?\0x\0m\0l\0", 10), 0, "UTF-16");
    // Overlong forms and surrogates are not UTF-8 either.
    expectRefused(replaced(wall, "Bauteiltyp", "Bau\xC0\xAFteiltyp"), lineOf(wall, "Bauteiltyp"), "byte 0xC0");
    expectRefused(replaced(wall, "Bauteiltyp", "Bau\xED\xA0\x80teiltyp"), lineOf(wall, "Bauteiltyp"), "byte 0xED");
}

TEST(PsdFaults, HugeFilesAreRefusedBeforeTheyAreParsed) {
    std::string huge = wallText();
    huge.insert(huge.find("</PropertySetDef>"), std::string(kPsdMaxFileBytes, ' '));
    expectRefused(huge, 0, "larger than 8.0 MB are not read");

    const std::string path =
        (std::filesystem::temp_directory_path() / ("psd-huge-" + std::to_string(::getpid()) + ".xml")).string();
    {
        std::ofstream out(path, std::ios::binary);
        out << huge;
    }
    try {
        readPsd(path);
        ADD_FAILURE() << "a huge file was read";
    } catch (const PsdError& e) {
        EXPECT_EQ(e.file(), path);
        EXPECT_NE(e.reason().find("the file has 8.0 MB"), std::string::npos) << e.what();
    }
    std::filesystem::remove(path);

    try {
        readPsd(path);
        ADD_FAILURE() << "a missing file was read";
    } catch (const PsdError& e) {
        EXPECT_EQ(e.file(), path);
        EXPECT_NE(e.reason().find("cannot be read"), std::string::npos) << e.what();
    }
}

TEST(PsdFaults, EntitiesOfADocumentTypeAreNotExpanded) {
    // The classic entity bomb: the reader must neither expand it nor take long over it.
    std::string bomb = "<?xml version=\"1.0\"?>\n<!DOCTYPE PropertySetDef [\n<!ENTITY a \"aaaaaaaaaa\">\n";
    for (char c = 'b'; c <= 'j'; ++c) {
        std::string tenOfTheLast;
        for (int i = 0; i < 10; ++i)
            tenOfTheLast += std::string("&") + char(c - 1) + ";";
        bomb += std::string("<!ENTITY ") + c + " \"" + tenOfTheLast + "\">\n";
    }
    bomb += "]>\n<PropertySetDef>\n  <Name>Pset_&j;</Name>\n</PropertySetDef>\n";
    const PsdSet set = readPsdText(bomb, "bomb.xml");
    EXPECT_LT(set.name.size(), 20u) << set.name;
}

}  // namespace

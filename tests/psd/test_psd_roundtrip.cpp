// Writing definition files: every official file read, written and read again gives the same
// model, field by field; what the writer does with models that did not come from a file.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>

#include <unistd.h>

#include "PsdTestData.h"

using namespace vl_db;
using psd_test::property;

namespace {

std::string aliasesText(const std::vector<PsdAlias>& aliases) {
    std::string text;
    for (const PsdAlias& a : aliases)
        text += "[" + a.lang + "|" + a.text + "]";
    return text;
}

// Compares field by field, so that a failure names the field that differs.
void expectSameType(const PsdType& a, const PsdType& b, const std::string& where) {
    EXPECT_EQ(a.kind, b.kind) << where;
    EXPECT_EQ(a.primitive, b.primitive) << where;
    EXPECT_EQ(a.dataType, b.dataType) << where;
    EXPECT_EQ(a.measure, b.measure) << where;
    EXPECT_EQ(a.enumListName, b.enumListName) << where;
    EXPECT_EQ(a.enumItems, b.enumItems) << where;
    ASSERT_EQ(a.constants.size(), b.constants.size()) << where;
    for (size_t i = 0; i < a.constants.size(); ++i) {
        const std::string at = where + " constant " + a.constants[i].name;
        EXPECT_EQ(a.constants[i].name, b.constants[i].name) << at;
        EXPECT_EQ(a.constants[i].definition, b.constants[i].definition) << at;
        EXPECT_EQ(aliasesText(a.constants[i].nameAliases), aliasesText(b.constants[i].nameAliases)) << at;
        EXPECT_EQ(aliasesText(a.constants[i].definitionAliases), aliasesText(b.constants[i].definitionAliases)) << at;
    }
    EXPECT_EQ(a.enumValues(), b.enumValues()) << where;
    EXPECT_EQ(a.extendedKind, b.extendedKind) << where;
    EXPECT_EQ(a.xml, b.xml) << where;
}

void expectSameSet(const PsdSet& a, const PsdSet& b) {
    const std::string where = a.name;
    EXPECT_EQ(a.kind, b.kind) << where;
    EXPECT_EQ(a.name, b.name) << where;
    EXPECT_EQ(a.definition, b.definition) << where;
    EXPECT_EQ(a.ifdGuid, b.ifdGuid) << where;
    EXPECT_EQ(a.templateType, b.templateType) << where;
    EXPECT_EQ(a.ifcVersion, b.ifcVersion) << where;
    EXPECT_EQ(a.applicability, b.applicability) << where;
    EXPECT_EQ(a.applicableClasses, b.applicableClasses) << where;
    EXPECT_EQ(a.applicableTypeValue, b.applicableTypeValue) << where;
    EXPECT_EQ(aliasesText(a.definitionAliases), aliasesText(b.definitionAliases)) << where;
    ASSERT_EQ(a.properties.size(), b.properties.size()) << where;
    for (size_t i = 0; i < a.properties.size(); ++i) {
        const PsdProperty& p = a.properties[i];
        const PsdProperty& q = b.properties[i];
        const std::string at = where + "." + p.name;
        EXPECT_EQ(p.name, q.name) << at;
        EXPECT_EQ(p.definition, q.definition) << at;
        EXPECT_EQ(p.ifdGuid, q.ifdGuid) << at;
        EXPECT_EQ(aliasesText(p.nameAliases), aliasesText(q.nameAliases)) << at;
        EXPECT_EQ(aliasesText(p.definitionAliases), aliasesText(q.definitionAliases)) << at;
        expectSameType(p.type, q.type, at);
    }
    EXPECT_TRUE(a == b) << where << ": the comparison operator disagrees with the fields";
}

class TempFile {
public:
    TempFile() : m_path((std::filesystem::temp_directory_path() / ("psd-" + std::to_string(::getpid()) + ".xml")).string()) {}
    ~TempFile() { std::remove(m_path.c_str()); }
    const std::string& path() const { return m_path; }

private:
    std::string m_path;
};

TEST(PsdRoundTrip, EveryOfficialFileReadsBackFieldByFieldAndIsWrittenAsItWas) {
    const std::vector<std::string> files = vl_db::findPsdFiles({psd_test::officialFolder()});
    ASSERT_EQ(files.size(), 27u);
    TempFile written;
    for (const std::string& file : files) {
        SCOPED_TRACE(file);
        const PsdSet first = readPsd(file);
        writePsd(first, written.path());
        const PsdSet second = readPsd(written.path());
        expectSameSet(first, second);
        // Writing is stable: the written file written again is the same text.
        EXPECT_EQ(writePsdText(second), psd_test::readText(written.path()));
        // And it is the official file itself, but for the declared encoding and a final line end.
        const std::string official = psd_test::readText(file);
        EXPECT_EQ(psd_test::readText(written.path()),
                  psd_test::replaced(official, "<?xml version=\"1.0\"?>", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>") +
                      "\n");
    }
}

PsdSet smallSet() {
    PsdSet set;
    set.name = "Office_Window";
    set.definition = "Windows as the office describes them: <sizes> & \"labels\", façade ✓";
    set.applicableClasses = {"IfcWindow", "IfcWindowType"};
    PsdProperty width;
    width.name = "Width";
    width.type.primitive = PsdPrimitive::kReal;
    width.type.measure = "LENGTH";
    PsdProperty count;
    count.name = "Panes";
    count.type.primitive = PsdPrimitive::kInteger;
    count.type.dataType = "IfcLengthMeasure";  // no longer what the definition says
    PsdProperty note;
    note.name = "Note";
    PsdProperty finish;
    finish.name = "Finish";
    finish.type.kind = PsdTypeKind::kEnumeration;
    finish.type.enumItems = {"MATT", "GLOSS"};
    finish.type.constants = {{"GLOSS", "Shiny & smooth", {}, {{"de-DE", "Glänzend"}}}};
    set.properties = {width, count, note, finish};
    return set;
}

TEST(PsdRoundTrip, DefinitionsMadeInTheEditorAreWrittenWithFittingDataTypes) {
    const PsdSet set = smallSet();
    const std::string text = writePsdText(set);
    const PsdSet back = readPsdText(text, "written.xml");
    EXPECT_EQ(back.definition, set.definition);
    EXPECT_EQ(back.applicableClasses, set.applicableClasses);
    // A measure without data type is written with the measure's type; a data type that no
    // longer fits the primitive gives way to the primitive's own; text without one stays so.
    EXPECT_EQ(property(back, "Width").type.dataType, "IfcLengthMeasure");
    EXPECT_EQ(property(back, "Width").type.measure, "LENGTH");
    EXPECT_EQ(property(back, "Panes").type.dataType, "IfcInteger");
    EXPECT_EQ(property(back, "Panes").type.primitive, PsdPrimitive::kInteger);
    EXPECT_EQ(property(back, "Note").type.dataType, "");
    const PsdType& finish = property(back, "Finish").type;
    EXPECT_EQ(finish.enumValues(), (std::vector<PsdEnumValue>{{"MATT", ""}, {"GLOSS", "Shiny & smooth"}}));
    EXPECT_EQ(finish.constants, set.properties[3].type.constants);
}

TEST(PsdRoundTrip, AFileWithANamespacePrefixReadsLikeTheOfficialForm) {
    const std::string official = psd_test::readText(psd_test::officialFile("Pset_ActionRequest"));
    std::string prefixed = psd_test::replaced(official, "xmlns=\"http", "xmlns:psd=\"http");
    for (const std::string element : {"PropertySetDef", "IfcVersion", "Name", "Definition", "Applicability",
                                      "ApplicableClasses", "ClassName", "ApplicableTypeValue", "PropertyDefs",
                                      "PropertyDef", "PropertyType", "TypePropertySingleValue", "DataType",
                                      "TypePropertyReferenceValue", "NameAliases", "NameAlias", "DefinitionAliases",
                                      "DefinitionAlias", "PsetDefinitionAliases", "PsetDefinitionAlias"}) {
        for (const std::string tag : {"<", "</"}) {
            for (const std::string end : {">", " ", "/"}) {
                const std::string from = tag + element + end;
                const std::string to = tag + "psd:" + element + end;
                for (size_t at = prefixed.find(from); at != std::string::npos; at = prefixed.find(from, at + to.size()))
                    prefixed.replace(at, from.size(), to);
            }
        }
    }
    ASSERT_NE(prefixed.find("<psd:TypePropertyReferenceValue reftype"), std::string::npos);
    expectSameSet(readPsdText(official, "official.xml"), readPsdText(prefixed, "prefixed.xml"));

    // Namespace declarations further down are no content of a property's type either.
    const std::string declared = psd_test::replaced(official, "<DataType type=\"IfcLabel\" />",
                                                    "<DataType xmlns:ifc=\"urn:x\" type=\"IfcLabel\" />");
    const PsdSet set = readPsdText(declared, "declared.xml");
    EXPECT_EQ(property(set, "RequestSourceLabel").type.kind, PsdTypeKind::kSingleValue);
    expectSameSet(set, readPsdText(writePsdText(set), "written.xml"));
}

TEST(PsdRoundTrip, CarriageReturnsAndTabsWrittenAsReferencesReadAsTheParserLeavesPlainText) {
    std::string text = psd_test::readText(psd_test::officialFile("Pset_BuildingUse"));
    text = psd_test::replaced(text, "<Name>Pset_BuildingUse</Name>", "<Name>Pset_Building&#13;&#10;Use</Name>");
    text = psd_test::replaced(text, "lang=\"en\"", "lang=\"e&#9;n&#13;\"");
    text = psd_test::replaced(text, "<DataType type=\"IfcMonetaryMeasure\" />",
                              "<DataType type=\"IfcMonetaryMeasure\" unit=\"E&#13;UR\">a&#13;b</DataType>&#13; ");
    const PsdSet first = readPsdText(text, "references.xml");
    EXPECT_EQ(first.name, "Pset_Building\nUse");
    const PsdSet second = readPsdText(writePsdText(first), "written.xml");
    expectSameSet(first, second);
}

TEST(PsdRoundTrip, TheWriterRefusesWhatItCannotWriteAsAValidFile) {
    PsdSet set = smallSet();
    set.name.clear();
    EXPECT_THROW(writePsdText(set), PsdError);

    set = smallSet();
    set.properties[0].type.kind = PsdTypeKind::kExtended;
    set.properties[0].type.xml = "<TypePropertyBoundedValue/>";  // not the PropertyType element
    EXPECT_THROW(writePsdText(set), PsdError);
    set.properties[0].type.xml = "<PropertyType><TypePropertyBoundedValue/></PropertyType><PropertyType/>";
    EXPECT_THROW(writePsdText(set), PsdError);
    set.properties[0].type.xml = "<PropertyType><TypePropertyBoundedValue>";
    EXPECT_THROW(writePsdText(set), PsdError);

    set = smallSet();
    set.kind = PsdSetKind::kQuantitySet;
    set.properties = {set.properties[0]};  // Width: a length, Q_LENGTH
    EXPECT_EQ(property(readPsdText(writePsdText(set), "q.xml"), "Width").type.dataType, "Q_LENGTH");
    set.properties[0].type.primitive = PsdPrimitive::kString;  // no quantity is text
    set.properties[0].type.measure.clear();
    EXPECT_THROW(writePsdText(set), PsdError);

    EXPECT_THROW(writePsd(smallSet(), "/nonexistent-folder/out.xml"), PsdError);
}

}  // namespace

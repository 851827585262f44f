// Property-set definitions in the exchange document: every field through a round trip, the
// order the user gave, clashes answered per namespace, older documents, and bad ones refused.
#include "ExchangeFixture.h"

#include <fstream>
#include <iterator>

#include <nlohmann/json.hpp>

#include <vantlib/PropertySets.h>

namespace vltest {

namespace {

PropertyDefinitionRecord definition(const char* name, DefinitionKind kind, TypeSpecification type) {
    PropertyDefinitionRecord record;
    record.kind = kind;
    record.name = W(name);
    record.label = W(name) + L" label";
    record.type = std::move(type);
    return record;
}

// Two namespaces in an order that is not alphabetical, one read-only with an official set
// (classes, aliases, a kind kept as text, what its file gave), one of the office with an
// enumeration and a measure.
void fillPropertySets(const std::shared_ptr<Library>& library) {
    PropertySetStore store(library);
    PropertyNamespaceRecord official;
    official.name = W("Pset");
    official.label = W("Official");
    official.editable = false;
    PropertySetRecord wall;
    wall.namespaceId = store.createNamespace(official);
    wall.name = W("Pset_WallCommon");
    wall.description = W("Properties common to all walls \u00B7 \"quoted\"");
    wall.visible = false;
    wall.editable = false;
    wall.templateType = W("PSET_TYPEDRIVENOVERRIDE");
    wall.applicableTypeValue = W("IfcWall/SOLIDWALL");
    wall.applicableClasses = {W("IfcWall"), W("IfcWallStandardCase")};
    wall.aliases = {{W("de-DE"), W("Wand"), W("Gemeinsame Eigenschaften")}, {W("fr"), W("Mur"), W("")}};
    wall.source = R"({"ifdguid":"abc","ifcVersion":"IFC4","applicability":""})";
    const uint32_t wallId = store.createPropertySet(wall);
    PropertyDefinitionRecord curve = definition("SoundCurve", DefinitionKind::kProperty,
                                                {TypeSpecification::kExtended, 10, 4, "<TypePropertyTableValue>\n  <x/>"});
    curve.setId = wallId;
    curve.aliases = {{W("de"), W("Schallkurve"), W("Kurve \u00FC")}};
    store.createDefinition(curve);
    PropertyDefinitionRecord status =
        definition("Status", DefinitionKind::kProperty,
                   {TypeSpecification::kEnumeration, 11, 1,
                    R"({"type":"Enum","values":[{"ref":"NEW","desc":"Neu"},"EXISTING"],"allow_custom_value":true})"});
    status.setId = wallId;
    status.source = R"({"enumList":"PEnum_ElementStatus","enumItems":["NEW","EXISTING"]})";
    store.createDefinition(status);
    PropertyDefinitionRecord height = definition("Height", DefinitionKind::kProperty, {TypeSpecification::kPrimitive, 10, 1, ""});
    height.setId = wallId;
    height.measure = W("LENGTH");
    height.source = R"({"dataType":"IfcPositiveLengthMeasure"})";
    store.createDefinition(height);

    PropertyNamespaceRecord office;
    office.name = W("Office");
    PropertySetRecord finishes;
    finishes.namespaceId = store.createNamespace(office);
    finishes.name = W("Office_Finishes");
    const uint32_t finishesId = store.createPropertySet(finishes);
    for (const char* name : {"Zone", "Colour", "Area"}) {
        PropertyDefinitionRecord p = definition(name, DefinitionKind::kProperty, {TypeSpecification::kPrimitive, 10, 1, ""});
        p.setId = finishesId;
        store.createDefinition(p);
    }
    PropertyDefinitionRecord net = definition("NetArea", DefinitionKind::kValue,
                                              {TypeSpecification::kFormula, 10, 1, R"({"type":"Formula","values":"Area * 0.9"})"});
    net.setId = finishesId;
    net.measure = W("AREA");
    net.source = R"({"dataType":"IfcAreaMeasure"})";
    store.createDefinition(net);
    PropertySetRecord empty;
    empty.namespaceId = finishes.namespaceId;
    empty.name = W("Attic");
    store.createPropertySet(empty);
}

// Everything the store holds, field by field, without ids.
std::string describe(const std::shared_ptr<Library>& library) {
    PropertySetStore store(library);
    std::string text;
    auto add = [&](const OdString& value) { text += value.toUtf8() + "|"; };
    auto aliases = [&](const std::vector<LocalizedName>& list) {
        for (const auto& alias : list) {
            add(alias.language);
            add(alias.name);
            add(alias.definition);
        }
    };
    for (const auto& ns : store.namespaces()) {
        text += "\nNS ";
        add(ns.name);
        add(ns.label);
        text += std::to_string(ns.editable);
        for (const auto& set : store.propertySets(ns.id)) {
            text += "\n SET ";
            for (const OdString* field : {&set.name, &set.label, &set.description, &set.templateType, &set.applicableTypeValue})
                add(*field);
            text += std::to_string(set.visible) + std::to_string(set.perInstance) + std::to_string(set.editable);
            for (const auto& ifcType : set.applicableClasses)
                add(ifcType);
            aliases(set.aliases);
            text += set.source + "|";
            for (DefinitionKind kind : {DefinitionKind::kProperty, DefinitionKind::kValue})
                for (const auto& d : store.definitions(set.id, kind)) {
                    text += "\n  DEF " + std::to_string(int(kind)) + " ";
                    for (const OdString* field : {&d.name, &d.label, &d.description, &d.measure})
                        add(*field);
                    text += std::to_string(d.type.kind) + "|" + std::to_string(d.type.code) + "|" +
                            std::to_string(d.type.valueCategory) + "|" + d.type.data + "|";
                    aliases(d.aliases);
                    text += d.source + "|";
                }
        }
    }
    return text;
}

ImportCounts namespaceCounts(const ImportReport& report) {
    for (const auto& entry : report.kinds)
        if (entry.type == kPropertyNamespace)
            return entry.counts;
    ADD_FAILURE() << "no counts for namespaces";
    return {};
}

}  // namespace

TEST_F(ExchangeTest, PropertySetsTravelWholeAndInTheirOrder) {
    auto source = newLibrary("source.vlib");
    fillPropertySets(source);
    const std::string first = exportLibrary(*source);
    EXPECT_LT(first.find("\"name\": \"Pset\""), first.find("\"name\": \"Office\"")) << "the library's order, not by name";
    EXPECT_NE(std::string::npos, first.find("\"allow_custom_value\": true")) << "an enumeration's data is JSON in the document";

    auto copy = newLibrary("copy.vlib");
    const ImportReport report = importLibrary(copy, first);
    EXPECT_EQ(2u, namespaceCounts(report).created);
    EXPECT_EQ(describe(source), describe(copy));
    EXPECT_EQ(first, exportLibrary(*copy)) << "export, import and export again give the same bytes";

    // Only the kinds asked for: property sets alone, or none of them.
    const std::string alone = exportLibrary(*source, {kPropertyNamespace});
    EXPECT_NE(std::string::npos, alone.find("Pset_WallCommon"));
    EXPECT_EQ(std::string::npos, exportLibrary(*source, {kMaterial}).find("Pset_WallCommon"));
}

TEST_F(ExchangeTest, TheSchemaNamesEveryPropertySetMember) {
    std::ifstream in(std::string(VL_DOCS_DIR) + "/library-exchange.schema.json", std::ios::binary);
    const auto schema = nlohmann::json::parse(std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()));
    auto source = newLibrary("source.vlib");
    fillPropertySets(source);
    const auto document = nlohmann::json::parse(exportLibrary(*source));
    auto keys = [](const nlohmann::json& object) {
        std::set<std::string> names;
        for (auto it = object.begin(); it != object.end(); ++it)
            names.insert(it.key());
        return names;
    };
    const auto& defs = schema["$defs"];
    const auto& official = document["propertyNamespaces"][0];
    const auto& wall = official["propertySets"][0];
    const auto& net = document["propertyNamespaces"][1]["propertySets"][0]["valueDefinitions"][0];
    EXPECT_EQ(keys(official), keys(defs["propertyNamespace"]["properties"]));
    EXPECT_EQ(keys(wall), keys(defs["propertySet"]["properties"]));
    EXPECT_EQ(keys(wall["aliases"][0]), keys(defs["aliases"]["items"]["properties"]));
    EXPECT_EQ(keys(wall["propertyDefinitions"][2]), keys(defs["propertyDefinition"]["properties"]))
        << "a property with a measure and what its file gave";
    EXPECT_EQ(keys(wall["propertyDefinitions"][0]["type"]), keys(defs["typeSpecifier"]["properties"]));
    EXPECT_EQ(keys(net), keys(defs["valueDefinition"]["properties"]));
}

TEST_F(ExchangeTest, ANamespaceClashIsAnsweredForTheWholeNamespace) {
    auto source = newLibrary("source.vlib");
    fillPropertySets(source);
    const std::string document = exportLibrary(*source, {kPropertyNamespace});

    auto target = newLibrary("target.vlib");
    PropertySetStore store(target);
    PropertyNamespaceRecord theirs;
    theirs.name = W("OFFICE");
    PropertySetRecord own;
    own.namespaceId = store.createNamespace(theirs);
    own.name = W("Theirs");
    store.createPropertySet(own);

    ImportReport skipped = importLibrary(target, document, ClashAnswer::kSkip);
    EXPECT_EQ(1u, namespaceCounts(skipped).skipped);
    EXPECT_EQ(1u, namespaceCounts(skipped).created);
    EXPECT_EQ(W("Theirs"), store.propertySets(store.findNamespace(W("Office"))->id)[0].name);

    ImportReport renamed = importLibrary(target, document, ClashAnswer::kRename);
    EXPECT_EQ(2u, namespaceCounts(renamed).renamed);
    EXPECT_TRUE(store.findNamespace(W("Office_2")));
    EXPECT_TRUE(store.findNamespace(W("Pset_2")));

    ImportReport overwritten = importLibrary(target, document, ClashAnswer::kOverwrite);
    EXPECT_EQ(2u, namespaceCounts(overwritten).overwritten);
    const auto office = store.findNamespace(W("Office"));
    ASSERT_TRUE(office);
    ASSERT_EQ(2u, store.propertySets(office->id).size());
    EXPECT_EQ(W("Office_Finishes"), store.propertySets(office->id)[0].name) << "the document's sets replace theirs";
}

TEST_F(ExchangeTest, ADocumentOfVersionTwoHasNoPropertySetsAndReads) {
    auto source = newLibrary("source.vlib");
    fillSample(source);
    std::string document = exportLibrary(*source, {kMaterial});
    const size_t version = document.find("\"version\": 3");
    ASSERT_NE(std::string::npos, version);
    document.replace(version, 12, "\"version\": 2");
    const size_t lists = document.find(",\n  \"propertyNamespaces\"");
    ASSERT_EQ(std::string::npos, lists) << "no property sets were asked for";
    auto target = newLibrary("target.vlib");
    importLibrary(target, document);
    EXPECT_EQ(3u, target->count<Material>());
}

TEST_F(ExchangeTest, BadPropertySetsAreRefusedAndNothingIsImported) {
    auto source = newLibrary("source.vlib");
    fillPropertySets(source);
    const std::string good = exportLibrary(*source, {kPropertyNamespace});
    auto swap = [&](const std::string& from, const std::string& to) {
        std::string text = good;
        const size_t at = text.find(from);
        EXPECT_NE(std::string::npos, at) << from;
        if (at != std::string::npos)
            text.replace(at, from.size(), to);
        return text;
    };
    const struct {
        std::string document;
        const char* message;
    } cases[] = {
        {swap("\"name\": \"Attic\"", "\"name\": \"OFFICE_finishes\""), "another set of its namespace has"},
        {swap("\"name\": \"Colour\"", "\"name\": \"zone\""), "another definition of its set has"},
        {swap("\"name\": \"Office\"", "\"name\": \"PSET\""), "occurs twice in 'propertyNamespaces'"},
        {swap("\"kind\": \"formula\"", "\"kind\": \"macro\""), "names no kind of type: 'macro'"},
        {swap("\"category\": 4", "\"category\": 1"), "no extended kind"},
        {swap("\"language\": \"fr\"", "\"language\": \"\""), "'language' that is empty"},
        {swap("\"applicableClasses\": [\n", "\"applicableClasses\": [\n \"IFCWALL\",\n"), "names 'IfcWall' twice"},
        {swap("\"visible\": false", "\"visible\": 0"), "is not true or false"},
        {swap("\"measure\": \"AREA\"", "\"measure\": \"AREA\", \"unit\": \"m2\""), "unknown field 'unit'"},
        {swap("\"name\": \"Zone\"", "\"name\": \"\""), "empty name"},
    };
    auto target = newLibrary("target.vlib");
    const std::string before = dumpLibrary(target->filename());
    for (const auto& bad : cases) {
        try {
            importLibrary(target, bad.document);
            ADD_FAILURE() << "accepted a document that should fail with: " << bad.message;
        } catch (const ExchangeError& e) {
            EXPECT_NE(std::string::npos, std::string(e.what()).find(bad.message)) << e.what();
        }
    }
    EXPECT_EQ(before, dumpLibrary(target->filename()));
}

}  // namespace vltest

// The format's page and schema under docs/ describe what the code reads and writes.
#include "ExchangeFixture.h"

#include <fstream>
#include <iterator>
#include <regex>

#include <nlohmann/json.hpp>

#include <vantlib/Profile.h>

namespace vltest {

namespace {

std::string docsFile(const char* name) {
    std::ifstream in(std::string(VL_DOCS_DIR) + "/" + name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace

TEST_F(ExchangeTest, ThePagesExampleImports) {
    const std::string page = docsFile("library-exchange.md");
    std::smatch example;
    ASSERT_TRUE(std::regex_search(page, example, std::regex("```json\\n([^`]*)```")));
    auto library = newLibrary("example.vlib");
    const ImportReport report = importLibrary(library, example[1].str());
    EXPECT_EQ(report.total().created, 8u);
    EXPECT_EQ(library->get<Composition>(NameKey(W("Brick wall 175")))->ply(0).material()->name(), W("Clay brick"));
}

TEST_F(ExchangeTest, TheSchemaNamesEveryMemberTheExportWritesAndNoOther) {
    const auto schema = nlohmann::json::parse(docsFile("library-exchange.schema.json"));
    auto source = newLibrary("source.vlib");
    fillSample(source);
    const auto document = nlohmann::json::parse(exportLibrary(*source));
    // Top level, a material, its assets and a composition with its plies.
    auto keys = [](const nlohmann::json& object) {
        std::set<std::string> names;
        for (auto it = object.begin(); it != object.end(); ++it)
            names.insert(it.key());
        return names;
    };
    const auto& defs = schema["$defs"];
    EXPECT_EQ(keys(document), keys(schema["properties"]));
    const auto& brick = document["materials"][0];
    EXPECT_EQ(keys(brick), keys(defs["material"]["properties"]));
    EXPECT_EQ(keys(brick["bim"]), keys(defs["material"]["properties"]["bim"]["properties"]));
    EXPECT_EQ(keys(brick["information"]), keys(defs["material"]["properties"]["information"]["properties"]));
    EXPECT_EQ(keys(brick["sectionPattern"]), keys(defs["pattern"]["properties"]));
    const auto& wall = document["compositions"][1];
    EXPECT_EQ(wall["name"], "Wall 1");
    EXPECT_EQ(keys(wall), keys(defs["composition"]["properties"]));
    EXPECT_EQ(keys(wall["plies"][0]), keys(defs["composition"]["properties"]["plies"]["items"]["properties"]));
    EXPECT_EQ(schema["properties"]["version"]["maximum"], kExchangeFormatVersion);
}

TEST_F(ExchangeTest, TheSchemaNamesEveryProfileMemberAndShape) {
    const auto schema = nlohmann::json::parse(docsFile("library-exchange.schema.json"));
    const auto& defs = schema["$defs"];
    std::set<std::string> shapes;
    for (const auto& shape : defs["profile"]["properties"]["shape"]["enum"])
        shapes.insert(shape.get<std::string>());
    std::set<std::string> classes;
    for (const ProfileClass* shape : ProfileClass::all())
        classes.insert(shape->shortName());
    EXPECT_EQ(shapes, classes);

    // A profile with every member: name, standard, material, offset and an outline.
    auto source = newLibrary("source.vlib");
    {
        Transaction transaction(source);
        auto steel = source->save(Material::create(W("S235")));
        auto name = source->save(ProfileName::create(ProfileStandard::create(W("EN")), W("Plates"), kProfileGeneric));
        auto plate = CustomProfile::create(name, W("P1"));
        plate->set_material(steel);
        plate->set_offset(Vector2d(1, 2));
        plate->set_geometry({{ProfileEdge(Vector2d(0, 0)), ProfileEdge(Vector2d(1, 0)), ProfileEdge(Vector2d(0, 1))}, {}});
        source->save(plate);
        transaction.commit();
    }
    const auto document = nlohmann::json::parse(exportLibrary(*source));
    auto keys = [](const nlohmann::json& object) {
        std::set<std::string> names;
        for (auto it = object.begin(); it != object.end(); ++it)
            names.insert(it.key());
        return names;
    };
    EXPECT_EQ(keys(document["profiles"][0]), keys(defs["profile"]["properties"]));
    EXPECT_EQ(keys(document["profiles"][0]["geometry"]), keys(defs["profile"]["properties"]["geometry"]["properties"]));
    EXPECT_EQ(keys(document["profileNames"][0]), keys(defs["profileName"]["properties"]));
}

}  // namespace vltest

// The IFC reader under a bounded mutation test: damaged files (bytes changed, cut, repeated,
// nested without end) are read or refused with a CatalogueError, never with anything else, and
// whatever is read keeps the reader's promises.
#include "ExchangeFixture.h"

#include <random>

#include <vantlib/ProfileCatalogues.h>

namespace vltest {

namespace {

// A small library's export: every kind of value the reader meets (strings with escapes,
// enumerations, references, lists, reals, $).
std::string seedFile(const std::shared_ptr<Library>& library) {
    Transaction transaction(library);
    auto name = library->save(ProfileName::create(ProfileStandard::create(W("EN \u00C4'1")), W("IPE"),
                                                  kProfileStructuralSteel));
    auto ipe = IShapeProfile::create(name, W("200"));
    ipe->set_overall_depth(200);
    ipe->set_overall_width(100);
    ipe->set_web_thickness(5.6);
    ipe->set_flange_thickness(8.5);
    ipe->set_description(W("it's \\ \U0001F600"));
    library->save(ipe);
    auto angle = LShapeProfile::create(name, W("L1"));
    angle->set_depth(100);
    angle->set_thickness(1e-7);
    angle->set_leg_slope(0.01);
    library->save(angle);
    transaction.commit();
    return exportIfcProfiles(*library).text;
}

std::string mutated(std::string text, std::mt19937& random) {
    static const std::string tokens = "#=(),;'$*.\\X20/*\n-+eE9IFC";
    auto at = [&](size_t size) { return size == 0 ? 0 : std::uniform_int_distribution<size_t>(0, size - 1)(random); };
    const int edits = std::uniform_int_distribution<int>(1, 4)(random);
    for (int e = 0; e < edits && !text.empty(); ++e) {
        const size_t where = at(text.size());
        switch (std::uniform_int_distribution<int>(0, 5)(random)) {
        case 0: text[where] = tokens[at(tokens.size())]; break;
        case 1: text[where] = char(std::uniform_int_distribution<int>(0, 255)(random)); break;
        case 2: text.erase(where, std::min<size_t>(at(40) + 1, text.size() - where)); break;
        case 3: text.insert(where, text.substr(at(text.size()), at(60))); break;
        case 4: text.resize(where); break;
        default: text.insert(where, std::string(at(200) + 1, '(')); break;
        }
    }
    return text;
}

}  // namespace

TEST_F(ExchangeTest, DamagedIfcFilesAreReadOrRefusedButNeverCrashTheReader) {
    const std::string seed = seedFile(newLibrary("seed.vlib"));
    ASSERT_EQ(readIfcProfilesText(seed, "seed.ifc").profiles.size(), 2u);

    std::mt19937 random(20261123);
    size_t read = 0, refused = 0;
    for (int i = 0; i < 4000; ++i) {
        const std::string text = mutated(seed, random);
        try {
            const CatalogueContent content = readIfcProfilesText(text, "fuzz.ifc");
            ++read;
            const int lines = int(std::count(text.begin(), text.end(), '\n')) + 1;
            for (const CatalogueError& skipped : content.skipped)
                EXPECT_TRUE(skipped.line() >= 1 && skipped.line() <= lines) << skipped.what();
            for (const CatalogueProfile& profile : content.profiles)
                for (const ShapeParameterInfo& info : profile.profile->isA().parameters())
                    EXPECT_GE(profile.profile->parameter(info.id), 0.0) << info.key;
        } catch (const CatalogueError&) {
            ++refused;
        }
    }
    // Both outcomes were exercised, so the mutations reached past the header.
    EXPECT_GT(read, 100u);
    EXPECT_GT(refused, 100u);

    // Nesting far beyond any real file is an unreadable instance, not a stack overflow.
    const std::string deep = seed.substr(0, seed.find("#7=")) + "#7=IFCX(" + std::string(100000, '(') + ");\n" +
                             seed.substr(seed.find("#7="));
    const CatalogueContent content = readIfcProfilesText(deep, "deep.ifc");
    ASSERT_FALSE(content.skipped.empty());
    EXPECT_NE(content.skipped.front().reason().find("nested too deeply"), std::string::npos);
    EXPECT_EQ(content.profiles.size(), 2u);
}

}  // namespace vltest

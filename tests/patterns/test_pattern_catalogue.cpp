// The pattern catalogue: host patterns first, folder files after, first name wins.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include <unistd.h>

#include "OdError.h"
#include "PatternCatalogue.h"

namespace fs = std::filesystem;
using namespace ca;

namespace {

class TempFolder {
public:
    TempFolder() {
        m_path = fs::temp_directory_path() / ("vl_patterns_" + std::to_string(::getpid()) + "_" + std::to_string(++s_count));
        fs::create_directories(m_path);
    }
    ~TempFolder() { fs::remove_all(m_path); }
    OdString path() const { return OdString::fromUtf8(m_path.string()); }
    void write(const std::string& name, const std::string& text) const { std::ofstream(m_path / name) << text; }

private:
    fs::path m_path;
    static inline int s_count = 0;
};

}  // namespace

TEST(PatternCatalogue, HostPatternsArePredefinedAndFoundInAnyCase) {
    PatternCatalogue catalogue;
    auto predefined = catalogue.names(kPreDefined);
    ASSERT_GE(predefined.size(), 25u);
    EXPECT_EQ(predefined.front(), OdString(L"SOLID"));
    EXPECT_TRUE(catalogue.names(kCustomDefined).empty());
    EXPECT_EQ(catalogue.names(kUserDefined), std::vector<OdString>{L"_USER"});

    const CataloguedPattern* brick = catalogue.find(L"bRiCk");
    ASSERT_NE(brick, nullptr);
    EXPECT_EQ(brick->pattern.name, OdString(L"BRICK"));
    EXPECT_EQ(brick->type, kPreDefined);
    EXPECT_EQ(catalogue.find(L"no such pattern"), nullptr);
    EXPECT_EQ(catalogue.find(L"_USER"), nullptr);
    try {
        catalogue.get(L"no such pattern");
        FAIL() << "expected OdError";
    } catch (const OdError& error) {
        EXPECT_EQ(error.code(), eKeyNotFound);
    }
}

TEST(PatternCatalogue, FolderFilesAddCustomPatternsWithoutReplacingEarlierOnes) {
    TempFolder first, second;
    // b.pat sorts after a.pat: its WAVES is a repeat and loses; "brick" repeats a host pattern.
    first.write("b.pat", "*WAVES, second definition\n0,0,0,0,9\n");
    first.write("a.pat", "*Waves, first definition\n0,0,0,0,1\n*brick, impostor\n0,0,0,0,1\n");
    first.write("notes.txt", "*IGNORED\n0,0,0,0,1\n");
    second.write("c.PAT", "*waves, third\n0,0,0,0,2\n*Ripples\n90,0,0,0,2\n");

    PatternCatalogue catalogue;
    size_t hostCount = catalogue.patterns().size();
    catalogue.setSearchFolders({first.path(), second.path()});
    EXPECT_EQ(catalogue.names(kCustomDefined), (std::vector<OdString>{L"Waves", L"Ripples"}));
    EXPECT_EQ(catalogue.patterns().size(), hostCount + 2);
    EXPECT_EQ(catalogue.get(L"WAVES").pattern.description, OdString(L"first definition"));
    EXPECT_EQ(catalogue.get(L"brick").type, kPreDefined);
    EXPECT_TRUE(catalogue.loadProblems().empty());

    // Later changes of the folders show after a reload; emptying the folders removes them.
    second.write("d.pat", "*Stripes\n0,0,0,0,2\n");
    catalogue.reload();
    EXPECT_NE(catalogue.find(L"stripes"), nullptr);
    catalogue.setSearchFolders({});
    EXPECT_EQ(catalogue.patterns().size(), hostCount);
}

TEST(PatternCatalogue, BrokenFilesAndMissingFoldersAreReportedNotFatal) {
    TempFolder folder;
    folder.write("bad.pat", "*Good\n0,0,0,0,1\n*Bad\n0,0,zero,0,1\n");
    folder.write("ok.pat", "*Fine\n0,0,0,0,1\n");
    PatternCatalogue catalogue;
    catalogue.setSearchFolders({folder.path(), L"/nonexistent/patterns"});
    // A broken file contributes nothing, not even its good patterns.
    EXPECT_EQ(catalogue.names(kCustomDefined), std::vector<OdString>{L"Fine"});
    ASSERT_EQ(catalogue.loadProblems().size(), 2u);
    EXPECT_NE(catalogue.loadProblems()[0].find(L"bad.pat, line 4"), -1);
    EXPECT_NE(catalogue.loadProblems()[1].find(L"/nonexistent/patterns"), -1);
}

TEST(PatternCatalogue, ObtainListOfPatternsServesTheHostCatalogue) {
    wxArrayString predefined = obtainListOfPatterns(kPreDefined);
    ASSERT_EQ(predefined.size(), PatternCatalogue::instance().names(kPreDefined).size());
    EXPECT_EQ(predefined[0], wxString("SOLID"));
    wxArrayString user = obtainListOfPatterns(kUserDefined);
    ASSERT_EQ(user.size(), 1u);
    EXPECT_EQ(user[0], wxString("_USER"));
    EXPECT_TRUE(obtainListOfPatterns(7).empty());
}

// Reading .pat files: published pattern files, the host's own file, and malformed input.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <set>

#include "PatParser.h"
#include "PatternCatalogue.h"

namespace fs = std::filesystem;
using namespace ca;

namespace {

const fs::path kHatchData = fs::path(VL_TEST_DATA_DIR) / "hatch";

std::vector<fs::path> patFilesUnder(const fs::path& folder) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.path().extension() == ".pat") files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<HatchPattern> parseFile(const fs::path& path) { return parsePatFile(OdString::fromUtf8(path.string())); }

// Line number reported for `text`, or 0 when it parses.
int errorLine(const std::string& text) {
    try {
        parsePatText(text, L"bad.pat");
    } catch (const PatParseError& error) {
        EXPECT_EQ(error.fileName(), OdString(L"bad.pat"));
        EXPECT_NE(std::string(error.what()).find("bad.pat, line " + std::to_string(error.lineNumber())),
                  std::string::npos);
        return error.lineNumber();
    }
    return 0;
}

}  // namespace

TEST(PatParser, ReadsEveryPublishedFileWithOnePatternPerQcadFile) {
    auto files = patFilesUnder(kHatchData);
    ASSERT_EQ(files.size(), 1u + 127u + 116u);
    size_t patterns = 0;
    for (const auto& file : files) {
        SCOPED_TRACE(file.string());
        auto parsed = parseFile(file);
        if (file.parent_path().parent_path().filename() == "qcad") {
            ASSERT_EQ(parsed.size(), 1u);
            // One pattern per file, named after the file.
            OdString stem = OdString::fromUtf8(file.stem().string());
            EXPECT_EQ(parsed[0].name.iCompare(stem), 0);
        }
        for (const auto& pattern : parsed) {
            EXPECT_FALSE(pattern.lines.empty());
            for (const auto& family : pattern.lines) {
                EXPECT_TRUE(std::isfinite(family.angleDegrees) && std::isfinite(family.deltaY));
            }
        }
        patterns += parsed.size();
    }
    EXPECT_EQ(patterns, 8u + 127u + 116u);
}

TEST(PatParser, KnownValuesOfPublishedPatterns) {
    auto fc = parseFile(kHatchData / "freecad" / "FCPAT.pat");
    ASSERT_EQ(fc.size(), 8u);
    EXPECT_EQ(fc[0].name, OdString(L"Diamond"));
    EXPECT_EQ(fc[0].description, OdString(L"45 diagonals L & R, Solid, 1.0 mm separation"));
    ASSERT_EQ(fc[5].lines.size(), 2u);  // Square: 90,1,1,0,5.0 and 0,0,0,1,5.0
    EXPECT_DOUBLE_EQ(fc[5].lines[0].originX, 1.0);
    EXPECT_DOUBLE_EQ(fc[5].lines[1].deltaX, 1.0);
    EXPECT_EQ(fc[5].sourceLine, 16);

    auto brick = parseFile(kHatchData / "qcad" / "metric" / "brick.pat");
    ASSERT_EQ(brick[0].lines.size(), 3u);
    const auto& joint = brick[0].lines[2];  // 90, 6.35,0, 0,12.7, -6.35,6.35
    EXPECT_DOUBLE_EQ(joint.originX, 6.35);
    EXPECT_EQ(joint.dashes, (std::vector<double>{-6.35, 6.35}));

    // Imperial numbers without a leading zero.
    auto ansi31 = parseFile(kHatchData / "qcad" / "imperial" / "ansi31.pat");
    EXPECT_DOUBLE_EQ(ansi31[0].lines[0].deltaY, 0.125);

    // Contributed files: header without description, comments after it, dots in dash lists.
    auto lattice = parseFile(kHatchData / "qcad" / "metric" / "lattice-01.pat");
    EXPECT_EQ(lattice[0].name, OdString(L"LATTICE-01"));
    EXPECT_TRUE(lattice[0].description.isEmpty());
}

TEST(PatParser, AcceptsCrlfBomSpacesCommentsAndDirectives) {
    std::string text =
        "\xEF\xBB\xBF; header comment\r\n"
        ";%UNITS=INCH\r\n"
        "\r\n"
        "  *First , lines with spaces \r\n"
        ";%TYPE=MODEL\r\n"
        "  45 ,  0 , 0 ,  0 , +.125   ; trailing comment\r\n"
        "0,0,0,0,1,0.5,-0.25,0, ;after a trailing comma\r\n"
        "*SOLID, Solid fill\r\n"
        "*Second\r\n"
        "90,1e-1,0,0,2";
    auto patterns = parsePatText(text, L"mixed.pat");
    ASSERT_EQ(patterns.size(), 3u);
    EXPECT_EQ(patterns[0].name, OdString(L"First"));
    EXPECT_EQ(patterns[0].description, OdString(L"lines with spaces"));
    EXPECT_EQ(patterns[0].kind, EPatternKind::kModel);
    EXPECT_EQ(patterns[0].units, EPatternUnits::kInches);
    ASSERT_EQ(patterns[0].lines.size(), 2u);
    EXPECT_DOUBLE_EQ(patterns[0].lines[0].deltaY, 0.125);
    EXPECT_EQ(patterns[0].lines[1].dashes, (std::vector<double>{0.5, -0.25, 0.0}));
    EXPECT_TRUE(patterns[1].isSolidFill());
    EXPECT_TRUE(patterns[1].lines.empty());
    EXPECT_EQ(patterns[2].kind, EPatternKind::kDrafting);  // the marker belonged to "First" only
    EXPECT_DOUBLE_EQ(patterns[2].lines[0].originX, 0.1);
    EXPECT_EQ(patterns[2].sourceLine, 9);
}

TEST(PatParser, MalformedLinesNameFileAndLine) {
    EXPECT_EQ(errorLine("45,0,0,0,3\n"), 1);                             // before any header
    EXPECT_EQ(errorLine("*A\n45,0,0,0\n"), 2);                           // too few fields
    EXPECT_EQ(errorLine("*A\r\n; c\r\n45,0,x,0,3\r\n"), 3);              // not a number
    EXPECT_EQ(errorLine("*A\n45,0,,0,3\n"), 2);                          // empty field
    EXPECT_EQ(errorLine("*A\n45,0,0,0,3,1,,-1\n"), 2);                   // empty dash
    EXPECT_EQ(errorLine("*A\n45,0,0,0,3 4\n"), 2);                       // missing comma
    EXPECT_EQ(errorLine("*A\n45,0,0,0,inf\n"), 2);                       // not finite
    EXPECT_EQ(errorLine("*A\n45,0,0,0,3\n*, no name\n0,0,0,0,1\n"), 3);  // header without name
    EXPECT_EQ(errorLine("*A\n\n*B\n0,0,0,0,1\n"), 1);                    // pattern without lines
    EXPECT_EQ(errorLine("*A\n;%TYPE=SOMETIMES\n0,0,0,0,1\n"), 2);
    EXPECT_EQ(errorLine("*A\n0,0,0,0,1\n*B\n"), 3);                      // last pattern empty
}

TEST(PatParser, HostFileHasEnoughUniqueWellFormedPatterns) {
    auto patterns = parsePatText(builtinPatternText(), L"vantlib.pat");
    EXPECT_GE(patterns.size(), 25u);
    std::set<std::wstring> names;
    for (auto pattern : patterns) {
        SCOPED_TRACE(pattern.name.toUtf8());
        EXPECT_TRUE(names.insert(pattern.name.makeLower().str()).second) << "duplicate name";
        EXPECT_FALSE(pattern.description.isEmpty());
        for (const auto& family : pattern.lines) {
            // Dashed families must not repeat their lines closer than a hair apart, or the
            // pattern would draw as a grey area.
            EXPECT_GT(std::fabs(family.deltaY), 0.1);
        }
    }
    EXPECT_TRUE(names.count(L"solid"));
    for (const wchar_t* expected : {L"brick", L"concrete", L"insul", L"earth", L"steel", L"wood", L"glass"})
        EXPECT_TRUE(names.count(expected)) << OdString(expected).toUtf8();
}

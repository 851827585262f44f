// Export and import of a drawing's libraries as the studio's File menu does them: through a
// file, with progress that may cancel, and the report in whole sentences.
#include <gtest/gtest.h>

#include <fstream>
#include <vector>

#include <wx/translation.h>

#include "AppTestSupport.h"
#include "app/ExchangeCommands.h"

using app_test::ProjectFixture;

namespace {

std::vector<wxString> lines(const vantlib::ImportReport& report) {
    const wxArrayString text = vl_app::importReportLines(report);
    return std::vector<wxString>(text.begin(), text.end());
}

std::string bytesOf(const app_test::fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

class ExchangeCommandsTest : public ProjectFixture {
protected:
    void SetUp() override {
        ProjectFixture::SetUp();
        addMaterials(project, {L"Brick", L"Stone"});
        addMaterials(central, {L"Brick", L"Glass", L"Steel"});
    }
};

}  // namespace

TEST_F(ExchangeCommandsTest, TheCentralLibraryGoesThroughAFileIntoTheProjectLibrary) {
    const wxString file = path("central.json").wstring();
    size_t lastDone = 0, lastTotal = 0;
    vl_app::exportLibraryFile(*central, file, [&](size_t done, size_t total) {
        lastDone = done;
        lastTotal = total;
        return true;
    });
    EXPECT_EQ(lastTotal, 3u);
    EXPECT_EQ(lastDone, 3u);
    EXPECT_FALSE(app_test::fs::exists(path("central.json.partial")));

    const vantlib::ImportReport report =
        vl_app::importLibraryFile(project, file, vantlib::ClashAnswer::kRename, [](size_t, size_t) { return true; });
    EXPECT_EQ(materialNames(*project),
              (std::vector<std::wstring>{L"Brick", L"Stone", L"Brick_2", L"Glass", L"Steel"}));
    EXPECT_EQ(lines(report), (std::vector<wxString>{"2 objects created.", "1 object stored under a new name."}));
}

TEST_F(ExchangeCommandsTest, ACancelledImportLeavesTheLibraryAsItWasAndACancelledExportWritesNoFile) {
    const wxString file = path("central.json").wstring();
    vl_app::exportLibraryFile(*central, file, {});
    const std::string before = bytesOf(path("central.vlib"));
    central.reset();
    central = vantlib::Library::open(app_test::od(path("central.vlib")));
    const size_t materials = central->count<vantlib::Material>();

    unsigned calls = 0;
    EXPECT_THROW(vl_app::importLibraryFile(central, file, vantlib::ClashAnswer::kRename,
                                           [&calls](size_t, size_t) { return ++calls < 1; }),
                 vl_app::ExchangeCancelled);
    EXPECT_EQ(calls, 1u);
    EXPECT_EQ(central->count<vantlib::Material>(), materials);
    central.reset();
    EXPECT_EQ(bytesOf(path("central.vlib")), before);

    const wxString other = path("other.json").wstring();
    central = vantlib::Library::open(app_test::od(path("central.vlib")));
    EXPECT_THROW(vl_app::exportLibraryFile(*central, other, [](size_t, size_t) { return false; }),
                 vl_app::ExchangeCancelled);
    EXPECT_FALSE(app_test::fs::exists(path("other.json")));
    EXPECT_THROW(vl_app::importLibraryFile(central, path("missing.json").wstring(), vantlib::ClashAnswer::kSkip, {}),
                 vantlib::ExchangeError);
}

TEST(ImportReportLines, ConversionAndEveryCountAreWholeSentencesInTheirPluralForms) {
    vantlib::ImportReport report;
    report.kinds.push_back({vantlib::kMaterial, {1, 2, 0, 1}});
    report.kinds.push_back({vantlib::kComposition, {0, 1, 3, 0}});
    report.converted = true;
    report.documentUnit = OdDb::kUnitsMillimeters;
    report.libraryUnit = OdDb::kUnitsInches;
    const std::vector<wxString> english = lines(report);
    ASSERT_EQ(english.size(), 5u);
    EXPECT_EQ(english[1], "1 object created.");
    EXPECT_EQ(english[2], "3 objects skipped: the library has objects of those names.");
    EXPECT_EQ(english[3], "3 objects overwritten.");
    EXPECT_EQ(english[4], "1 object stored under a new name.");

    wxFileTranslationsLoader::AddCatalogLookupPathPrefix(VL_LOCALE_DIR);
    auto* german = new wxTranslations;
    wxTranslations::Set(german);
    german->SetLanguage("de");
    ASSERT_TRUE(german->AddCatalog("vantlib_app"));
    const std::vector<wxString> translated = lines(report);
    wxTranslations::Set(nullptr);
    ASSERT_EQ(translated.size(), 5u);
    EXPECT_EQ(translated[1], L"1 Objekt wurde angelegt.");
    EXPECT_EQ(translated[3], L"3 Objekte wurden \u00FCberschrieben.");
    EXPECT_EQ(translated[4], L"1 Objekt wurde unter einem neuen Namen gespeichert.");
}

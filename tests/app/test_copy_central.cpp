// Copying the central library into the project library in one operation.
#include <gtest/gtest.h>

#include <DlgQuestionTesting.h>

#include <vector>

#include <wx/translation.h>

#include "AppTestSupport.h"
#include "app/FrameCommands.h"

using app_test::ProjectFixture;

namespace {
// The report as a list that the test can compare whole.
std::vector<wxString> reportLines(const vl_app::LibraryCopyReport& report) {
    const wxArrayString lines = vl_app::copyReportLines(report);
    return std::vector<wxString>(lines.begin(), lines.end());
}

class CopyCentralTest : public ProjectFixture {
protected:
    void SetUp() override {
        ProjectFixture::SetUp();
        addMaterials(project, {L"Brick", L"Stone"});
        addMaterials(central, {L"Brick", L"Stone", L"Glass", L"Steel"});
        auto wall = vantlib::Composition::create(L"Outer wall");
        central->save(wall);
    }
};
}  // namespace

TEST_F(CopyCentralTest, OneTickedAnswerCoversEveryClashAndTheReportCountsWhatWasStored) {
    vl_app::LibraryCopyReport report;
    unsigned lastDone = 0;
    wxTEST_DIALOG(report = vl_app::copyMaterialsAndCompositions(
                      project, central, [&lastDone](unsigned done, unsigned, const wxString&) {
                          lastDone = done;
                          return true;
                      }),
                  wxExpectModal<wxg::DlgQuestion>(wxg::DlgQuestion::kFirstAnswer, true));
    EXPECT_FALSE(report.cancelled);
    EXPECT_EQ(report.copied, 3u) << "Glass, Steel and the composition";
    EXPECT_EQ(report.skippedMaterials, 2u) << "Brick asked, Stone answered from the ticked box";
    EXPECT_EQ(report.skippedCompositions, 0u);
    EXPECT_EQ(lastDone, 5u);
    EXPECT_EQ(reportLines(report),
              (std::vector<wxString>{"3 materials and compositions copied from the central library into the project library.",
                                     "2 materials skipped."}))
        << "no line for compositions, none of which was skipped";
    EXPECT_EQ(materialNames(*project), (std::vector<std::wstring>{L"Brick", L"Stone", L"Glass", L"Steel"}));
    EXPECT_EQ(project->count<vantlib::Composition>(), 1u);
}

TEST_F(CopyCentralTest, CancelledCopyLeavesTheProjectLibraryAsItWas) {
    vl_app::LibraryCopyReport report;
    wxTEST_DIALOG(report = vl_app::copyMaterialsAndCompositions(
                      project, central, [](unsigned done, unsigned, const wxString&) { return done < 3; }),
                  wxExpectModal<wxg::DlgQuestion>(wxg::DlgQuestion::kThirdAnswer, true));
    EXPECT_TRUE(report.cancelled);
    EXPECT_EQ(materialNames(*project), (std::vector<std::wstring>{L"Brick", L"Stone"}));
    EXPECT_EQ(project->count<vantlib::Composition>(), 0u);
}

TEST(CopyReport, EachCountIsAWholeSentenceInItsPluralForm) {
    vl_app::LibraryCopyReport report;
    report.copied = 1;
    report.skippedCompositions = 1;
    EXPECT_EQ(reportLines(report),
              (std::vector<wxString>{"1 material or composition copied from the central library into the project library.",
                                     "1 composition skipped."}));

    // The German catalogue has both forms of each sentence.
    wxFileTranslationsLoader::AddCatalogLookupPathPrefix(VL_LOCALE_DIR);
    auto* german = new wxTranslations;
    wxTranslations::Set(german);
    german->SetLanguage("de");
    ASSERT_TRUE(german->AddCatalog("vantlib_app"));
    report.copied = 0;
    report.skippedMaterials = 1;
    report.skippedCompositions = 4;
    const std::vector<wxString> one = reportLines(report);
    report.skippedMaterials = 2;
    report.skippedCompositions = 0;
    const std::vector<wxString> many = reportLines(report);
    wxTranslations::Set(nullptr);
    const wxString copiedNone =
        "0 Materialien und Aufbauten wurden aus der zentralen Bibliothek in die Projektbibliothek kopiert.";
    EXPECT_EQ(one, (std::vector<wxString>{copiedNone, L"1 Material wurde \u00FCbersprungen.",
                                          L"4 Aufbauten wurden \u00FCbersprungen."}));
    EXPECT_EQ(many, (std::vector<wxString>{copiedNone, L"2 Materialien wurden \u00FCbersprungen."}));
}

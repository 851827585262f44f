// Copying the central library into the project library in one operation.
#include <gtest/gtest.h>

#include <DlgQuestionTesting.h>

#include "AppTestSupport.h"
#include "app/FrameCommands.h"

using app_test::ProjectFixture;

namespace {
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

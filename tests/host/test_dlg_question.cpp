// The question dialog: answers through the modal testing hook and through a user's click.
#include <gtest/gtest.h>

#include <wx/checkbox.h>

#include "DlgQuestionTesting.h"
#include "DlgUpdateProfile.h"
#include "UiTestSupport.h"

namespace {
void fillClashQuestion(wxg::DlgQuestion& dialog) {
    dialog.setPrompts("The current project database already contains a material with the name: 'Brick'.",
                      "Choose one of the following actions:");
    dialog.addAnswer(5300, "Skip", "Keep the existing material.");
    dialog.addAnswer(5301, "Overwrite", "Replace the material.");
    dialog.addAnswer(5302, "Rename", "Rename the material to: 'Brick_2'.");
    dialog.setCheckBoxText("Don't show this message again for this operation");
}
}  // namespace

TEST(DlgQuestion, TestHookAnswersWithIdAndCheckBox) {
    wxg::DlgQuestion dialog(nullptr, "Studio");
    fillClashQuestion(dialog);
    dialog.setAnswersMask(3);
    int result = 0;
    wxTEST_DIALOG(result = dialog.ShowModal(),
                  wxExpectModal<wxg::DlgQuestion>(5301, true, [](wxg::DlgQuestion& shown) {
                      EXPECT_TRUE(shown.isOffered(5300));
                      EXPECT_TRUE(shown.isOffered(5301));
                      EXPECT_FALSE(shown.isOffered(5302)) << "mask 3 offers Skip and Overwrite only";
                  }));
    EXPECT_EQ(result, 5301);
    EXPECT_TRUE(dialog.isChecked());
}

TEST(DlgQuestion, RejectsAnswerIdsOutsideTheRange) {
    wxg::DlgQuestion dialog(nullptr, "Studio");
    EXPECT_THROW(dialog.addAnswer(5303, "More", ""), std::invalid_argument);
    EXPECT_THROW(dialog.addAnswer(wxID_OK, "OK", ""), std::invalid_argument);
    EXPECT_FALSE(dialog.isOffered(5300)) << "an answer without a label is never offered";
}

TEST(DlgQuestion, ClickOnAnAnswerEndsTheDialogWithItsIdAndTheCheckBoxState) {
    wxg::DlgQuestion dialog(nullptr, "Studio");
    fillClashQuestion(dialog);
    bool clicked = false;
    wxTheApp->CallAfter([&] {
        wxCheckBox* checkBox = nullptr;
        for (wxWindow* child : dialog.GetChildren())
            if (auto* box = wxDynamicCast(child, wxCheckBox))
                checkBox = box;
        if (checkBox) {
            checkBox->SetValue(true);
            wxCommandEvent toggled(wxEVT_CHECKBOX, checkBox->GetId());
            toggled.SetInt(1);
            toggled.SetEventObject(checkBox);
            checkBox->ProcessWindowEvent(toggled);
        }
        wxWindow* rename = dialog.FindWindow(5302);
        ASSERT_NE(rename, nullptr);
        wxMouseEvent up(wxEVT_LEFT_UP);
        up.SetEventObject(rename);
        rename->ProcessWindowEvent(up);
        clicked = true;
    });
    EXPECT_EQ(dialog.ShowModal(), 5302);
    EXPECT_TRUE(clicked);
    EXPECT_TRUE(dialog.isChecked());
}

TEST(DlgQuestion, ClosingTheDialogIsACancel) {
    wxg::DlgQuestion dialog(nullptr, "Studio");
    fillClashQuestion(dialog);
    wxTheApp->CallAfter([&] { dialog.Close(); });
    EXPECT_EQ(dialog.ShowModal(), wxID_CANCEL);
    EXPECT_FALSE(dialog.isChecked());
}

TEST(DlgUpdateProfile, OffersTheThreeChoices) {
    wxg::DlgUpdateProfile dialog(nullptr, "IPE 200", 3);
    int result = 0;
    wxTEST_DIALOG(result = dialog.ShowModal(), wxExpectModal<wxg::DlgQuestion>(5302, false, [](wxg::DlgQuestion& shown) {
                      for (int id = 5300; id <= 5302; ++id)
                          EXPECT_TRUE(shown.isOffered(id)) << id;
                  }));
    EXPECT_EQ(result, 5302);
}

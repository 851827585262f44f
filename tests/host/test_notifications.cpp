// Notification balloons over the main window.
#include <gtest/gtest.h>

#include <wx/dcclient.h>
#include <wx/frame.h>
#include <wx/hyperlink.h>
#include <wx/panel.h>
#include <wx/stattext.h>

#include "MainWindow.h"
#include "Notifications.h"
#include "Prompt.h"
#include "UiTestSupport.h"

namespace {

struct RecordingHandler : wxg::NotificationsHandler {
    RecordingHandler() : wxg::NotificationsHandler("Notifications about project and central databases") {}
    void onAction(int action) override { actions.push_back(action); }
    std::vector<int> actions;
};

class BalloonTest : public ::testing::Test {
protected:
    void SetUp() override {
        frame = new wxFrame(nullptr, wxID_ANY, "Main", wxDefaultPosition, wxSize(800, 600));
        // Like the studio's window: a panel fills it, so the frame does not stretch the balloon.
        (new wxPanel(frame, wxID_ANY))->SetSize(frame->GetClientSize());
        frame->Show();
        wxg::setMainWindow(frame);
    }
    void TearDown() override {
        wxg::setMainWindow(nullptr);
        frame->Destroy();
        pumpUntil([] { return false; }, 50);
    }
    // The balloon on screen; a replaced one may linger hidden until the event loop turns.
    wxWindow* balloon() const {
        for (wxWindow* child : frame->GetChildren())
            if (child->GetName() == "VL_BUBBLE" && child->IsShown())
                return child;
        return nullptr;
    }
    void clickLink() const {
        ASSERT_NE(balloon(), nullptr);
        auto* link = wxDynamicCast(wxWindow::FindWindowByName("VL_BUBBLE_LINK", balloon()), wxGenericHyperlinkCtrl);
        ASSERT_NE(link, nullptr);
        wxHyperlinkEvent event(link, link->GetId(), wxString());
        link->ProcessWindowEvent(event);
    }

    wxFrame* frame = nullptr;
    qta::BubbleData missing{"Missing project or central database",
                            "The central database file is missing at:\n\t/lib/central.vlib",
                            "Open BIM Project Info dialog."};
};

}  // namespace

TEST_F(BalloonTest, ShowsTitleMessageAndLinkAtTheBottomRight) {
    RecordingHandler handler;
    ASSERT_TRUE(wxg::showBubbleWindow(&handler, missing));
    wxWindow* shown = balloon();
    ASSERT_NE(shown, nullptr);
    EXPECT_TRUE(handler.isBubbleVisible());
    auto* title = wxDynamicCast(wxWindow::FindWindowByName("VL_BUBBLE_TITLE"), wxStaticText);
    ASSERT_NE(title, nullptr);
    EXPECT_EQ(title->GetLabel(), missing.title);
    const wxRect area(frame->GetClientSize());
    EXPECT_TRUE(area.Contains(shown->GetRect())) << "inside the window";
    EXPECT_GT(shown->GetPosition().x, area.width / 3) << "towards the right";
}

TEST_F(BalloonTest, LinkReportsActionFiveAndRemovesTheBalloon) {
    RecordingHandler handler;
    ASSERT_TRUE(wxg::showBubbleWindow(&handler, missing));
    clickLink();
    EXPECT_EQ(handler.actions, std::vector<int>{wxg::NotificationsHandler::kActionLink});
    EXPECT_FALSE(handler.isBubbleVisible());
    EXPECT_TRUE(pumpUntil([] { return wxWindow::FindWindowByName("VL_BUBBLE") == nullptr; })) << "and destroys it";
}

TEST_F(BalloonTest, NewBalloonReplacesTheOldOne) {
    RecordingHandler first;
    RecordingHandler second;
    ASSERT_TRUE(first.showNotification(missing));
    ASSERT_TRUE(wxg::showBubbleWindow(&second, qta::BubbleData("Second", "Another message", "")));
    EXPECT_FALSE(first.isBubbleVisible());
    EXPECT_TRUE(second.isBubbleVisible());
    EXPECT_TRUE(first.actions.empty()) << "being replaced is not an action of the user";
    ASSERT_NE(balloon(), nullptr);
    EXPECT_EQ(wxWindow::FindWindowByName("VL_BUBBLE_LINK", balloon()), nullptr) << "no link without a label";
}

TEST_F(BalloonTest, HandlerGoneBeforeTheClickIsHarmless) {
    auto handler = std::make_unique<RecordingHandler>();
    ASSERT_TRUE(wxg::showBubbleWindow(handler.get(), missing));
    handler.reset();
    clickLink();
    EXPECT_EQ(balloon(), nullptr);
}

TEST(Balloon, WithoutAMainWindowTheTextGoesToTheCommandLine) {
    ASSERT_EQ(wxg::mainWindow(), nullptr);
    ca::clearPromptLog();
    RecordingHandler handler;
    EXPECT_FALSE(wxg::showBubbleWindow(&handler, qta::BubbleData("Title only here", "Body text", "Link")));
    const wxArrayString log = ca::promptLog();
    ASSERT_EQ(log.size(), 2u);
    EXPECT_EQ(log[0], "Title only here");
    EXPECT_FALSE(handler.isBubbleVisible());
}

TEST_F(BalloonTest, LongTitleAndMessageWrapAndEveryLineFitsItsLabel) {
    RecordingHandler handler;
    const qta::BubbleData data(
        "Unable to load the project or central database, possibly due to an incompatible version",
        "The central database file version might be incompatible with this version of Korvex:\n\t/tmp/broken.vlib",
        "Open BIM Project Info dialog.");
    ASSERT_TRUE(wxg::showBubbleWindow(&handler, data));
    // The toolkit settles the labels' fonts once they are shown.
    pumpUntil([] { return false; }, 300);
    ASSERT_NE(balloon(), nullptr);
    const wxRect inside(balloon()->GetClientSize());
    for (const char* name : {"VL_BUBBLE_TITLE", "VL_BUBBLE_MESSAGE"}) {
        auto* label = wxDynamicCast(wxWindow::FindWindowByName(name, balloon()), wxStaticText);
        ASSERT_NE(label, nullptr) << name;
        wxString words = label->GetLabel();
        words.Replace("\n", " ");
        if (name == std::string("VL_BUBBLE_TITLE"))
            EXPECT_EQ(words, data.title) << "wrapping drops no word";
        else
            EXPECT_TRUE(words.EndsWith("/tmp/broken.vlib")) << words;
        EXPECT_GT(label->GetLabel().Freq('\n'), 0) << name << " is wrapped";
        wxClientDC dc(label);
        dc.SetFont(label->GetFont());
        const wxSize lines = dc.GetMultiLineTextExtent(label->GetLabel());
        EXPECT_GE(label->GetSize().x, lines.x) << name << ": its lines are wider than the label";
        EXPECT_GE(label->GetSize().y, lines.y) << name << ": its lines are taller than the label";
        EXPECT_TRUE(inside.Contains(label->GetRect())) << name << " lies inside the balloon";
    }
}

TEST_F(BalloonTest, APathLongerThanALineStaysWholeAndIndented) {
    RecordingHandler handler;
    const wxString path = "/home/someone/projects/libraries/central-metric-library-of-the-whole-office-2026.vlib";
    ASSERT_TRUE(wxg::showBubbleWindow(
        &handler, qta::BubbleData("Missing project or central database",
                                  "The central database file is missing at:\n\t" + path, "")));
    pumpUntil([] { return false; }, 300);
    auto* body = wxDynamicCast(wxWindow::FindWindowByName("VL_BUBBLE_MESSAGE", balloon()), wxStaticText);
    ASSERT_NE(body, nullptr);
    EXPECT_TRUE(body->GetLabel().EndsWith("\n" + wxString(L'\u00A0', 4) + path)) << "one line: indent and path";
    wxClientDC dc(body);
    dc.SetFont(body->GetFont());
    EXPECT_GE(body->GetSize().x, dc.GetMultiLineTextExtent(body->GetLabel()).x);
    EXPECT_TRUE(wxRect(balloon()->GetClientSize()).Contains(body->GetRect()));
}

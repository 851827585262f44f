// Library file errors become balloons on the main thread, also when reported from a worker.
#include <thread>

#include <gtest/gtest.h>

#include <wx/frame.h>
#include <wx/stattext.h>

#include <MainWindow.h>
#include <Notifications.h>

#include "AppTestSupport.h"
#include "app/BalloonNotifications.h"
#include "app/LibraryReactor.h"

using app_test::pumpUntil;
using vl_app::BalloonNotifications;
using vl_app::LibraryReactor;

namespace {

wxWindow* balloon() {
    wxWindow* shown = wxWindow::FindWindowByName("VL_BUBBLE");
    return shown && shown->IsShown() ? shown : nullptr;
}

wxString balloonTitle() {
    auto* title = wxDynamicCast(wxWindow::FindWindowByName("VL_BUBBLE_TITLE"), wxStaticText);
    // The balloon wraps long titles.
    wxString text = title ? title->GetLabel() : wxString();
    text.Replace("\n", " ");
    return text;
}

class BalloonTest : public app_test::ProjectFixture {
protected:
    void SetUp() override {
        ProjectFixture::SetUp();
        frame = new wxFrame(nullptr, wxID_ANY, "Studio", wxDefaultPosition, wxSize(900, 600));
        frame->Show();
        wxg::setMainWindow(frame);
        LibraryReactor::instance()->initBalloonNotificationHandler();
    }
    void TearDown() override {
        LibraryReactor::instance()->unInitBalloonNotificationHandler();
        BalloonNotifications::instance().closeBubble();
        wxg::setMainWindow(nullptr);
        frame->Destroy();
        pumpUntil([] { return false; }, 50);
        ProjectFixture::TearDown();
    }
    wxFrame* frame = nullptr;
};

}  // namespace

TEST_F(BalloonTest, FileMissingOnAWorkerIsShownLaterOnTheMainThread) {
    std::thread worker([db = drawing.get()] {
        LibraryReactor::instance()->onLibraryFileMissing(db, OdString(L"/lib/central.vlib"), vl_db::kDbCentral);
    });
    worker.join();
    EXPECT_EQ(balloon(), nullptr) << "nothing is shown from the worker itself";
    ASSERT_TRUE(pumpUntil([] { return balloon() != nullptr; }));
    EXPECT_EQ(balloonTitle(), "Missing central database");
    EXPECT_FALSE(BalloonNotifications::instance().hasPending());
}

TEST_F(BalloonTest, WithoutActiveDrawingTheLatestNotificationWaitsForActivation) {
    app->setActiveDatabase(nullptr);
    LibraryReactor* reactor = LibraryReactor::instance();
    reactor->onLibraryFileMissing(nullptr, OdString(L"/lib/a.vlib"), vl_db::kDbCentral);
    reactor->onLibraryFileUnknownError(nullptr, OdString(L"/lib/b.vlib"), vl_db::kDbProject);
    ASSERT_TRUE(BalloonNotifications::instance().hasPending());
    EXPECT_EQ(BalloonNotifications::instance().pendingData().message,
              "The project database file is at:\n\t/lib/b.vlib") << "the newer replaces the older";
    EXPECT_EQ(balloon(), nullptr);

    app->setActiveDatabase(drawing.get());
    EXPECT_FALSE(BalloonNotifications::instance().hasPending());
    ASSERT_NE(balloon(), nullptr);
    EXPECT_EQ(balloonTitle(), "Unable to load the project database due to an unknown error");
}

TEST_F(BalloonTest, LinkRunsTheProjectInfoCommandOfTheActiveDocument) {
    int runs = 0;
    app->addCommand("bimprojectinfo", wxString(), [&runs] { ++runs; });
    LibraryReactor::instance()->onLibraryFileLoadingError(drawing.get(), OdString(L"/lib/new.vlib"), vl_db::kDbCentral);
    ASSERT_NE(balloon(), nullptr);
    EXPECT_EQ(BalloonNotifications::instance().pendingData().title, wxString()) << "nothing left pending";
    BalloonNotifications::instance().onAction(wxg::NotificationsHandler::kActionLink);
    EXPECT_TRUE(pumpUntil([&runs] { return runs == 1; }));
}

// The studio's view for picking an outline, clicked and left as a user does.
#include <wx/app.h>
#include <wx/stattext.h>
#include <wx/uiaction.h>

#include <OdDbCircle.h>
#include <OdDbPolyline.h>

#include "DialogDriving.h"
#include "DrawingFixture.h"
#include "OutlinePickDialog.h"

using namespace vl_db_test;

namespace {

OdDbObjectId addOutline(OdDbDatabase& db, std::vector<OdGePoint2d> corners, bool closed) {
    OdDbPolylinePtr polyline = OdDbPolyline::createObject();
    for (const OdGePoint2d& corner : corners)
        polyline->addVertexAt(polyline->numVerts(), corner);
    polyline->setClosed(closed);
    return db.addEntity(polyline);
}

// A timber section with a hole between two open lines: the middle of the view falls on the
// timber, away from its hole.
class PickViewTest : public DrawingFixture {
protected:
    void SetUp() override {
        DrawingFixture::SetUp();
        db = newDrawing("sheet.vldwg");
        addOutline(*db, {{-300, 0}, {-300, 200}}, false);
        timber = addOutline(*db, {{0, 0}, {100, 0}, {100, 200}, {0, 200}}, true);
        OdDbCirclePtr circle = OdDbCircle::createObject();
        circle->setCenter(OdGePoint2d(50, 150));
        circle->setRadius(20);
        hole = db->addEntity(circle);
        addOutline(*db, {{400, 0}, {400, 200}}, false);
    }

    wxWindow* view(wxDialog& dialog) const { return dialog.FindWindow("OUTLINE_VIEW"); }
    void mouse(wxWindow* target, wxEventType type, const wxPoint& at) {
        wxMouseEvent event(type);
        event.SetPosition(at);
        event.SetEventObject(target);
        target->GetEventHandler()->ProcessEvent(event);
    }

    OdDbDatabase* db = nullptr;
    OdDbObjectId timber, hole;
};

}  // namespace

TEST_F(PickViewTest, AClickInsideAnOutlinePicksItWithItsHoles) {
    OutlinePickDialog dialog(nullptr, *db);
    const int result = vl_test::runModal(dialog, [&] {
        wxWindow* canvas = view(dialog);
        ASSERT_TRUE(canvas);
        const wxPoint middle(canvas->GetClientSize().x / 2, canvas->GetClientSize().y / 2);
        mouse(canvas, wxEVT_MOTION, middle);
        EXPECT_TRUE(dynamic_cast<wxStaticText*>(dialog.FindWindow("PICK_STATUS"))->GetLabel().empty());
        // Nowhere near an outline: nothing is picked and the view stays.
        mouse(canvas, wxEVT_LEFT_UP, wxPoint(middle.x, 2));
        EXPECT_TRUE(dialog.IsModal());
        EXPECT_FALSE(dynamic_cast<wxStaticText*>(dialog.FindWindow("PICK_STATUS"))->GetLabel().empty());
        mouse(canvas, wxEVT_LEFT_UP, middle);
    });
    EXPECT_EQ(result, wxID_OK);
    EXPECT_EQ(dialog.picked(), (std::vector<OdDbObjectId>{timber, hole}));
}

TEST_F(PickViewTest, EscapeOrClosingPicksNothing) {
    {
        OutlinePickDialog dialog(nullptr, *db);
        EXPECT_EQ(vl_test::runModal(dialog, [&] {
                      wxKeyEvent escape(wxEVT_CHAR_HOOK);
                      escape.m_keyCode = WXK_ESCAPE;
                      escape.SetEventObject(&dialog);
                      dialog.GetEventHandler()->ProcessEvent(escape);
                  }),
                  wxID_CANCEL);
        EXPECT_TRUE(dialog.picked().empty());
    }
    OutlinePickDialog dialog(nullptr, *db);
    EXPECT_EQ(vl_test::runModal(dialog, [&] { dialog.Close(); }), wxID_CANCEL);
    EXPECT_TRUE(dialog.picked().empty());
}

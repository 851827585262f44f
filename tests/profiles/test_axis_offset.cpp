// The axis offset dialog: which of the nine points a stored offset lies on, the extra offset,
// the behaviour setting, Apply with and without elements using the profile, the centroid and
// the preview's mark.
#include <wx/choice.h>
#include <wx/image.h>
#include <wx/msgdlg.h>
#include <wx/radiobut.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/testing.h>
#include <wx/textctrl.h>

#include <DlgQuestionTesting.h>
#include <OdEdSettingsManager.h>

#include "DialogDriving.h"
#include "ProfilesFixture.h"
#include "StudioProfilesInfo.h"
#include "app/profiles/AxisOffset.h"
#include "app/profiles/DlgAxisOffset.h"

namespace vl_profiles_test {

namespace {

using P = vantlib::ShapeParameter;
using vl_app::AxisPoint;

// The studio's services, counting the elements it is asked to bring up to date.
class RecordingHost : public StudioProfilesInfo {
public:
    void applyProfile(const QcSmartPtr<vantlib::Profile>& profile, const OdArray<OdDbObjectId>& entities) override {
        applied += entities.size();
        StudioProfilesInfo::applyProfile(profile, entities);
    }
    unsigned applied = 0;
};

class AxisOffsetTest : public ProfilesFixture {
protected:
    void SetUp() override {
        ProfilesFixture::SetUp();
        OdEdSettingsManager::instance().setShort(vl_app::kOffsetBehaviorSetting, vl_app::kKeepSolid);
        // 80 wide, 50 high: the points lie at ±40 and ±25.
        rectangle = profile(project, L"User", L"RECT", L"80x50", vantlib::kRectangleProfile, {{P::kXDim, 80}, {P::kYDim, 50}});
    }
    void TearDown() override {
        offsetDialog.reset();
        ProfilesFixture::TearDown();
    }

    vl_app::DlgAxisOffset& openOffset(const QcSmartPtr<vantlib::Profile>& shown) {
        offsetDialog = std::make_unique<vl_app::DlgAxisOffset>(nullptr, shown, OdDb::kUnitsMillimeters, &host, db.get());
        return *offsetDialog;
    }
    template <class T> T* find(const char* name) const {
        return dynamic_cast<T*>(offsetDialog->FindWindow(XRCID(name)));
    }
    void choosePoint(const char* radioButton) {
        auto* radio = find<wxRadioButton>(radioButton);
        radio->SetValue(true);
        wxCommandEvent event(wxEVT_RADIOBUTTON, radio->GetId());
        event.SetEventObject(radio);
        event.SetInt(1);
        radio->GetEventHandler()->ProcessEvent(event);
    }
    void type(const char* field, const wxString& text) { find<wxTextCtrl>(field)->SetValue(text); }
    void chooseBehavior(int index) {
        auto* choice = find<wxChoice>("BTN_INVARIANT");
        choice->SetSelection(index);
        wxCommandEvent event(wxEVT_CHOICE, choice->GetId());
        event.SetEventObject(choice);
        event.SetInt(index);
        choice->GetEventHandler()->ProcessEvent(event);
    }
    // The profile as the library holds it now.
    QcSmartPtr<vantlib::Profile> stored() const { return project->get<vantlib::Profile>(rectangle->id()); }
    void useInDrawing(const QcSmartPtr<vantlib::Profile>& used) {
        OdDbEntityPtr beam = OdDbEntity::createObject();
        beam->addLibraryReference({vantlib::kConstructionProfile, 0, L"RECT 80x50", used->id()});
        db->addEntity(beam);
    }
    // Where the preview's red mark sits: the mean of its red pixels.
    wxRealPoint markPosition() const {
        const wxImage image = find<wxStaticBitmap>("PROFILE_PREVIEW")->GetBitmap().ConvertToImage();
        double x = 0, y = 0, count = 0;
        for (int j = 0; j < image.GetHeight(); ++j)
            for (int i = 0; i < image.GetWidth(); ++i)
                if (image.GetRed(i, j) > 180 && image.GetGreen(i, j) < 90 && image.GetBlue(i, j) < 90) {
                    x += i;
                    y += j;
                    ++count;
                }
        return count > 0 ? wxRealPoint(x / count, y / count) : wxRealPoint(-1, -1);
    }

    RecordingHost host;
    QcSmartPtr<vantlib::Profile> rectangle;
    std::unique_ptr<vl_app::DlgAxisOffset> offsetDialog;
};

}  // namespace

TEST(AxisOffsetPoints, OffsetsMatchAPointOnlyWithinTheTolerance) {
    for (const vl_app::AxisPointInfo& info : vl_app::axisPoints())
        EXPECT_EQ(vl_app::matchAxisPoint(vl_app::axisPointPosition(info.point, 80, 50), 80, 50), info.point)
            << info.radioButton;
    using V = vantlib::Vector2d;
    EXPECT_EQ(vl_app::matchAxisPoint(V(-40 + 5e-7, 25), 80, 50), AxisPoint::kTopLeft);
    EXPECT_EQ(vl_app::matchAxisPoint(V(-40 + 2e-6, 25), 80, 50), AxisPoint::kNone);
    EXPECT_EQ(vl_app::matchAxisPoint(V(-40, 25 - 2e-6), 80, 50), AxisPoint::kNone);
    EXPECT_EQ(vl_app::matchAxisPoint(V(5e-7, -25 - 5e-7), 80, 50), AxisPoint::kBottomMiddle);
    EXPECT_EQ(vl_app::matchAxisPoint(V(10, -5), 80, 50), AxisPoint::kNone);
    // Extents of nothing: every point is the centre, and the left column and top row come first.
    EXPECT_EQ(vl_app::matchAxisPoint(V(0, 0), 0, 0), AxisPoint::kTopLeft);

    // A point with a shift lies on no point; shown as a shift alone, it gives the same offset back.
    const vl_app::AxisPlacement shifted = vl_app::splitOffset(V(-30, 20), 80, 50);
    EXPECT_EQ(shifted.point, AxisPoint::kNone);
    EXPECT_EQ(vl_app::composeOffset(shifted, 80, 50), V(-30, 20));
    const vl_app::AxisPlacement onPoint = vl_app::splitOffset(V(40, 0), 80, 50);
    EXPECT_EQ(onPoint.point, AxisPoint::kMiddleRight);
    EXPECT_EQ(vl_app::composeOffset(onPoint, 80, 50), V(40, 0));
    EXPECT_EQ(vl_app::composeOffset({AxisPoint::kCenter, V(10, -5)}, 80, 50), V(10, -5));
}

TEST_F(AxisOffsetTest, OpeningShowsThePointAStoredOffsetLiesOn) {
    rectangle->set_offset(vantlib::Vector2d(40, -25));
    openOffset(rectangle);
    EXPECT_EQ(offsetDialog->profileWidth(), 80.0);
    EXPECT_EQ(offsetDialog->checkedPoint(), AxisPoint::kBottomRight);
    EXPECT_TRUE(find<wxRadioButton>("RADIOBTN_BOTTOM_RIGHT")->GetValue());
    EXPECT_EQ(find<wxTextCtrl>("TEXTCTRL_X_OFFSET")->GetValue(), "0");
    EXPECT_EQ(find<wxStaticText>("X_UNIT")->GetLabel(), "mm");

    rectangle->set_offset(vantlib::Vector2d(-40 + 2e-6, 25));
    openOffset(rectangle);
    EXPECT_EQ(offsetDialog->checkedPoint(), AxisPoint::kNone);
    for (const vl_app::AxisPointInfo& info : vl_app::axisPoints())
        EXPECT_FALSE(find<wxRadioButton>(info.radioButton)->GetValue()) << info.radioButton;
    EXPECT_EQ(find<wxTextCtrl>("TEXTCTRL_X_OFFSET")->GetValue(), "-40");
    EXPECT_EQ(find<wxTextCtrl>("TEXTCTRL_Y_OFFSET")->GetValue(), "25");

    rectangle->clear_offset();
    openOffset(rectangle);
    EXPECT_EQ(offsetDialog->checkedPoint(), AxisPoint::kNone);
    EXPECT_TRUE(find<wxTextCtrl>("TEXTCTRL_X_OFFSET")->GetValue().empty());
    EXPECT_EQ(find<wxChoice>("BTN_INVARIANT")->GetSelection(), int(vl_app::kKeepSolid));
}

TEST_F(AxisOffsetTest, ApplyStoresThePointPlusTheExtraOffset) {
    openOffset(rectangle);
    const int result = vl_test::runModal(*offsetDialog, [&] {
        choosePoint("RADIOBTN_CENTER");
        type("TEXTCTRL_X_OFFSET", "10");
        type("TEXTCTRL_Y_OFFSET", "-5");
        vl_test::press(*offsetDialog, XRCID("BTN_APPLY"));
    });
    EXPECT_EQ(result, wxID_OK);
    ASSERT_TRUE(stored()->has_offset());
    EXPECT_EQ(stored()->offset(), vantlib::Vector2d(10, -5));

    openOffset(stored());
    EXPECT_EQ(offsetDialog->checkedPoint(), AxisPoint::kNone);  // (10, -5) is none of the nine
    vl_test::runModal(*offsetDialog, [&] {
        choosePoint("RADIOBTN_TOP_LEFT");
        type("TEXTCTRL_X_OFFSET", "");
        type("TEXTCTRL_Y_OFFSET", "1.5");
        vl_test::press(*offsetDialog, XRCID("BTN_APPLY"));
    });
    EXPECT_EQ(stored()->offset(), vantlib::Vector2d(-40, 26.5));

    // Text that is no length applies nothing and keeps the dialog open.
    openOffset(stored());
    EXPECT_EQ(vl_test::runModal(*offsetDialog, [&] {
        type("TEXTCTRL_X_OFFSET", "ten");
        wxTEST_DIALOG(vl_test::press(*offsetDialog, XRCID("BTN_APPLY")), wxExpectModal<wxMessageDialog>(wxID_OK));
        EXPECT_TRUE(offsetDialog->IsModal());
        vl_test::press(*offsetDialog, XRCID("BTN_CANCEL"));
    }), wxID_CANCEL);
    EXPECT_EQ(stored()->offset(), vantlib::Vector2d(-40, 26.5));
}

TEST_F(AxisOffsetTest, TheBehaviourIsWrittenAtOnceEvenWhenCancelled) {
    openOffset(rectangle);
    const int result = vl_test::runModal(*offsetDialog, [&] {
        chooseBehavior(vl_app::kKeepAxis);
        choosePoint("RADIOBTN_TOP_RIGHT");
        vl_test::press(*offsetDialog, XRCID("BTN_CANCEL"));
    });
    EXPECT_EQ(result, wxID_CANCEL);
    EXPECT_EQ(OdEdSettingsManager::instance().getShort(vl_app::kOffsetBehaviorSetting, -1), vl_app::kKeepAxis);
    EXPECT_FALSE(stored()->has_offset());

    // A setting that is no number leaves the first choice.
    OdEdSettingsManager::instance().setString(vl_app::kOffsetBehaviorSetting, L"solid, please");
    openOffset(rectangle);
    EXPECT_EQ(find<wxChoice>("BTN_INVARIANT")->GetSelection(), int(vl_app::kKeepAxis));
}

TEST_F(AxisOffsetTest, KeepingTheAxisAsksAboutTheElementsThatUseTheProfile) {
    OdEdSettingsManager::instance().setShort(vl_app::kOffsetBehaviorSetting, vl_app::kKeepAxis);
    // A question where none belongs fails the test instead of waiting for an answer.
    const auto noQuestion = wxExpectModal<wxg::DlgQuestion>(5302, false, [](wxg::DlgQuestion&) {
                                ADD_FAILURE() << "the update question was asked";
                            }).Optional();
    // Without elements nothing is asked.
    openOffset(rectangle);
    vl_test::runModal(*offsetDialog, [&] {
        choosePoint("RADIOBTN_TOP_MIDDLE");
        wxTEST_DIALOG(vl_test::press(*offsetDialog, XRCID("BTN_APPLY")), noQuestion);
    });
    EXPECT_EQ(stored()->offset(), vantlib::Vector2d(0, 25));

    // Elements use a project profile of the same id as a central one: the central profile's
    // change concerns none of them.
    const auto foreign = profile(central, L"EN", L"FL", L"80x50", vantlib::kRectangleProfile, {});
    OdDbEntityPtr bar = OdDbEntity::createObject();
    bar->addLibraryReference({vantlib::kConstructionProfile, 0, L"FL 80x50", foreign->id()});
    db->addEntity(bar);
    openOffset(foreign);
    vl_test::runModal(*offsetDialog, [&] {
        choosePoint("RADIOBTN_TOP_MIDDLE");
        wxTEST_DIALOG(vl_test::press(*offsetDialog, XRCID("BTN_APPLY")), noQuestion);
    });
    EXPECT_TRUE(central->get<vantlib::Profile>(foreign->id())->has_offset());
    db->removeEntity(bar->objectId());

    useInDrawing(rectangle);
    openOffset(stored());
    vl_test::runModal(*offsetDialog, [&] {
        choosePoint("RADIOBTN_BOTTOM_LEFT");
        wxTEST_DIALOG(vl_test::press(*offsetDialog, XRCID("BTN_APPLY")), wxExpectModal<wxg::DlgQuestion>(5302));
        EXPECT_TRUE(offsetDialog->IsModal()) << "abandoning the change keeps the dialog open";
        vl_test::press(*offsetDialog, XRCID("BTN_CANCEL"));
    });
    EXPECT_EQ(stored()->offset(), vantlib::Vector2d(0, 25));
    EXPECT_EQ(host.applied, 0u);

    openOffset(stored());
    vl_test::runModal(*offsetDialog, [&] {
        choosePoint("RADIOBTN_BOTTOM_LEFT");
        wxTEST_DIALOG(vl_test::press(*offsetDialog, XRCID("BTN_APPLY")), wxExpectModal<wxg::DlgQuestion>(5301));
    });
    EXPECT_EQ(stored()->offset(), vantlib::Vector2d(-40, -25));
    EXPECT_EQ(host.applied, 0u) << "the second answer leaves the elements as they are";
    // They keep the section as it was, on a copy of the profile under the next numbered size.
    const auto kept = project->get<vantlib::Profile>(vantlib::ProfileKey(stored()->name()->id(), L"80x50-2"));
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->offset(), vantlib::Vector2d(0, 25));
    OdArray<OdDbObjectId> onCopy, onChanged;
    host.findProfileId(*db, kept->id(), onCopy);
    host.findProfileId(*db, rectangle->id(), onChanged);
    EXPECT_EQ(onCopy.size(), 1u);
    EXPECT_TRUE(onChanged.isEmpty());

    useInDrawing(rectangle);
    openOffset(stored());
    vl_test::runModal(*offsetDialog, [&] {
        choosePoint("RADIOBTN_MIDDLE_RIGHT");
        wxTEST_DIALOG(vl_test::press(*offsetDialog, XRCID("BTN_APPLY")), wxExpectModal<wxg::DlgQuestion>(5300));
    });
    EXPECT_EQ(stored()->offset(), vantlib::Vector2d(40, 0));
    EXPECT_EQ(host.applied, 1u);

    // Keeping the solid asks nothing, elements or not.
    openOffset(stored());
    vl_test::runModal(*offsetDialog, [&] {
        chooseBehavior(vl_app::kKeepSolid);
        choosePoint("RADIOBTN_CENTER");
        wxTEST_DIALOG(vl_test::press(*offsetDialog, XRCID("BTN_APPLY")), noQuestion);
    });
    EXPECT_EQ(stored()->offset(), vantlib::Vector2d(0, 0));
    EXPECT_TRUE(stored()->has_offset());
}

TEST_F(AxisOffsetTest, TheCentroidButtonPlacesTheAxisOnTheCentroid) {
    const auto angle = profile(project, L"User", L"L", L"120x60x8", vantlib::kLShapeProfile,
                               {{P::kDepth, 120}, {P::kWidth, 60}, {P::kThickness, 8}});
    const vantlib::Vector2d centroid = host.toCentroid(*angle);
    ASSERT_LT(centroid.x, -1.0);  // an angle's centroid lies towards its corner
    openOffset(angle);
    vl_test::runModal(*offsetDialog, [&] {
        vl_test::press(*offsetDialog, XRCID("BTN_CENTROID"));
        EXPECT_EQ(offsetDialog->checkedPoint(), AxisPoint::kCenter);
        vl_test::press(*offsetDialog, XRCID("BTN_APPLY"));
    });
    const auto after = project->get<vantlib::Profile>(angle->id());
    EXPECT_NEAR(after->offset().x, centroid.x, 1e-3);
    EXPECT_NEAR(after->offset().y, centroid.y, 1e-3);
}

TEST_F(AxisOffsetTest, ThePreviewMarksTheChosenPoint) {
    openOffset(rectangle);
    offsetDialog->Show();
    // No point and no shift yet: Apply would store the centre, and the mark says so.
    const wxRealPoint unchosen = markPosition();
    choosePoint("RADIOBTN_TOP_LEFT");
    const wxRealPoint topLeft = markPosition();
    choosePoint("RADIOBTN_BOTTOM_RIGHT");
    const wxRealPoint bottomRight = markPosition();
    choosePoint("RADIOBTN_CENTER");
    const wxRealPoint centre = markPosition();
    ASSERT_GE(topLeft.x, 0);
    EXPECT_EQ(unchosen, centre);
    EXPECT_LT(topLeft.x, centre.x - 10);
    EXPECT_LT(topLeft.y, centre.y - 5);
    EXPECT_GT(bottomRight.x, centre.x + 10);
    EXPECT_GT(bottomRight.y, centre.y + 5);
    // The outline is 80 × 50: the marks at the corners span more width than height.
    EXPECT_GT(bottomRight.x - topLeft.x, bottomRight.y - topLeft.y);
    type("TEXTCTRL_X_OFFSET", "20");  // a shift moves the mark with it
    EXPECT_GT(markPosition().x, centre.x + 5);
    offsetDialog->Hide();
}

}  // namespace vl_profiles_test

// Custom profiles in the profiles dialog: the outline drawn into the preview, the turn and
// mirror tools on a stored custom profile and on one just picked in the drawing.
#include <cmath>

#include <wx/image.h>
#include <wx/toolbar.h>

#include <OdDbCircle.h>
#include <OdDbPolyline.h>

#include <section/SectionGeometry.h>

#include <wx/msgdlg.h>
#include <wx/testing.h>

#include "DialogDriving.h"
#include "MessageBoxes.h"
#include "ProfilesFixture.h"
#include "StudioProfilesInfo.h"

namespace vl_profiles_test {

namespace {

using vl_app::DlgProfiles;

// A 100 × 200 block with a round hole of radius 20 50 above its centre, as loops.
vantlib::ProfileGeometry blockWithHole() {
    vantlib::ProfileGeometry g;
    g.outer = {{vantlib::Vector2d(-50, -100)}, {vantlib::Vector2d(50, -100)}, {vantlib::Vector2d(50, 100)},
               {vantlib::Vector2d(-50, 100)}};
    g.holes.push_back({{vantlib::Vector2d(20, 50), -1.0}, {vantlib::Vector2d(-20, 50), -1.0}});
    return g;
}

vantlib::Vector2d holeCentre(const vantlib::CustomProfile& profile) {
    const section::Extents e = section::loopExtents(profile.geometry().holes.at(0));
    return vantlib::Vector2d((e.min.x + e.max.x) / 2, (e.min.y + e.max.y) / 2);
}

// Whether a pixel shows the section's shaded area (neither white background nor line).
bool shaded(const wxImage& image, int x, int y) {
    const int r = image.GetRed(x, y), g = image.GetGreen(x, y), b = image.GetBlue(x, y);
    return b > r + 15 && b > 150 && g > 150;
}
bool white(const wxImage& image, int x, int y) {
    return image.GetRed(x, y) > 245 && image.GetGreen(x, y) > 245 && image.GetBlue(x, y) > 245;
}

// Answers the profiles dialog of selectProfiles as the user's button would end it, after
// looking at the dialog.
class ExpectProfiles : public wxExpectModalBase<DlgProfiles, ExpectProfiles> {
public:
    explicit ExpectProfiles(int answer, std::function<void(DlgProfiles&)> inspect = {})
        : m_answer(answer), m_inspect(std::move(inspect)) {}

protected:
    int OnInvoked(DlgProfiles* dialog) const override {
        if (m_inspect)
            m_inspect(*dialog);
        return m_answer;
    }

private:
    int m_answer;
    std::function<void(DlgProfiles&)> m_inspect;
};

// The modal result of the pick button.
constexpr int kPick = 1;

OdDbObjectId addRectangle(OdDbDatabase& db, double width, double height, bool closed) {
    OdDbPolylinePtr outline = OdDbPolyline::createObject();
    for (const auto& [x, y] : {std::pair{0.0, 0.0}, {width, 0.0}, {width, height}, {0.0, height}})
        outline->addVertexAt(outline->numVerts(), OdGePoint2d(x, y));
    outline->setClosed(closed);
    return db.addEntity(outline);
}

class CustomProfilesTest : public ProfilesFixture {
protected:
    void SetUp() override {
        ProfilesFixture::SetUp();
        const auto standard = project->save(vantlib::ProfileStandard::create(L"User"));
        const auto name = project->save(vantlib::ProfileName::create(standard, L"BLOCK", vantlib::kProfileGeneric));
        auto created = vantlib::CustomProfile::create(name, L"100x200");
        created->set_geometry(blockWithHole());
        block = project->save(created);
    }

    QcSmartPtr<vantlib::CustomProfile> selectedBlock() const {
        return QcSmartPtr<vantlib::CustomProfile>(static_cast<vantlib::CustomProfile*>(dialog->selectedProfile().get()));
    }
    bool shown(const char* name) const { return control(name)->IsShown(); }

    StudioProfilesInfo host;
    QcSmartPtr<vantlib::CustomProfile> block;
};

}  // namespace

TEST(CustomPreview, TheOutlineIsShadedAroundItsHolesAndFitsThePicture) {
    OdDbPolylinePtr square = OdDbPolyline::createObject();
    for (const auto& [x, y] : {std::pair{0.0, 0.0}, {100.0, 0.0}, {100.0, 100.0}, {0.0, 100.0}})
        square->addVertexAt(square->numVerts(), OdGePoint2d(x + 500, y + 500));
    square->setClosed(true);
    OdDbCirclePtr hole = OdDbCircle::createObject();
    hole->setCenter(OdGePoint2d(550, 550));
    hole->setRadius(25);
    const OdArray<OdSmartPtr<OdDbEntity>> outline{OdSmartPtr<OdDbEntity>(square.get()), OdSmartPtr<OdDbEntity>(hole.get())};

    const wxBitmap picture = DlgProfiles::getCustomProfilePreview(outline, 120, 80, 10, 1, 1.0, true);
    ASSERT_TRUE(picture.IsOk());
    EXPECT_EQ(picture.GetSize(), wxSize(120, 80));
    const wxImage image = picture.ConvertToImage();
    // The square is as high as the picture allows: 60 pixels, centred.
    EXPECT_TRUE(white(image, 60, 40)) << "the hole stays open";
    EXPECT_TRUE(shaded(image, 35, 40));
    EXPECT_TRUE(shaded(image, 60, 14));
    EXPECT_TRUE(white(image, 25, 40)) << "left of the square";
    EXPECT_TRUE(white(image, 60, 5)) << "the margin";

    const wxImage plain = DlgProfiles::getCustomProfilePreview(outline, 120, 80, 10, 1, 1.0, false).ConvertToImage();
    EXPECT_TRUE(white(plain, 35, 40));
    // Zoomed in twice, the square's edge leaves the picture and its hole fills the middle.
    const wxImage zoomed = DlgProfiles::getCustomProfilePreview(outline, 120, 80, 10, 1, 2.0, true).ConvertToImage();
    EXPECT_TRUE(white(zoomed, 35, 40));
    EXPECT_TRUE(shaded(zoomed, 5, 40));
    // Nothing to draw: a blank picture, not a failure.
    const wxImage blank =
        DlgProfiles::getCustomProfilePreview(OdArray<OdSmartPtr<OdDbEntity>>(), 50, 50, 5, 1, 1.0, true).ConvertToImage();
    EXPECT_TRUE(white(blank, 25, 25));
}

TEST_F(CustomProfilesTest, ASelectedCustomProfileShowsItsOutlineAndTools) {
    profile(project, L"User", L"RECT", L"80x50", vantlib::kRectangleProfile, {});
    open(vl_db::kModeManager, vl_db::kDbProject, block->id(), &host);
    EXPECT_TRUE(shown("PANEL_PREVIEW"));
    EXPECT_TRUE(shown("TBAR_CUSTOM_PROFILE"));
    EXPECT_TRUE(shown("PANEL_CUSTOM_SHAPE"));
    const wxImage image = dialog->preview().ConvertToImage();
    const wxSize size = dialog->preview().GetSize();
    EXPECT_TRUE(shaded(image, size.x / 2, size.y * 3 / 4));
    // The hole lies a quarter of the height above the centre.
    EXPECT_TRUE(white(image, size.x / 2, size.y / 2 - (size.y - 20) / 4));

    click(vl_db::kDbProject, "RECT 80x50");
    EXPECT_FALSE(shown("TBAR_CUSTOM_PROFILE")) << "other shapes have no custom tools";
}

TEST_F(CustomProfilesTest, TurningAndMirroringChangeTheProfileAndItsPreview) {
    open(vl_db::kModeManager, vl_db::kDbProject, block->id(), &host);
    const wxImage before = dialog->preview().ConvertToImage();
    ASSERT_TRUE(vl_test::press(*dialog, XRCID("TOOL_ROTATE_LEFT")));
    EXPECT_NEAR(holeCentre(*selectedBlock()).x, -50.0, 1e-9);
    EXPECT_NEAR(holeCentre(*selectedBlock()).y, 0.0, 1e-9);
    const wxImage turned = dialog->preview().ConvertToImage();
    const wxSize size = dialog->preview().GetSize();
    EXPECT_FALSE(shaded(before, size.x / 8, size.y / 2)) << "the upright block leaves the sides free";
    EXPECT_TRUE(shaded(turned, size.x / 8 + 2, size.y / 2 + 10)) << "lying, it spans the width";

    ASSERT_TRUE(vl_test::press(*dialog, XRCID("TOOL_MIRROR_HORIZONTAL")));
    EXPECT_NEAR(holeCentre(*selectedBlock()).x, 50.0, 1e-9);
    ASSERT_TRUE(vl_test::press(*dialog, XRCID("TOOL_ROTATE_RIGHT")));
    ASSERT_TRUE(vl_test::press(*dialog, XRCID("TOOL_MIRROR_VERTICAL")));
    EXPECT_NEAR(holeCentre(*selectedBlock()).y, 50.0, 1e-9);
    EXPECT_NEAR(section::properties(selectedBlock()->geometry()).area, 20000.0 - std::acos(-1.0) * 400.0, 1e-6);
    // The stored profile changes when the dialog saves it, not before.
    const auto kept = project->get<vantlib::CustomProfile>(block->id());
    EXPECT_EQ(kept->geometry(), blockWithHole());
}

TEST_F(CustomProfilesTest, WithoutTheHostsServicesTheToolsChangeNothing) {
    open(vl_db::kModeManager, vl_db::kDbProject, block->id(), nullptr);
    dialog->turnCustomProfile(true);
    dialog->mirrorCustomProfile(false);
    EXPECT_EQ(selectedBlock()->geometry(), blockWithHole());
    EXPECT_TRUE(dialog->preview().IsOk()) << "the outline is drawn from the profile itself";
}

TEST_F(CustomProfilesTest, ThePickButtonComesBackWithThePickedOutlineOrTheReasonItWasRefused) {
    const OdDbObjectId open = addRectangle(*db, 300, 120, false);
    const OdDbObjectId plate = addRectangle(*db, 300, 120, true);
    std::vector<OdDbObjectId> answer{open};
    host.setOutlinePicker([&] { return answer; });
    DlgProfiles::CustomProfileInfo picked;
    QcSmartPtr<vantlib::Profile> chosen;
    wxString refusal;
    DlgProfiles::EButton result = DlgProfiles::kButtonOk;
    wxTEST_DIALOG(result = DlgProfiles::selectProfiles(0, libs, chosen, &picked, &host, vl_db::kDbNone, vl_db::kModePicker),
                  ExpectProfiles(kPick), vl_test::CaptureMessage(refusal),
                  ExpectProfiles(kPick, [&](DlgProfiles&) { answer = {plate}; }),
                  ExpectProfiles(wxID_CANCEL, [&](DlgProfiles& shown) {
                      ASSERT_TRUE(picked.profile);
                      EXPECT_EQ(shown.customProfile(), picked.profile);
                      EXPECT_TRUE(shown.preview().IsOk());
                  }));
    EXPECT_NE(refusal.find("open"), wxString::npos) << refusal;
    EXPECT_EQ(result, DlgProfiles::kButtonCancel);
    EXPECT_DOUBLE_EQ(picked.width, 300.0);
    EXPECT_EQ(picked.unit, OdDb::kUnitsMillimeters);
}

TEST_F(CustomProfilesTest, AProfilePickedInTheDrawingIsShownAndTurnedWithItsExtents) {
    const OdDbObjectId plateId = addRectangle(*db, 300, 120, true);
    host.setOutlinePicker([plateId] { return std::vector<OdDbObjectId>{plateId}; });

    DlgProfiles::CustomProfileInfo picked = host.getProfileFromGeometricSel(OdDb::kUnitsCentimeters);
    ASSERT_TRUE(picked.profile);
    EXPECT_DOUBLE_EQ(picked.width, 30.0);
    EXPECT_DOUBLE_EQ(picked.height, 12.0);
    dialog = std::make_unique<DlgProfiles>(nullptr, libs, vl_db::kModeManager, vl_db::kDbNone, 0, &picked, &host);
    dialog->Show();
    idle();
    dialog->customModeRightPanels();
    EXPECT_TRUE(shown("TBAR_CUSTOM_PROFILE"));
    EXPECT_TRUE(shown("PANEL_CUSTOM_SHAPE"));
    EXPECT_EQ(dialog->customProfile(), picked.profile);
    EXPECT_TRUE(shaded(dialog->preview().ConvertToImage(), dialog->preview().GetWidth() / 2,
                       dialog->preview().GetHeight() / 2));

    ASSERT_TRUE(vl_test::press(*dialog, XRCID("TOOL_ROTATE_RIGHT")));
    EXPECT_DOUBLE_EQ(picked.width, 12.0);
    EXPECT_DOUBLE_EQ(picked.height, 30.0);
    const section::Extents e = section::loopExtents(picked.profile->geometry().outer);
    EXPECT_NEAR(e.height(), 30.0, 1e-9);
    ASSERT_TRUE(vl_test::press(*dialog, XRCID("TOOL_ROTATE_RIGHT")));
    EXPECT_DOUBLE_EQ(picked.width, 30.0) << "two turns swap the extents back";
    EXPECT_FALSE(vl_test::press(*dialog, XRCID("BTN_OFFSET"))) << "a picked profile has no offset until it is saved";
}

}  // namespace vl_profiles_test

// Picking a custom profile from the drawing's outlines: what each outline is, which one a click
// picks, which outlines are holes, and the profile the studio builds from a pick.
#include <cmath>

#include <OdDbCircle.h>
#include <OdDbPolyline.h>
#include <section/SectionGeometry.h>
#include <vantlib/Exception.h>

#include "DrawingFixture.h"
#include "DrawingOutlines.h"
#include "StudioProfilesInfo.h"

using namespace vl_db_test;
using outlines::OutlineFault;

namespace {

OdDbObjectId addPolyline(OdDbDatabase& db, std::vector<std::array<double, 3>> corners, bool closed) {
    OdDbPolylinePtr polyline = OdDbPolyline::createObject();
    for (const auto& c : corners)
        polyline->addVertexAt(polyline->numVerts(), OdGePoint2d(c[0], c[1]), c[2]);
    polyline->setClosed(closed);
    return db.addEntity(polyline);
}

OdDbObjectId addCircle(OdDbDatabase& db, double x, double y, double r) {
    OdDbCirclePtr circle = OdDbCircle::createObject();
    circle->setCenter(OdGePoint2d(x, y));
    circle->setRadius(r);
    return db.addEntity(circle);
}

OdSmartPtr<OdDbEntity> entity(const OdDbObjectId& id) { return OdDbEntity::cast(id.safeOpenObject().get()); }

vantlib::Vector2d centreOf(const vantlib::ProfileLoop& loop) {
    const section::Extents e = section::loopExtents(loop);
    return vantlib::Vector2d((e.min.x + e.max.x) / 2, (e.min.y + e.max.y) / 2);
}

// A sheet of outlines as a user draws them: a timber section (drawn clockwise) with a round hole
// and a pin in the hole, an open polyline, a bow tie, and an outline closed by meeting its start.
class DrawingOutlinesTest : public DrawingFixture {
protected:
    void SetUp() override {
        DrawingFixture::SetUp();
        db = newDrawing("sheet.vldwg");
        timber = addPolyline(*db, {{{1000, 1000, 0}, {1000, 1200, 0}, {1100, 1200, 0}, {1100, 1000, 0}}}, true);
        hole = addCircle(*db, 1050, 1150, 20);
        pin = addCircle(*db, 1050, 1150, 5);
        open = addPolyline(*db, {{{0, 0, 0}, {50, 0, 0}, {50, 40, 0}}}, false);
        bowTie = addPolyline(*db, {{{200, 0, 0}, {260, 40, 0}, {260, 0, 0}, {200, 40, 0}}}, true);
        met = addPolyline(*db, {{{400, 0, 0}, {440, 0, 1.0}, {440, 30, 0}, {400, 30, 0}, {400, 0, 0}}}, false);
        sheet = outlines::drawnOutlines(*db);
    }

    int index(const OdDbObjectId& id) const {
        for (size_t i = 0; i < sheet.size(); ++i)
            if (sheet[i].entity->objectId() == id)
                return static_cast<int>(i);
        return -1;
    }

    OdDbDatabase* db = nullptr;
    OdDbObjectId timber, hole, pin, open, bowTie, met;
    std::vector<outlines::DrawnOutline> sheet;
};

}  // namespace

TEST_F(DrawingOutlinesTest, EachOutlineSaysWhetherItCanBoundASection) {
    ASSERT_EQ(sheet.size(), 6u);
    EXPECT_EQ(sheet[index(timber)].fault, OutlineFault::kNone);
    EXPECT_NEAR(sheet[index(timber)].area, 20000.0, 1e-9);
    // Drawn clockwise, kept counter-clockwise.
    EXPECT_GT(section::loopArea(sheet[index(timber)].loop), 0.0);
    EXPECT_NEAR(sheet[index(hole)].area, std::acos(-1.0) * 400.0, 1e-6);
    EXPECT_EQ(sheet[index(open)].fault, OutlineFault::kOpen);
    EXPECT_EQ(sheet[index(bowTie)].fault, OutlineFault::kCrossesItself);
    EXPECT_TRUE(sheet[index(bowTie)].loop.empty());
    // Open, but its end meets its start: closed, with the arc kept.
    const outlines::DrawnOutline& slot = sheet[index(met)];
    EXPECT_EQ(slot.fault, OutlineFault::kNone);
    ASSERT_EQ(slot.loop.size(), 4u);
    EXPECT_NEAR(slot.area, 40 * 30 + std::acos(-1.0) * 15 * 15 / 2, 1e-6);
    const outlines::Bounds bounds = outlines::boundsOf(sheet);
    EXPECT_EQ(bounds.min, OdGePoint2d(0, 0));
    EXPECT_EQ(bounds.max, OdGePoint2d(1100, 1200));
}

TEST_F(DrawingOutlinesTest, AClickPicksTheLineNearItOrTheSmallestOutlineAroundIt) {
    EXPECT_EQ(outlines::outlineAt(sheet, OdGePoint2d(1000.5, 1100), 1.0), index(timber));
    EXPECT_EQ(outlines::outlineAt(sheet, OdGePoint2d(1020, 1050), 1.0), index(timber));  // inside, off the hole
    EXPECT_EQ(outlines::outlineAt(sheet, OdGePoint2d(1060, 1150), 1.0), index(hole));    // in the hole, off the pin
    EXPECT_EQ(outlines::outlineAt(sheet, OdGePoint2d(1050, 1150), 1.0), index(pin));
    EXPECT_EQ(outlines::outlineAt(sheet, OdGePoint2d(1050, 1171), 2.0), index(hole));  // on its line
    // Open outlines are picked by their line only, so that the picker can say why they don't do.
    EXPECT_EQ(outlines::outlineAt(sheet, OdGePoint2d(25, 0.5), 1.0), index(open));
    EXPECT_EQ(outlines::outlineAt(sheet, OdGePoint2d(40, 10), 1.0), -1);
    EXPECT_EQ(outlines::outlineAt(sheet, OdGePoint2d(-500, -500), 1.0), -1);
}

TEST_F(DrawingOutlinesTest, OnlyOutlinesDirectlyInsideBecomeHoles) {
    EXPECT_EQ(outlines::holesOf(sheet, index(timber)), std::vector<int>{index(hole)});
    EXPECT_EQ(outlines::holesOf(sheet, index(hole)), std::vector<int>{index(pin)});
    EXPECT_TRUE(outlines::holesOf(sheet, index(pin)).empty());
    EXPECT_TRUE(outlines::liesInside(sheet[index(pin)], sheet[index(timber)]));
    EXPECT_FALSE(outlines::liesInside(sheet[index(timber)], sheet[index(hole)]));
}

TEST_F(DrawingOutlinesTest, PickedOutlinesMakeACentredGeometryInTheProfileUnit) {
    OdArray<OdSmartPtr<OdDbEntity>> picked{entity(hole), entity(timber)};
    const vantlib::ProfileGeometry g = outlines::profileGeometry(picked, 0.1);  // mm to cm
    const section::Extents e = section::loopExtents(g.outer);
    EXPECT_NEAR(e.min.x, -5.0, 1e-9);
    EXPECT_NEAR(e.max.y, 10.0, 1e-9);
    ASSERT_EQ(g.holes.size(), 1u);
    EXPECT_LT(section::loopArea(g.holes[0]), 0.0);
    EXPECT_NEAR(centreOf(g.holes[0]).y, 5.0, 1e-9);
    EXPECT_NEAR(section::properties(g).area, 200.0 - std::acos(-1.0) * 4.0, 1e-6);

    auto refused = [](const OdArray<OdSmartPtr<OdDbEntity>>& entities) {
        try {
            outlines::profileGeometry(entities, 1.0);
        } catch (const vantlib::ConsistencyError& error) {
            return std::wstring(error.message().c_str());
        }
        return std::wstring();
    };
    EXPECT_NE(refused({entity(open)}).find(L"open"), std::wstring::npos);
    EXPECT_NE(refused({entity(timber), entity(bowTie)}).find(L"crosses itself"), std::wstring::npos);
    EXPECT_NE(refused({entity(timber), entity(met)}).find(L"outside"), std::wstring::npos);
    EXPECT_FALSE(refused({}).empty());
}

TEST_F(DrawingOutlinesTest, TheStudioBuildsTheCustomProfileFromWhatTheUserPicked) {
    StudioProfilesInfo info;
    EXPECT_FALSE(info.getProfileFromGeometricSel(OdDb::kUnitsCentimeters).profile);  // no picker
    std::vector<OdDbObjectId> answer{timber, hole};
    info.setOutlinePicker([&] { return answer; });
    CustomProfileInfo picked = info.getProfileFromGeometricSel(OdDb::kUnitsCentimeters);
    ASSERT_TRUE(picked.profile);
    EXPECT_EQ(picked.unit, OdDb::kUnitsCentimeters);
    EXPECT_EQ(picked.entities.size(), 2u);
    EXPECT_EQ(picked.profile->geometry().holes.size(), 1u);
    EXPECT_EQ(info.getProfileDims(*picked.profile), std::make_pair(10.0, 20.0));

    answer = {open};
    EXPECT_THROW(info.getProfileFromGeometricSel(OdDb::kUnitsMillimeters), vantlib::ConsistencyError);
    answer.clear();  // the user gave up
    EXPECT_FALSE(info.getVantlibProfileFromGeometricSel(OdDb::kUnitsMillimeters));
}

TEST_F(DrawingOutlinesTest, TurningAndMirroringChangeTheStoredGeometryAndTheirOutlines) {
    StudioProfilesInfo info;
    info.setOutlinePicker([&] { return std::vector<OdDbObjectId>{timber, hole}; });
    QcSmartPtr<vantlib::CustomProfile> profile = info.getProfileFromGeometricSel(OdDb::kUnitsMillimeters).profile;
    ASSERT_TRUE(profile);
    EXPECT_NEAR(centreOf(profile->geometry().holes[0]).y, 50.0, 1e-9);

    OdArray<OdSmartPtr<OdDbEntity>> turned = info.getRotatedProfileEntityArr(*db, *profile, true);
    // A left turn carries the hole from above the centre to its left.
    EXPECT_NEAR(centreOf(profile->geometry().holes[0]).x, -50.0, 1e-9);
    EXPECT_EQ(info.getProfileDims(*profile), std::make_pair(200.0, 100.0));
    ASSERT_EQ(turned.size(), 2u);
    OdDbPolylinePtr outer = OdDbPolyline::cast(turned[0].get());
    ASSERT_TRUE(outer);
    EXPECT_TRUE(outer->isClosed());
    EXPECT_EQ(outer->numVerts(), profile->geometry().outer.size());

    info.getMirroredProfileEntityArr(*db, *profile, true);  // about the y axis
    EXPECT_NEAR(centreOf(profile->geometry().holes[0]).x, 50.0, 1e-9);
    info.getMirroredProfileEntityArr(*db, *profile, false);
    info.getRotatedProfileEntityArr(*db, *profile, false);
    EXPECT_NEAR(centreOf(profile->geometry().holes[0]).y, -50.0, 1e-9);
    EXPECT_NEAR(section::properties(profile->geometry()).area, 20000.0 - std::acos(-1.0) * 400.0, 1e-6);

    auto rectangle = vantlib::RectangleProfile::create(QcSmartPtr<vantlib::ProfileName>(), L"10x20");
    rectangle->set_x_dim(10);
    rectangle->set_y_dim(20);
    EXPECT_EQ(info.getProfileEntityArr(*db, *rectangle).size(), 1u);
    rectangle->set_x_dim(0);
    EXPECT_TRUE(info.getProfileEntityArr(*db, *rectangle).isEmpty());
}

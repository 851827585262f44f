#include <gtest/gtest.h>

#include <cmath>

#include "OdDbCircle.h"
#include "OdDbDatabase.h"
#include "OdDbPolyline.h"
#include "TempFolder.h"

namespace {

// The radius every sample of an arc must keep, and whether `probe` lies among the samples.
bool passesNear(const std::vector<OdGePoint2d>& points, const OdGePoint2d& probe, double tolerance) {
    for (const OdGePoint2d& p : points)
        if (p.distanceTo(probe) < tolerance)
            return true;
    return false;
}

}  // namespace

TEST(Outlines, ArcSegmentsRunTheWayTheirBulgeSays) {
    const OdGePoint2d right(1, 0), left(-1, 0), bottom(0, -1);
    std::vector<OdGePoint2d> upper, lower, longWay;
    odgeAppendSegmentPoints(upper, right, left, 1.0);
    odgeAppendSegmentPoints(lower, right, left, -1.0);
    // Three quarters of a turn counter-clockwise: over the top and round the left side.
    odgeAppendSegmentPoints(longWay, right, bottom, std::tan(3.0 * std::acos(-1.0) / 8.0));
    for (const auto* arc : {&upper, &lower, &longWay}) {
        for (const OdGePoint2d& p : *arc)
            EXPECT_NEAR(std::hypot(p.x, p.y), 1.0, 1e-9);
        EXPECT_EQ(arc->back(), arc == &longWay ? bottom : left);
    }
    EXPECT_TRUE(passesNear(upper, OdGePoint2d(0, 1), 1e-9));
    EXPECT_TRUE(passesNear(lower, OdGePoint2d(0, -1), 1e-9));
    EXPECT_TRUE(passesNear(longWay, OdGePoint2d(-1, 0), 1e-9));
    EXPECT_FALSE(passesNear(longWay, OdGePoint2d(0.7071, -0.7071), 0.05));

    std::vector<OdGePoint2d> straight;
    odgeAppendSegmentPoints(straight, right, left, 0.0);
    EXPECT_EQ(straight, std::vector<OdGePoint2d>{left});
}

TEST(Outlines, PolylinesAndCirclesRefuseWhatCannotBeDrawn) {
    OdDbPolylinePtr polyline = OdDbPolyline::createObject();
    polyline->addVertexAt(0, OdGePoint2d(0, 0));
    polyline->addVertexAt(1, OdGePoint2d(10, 0), 0.5);
    polyline->addVertexAt(1, OdGePoint2d(5, -1));  // inserted between the two
    EXPECT_EQ(polyline->getPointAt(1), OdGePoint2d(5, -1));
    EXPECT_DOUBLE_EQ(polyline->getBulgeAt(2), 0.5);
    EXPECT_THROW(polyline->addVertexAt(5, OdGePoint2d(1, 1)), OdError);
    EXPECT_THROW(polyline->addVertexAt(0, OdGePoint2d(NAN, 1)), OdError);
    EXPECT_THROW(polyline->setBulgeAt(0, INFINITY), OdError);
    EXPECT_THROW(polyline->getPointAt(3), OdError);
    EXPECT_EQ(polyline->numVerts(), 3u);

    OdDbCirclePtr circle = OdDbCircle::createObject();
    EXPECT_THROW(circle->setRadius(0.0), OdError);
    EXPECT_THROW(circle->setRadius(-2.0), OdError);
    EXPECT_THROW(circle->setCenter(OdGePoint2d(INFINITY, 0)), OdError);
    circle->setRadius(2.5);
    EXPECT_DOUBLE_EQ(circle->radius(), 2.5);
}

TEST(Outlines, SamplesCloseOrStopWhereTheOutlineDoes) {
    OdDbPolylinePtr slot = OdDbPolyline::createObject();
    slot->addVertexAt(0, OdGePoint2d(0, 0));
    slot->addVertexAt(1, OdGePoint2d(10, 0), 1.0);  // half circle round (10, 1)
    slot->addVertexAt(2, OdGePoint2d(10, 2));
    slot->addVertexAt(3, OdGePoint2d(0, 2), 1.0);
    const std::vector<OdGePoint2d> open = slot->samplePoints(0.2);
    EXPECT_EQ(open.front(), OdGePoint2d(0, 0));
    EXPECT_EQ(open.back(), OdGePoint2d(0, 2));
    EXPECT_TRUE(passesNear(open, OdGePoint2d(11, 1), 1e-9));
    EXPECT_FALSE(passesNear(open, OdGePoint2d(-1, 1), 0.01));

    slot->setClosed(true);
    const std::vector<OdGePoint2d> closed = slot->samplePoints(0.2);
    EXPECT_NE(closed.back(), closed.front());
    EXPECT_TRUE(passesNear(closed, OdGePoint2d(-1, 1), 1e-9));

    OdDbCirclePtr circle = OdDbCircle::createObject();
    circle->setCenter(OdGePoint2d(3, 4));
    circle->setRadius(2);
    const std::vector<OdGePoint2d> round = circle->samplePoints();
    EXPECT_EQ(round.front(), OdGePoint2d(5, 4));
    EXPECT_GT(round[1].y, 4.0);  // counter-clockwise
    for (const OdGePoint2d& p : round)
        EXPECT_NEAR(p.distanceTo(circle->center()), 2.0, 1e-9);
}

TEST(Outlines, OutlinesSurviveSavingAndReopening) {
    TempFolder folder;
    const OdString path = folder.file("outlines.vldwg");
    {
        auto db = OdDbDatabase::create(path, OdDb::kUnitsMillimeters);
        db->addLayer(L"Sections", OdCmColor::fromIndex(3));
        OdDbPolylinePtr channel = OdDbPolyline::createObject();
        channel->setLayer(L"Sections");
        channel->setColor(OdCmColor::fromIndex(1));
        const double corners[][3] = {{0, 0, 0}, {60, 0, 0}, {60, 15, -0.41421356}, {57.5, 2.5, 0}, {2.5, 2.5, 0}};
        for (const auto& c : corners)
            channel->addVertexAt(channel->numVerts(), OdGePoint2d(c[0], c[1]), c[2]);
        channel->setClosed(true);
        db->addEntity(channel);
        OdDbPolylinePtr open = OdDbPolyline::createObject();
        open->addVertexAt(0, OdGePoint2d(-1e-9, 1e12));
        open->addVertexAt(1, OdGePoint2d(0.1, 0.2));
        db->addEntity(open);
        OdDbCirclePtr hole = OdDbCircle::createObject();
        hole->setCenter(OdGePoint2d(30, 40));
        hole->setRadius(6.5);
        db->addEntity(hole);
        db->save();
    }
    auto db = OdDbDatabase::open(path);
    const std::vector<OdDbObjectId> ids = db->entityIds();
    ASSERT_EQ(ids.size(), 3u);
    OdDbPolylinePtr channel = OdDbPolyline::cast(ids[0].safeOpenObject().get());
    ASSERT_TRUE(channel);
    EXPECT_TRUE(channel->isClosed());
    EXPECT_EQ(channel->layer(), OdString(L"Sections"));
    EXPECT_EQ(channel->color(), OdCmColor::fromIndex(1));
    ASSERT_EQ(channel->numVerts(), 5u);
    EXPECT_EQ(channel->getPointAt(3), OdGePoint2d(57.5, 2.5));
    EXPECT_DOUBLE_EQ(channel->getBulgeAt(2), -0.41421356);

    OdDbPolylinePtr open = OdDbPolyline::cast(ids[1].safeOpenObject().get());
    ASSERT_TRUE(open);
    EXPECT_FALSE(open->isClosed());
    EXPECT_EQ(open->getPointAt(0), OdGePoint2d(-1e-9, 1e12));  // exact, not rounded by the file

    EXPECT_FALSE(OdDbCircle::cast(ids[1].safeOpenObject().get()));
    OdDbCirclePtr hole = OdDbCircle::cast(ids[2].safeOpenObject().get());
    ASSERT_TRUE(hole);
    EXPECT_EQ(hole->center(), OdGePoint2d(30, 40));
    EXPECT_DOUBLE_EQ(hole->radius(), 6.5);
    EXPECT_TRUE(OdDbEntity::cast(hole.get()));
}

// Section outlines drawn in the demo drawing, from which a user makes custom profiles: a
// cold-formed lipped channel, a timber section with a bolt hole, a rounded hollow section and
// an open gutter line that shows how an open outline is refused.
#include <cmath>

#include <OdDbCircle.h>
#include <OdDbPolyline.h>

#include "DemoProfiles.h"

namespace vlib::demo {

namespace {

// The bulge of a quarter-circle corner, counter-clockwise.
const double kQuarter = std::tan(std::acos(-1.0) / 8.0);

struct Corner {
    double x;
    double y;
    double bulge;
};

OdDbObjectId addOutline(OdDbDatabase& db, const std::vector<Corner>& corners, double dx, double dy, bool closed) {
    OdDbPolylinePtr polyline = OdDbPolyline::createObject();
    polyline->setLayer(L"S-SECT");
    for (const Corner& c : corners)
        polyline->addVertexAt(polyline->numVerts(), OdGePoint2d(c.x + dx, c.y + dy), c.bulge);
    polyline->setClosed(closed);
    return db.addEntity(polyline);
}

// A rectangle with corners rounded by `r` (0: sharp), counter-clockwise from its bottom left.
std::vector<Corner> roundedRectangle(double x, double y, double width, double height, double r) {
    if (r <= 0.0)
        return {{x, y, 0}, {x + width, y, 0}, {x + width, y + height, 0}, {x, y + height, 0}};
    return {{x + r, y, 0},
            {x + width - r, y, kQuarter},
            {x + width, y + r, 0},
            {x + width, y + height - r, kQuarter},
            {x + width - r, y + height, 0},
            {x + r, y + height, kQuarter},
            {x, y + height - r, 0},
            {x, y + r, kQuarter}};
}

}  // namespace

void addSectionOutlines(OdDbDatabase& db) {
    db.addLayer(L"S-SECT", OdCmColor::fromIndex(OdCmEntityColor::kACIBlue));
    // C 150×65×20×2 of cold-formed steel, inner bend radius 3, the web on the left.
    const double q = kQuarter;
    addOutline(db,
               {{5, 0, 0},      {60, 0, q},      {65, 5, 0},      {65, 20, 0},     {63, 20, 0},
                {63, 5, -q},    {60, 2, 0},      {5, 2, -q},      {2, 5, 0},       {2, 145, -q},
                {5, 148, 0},    {60, 148, -q},   {63, 145, 0},    {63, 130, 0},    {65, 130, 0},
                {65, 145, q},   {60, 150, 0},    {5, 150, q},     {0, 145, 0},     {0, 5, q}},
               0, 0, true);
    // Timber 120×240 with a bolt hole of 30 in its upper third.
    addOutline(db, roundedRectangle(0, 0, 120, 240, 0), 200, 0, true);
    OdDbCirclePtr hole = OdDbCircle::createObject();
    hole->setLayer(L"S-SECT");
    hole->setCenter(OdGePoint2d(260, 160));
    hole->setRadius(15);
    db.addEntity(hole);
    // Hollow section 100×60×4 with rounded corners.
    addOutline(db, roundedRectangle(0, 0, 100, 60, 8), 420, 0, true);
    addOutline(db, roundedRectangle(4, 4, 92, 52, 4), 420, 0, true);
    // A gutter drawn as an open line: it bounds no section.
    addOutline(db, {{0, 60, 0}, {0, 0, 0.0}, {80, 0, 0}, {100, 40, 0}}, 580, 0, false);
}

}  // namespace vlib::demo

#pragma once
// The section of a construction profile as geometry. Outlines are built in the profile's own
// length unit with the centre of the section's extents at the origin, x to the right and y up;
// an outer loop runs counter-clockwise and holes clockwise.
#include <vantlib/Profile.h>

namespace section {

using vantlib::ProfileGeometry;
using vantlib::ProfileLoop;
using vantlib::Vector2d;

struct Extents {
    Vector2d min;
    Vector2d max;
    double width() const { return max.x - min.x; }
    double height() const { return max.y - min.y; }
};

struct SectionProperties {
    double area = 0.0;       // holes taken off
    double grossArea = 0.0;  // holes filled
    Extents extents;
    Vector2d centroid;       // of the net area
};

// The outline of the profile's section, fillets, edge radii and slopes included. Throws
// vantlib::ConsistencyError with the reason when the dimensions make no section.
ProfileGeometry outline(const vantlib::Profile& profile);

// Why the profile makes no section; empty when it makes one.
OdString sectionFault(const vantlib::Profile& profile);
inline bool isValidSection(const vantlib::Profile& profile) { return sectionFault(profile).isEmpty(); }

// Area, extents and centroid of a loop or of a whole outline.
double loopArea(const ProfileLoop& loop);  // signed: positive counter-clockwise
Extents loopExtents(const ProfileLoop& loop);
SectionProperties properties(const ProfileGeometry& geometry);
// The properties of the profile's section; throws like outline().
SectionProperties properties(const vantlib::Profile& profile);

// True when the two profiles have the same shape and their sections agree within `tolerance`
// times the size of the first one's section. `scale` converts the second profile's lengths
// to the first one's unit. The first profile must make a section (throws like outline()).
bool sameSection(const vantlib::Profile& a, const vantlib::Profile& b, double scale = 1.0, double tolerance = 1e-3);

// The outline turned a quarter round the origin (counter-clockwise when `left`) or mirrored
// (about the y axis when `horizontal`, otherwise about the x axis); loops keep their sense.
ProfileGeometry turned(const ProfileGeometry& geometry, bool left);
ProfileGeometry mirrored(const ProfileGeometry& geometry, bool horizontal);

}  // namespace section

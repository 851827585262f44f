#pragma once
// Pictures of a profile's outline for the profiles dialog and the axis offset dialog: the
// outline's drawing entities (or a custom profile's loops) as point paths, scaled to fit a
// picture with a margin, optionally with a point of the section marked.
#include <vector>

#include <wx/bitmap.h>
#include <wx/colour.h>

#include <OdArray.h>
#include <OdDbEntity.h>
#include <OdGePoint2d.h>
#include <OdSmartPtr.h>

#include <vantlib/Profile.h>

namespace vl_app {

struct OutlinePath {
    std::vector<OdGePoint2d> points;
    bool closed = false;
};

// Polylines and circles as paths; other entities draw nothing.
std::vector<OutlinePath> outlinePaths(const OdArray<OdSmartPtr<OdDbEntity>>& entities);
// The outer loop and the holes of a custom geometry.
std::vector<OutlinePath> outlinePaths(const vantlib::ProfileGeometry& geometry);

// Maps section coordinates (y up) to picture pixels (y down): the paths' extents centred in
// a picture of `width` × `height` with `margin` pixels kept free on every side.
struct PreviewFit {
    double scale = 0.0;  // pixels per unit; 0 when the paths have no extent
    OdGePoint2d centre;  // centre of the paths' extents
    double width = 0.0;
    double height = 0.0;
    bool empty() const { return scale <= 0.0; }
    OdGePoint2d toPixel(const OdGePoint2d& point) const {
        return OdGePoint2d(width / 2 + (point.x - centre.x) * scale, height / 2 - (point.y - centre.y) * scale);
    }
};
PreviewFit fitPreview(const std::vector<OutlinePath>& paths, int width, int height, int margin);

struct PreviewStyle {
    int margin = 8;
    int penWidth = 1;
    double zoom = 1.0;  // on top of the fit; above 1 parts of the outline leave the picture
    bool fill = true;
    wxColour line = wxColour(30, 30, 30);
    wxColour area = wxColour(190, 205, 225);
    wxColour background = *wxWHITE;
};

// The paths drawn into a picture; `mark`, when given, is a point relative to the centre of the
// paths' extents that is marked with a cross in a circle.
wxBitmap drawOutlinePreview(const std::vector<OutlinePath>& paths, const wxSize& size, const PreviewStyle& style,
                            const OdGePoint2d* mark = nullptr);

}  // namespace vl_app

#pragma once
// Pictures of library objects: a material's hatch and a composition's cross-section, whose
// plies are stacked as hatched bands from the exterior (top) to the interior (bottom).
#include <vector>

#include <wx/bitmap.h>
#include <wx/gdicmn.h>

#include <QcSmartPtr.h>

#include <vantlib/Composition.h>
#include <vantlib/Material.h>

#include <vl_db/HatchPattern.h>

namespace vl_app {

// The material's hatch for a view, black on white, filling `size`; a null bitmap when the
// material has no drawable hatch or it cannot be drawn.
wxBitmap hatchPreview(const QcSmartPtr<const vantlib::Material>& material, vl_db::EHatchViewType view,
                      const wxSize& size);

// The composition's cross-section filling `size` inside a margin (8 pixels, 16 with large
// icons). With `outline` a frame is drawn around the plies. Null for a null composition.
wxBitmap preview(const QcSmartPtr<vantlib::Composition>& composition, const wxSize& size, bool outline);

// Thumbnail of a composition for list image lists (64 or 128 pixels wide); null when no
// picture can be made.
wxBitmap compositionThumbnail(const QcSmartPtr<vantlib::Composition>& composition);

// Margin around a composition preview.
int previewMargin();

// Thicknesses the preview gives each ply: its own, the variable ply's included. When the plies
// add up to nothing the variable ply counts 1.0 and the total is 1.0.
struct PlyThicknesses {
    std::vector<double> plies;
    double total = 0.0;
};
PlyThicknesses previewThicknesses(const vantlib::Composition& composition);

// Where each ply lies in a preview area `height` pixels high: top and height in whole pixels.
struct PlyBand {
    int top = 0;
    int height = 0;
};
std::vector<PlyBand> plyBands(const vantlib::Composition& composition, int height);

}  // namespace vl_app

#pragma once
// A material's section hatch drawn at the scale of a cross-section picture, so that the plies of
// a composition show their hatches in true proportion to each other and to their thickness.
#include <wx/gdicmn.h>

#include <OdUnits.h>
#include <QcSmartPtr.h>

#include <vantlib/Material.h>

class wxGraphicsContext;

namespace vl_app {

// Where the picture is and how big the drawing is in it.
struct SectionScale {
    double pixelsPerUnit = 1.0;                      // pixels per length unit of the library
    OdDb::UnitsValue unit = OdDb::kUnitsMillimeters;  // length unit of the library
};

// Hatch features closer than this are drawn this far apart, so that fine patterns stay legible.
constexpr double kMinHatchFeaturePixels = 3.0;

// Strokes the material's section hatch inside `band` in black. The pattern is anchored at the
// picture's origin, so bands of the same material line up. Draws nothing for a material
// without a drawable hatch; a pattern the catalogue lacks throws OdError.
void drawSectionHatch(wxGraphicsContext& gc, const QcSmartPtr<const vantlib::Material>& material, const wxRect& band,
                      const SectionScale& scale);

}  // namespace vl_app

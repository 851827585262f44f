#include "app/common/SectionHatch.h"

#include <algorithm>
#include <vector>

#include <wx/brush.h>
#include <wx/graphics.h>

#include <HatchPattern.h>
#include <PatternCatalogue.h>
#include <PatternTracer.h>

#include <vl_db/HatchPattern.h>

namespace vl_app {

namespace {
constexpr size_t kMaxHatchElements = 150000;

double millimetresPerUnit(OdDb::UnitsValue unit) {
    const double metres = oddbMetersPerUnit(unit);
    return metres > 0.0 ? metres * 1000.0 : 1.0;
}

// The line families of the hatch in millimetres, placed as the drawing places them, with
// features raised to the legible minimum. Empty when there is nothing to stroke; `solid` is
// set for a solid fill.
std::vector<ca::PatternLineFamily> placedHatch(const vl_db::HatchPatternInfo& hatch, double pixelsPerMm, bool& solid) {
    solid = false;
    const double minFeatureMm = kMinHatchFeaturePixels / pixelsPerMm;
    switch (hatch.type) {
    case vl_db::kHatchUserDefined: {
        ca::PatternLineFamily family;
        family.deltaY = std::max(hatch.scale, minFeatureMm);
        std::vector<ca::PatternLineFamily> lines{family};
        if (hatch.doubleHatch) {
            family.angleDegrees = 90.0;
            lines.push_back(family);
        }
        return ca::placedLineFamilies(lines, 1.0, hatch.angleRadians);
    }
    case vl_db::kHatchPreDefined:
    case vl_db::kHatchCustom: {
        const ca::HatchPattern& pattern = ca::PatternCatalogue::instance().get(hatch.name).pattern;
        if (pattern.isSolidFill()) {
            solid = true;
            return {};
        }
        const double unitScale = pattern.units == ca::EPatternUnits::kInches ? 25.4 : 1.0;
        const double featureMm = ca::characteristicSize(pattern.lines) * unitScale;
        const double scale = featureMm > 0.0 ? std::max(hatch.scale, minFeatureMm / featureMm) : hatch.scale;
        return ca::placedLineFamilies(pattern.lines, scale * unitScale, hatch.angleRadians);
    }
    case vl_db::kHatchNone:
    case vl_db::kHatchUnnamed:
        break;
    }
    return {};
}
}  // namespace

void drawSectionHatch(wxGraphicsContext& gc, const QcSmartPtr<const vantlib::Material>& material, const wxRect& band,
                      const SectionScale& scale) {
    if (band.width <= 0 || band.height <= 0 || scale.pixelsPerUnit <= 0.0)
        return;
    vl_db::HatchPatternInfo hatch = vl_db::hatchPattern(material, vl_db::kHatchSection);
    const double mmPerUnit = millimetresPerUnit(scale.unit);
    const double pixelsPerMm = scale.pixelsPerUnit / mmPerUnit;
    // User-defined spacing is a length of the library; pattern scales are plain factors.
    if (hatch.type == vl_db::kHatchUserDefined)
        hatch.scale *= mmPerUnit;

    bool solid = false;
    const std::vector<ca::PatternLineFamily> lines = placedHatch(hatch, pixelsPerMm, solid);
    const wxColour ink = *wxStockGDI::GetColour(wxStockGDI::COLOUR_BLACK);
    if (solid) {
        gc.SetPen(wxNullPen);
        gc.SetBrush(gc.CreateBrush(wxBrush(ink)));
        gc.DrawRectangle(band.x, band.y, band.width, band.height);
        return;
    }
    if (lines.empty())
        return;

    // Pattern coordinates run up from the picture's origin, pixels run down.
    const ca::PatternWindow window{band.x / pixelsPerMm, -(band.y + band.height) / pixelsPerMm,
                                   (band.x + band.width) / pixelsPerMm, -band.y / pixelsPerMm};
    const ca::TracedPattern traced = ca::tracePattern(lines, window, kMaxHatchElements);

    gc.PushState();
    gc.Clip(band.x, band.y, band.width, band.height);
    if (!traced.segments.empty()) {
        wxGraphicsPath path = gc.CreatePath();
        for (const auto& segment : traced.segments) {
            path.MoveToPoint(segment.start.x * pixelsPerMm, -segment.start.y * pixelsPerMm);
            path.AddLineToPoint(segment.end.x * pixelsPerMm, -segment.end.y * pixelsPerMm);
        }
        gc.SetPen(gc.CreatePen(wxGraphicsPenInfo(ink, 1.0).Cap(wxCAP_BUTT)));
        gc.StrokePath(path);
    }
    if (!traced.dots.empty()) {
        wxGraphicsPath path = gc.CreatePath();
        for (const auto& dot : traced.dots)
            path.AddCircle(dot.x * pixelsPerMm, -dot.y * pixelsPerMm, 0.8);
        gc.SetBrush(gc.CreateBrush(wxBrush(ink)));
        gc.FillPath(path);
    }
    gc.PopState();
}

}  // namespace vl_app

#include "PatternPreview.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include <wx/dcmemory.h>
#include <wx/graphics.h>

#include "OdDbDatabase.h"
#include "OdError.h"
#include "OdStringWx.h"
#include "PatternCatalogue.h"
#include "PatternTracer.h"

namespace ca {

namespace {

// Feature size (millimetres) shown with exactly the chosen number of repetitions. Patterns are
// fitted to the geometric mean of their own feature size and this one, so each shows a few
// repetitions while a coarse pattern still looks coarser than a fine one. User-defined lines
// are not fitted: their spacing is compared with this size directly.
constexpr double kReferenceFeatureMm = 5.0;
// ... but never fewer repetitions than this, however coarse the pattern.
constexpr double kMinRepetitions = 2.5;
// Features closer than this many pixels would only make a grey area; scales below are raised.
constexpr double kMinFeaturePixels = 2.0;
constexpr size_t kMaxElements = 150000;

double millimetresPerUnit(OdDb::UnitsValue units) {
    double metres = oddbMetersPerUnit(units);
    return metres > 0.0 ? metres * 1000.0 : 1.0;
}

// Repetitions of the pattern across the shorter side: a few on a thumbnail, more on a big picture.
double repetitionsFor(int shorterSide) { return std::clamp(shorterSide / 16.0, 3.0, 8.0); }

// Size (millimetres) that the picture shows `repetitions` times for a pattern whose features
// measure `featureSize`.
double fittedFeatureSize(double featureSize, double repetitions) {
    return std::max(std::sqrt(featureSize * kReferenceFeatureMm), featureSize * kMinRepetitions / repetitions);
}

void strokeTracing(wxGraphicsContext& gc, const TracedPattern& traced, double pixelsPerUnit, const wxSize& size,
                   const wxColour& foreground) {
    double penWidth = std::max(1.0, std::min(size.x, size.y) / 160.0);
    auto toPixelX = [&](double x) { return size.x / 2.0 + x * pixelsPerUnit; };
    auto toPixelY = [&](double y) { return size.y / 2.0 - y * pixelsPerUnit; };
    if (!traced.segments.empty()) {
        wxGraphicsPath path = gc.CreatePath();
        for (const PatternSegment& segment : traced.segments) {
            path.MoveToPoint(toPixelX(segment.start.x), toPixelY(segment.start.y));
            path.AddLineToPoint(toPixelX(segment.end.x), toPixelY(segment.end.y));
        }
        gc.SetPen(gc.CreatePen(wxGraphicsPenInfo(foreground, penWidth).Cap(wxCAP_BUTT)));
        gc.StrokePath(path);
    }
    if (!traced.dots.empty()) {
        wxGraphicsPath path = gc.CreatePath();
        for (const PatternPoint& dot : traced.dots) path.AddCircle(toPixelX(dot.x), toPixelY(dot.y), penWidth * 0.8);
        gc.SetBrush(gc.CreateBrush(wxBrush(foreground)));
        gc.FillPath(path);
    }
}

}  // namespace

void drawBitmap(wxBitmap& target, const wxString& name, int patternType, bool doubleHatch, double scale,
                double angleRadians, const wxColour& background, const wxColour& foreground,
                OdDb::UnitsValue drawingUnits) {
    if (!target.IsOk() || target.GetWidth() <= 0 || target.GetHeight() <= 0)
        throw OdError(eInvalidInput, L"Hatch preview needs a valid bitmap");
    if (patternType != kUserDefined && patternType != kPreDefined && patternType != kCustomDefined)
        throw OdError(eInvalidInput, OdString::formatted(L"Unknown hatch pattern type %d", patternType));
    if (!std::isfinite(scale) || scale <= 0.0)
        throw OdError(eInvalidInput, OdString::formatted(L"Hatch pattern scale must be positive, not %g", scale));
    if (!std::isfinite(angleRadians)) throw OdError(eInvalidInput, L"Hatch pattern angle is not a number");

    const wxSize size = target.GetSize();
    const int shorter = std::min(size.x, size.y);
    const double repetitions = repetitionsFor(shorter);

    // Line families in millimetres and the pixels per millimetre that show the repetitions.
    std::vector<PatternLineFamily> lines;
    double pixelsPerUnit = 0.0;
    bool solid = false;
    if (patternType == kUserDefined) {
        const double requested = scale * millimetresPerUnit(drawingUnits);
        pixelsPerUnit = shorter / (repetitions * fittedFeatureSize(requested, repetitions));
        double spacing = std::max(requested, kMinFeaturePixels / pixelsPerUnit);
        PatternLineFamily family;
        family.deltaY = spacing;
        lines.push_back(family);
        if (doubleHatch) {
            family.angleDegrees = 90.0;
            lines.push_back(family);
        }
        lines = placedLineFamilies(lines, 1.0, angleRadians);
    } else {
        const HatchPattern& pattern = PatternCatalogue::instance().get(toOd(name)).pattern;
        solid = pattern.isSolidFill();
        if (!solid) {
            double unitScale = pattern.units == EPatternUnits::kInches ? 25.4 : 1.0;
            double featureSize = characteristicSize(pattern.lines) * unitScale;
            // The fit takes the scale into account, so that a pattern drawn at a large
            // drafting scale still shows a few repetitions on a thumbnail.
            pixelsPerUnit = shorter / (repetitions * fittedFeatureSize(featureSize * scale, repetitions));
            double placedScale = std::max(scale, kMinFeaturePixels / (featureSize * pixelsPerUnit)) * unitScale;
            lines = placedLineFamilies(pattern.lines, placedScale, angleRadians);
        }
    }

    wxMemoryDC dc(target);
    dc.SetBackground(wxBrush(solid ? foreground : background));
    dc.Clear();
    if (solid) return;
    std::unique_ptr<wxGraphicsContext> gc(wxGraphicsContext::Create(dc));
    if (!gc) throw OdError(eInvalidContext, L"No graphics context for the hatch preview");
    gc->SetAntialiasMode(wxANTIALIAS_DEFAULT);
    PatternWindow window{-size.x / 2.0 / pixelsPerUnit, -size.y / 2.0 / pixelsPerUnit, size.x / 2.0 / pixelsPerUnit,
                         size.y / 2.0 / pixelsPerUnit};
    strokeTracing(*gc, tracePattern(lines, window, kMaxElements), pixelsPerUnit, size, foreground);
}

}  // namespace ca

namespace wxg {

PatternPreview::PatternPreview(OdDbDatabase* db, const wxSize& size)
    : PatternPreview(db ? db->getINSUNITS() : OdDb::kUnitsMillimeters, size) {}

PatternPreview::PatternPreview(OdDb::UnitsValue drawingUnits, const wxSize& size) : m_units(drawingUnits), m_size(size) {}

wxBitmap PatternPreview::getPreview(const wxString& name, int patternType, bool doubleHatch, double scale,
                                    const wxColour& background, const wxColour& foreground, double angleRadians) const {
    if (m_size.x <= 0 || m_size.y <= 0)
        throw OdError(eInvalidInput,
                      OdString::formatted(L"Hatch preview size %dx%d is empty", m_size.x, m_size.y));
    wxBitmap bitmap(m_size, 24);
    ca::drawBitmap(bitmap, name, patternType, doubleHatch, scale, angleRadians, background, foreground, m_units);
    return bitmap;
}

}  // namespace wxg

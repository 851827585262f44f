#include "app/common/Previews.h"

#include <cmath>

#include <wx/dcgraph.h>
#include <wx/dcmemory.h>
#include <wx/graphics.h>
#include <wx/gdicmn.h>
#include <wx/image.h>

#include <CaApp.h>
#include <HatchPattern.h>
#include <IconStore.h>
#include <OdError.h>
#include <OdStringWx.h>
#include <PatternPreview.h>

#include <vantlib/Library.h>

#include "app/common/SectionHatch.h"

namespace vl_app {

namespace {
// Totals this close to zero are taken as a composition without thickness.
constexpr double kNoThickness = 1e-10;

int hostPatternType(vl_db::EHatchType type) {
    return type == vl_db::kHatchCustom ? ca::kCustomDefined : ca::kPreDefined;
}
}  // namespace

wxBitmap hatchPreview(const QcSmartPtr<const vantlib::Material>& material, vl_db::EHatchViewType view,
                      const wxSize& size) {
    try {
        // The angle is drawn too, so that the picture follows every field the user can edit.
        const vl_db::HatchPatternInfo hatch = vl_db::hatchPattern(material, view);
        const wxColour background = *wxStockGDI::GetColour(wxStockGDI::COLOUR_WHITE);
        const wxColour foreground = *wxStockGDI::GetColour(wxStockGDI::COLOUR_BLACK);
        const wxg::PatternPreview previewer(ca::curDb(), size);
        switch (hatch.type) {
        case vl_db::kHatchUserDefined:
            return previewer.getPreview(toWx(ca::kUserPatternName), ca::kUserDefined, hatch.doubleHatch, hatch.scale,
                                        background, foreground, hatch.angleRadians);
        case vl_db::kHatchNone:
        case vl_db::kHatchUnnamed:
            return wxNullBitmap;
        case vl_db::kHatchPreDefined:
        case vl_db::kHatchCustom:
            return previewer.getPreview(toWx(hatch.name), hostPatternType(hatch.type), false, hatch.scale, background,
                                        foreground, hatch.angleRadians);
        }
    } catch (const OdError&) {
        // A pattern the catalogue lacks or cannot draw has no picture; lists show the placeholder.
    }
    return wxNullBitmap;
}

int previewMargin() { return wxg::isDpiForLargeIcons() ? 16 : 8; }

PlyThicknesses previewThicknesses(const vantlib::Composition& composition) {
    PlyThicknesses result;
    for (const auto& ply : composition.plies()) {
        result.plies.push_back(ply.thickness());
        result.total += ply.thickness();
    }
    if (std::fabs(result.total) <= kNoThickness) {
        // Nothing to proportion: the variable ply, if any, shows as the whole composition.
        result.total = 1.0;
        if (composition.has_variable_ply() && unsigned(composition.variable_ply()) < result.plies.size())
            result.plies[size_t(composition.variable_ply())] = 1.0;
    }
    return result;
}

std::vector<PlyBand> plyBands(const vantlib::Composition& composition, int height) {
    const PlyThicknesses thicknesses = previewThicknesses(composition);
    std::vector<PlyBand> bands;
    double above = 0.0;
    for (const double thickness : thicknesses.plies) {
        PlyBand band;
        band.top = static_cast<int>(height * above / thicknesses.total);
        band.height = static_cast<int>(height * thickness / thicknesses.total);
        bands.push_back(band);
        above += thickness;
    }
    return bands;
}

wxBitmap preview(const QcSmartPtr<vantlib::Composition>& composition, const wxSize& size, bool outline) {
    if (!composition || size.x <= 0 || size.y <= 0)
        return wxNullBitmap;
    wxBitmap bitmap(size);
    {
        wxMemoryDC memory(bitmap);
        wxGCDC dc(memory);
        dc.SetBackground(*wxStockGDI::GetBrush(wxStockGDI::BRUSH_WHITE));
        dc.Clear();
        dc.SetPen(*wxStockGDI::GetPen(wxStockGDI::PEN_BLACK));

        const int margin = previewMargin();
        dc.SetDeviceOrigin(margin, margin);
        const int width = size.x - 2 * margin;
        const int height = size.y - 2 * margin;
        if (width <= 0 || height <= 0)
            return bitmap;

        const PlyThicknesses thicknesses = previewThicknesses(*composition);
        SectionScale scale;
        scale.pixelsPerUnit = height / thicknesses.total;
        if (const auto library = composition->library())
            scale.unit = library->unit();

        const std::vector<PlyBand> bands = plyBands(*composition, height);
        wxGraphicsContext* gc = dc.GetGraphicsContext();
        for (size_t i = 0; i < bands.size(); ++i) {
            const PlyBand& band = bands[i];
            // A band of one pixel or less would only blur its neighbours' separators.
            if (band.height > 1 && gc) {
                const QcSmartPtr<const vantlib::Material> material = composition->ply(unsigned(i)).material();
                try {
                    drawSectionHatch(*gc, material, wxRect(0, band.top, width, band.height), scale);
                } catch (const OdError&) {
                    // A pattern missing from the catalogue leaves its band blank, as in the lists.
                }
            }
        }
        dc.SetPen(*wxStockGDI::GetPen(wxStockGDI::PEN_BLACK));
        for (size_t i = 1; i < bands.size(); ++i)
            dc.DrawLine(0, bands[i].top, width - 1, bands[i].top);
        if (outline) {
            dc.SetBrush(*wxTRANSPARENT_BRUSH);
            dc.DrawRectangle(0, 0, width, height);
        }
    }
    return bitmap;
}

namespace {
// An empty square thumbnail: the preview card is placed on it, vertically centred.
const wxImage& thumbnailFrame(int edge) {
    static wxImage small, large;
    wxImage& frame = edge > 64 ? large : small;
    if (!frame.IsOk() || frame.GetWidth() != edge) {
        frame.Create(edge, edge);
        frame.InitAlpha();
        unsigned char* alpha = frame.GetAlpha();
        std::fill(alpha, alpha + edge * edge, static_cast<unsigned char>(0));
    }
    return frame;
}
}  // namespace

wxBitmap compositionThumbnail(const QcSmartPtr<vantlib::Composition>& composition) {
    const int edge = wxg::isDpiForLargeIcons() ? 128 : 64;
    const int margin = previewMargin();
    const wxSize size(edge, edge / 2 + margin);
    const wxBitmap picture = preview(composition, size, true);
    if (!picture.IsOk())
        return wxNullBitmap;
    wxImage card = picture.ConvertToImage();
    card.Rescale(size.x, size.y, wxIMAGE_QUALITY_HIGH);
    card.InitAlpha();

    wxImage thumbnail = thumbnailFrame(edge).Copy();
    thumbnail.Paste(card, 0, (edge - size.y) / 2);
    return wxBitmap(thumbnail);
}

}  // namespace vl_app

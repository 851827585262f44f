#include "app/profiles/OutlinePreview.h"

#include <algorithm>
#include <memory>

#include <wx/dcmemory.h>
#include <wx/graphics.h>

#include <OdDbCircle.h>
#include <OdDbPolyline.h>

namespace vl_app {

std::vector<OutlinePath> outlinePaths(const OdArray<OdSmartPtr<OdDbEntity>>& entities) {
    std::vector<OutlinePath> paths;
    for (unsigned i = 0; i < entities.size(); ++i) {
        if (OdSmartPtr<OdDbPolyline> polyline = OdDbPolyline::cast(entities[i].get()))
            paths.push_back({polyline->samplePoints(), polyline->isClosed()});
        else if (OdSmartPtr<OdDbCircle> circle = OdDbCircle::cast(entities[i].get()))
            paths.push_back({circle->samplePoints(), true});
    }
    return paths;
}

std::vector<OutlinePath> outlinePaths(const vantlib::ProfileGeometry& geometry) {
    std::vector<OutlinePath> paths;
    auto add = [&](const vantlib::ProfileLoop& loop) {
        if (loop.empty())
            return;
        OutlinePath path;
        path.closed = true;
        path.points.emplace_back(loop.front().start.x, loop.front().start.y);
        for (size_t i = 0; i < loop.size(); ++i) {
            const vantlib::Vector2d& a = loop[i].start;
            const vantlib::Vector2d& b = loop[(i + 1) % loop.size()].start;
            odgeAppendSegmentPoints(path.points, OdGePoint2d(a.x, a.y), OdGePoint2d(b.x, b.y), loop[i].bulge);
        }
        path.points.pop_back();  // back at the start
        paths.push_back(std::move(path));
    };
    add(geometry.outer);
    for (const vantlib::ProfileLoop& hole : geometry.holes)
        add(hole);
    return paths;
}

PreviewFit fitPreview(const std::vector<OutlinePath>& paths, int width, int height, int margin) {
    PreviewFit fit;
    fit.width = width;
    fit.height = height;
    bool any = false;
    OdGePoint2d min, max;
    for (const OutlinePath& path : paths)
        for (const OdGePoint2d& p : path.points) {
            if (!any) {
                min = max = p;
                any = true;
            }
            min.x = std::min(min.x, p.x);
            min.y = std::min(min.y, p.y);
            max.x = std::max(max.x, p.x);
            max.y = std::max(max.y, p.y);
        }
    const double usableX = width - 2.0 * margin, usableY = height - 2.0 * margin;
    if (!any || usableX <= 0 || usableY <= 0)
        return fit;
    fit.centre = OdGePoint2d((min.x + max.x) / 2, (min.y + max.y) / 2);
    const double extentX = max.x - min.x, extentY = max.y - min.y;
    if (extentX <= 0 && extentY <= 0)
        return fit;
    // A section as thin as a line still fits by its other extent.
    fit.scale = std::min(extentX > 0 ? usableX / extentX : usableY / extentY,
                         extentY > 0 ? usableY / extentY : usableX / extentX);
    return fit;
}

namespace {

void drawPaths(wxGraphicsContext& context, const std::vector<OutlinePath>& paths, const PreviewFit& fit,
               const PreviewStyle& style, const OdGePoint2d* mark) {
    wxGraphicsContext* gc = &context;
    wxGraphicsPath outline = gc->CreatePath();
    for (const OutlinePath& path : paths) {
        for (size_t i = 0; i < path.points.size(); ++i) {
            const OdGePoint2d p = fit.toPixel(path.points[i]);
            if (i == 0)
                outline.MoveToPoint(p.x, p.y);
            else
                outline.AddLineToPoint(p.x, p.y);
        }
        if (path.closed)
            outline.CloseSubpath();
    }
    if (style.fill) {
        gc->SetBrush(wxBrush(style.area));
        gc->FillPath(outline, wxODDEVEN_RULE);
    }
    gc->SetPen(wxPen(style.line, style.penWidth));
    gc->StrokePath(outline);
    if (mark) {
        const OdGePoint2d p = fit.toPixel(OdGePoint2d(fit.centre.x + mark->x, fit.centre.y + mark->y));
        const double r = std::max(4.0, style.margin * 0.6);
        gc->SetPen(wxPen(wxColour(210, 30, 30), std::max(2, style.penWidth + 1)));
        gc->SetBrush(*wxTRANSPARENT_BRUSH);
        gc->StrokeLine(p.x - r, p.y, p.x + r, p.y);
        gc->StrokeLine(p.x, p.y - r, p.x, p.y + r);
        gc->DrawEllipse(p.x - r * 0.6, p.y - r * 0.6, r * 1.2, r * 1.2);
    }
}

}  // namespace

wxBitmap drawOutlinePreview(const std::vector<OutlinePath>& paths, const wxSize& size, const PreviewStyle& style,
                            const OdGePoint2d* mark) {
    wxBitmap bitmap(std::max(size.x, 1), std::max(size.y, 1), 24);
    wxMemoryDC dc(bitmap);
    dc.SetBackground(wxBrush(style.background));
    dc.Clear();
    PreviewFit fit = fitPreview(paths, size.x, size.y, style.margin);
    fit.scale *= style.zoom;
    if (!fit.empty()) {
        std::unique_ptr<wxGraphicsContext> gc(wxGraphicsContext::Create(dc));
        if (gc)
            drawPaths(*gc, paths, fit, style, mark);
    }
    dc.SelectObject(wxNullBitmap);
    return bitmap;
}

}  // namespace vl_app

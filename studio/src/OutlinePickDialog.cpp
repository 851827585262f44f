#include "OutlinePickDialog.h"

#include <algorithm>
#include <cmath>

#include <wx/button.h>
#include <wx/dcbuffer.h>
#include <wx/graphics.h>
#include <wx/intl.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "OdDbDatabase.h"
#include "WxgConfig.h"

namespace {
const wxString kWindowKey = "OutlinePickDialog";
// How near to a line a click picks it, in pixels.
constexpr double kPickPixels = 5.0;
const wxColour kLineColour(40, 40, 40);
const wxColour kUnusableColour(160, 160, 160);
const wxColour kHoverColour(0, 110, 220);
const wxColour kHoverFill(0, 110, 220, 40);

// Why an outline cannot be picked.
wxString faultText(outlines::OutlineFault fault) {
    switch (fault) {
    case outlines::OutlineFault::kOpen: return _("This polyline is open: only a closed outline bounds a section.");
    case outlines::OutlineFault::kCrossesItself: return _("This outline crosses itself and bounds no section.");
    case outlines::OutlineFault::kEnclosesNothing: return _("This outline encloses no area.");
    case outlines::OutlineFault::kNone: break;
    }
    return wxString();
}
}  // namespace

// Draws the outlines scaled to the window, the one under the pointer and its holes highlighted.
class OutlineCanvas : public wxWindow {
public:
    OutlineCanvas(OutlinePickDialog* owner)
        : wxWindow(owner, wxID_ANY, wxDefaultPosition, owner->FromDIP(wxSize(640, 440)), wxBORDER_THEME | wxWANTS_CHARS,
                   "OUTLINE_VIEW"),
          m_owner(owner) {
        SetBackgroundStyle(wxBG_STYLE_PAINT);
        SetBackgroundColour(*wxWHITE);
        Bind(wxEVT_PAINT, &OutlineCanvas::onPaint, this);
        Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
            zoomToExtents();
            event.Skip();
        });
        Bind(wxEVT_MOTION, &OutlineCanvas::onMotion, this);
        Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent&) { setHover(-1); });
        Bind(wxEVT_LEFT_UP, [this](wxMouseEvent& event) {
            m_owner->pickAt(toDrawing(event.GetPosition()), kPickPixels / m_scale);
        });
        Bind(wxEVT_MOUSEWHEEL, &OutlineCanvas::onWheel, this);
        Bind(wxEVT_MIDDLE_DOWN, [this](wxMouseEvent& event) { m_dragFrom = event.GetPosition(); });
        Bind(wxEVT_RIGHT_DOWN, [this](wxMouseEvent& event) { m_dragFrom = event.GetPosition(); });
    }

    // The whole drawing fills the view with a margin.
    void zoomToExtents() {
        const outlines::Bounds bounds = outlines::boundsOf(m_owner->m_outlines);
        const wxSize size = GetClientSize();
        const double margin = FromDIP(24);
        const double width = bounds.empty ? 1.0 : std::max(bounds.max.x - bounds.min.x, 1e-9);
        const double height = bounds.empty ? 1.0 : std::max(bounds.max.y - bounds.min.y, 1e-9);
        m_scale = std::max(1e-9, std::min((size.x - 2 * margin) / width, (size.y - 2 * margin) / height));
        m_centre = bounds.empty ? OdGePoint2d() : OdGePoint2d((bounds.min.x + bounds.max.x) / 2, (bounds.min.y + bounds.max.y) / 2);
        Refresh();
    }

private:
    OdGePoint2d toDrawing(const wxPoint& pixel) const {
        const wxSize size = GetClientSize();
        return OdGePoint2d(m_centre.x + (pixel.x - size.x / 2.0) / m_scale, m_centre.y - (pixel.y - size.y / 2.0) / m_scale);
    }
    wxPoint2DDouble toPixel(const OdGePoint2d& point) const {
        const wxSize size = GetClientSize();
        return wxPoint2DDouble(size.x / 2.0 + (point.x - m_centre.x) * m_scale, size.y / 2.0 - (point.y - m_centre.y) * m_scale);
    }

    void setHover(int index) {
        if (index == m_hover)
            return;
        m_hover = index;
        m_hoverHoles = outlines::holesOf(m_owner->m_outlines, index);
        // Said before the click: why the outline under the pointer would be refused.
        m_owner->m_status->SetLabel(index >= 0 ? faultText(m_owner->m_outlines[index].fault) : wxString());
        Refresh();
    }

    void onMotion(wxMouseEvent& event) {
        // Dragging with the middle or right button moves the drawing in the view.
        if ((event.MiddleIsDown() || event.RightIsDown()) && m_dragFrom != wxDefaultPosition) {
            m_centre.x -= (event.GetPosition().x - m_dragFrom.x) / m_scale;
            m_centre.y += (event.GetPosition().y - m_dragFrom.y) / m_scale;
            m_dragFrom = event.GetPosition();
            Refresh();
            return;
        }
        m_dragFrom = event.MiddleIsDown() || event.RightIsDown() ? event.GetPosition() : wxDefaultPosition;
        setHover(outlines::outlineAt(m_owner->m_outlines, toDrawing(event.GetPosition()), kPickPixels / m_scale));
    }

    // The wheel zooms about the point under the pointer.
    void onWheel(wxMouseEvent& event) {
        const OdGePoint2d before = toDrawing(event.GetPosition());
        m_scale *= event.GetWheelRotation() > 0 ? 1.25 : 0.8;
        const OdGePoint2d after = toDrawing(event.GetPosition());
        m_centre.x += before.x - after.x;
        m_centre.y += before.y - after.y;
        Refresh();
    }

    wxGraphicsPath pathOf(wxGraphicsContext& gc, const outlines::DrawnOutline& outline) const {
        wxGraphicsPath path = gc.CreatePath();
        for (size_t i = 0; i < outline.points.size(); ++i) {
            const wxPoint2DDouble p = toPixel(outline.points[i]);
            if (i == 0)
                path.MoveToPoint(p);
            else
                path.AddLineToPoint(p);
        }
        if (outline.closed)
            path.CloseSubpath();
        return path;
    }

    void onPaint(wxPaintEvent&) {
        wxAutoBufferedPaintDC dc(this);
        dc.SetBackground(*wxWHITE_BRUSH);
        dc.Clear();
        std::unique_ptr<wxGraphicsContext> gc(wxGraphicsContext::Create(dc));
        if (!gc)
            return;
        const auto& all = m_owner->m_outlines;
        if (m_hover >= 0 && all[m_hover].fault == outlines::OutlineFault::kNone) {
            // The section the click would make: the outline less its holes.
            wxGraphicsPath section = pathOf(*gc, all[m_hover]);
            for (int hole : m_hoverHoles)
                section.AddPath(pathOf(*gc, all[hole]));
            gc->SetBrush(wxBrush(kHoverFill));
            gc->FillPath(section, wxODDEVEN_RULE);
        }
        for (size_t i = 0; i < all.size(); ++i) {
            const bool usable = all[i].fault == outlines::OutlineFault::kNone;
            const bool hovered = static_cast<int>(i) == m_hover ||
                                 (std::find(m_hoverHoles.begin(), m_hoverHoles.end(), int(i)) != m_hoverHoles.end() &&
                                  m_hover >= 0 && all[m_hover].fault == outlines::OutlineFault::kNone);
            wxPen pen(hovered ? kHoverColour : usable ? kLineColour : kUnusableColour, FromDIP(hovered ? 2 : 1),
                      usable ? wxPENSTYLE_SOLID : wxPENSTYLE_SHORT_DASH);
            gc->SetPen(pen);
            gc->StrokePath(pathOf(*gc, all[i]));
        }
        if (all.empty()) {
            dc.SetTextForeground(wxSystemSettings::GetColour(wxSYS_COLOUR_GRAYTEXT));
            const wxString text = _("The drawing has no polylines or circles.");
            const wxSize extent = dc.GetTextExtent(text);
            const wxSize size = GetClientSize();
            dc.DrawText(text, (size.x - extent.x) / 2, (size.y - extent.y) / 2);
        }
    }

    OutlinePickDialog* m_owner;
    double m_scale = 1.0;
    OdGePoint2d m_centre;
    int m_hover = -1;
    std::vector<int> m_hoverHoles;
    wxPoint m_dragFrom = wxDefaultPosition;
};

OutlinePickDialog::OutlinePickDialog(wxWindow* parent, OdDbDatabase& db)
    : wxDialog(parent, wxID_ANY, _("Pick an outline"), wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER, "OUTLINE_PICKER"),
      m_outlines(outlines::drawnOutlines(db)) {
    const int gap = FromDIP(10);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(new wxStaticText(this, wxID_ANY,
                                 _("Click a closed outline. The outlines inside it become its holes.")),
                0, wxEXPAND | wxLEFT | wxRIGHT | wxTOP, gap);
    m_canvas = new OutlineCanvas(this);
    m_canvas->SetToolTip(_("The wheel zooms; dragging with the middle or right button moves the drawing."));
    column->Add(m_canvas, 1, wxEXPAND | wxALL, gap);
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    m_status = new wxStaticText(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                                wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END, "PICK_STATUS");
    m_status->SetForegroundColour(wxColour(180, 30, 30));
    row->Add(m_status, 1, wxALIGN_CENTER_VERTICAL | wxRIGHT, gap);
    auto* extents = new wxButton(this, wxID_ANY, _("Zoom to extents"));
    extents->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { m_canvas->zoomToExtents(); });
    row->Add(extents, 0, wxRIGHT, FromDIP(6));
    // Not the stock button: the toolkit would label it in its own language, not the studio's.
    auto* cancel = new wxButton(this, wxID_ANY, _("Cancel"));
    cancel->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { EndModal(wxID_CANCEL); });
    row->Add(cancel, 0);
    column->Add(row, 0, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, gap);
    SetSizerAndFit(column);
    SetMinSize(FromDIP(wxSize(420, 320)));
    wxg::WxgConfig::restoreWindow(this, kWindowKey, GetSize());
    Bind(wxEVT_CHAR_HOOK, &OutlinePickDialog::onCharHook, this);
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { EndModal(wxID_CANCEL); });
    CentreOnParent();
}

void OutlinePickDialog::onCharHook(wxKeyEvent& event) {
    if (event.GetKeyCode() == WXK_ESCAPE)
        EndModal(wxID_CANCEL);
    else
        event.Skip();
}

void OutlinePickDialog::pickAt(const OdGePoint2d& point, double tolerance) {
    const int index = outlines::outlineAt(m_outlines, point, tolerance);
    if (index < 0) {
        m_status->SetLabel(_("There is no outline there."));
        return;
    }
    if (m_outlines[index].fault != outlines::OutlineFault::kNone) {
        m_status->SetLabel(faultText(m_outlines[index].fault));
        return;
    }
    m_picked = {m_outlines[index].entity->objectId()};
    for (int hole : outlines::holesOf(m_outlines, index))
        m_picked.push_back(m_outlines[hole].entity->objectId());
    EndModal(wxID_OK);
}

std::vector<OdDbObjectId> pickOutline(wxWindow* parent, OdDbDatabase& db) {
    OutlinePickDialog dialog(parent, db);
    const int answer = dialog.ShowModal();
    wxg::WxgConfig::saveWindow(&dialog, kWindowKey);
    return answer == wxID_OK ? dialog.picked() : std::vector<OdDbObjectId>();
}

#include "HatchPatternGallery.h"

#include <algorithm>

#include <wx/button.h>
#include <wx/control.h>
#include <wx/dcbuffer.h>
#include <wx/dcmemory.h>
#include <wx/intl.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "OdError.h"
#include "OdStringWx.h"
#include "PatternPreview.h"

namespace wxg {

namespace {
constexpr int kGap = 10;  // between cells and around the grid
}

HatchPatternGallery::HatchPatternGallery(wxWindow* parent, const ca::PatternCatalogue& catalogue,
                                         const wxSize& swatchSize, wxWindowID id)
    : m_catalogue(catalogue), m_swatchSize(swatchSize), m_swatches(catalogue.patterns().size()) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(parent, id, wxDefaultPosition, wxDefaultSize, wxVSCROLL | wxBORDER_THEME);
    m_labelHeight = GetCharHeight() + 4;
    SetScrollRate(0, std::max(1, cellSize().y / 4));
    Bind(wxEVT_PAINT, &HatchPatternGallery::onPaint, this);
    Bind(wxEVT_SIZE, &HatchPatternGallery::onSize, this);
    Bind(wxEVT_LEFT_DOWN, &HatchPatternGallery::onLeftDown, this);
    Bind(wxEVT_MOTION, &HatchPatternGallery::onMotion, this);
    SetMinClientSize(wxSize(cellSize().x + 2 * kGap, cellSize().y + 2 * kGap));
    relayout();
}

wxSize HatchPatternGallery::cellSize() const { return wxSize(m_swatchSize.x + kGap, m_swatchSize.y + m_labelHeight + kGap); }

wxRect HatchPatternGallery::swatchRectFor(size_t index, int columns) const {
    int column = static_cast<int>(index) % columns, row = static_cast<int>(index) / columns;
    return wxRect(wxPoint(kGap + column * cellSize().x, kGap + row * cellSize().y), m_swatchSize);
}

wxRect HatchPatternGallery::swatchRect(size_t index) const { return swatchRectFor(index, m_columns); }

int HatchPatternGallery::hitTest(const wxPoint& point) const {
    int column = (point.x - kGap) / cellSize().x, row = (point.y - kGap) / cellSize().y;
    if (point.x < kGap || point.y < kGap || column >= m_columns) return -1;
    size_t index = static_cast<size_t>(row) * m_columns + column;
    return index < patternCount() ? static_cast<int>(index) : -1;
}

void HatchPatternGallery::relayout() {
    int width = GetClientSize().x;
    m_columns = std::max(1, (width - kGap) / cellSize().x);
    int rows = static_cast<int>((patternCount() + m_columns - 1) / m_columns);
    SetVirtualSize(m_columns * cellSize().x + kGap, rows * cellSize().y + kGap);
    Refresh();
}

const wxBitmap& HatchPatternGallery::swatch(size_t index) const {
    wxBitmap& bitmap = m_swatches[index];
    if (!bitmap.IsOk()) {
        const ca::HatchPattern& pattern = m_catalogue.patterns()[index].pattern;
        bitmap.Create(m_swatchSize, 24);
        try {
            ca::drawBitmap(bitmap, toWx(pattern.name), m_catalogue.patterns()[index].type, false, 1.0, 0.0, *wxWHITE,
                           *wxBLACK);
        } catch (const OdError&) {
            // A pattern that cannot be drawn keeps an empty swatch; its name still shows.
            wxMemoryDC dc(bitmap);
            dc.SetBackground(*wxLIGHT_GREY_BRUSH);
            dc.Clear();
        }
    }
    return bitmap;
}

void HatchPatternGallery::drawCells(wxDC& dc, const wxRect& area, int columns) const {
    const wxColour text = wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT);
    const wxColour highlight = wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT);
    dc.SetFont(GetFont());
    for (size_t index = 0; index < patternCount(); ++index) {
        wxRect swatchArea = swatchRectFor(index, columns);
        wxRect cell(swatchArea.GetTopLeft() - wxPoint(kGap / 2, kGap / 2), cellSize());
        if (!cell.Intersects(area)) continue;
        if (static_cast<int>(index) == m_selected || static_cast<int>(index) == m_hovered) {
            dc.SetPen(wxPen(highlight, static_cast<int>(index) == m_selected ? 2 : 1));
            dc.SetBrush(*wxTRANSPARENT_BRUSH);
            dc.DrawRectangle(cell.Deflate(1));
        }
        dc.DrawBitmap(swatch(index), swatchArea.GetTopLeft());
        dc.SetPen(wxPen(text.ChangeLightness(160)));
        dc.SetBrush(*wxTRANSPARENT_BRUSH);
        dc.DrawRectangle(swatchArea.Inflate(1));
        wxString name = toWx(m_catalogue.patterns()[index].pattern.name);
        wxString label = wxControl::Ellipsize(name, dc, wxELLIPSIZE_END, m_swatchSize.x);
        wxSize extent = dc.GetTextExtent(label);
        dc.SetTextForeground(text);
        dc.DrawText(label, swatchArea.GetLeft() + (m_swatchSize.x - extent.x) / 2, swatchArea.GetBottom() + 4);
    }
}

wxBitmap HatchPatternGallery::renderAll(int columns) const {
    columns = std::max(1, columns);
    int rows = static_cast<int>((patternCount() + columns - 1) / columns);
    wxBitmap picture(columns * cellSize().x + kGap, std::max(1, rows) * cellSize().y + kGap, 24);
    wxMemoryDC dc(picture);
    dc.SetBackground(wxBrush(wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW)));
    dc.Clear();
    drawCells(dc, wxRect(picture.GetSize()), columns);
    dc.SelectObject(wxNullBitmap);
    return picture;
}

wxString HatchPatternGallery::selectedName() const {
    return m_selected < 0 ? wxString() : toWx(m_catalogue.patterns()[m_selected].pattern.name);
}

bool HatchPatternGallery::select(const wxString& name) {
    const ca::CataloguedPattern* entry = m_catalogue.find(toOd(name));
    if (!entry) return false;
    m_selected = static_cast<int>(entry - m_catalogue.patterns().data());
    int unitX = 0, unitY = 0;
    GetScrollPixelsPerUnit(&unitX, &unitY);
    wxRect cell = swatchRect(m_selected);
    int viewTop = GetViewStart().y * std::max(1, unitY);
    if (unitY > 0 && (cell.GetTop() < viewTop || cell.GetBottom() + m_labelHeight > viewTop + GetClientSize().y))
        Scroll(-1, std::max(0, cell.GetTop() - kGap) / unitY);
    Refresh();
    return true;
}

void HatchPatternGallery::onPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    DoPrepareDC(dc);
    dc.SetBackground(wxBrush(wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW)));
    dc.Clear();
    wxRect visible(CalcUnscrolledPosition(wxPoint(0, 0)), GetClientSize());
    drawCells(dc, visible, m_columns);
}

void HatchPatternGallery::onSize(wxSizeEvent& event) {
    relayout();
    event.Skip();
}

void HatchPatternGallery::onLeftDown(wxMouseEvent& event) {
    m_selected = hitTest(CalcUnscrolledPosition(event.GetPosition()));
    Refresh();
    event.Skip();
}

void HatchPatternGallery::onMotion(wxMouseEvent& event) {
    int hovered = hitTest(CalcUnscrolledPosition(event.GetPosition()));
    if (hovered != m_hovered) {
        m_hovered = hovered;
        if (hovered < 0) {
            UnsetToolTip();
        } else {
            const ca::HatchPattern& pattern = m_catalogue.patterns()[hovered].pattern;
            wxString tip = toWx(pattern.name);
            if (!pattern.description.isEmpty()) tip += wxT("\n") + toWx(pattern.description);
            tip += wxT("\n") + toWx(pattern.sourceFile);
            SetToolTip(tip);
        }
        Refresh();
    }
    event.Skip();
}

DlgHatchPatternGallery::DlgHatchPatternGallery(wxWindow* parent, const ca::PatternCatalogue& catalogue)
    : wxDialog(parent, wxID_ANY, _("Hatch Patterns"), wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER) {
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    m_gallery = new HatchPatternGallery(this, catalogue);
    m_gallery->SetMinSize(wxSize(700, 480));
    sizer->Add(m_gallery, 1, wxEXPAND | wxALL, 8);

    size_t predefined = catalogue.names(ca::kPreDefined).size();
    size_t custom = catalogue.names(ca::kCustomDefined).size();
    auto* summary = new wxStaticText(
        this, wxID_ANY, wxString::Format(_("%zu predefined and %zu custom patterns"), predefined, custom));
    sizer->Add(summary, 0, wxLEFT | wxRIGHT, 8);
    if (!catalogue.loadProblems().empty()) {
        wxString problems = _("Some hatch patterns could not be loaded:");
        for (const OdString& problem : catalogue.loadProblems()) problems += wxT("\n") + toWx(problem);
        auto* text = new wxStaticText(this, wxID_ANY, problems);
        text->SetForegroundColour(*wxRED);
        sizer->Add(text, 0, wxLEFT | wxRIGHT | wxTOP, 8);
    }
    sizer->Add(CreateStdDialogButtonSizer(wxCLOSE), 0, wxEXPAND | wxALL, 8);
    SetEscapeId(wxID_CLOSE);
    SetSizerAndFit(sizer);
}

}  // namespace wxg

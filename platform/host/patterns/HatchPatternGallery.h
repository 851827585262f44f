#pragma once
// Every pattern of the hatch pattern catalogue as a grid of swatches with their names
// underneath, and the dialog that shows it (the studio command "hatch-patterns").
#include <vector>

#include <wx/bitmap.h>
#include <wx/dialog.h>
#include <wx/panel.h>
#include <wx/scrolwin.h>

#include "PatternCatalogue.h"

namespace wxg {

class HatchPatternGallery : public wxScrolled<wxPanel> {
public:
    HatchPatternGallery(wxWindow* parent, const ca::PatternCatalogue& catalogue = ca::PatternCatalogue::instance(),
                        const wxSize& swatchSize = wxSize(96, 72), wxWindowID id = wxID_ANY);

    size_t patternCount() const { return m_catalogue.patterns().size(); }
    int columns() const { return m_columns; }
    // Area of the swatch of pattern `index` in the scrolled (virtual) coordinates.
    wxRect swatchRect(size_t index) const;
    // Index of the pattern whose cell holds the virtual point, or -1.
    int hitTest(const wxPoint& virtualPoint) const;

    // Name of the selected pattern; empty when none is selected.
    wxString selectedName() const;
    // Selects the pattern `name` (any case) and scrolls it into view; false when it is absent.
    bool select(const wxString& name);

    // The whole grid, `columns` swatches wide, as one picture (for export and documentation).
    wxBitmap renderAll(int columns) const;

private:
    wxSize cellSize() const;
    void relayout();
    const wxBitmap& swatch(size_t index) const;
    void drawCells(wxDC& dc, const wxRect& area, int columns) const;
    wxRect swatchRectFor(size_t index, int columns) const;

    void onPaint(wxPaintEvent& event);
    void onSize(wxSizeEvent& event);
    void onLeftDown(wxMouseEvent& event);
    void onMotion(wxMouseEvent& event);

    const ca::PatternCatalogue& m_catalogue;
    wxSize m_swatchSize;
    int m_labelHeight = 0;
    int m_columns = 1;
    int m_selected = -1;
    int m_hovered = -1;
    mutable std::vector<wxBitmap> m_swatches;  // made when first shown
};

class DlgHatchPatternGallery : public wxDialog {
public:
    explicit DlgHatchPatternGallery(wxWindow* parent,
                                    const ca::PatternCatalogue& catalogue = ca::PatternCatalogue::instance());
    HatchPatternGallery* gallery() const { return m_gallery; }

private:
    HatchPatternGallery* m_gallery;
};

}  // namespace wxg

#pragma once
// The grid of the render material dialog: one row per render material with its thumbnail,
// category path and name; the thumbnail size is the user's choice and is remembered.
#include <cstdint>

#include <wx/bitmap.h>
#include <wx/grid.h>

namespace vl_app {

class DlgRenderMaterial;

// Thumbnail sizes the user can choose.
enum ERenderPreviewSize : uint16_t {
    kPreviewSmall = 0,
    kPreviewMedium = 1,
    kPreviewLarge = 2,
};

// Row height (and first column width), thumbnail edge and thumbnail folder of a size option;
// any unknown option behaves as small.
int previewRowHeight(unsigned option);
int previewEdge(unsigned option);
const char* previewFolder(unsigned option);

// Draws the picture file named by the cell's value, centred, at the grid's thumbnail edge.
class MaterialThumbnailRenderer : public wxGridCellRenderer {
public:
    void Draw(wxGrid& grid, wxGridCellAttr& attr, wxDC& dc, const wxRect& rect, int row, int col,
              bool isSelected) override;
    wxSize GetBestSize(wxGrid& grid, wxGridCellAttr& attr, wxDC& dc, int row, int col) override;
    wxGridCellRenderer* Clone() const override { return new MaterialThumbnailRenderer; }

    // The picture file for an edge: small edges use the small-picture folder.
    static wxString pathForEdge(const wxString& path, int edge);

private:
    wxBitmap m_bitmap;
    wxString m_path;
    int m_edge = 0;
};

class RenderMaterialGrid : public wxGrid {
public:
    RenderMaterialGrid() = default;
    RenderMaterialGrid(DlgRenderMaterial* dialog, wxWindow* parent, wxWindowID id);
    ~RenderMaterialGrid() override;

    unsigned previewSize() const { return m_previewSize; }
    // Applies a size option to rows and columns.
    void setPreviewSize(unsigned option);
    // Gives the first column the thumbnail width and shares the rest between the others.
    void layoutColumns();

    // Name in the third column of a row; empty outside the rows.
    wxString nameAt(int row) const;

private:
    void onCellClick(wxGridEvent& event);
    void onContextMenu(wxGridEvent& event);
    void onPreviewSize(wxCommandEvent& event);
    void onSize(wxSizeEvent& event);

    DlgRenderMaterial* m_dialog = nullptr;
    unsigned m_previewSize = kPreviewSmall;

    wxDECLARE_DYNAMIC_CLASS(RenderMaterialGrid);
    wxDECLARE_EVENT_TABLE();
};

}  // namespace vl_app

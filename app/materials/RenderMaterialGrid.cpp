#include "app/materials/RenderMaterialGrid.h"

#include <algorithm>
#include <memory>

#include <wx/dc.h>
#include <wx/filefn.h>
#include <wx/image.h>
#include <wx/log.h>
#include <wx/menu.h>
#include <wx/settings.h>
#include <wx/xrc/xmlres.h>

#include <WxgConfig.h>

#include "app/materials/DlgRenderMaterial.h"

namespace vl_app {

namespace {
const char* const kPreviewSizeKey = "DlgRenderMaterial/prvw";
}

int previewRowHeight(unsigned option) {
    switch (option) {
    case kPreviewMedium: return 36;
    case kPreviewLarge: return 68;
    default: return 20;
    }
}

int previewEdge(unsigned option) { return previewRowHeight(option) - 4; }

const char* previewFolder(unsigned option) { return option == kPreviewLarge ? "thumbnails_x2" : "thumbnails"; }

wxString MaterialThumbnailRenderer::pathForEdge(const wxString& path, int edge) {
    wxString result = path;
    if (edge <= 60)
        result.Replace("thumbnails_x2", "thumbnails");
    return result;
}

void MaterialThumbnailRenderer::Draw(wxGrid& grid, wxGridCellAttr& attr, wxDC& dc, const wxRect& rect, int row, int col,
                                     bool isSelected) {
    wxGridCellRenderer::Draw(grid, attr, dc, rect, row, col, isSelected);
    const wxString value = grid.GetCellValue(row, col);
    if (value.empty())
        return;
    const int edge = grid.GetDefaultRowSize() - 4;
    const wxString path = pathForEdge(value, edge);
    if (path != m_path || edge != m_edge) {
        m_path = path;
        m_edge = edge;
        m_bitmap = wxNullBitmap;
        if (edge > 0 && wxFileExists(path)) {
            wxLogNull quiet;  // a picture that does not load leaves the cell blank
            wxImage image(path, wxBITMAP_TYPE_ANY);
            if (image.IsOk()) {
                if (image.GetHeight() != edge)
                    image.Rescale(edge, edge, wxIMAGE_QUALITY_HIGH);
                m_bitmap = wxBitmap(image);
            }
        }
    }
    if (!m_bitmap.IsOk())
        return;
    const int x = rect.x + std::max(0, (rect.width - m_bitmap.GetWidth()) / 2);
    const int y = rect.y + std::max(0, (rect.height - m_bitmap.GetHeight()) / 2);
    dc.DrawBitmap(m_bitmap, x, y, true);
}

wxSize MaterialThumbnailRenderer::GetBestSize(wxGrid& grid, wxGridCellAttr&, wxDC&, int, int) {
    const int height = grid.GetDefaultRowSize();
    return wxSize(height, height);
}

wxIMPLEMENT_DYNAMIC_CLASS(RenderMaterialGrid, wxGrid);

wxBEGIN_EVENT_TABLE(RenderMaterialGrid, wxGrid)
    EVT_GRID_CELL_LEFT_CLICK(RenderMaterialGrid::onCellClick)
    EVT_GRID_CELL_LEFT_DCLICK(RenderMaterialGrid::onCellClick)
    EVT_GRID_CELL_RIGHT_CLICK(RenderMaterialGrid::onContextMenu)
    EVT_MENU(XRCID("TOOL_SMALL"), RenderMaterialGrid::onPreviewSize)
    EVT_MENU(XRCID("TOOL_MEDIUM"), RenderMaterialGrid::onPreviewSize)
    EVT_MENU(XRCID("TOOL_LARGE"), RenderMaterialGrid::onPreviewSize)
    EVT_SIZE(RenderMaterialGrid::onSize)
wxEND_EVENT_TABLE()

RenderMaterialGrid::RenderMaterialGrid(DlgRenderMaterial* dialog, wxWindow* parent, wxWindowID id)
    : wxGrid(parent, id, wxDefaultPosition, wxDefaultSize, wxWANTS_CHARS | wxBORDER_THEME), m_dialog(dialog) {
    CreateGrid(0, 3, wxGridSelectRows);
    SetColLabelValue(0, _("Preview"));
    SetColLabelValue(1, _("Category"));
    SetColLabelValue(2, _("Name"));
    SetColLabelSize(0);
    SetRowLabelSize(0);
    SetDefaultCellAlignment(wxALIGN_CENTRE, wxALIGN_CENTRE);
    DisableDragColSize();
    DisableDragRowSize();
    DisableDragGridSize();
    EnableEditing(false);
    EnableGridLines(true);
    SetCellHighlightPenWidth(0);
    SetCellHighlightROPenWidth(0);

    auto* thumbnails = new wxGridCellAttr;
    thumbnails->SetRenderer(new MaterialThumbnailRenderer);
    SetColAttr(0, thumbnails);

    // Until the user chooses, thumbnails are large enough to tell the materials apart.
    const long stored = wxg::WxgConfig::readLong(kPreviewSizeKey, kPreviewMedium);
    setPreviewSize(stored >= 0 && stored <= kPreviewLarge ? unsigned(stored) : unsigned(kPreviewSmall));
}

RenderMaterialGrid::~RenderMaterialGrid() {
    if (m_dialog)
        wxg::WxgConfig::writeLong(kPreviewSizeKey, long(m_previewSize));
}

void RenderMaterialGrid::setPreviewSize(unsigned option) {
    m_previewSize = option <= kPreviewLarge ? option : unsigned(kPreviewSmall);
    const int height = previewRowHeight(m_previewSize);
    SetDefaultRowSize(height, true);
    layoutColumns();
    ForceRefresh();
}

void RenderMaterialGrid::layoutColumns() {
    const int first = previewRowHeight(m_previewSize);
    const int available = GetClientSize().GetWidth() - wxSystemSettings::GetMetric(wxSYS_VSCROLL_X, this) - first;
    const int rest = std::max(available / 2, 40);
    SetColSize(0, first);
    SetColSize(1, rest);
    SetColSize(2, rest);
}

wxString RenderMaterialGrid::nameAt(int row) const {
    if (row < 0 || row >= GetNumberRows())
        return wxString();
    return GetCellValue(row, 2);
}

void RenderMaterialGrid::onCellClick(wxGridEvent& event) {
    DisableCellEditControl();
    SetGridCursor(event.GetRow(), event.GetCol());
    SelectRow(event.GetRow());
    if (m_dialog)
        m_dialog->set(nameAt(event.GetRow()), event.GetEventType() == wxEVT_GRID_CELL_LEFT_DCLICK);
}

void RenderMaterialGrid::onContextMenu(wxGridEvent&) {
    std::unique_ptr<wxMenu> menu(wxXmlResource::Get()->LoadMenu("MENU_BIM_RENDER_MAT"));
    if (!menu)
        return;
    const char* const items[] = {"TOOL_SMALL", "TOOL_MEDIUM", "TOOL_LARGE"};
    if (wxMenuItem* item = menu->FindItem(XRCID(items[m_previewSize])))
        item->Check(true);
    PopupMenu(menu.get());
}

void RenderMaterialGrid::onPreviewSize(wxCommandEvent& event) {
    if (event.GetId() == XRCID("TOOL_MEDIUM"))
        setPreviewSize(kPreviewMedium);
    else if (event.GetId() == XRCID("TOOL_LARGE"))
        setPreviewSize(kPreviewLarge);
    else
        setPreviewSize(kPreviewSmall);
}

void RenderMaterialGrid::onSize(wxSizeEvent& event) {
    layoutColumns();
    event.Skip();
}

}  // namespace vl_app

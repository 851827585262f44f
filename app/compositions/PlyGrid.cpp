#include "app/compositions/PlyGrid.h"

#include <algorithm>
#include <cmath>

#include <wx/dc.h>
#include <wx/intl.h>
#include <wx/xrc/xmlres.h>

#include <IconStore.h>
#include <OdStringWx.h>

#include "app/common/Distances.h"
#include "app/common/Helpers.h"
#include "app/common/Previews.h"

namespace vl_app {

namespace {
const wxString kVariableMark = "~";
// A ply may be up to 100 m thick: anything more cannot be a layer of a building element and
// would squash every other ply of the preview to nothing.
const double kMaxPlyMetres = 100.0;

int scaled(int size) { return wxg::isDpiForLargeIcons() ? 2 * size : size; }

bool variableMaterial(const vantlib::Ply& ply) {
    const vantlib::BimAsset* bim = ply.material() ? ply.material()->bim_asset() : nullptr;
    return bim && bim->variable_thickness();
}
}  // namespace

CmpThickness::CmpThickness(const QcSmartPtr<vantlib::Composition>& composition, OdDb::UnitsValue unit)
    : m_unit(unit) {
    if (!composition)
        return;
    m_variable = composition->has_variable_ply();
    m_variablePly = composition->variable_ply();
    for (unsigned index = 0; index < composition->numPlies(); ++index) {
        const double thickness = composition->ply(index).thickness();
        m_total += thickness;
        m_minimum += int(index) == m_variablePly ? std::max(0.0, composition->variable_ply_min_thickness()) : thickness;
    }
}

wxString CmpThickness::format() const {
    if (!m_variable)
        return formatDistance(m_total, m_unit, true);
    if (std::fabs(m_minimum) <= 1e-10)
        return _("variable");
    return wxString(L"\u2265 ") + formatDistance(m_minimum, m_unit, true);
}

bool parsePlyThickness(double& out, const wxString& text, OdDb::UnitsValue unit) {
    double value = 0.0;
    if (!parseDistance(value, text.Strip(wxString::both), unit) || !std::isfinite(value) || value < 0.0)
        return false;
    const double metres = oddbMetersPerUnit(unit);
    if (metres > 0.0 && value * metres > kMaxPlyMetres)
        return false;
    out = value;
    return true;
}

// ---- renderers

void GridCellPreviewRenderer::Draw(wxGrid& grid, wxGridCellAttr& attr, wxDC& dc, const wxRect& rect, int row,
                                   int col, bool isSelected) {
    wxGridCellRenderer::Draw(grid, attr, dc, rect, row, col, isSelected);
    const QcSmartPtr<vantlib::Composition>& composition = *m_composition;
    if (!composition || row < 0 || unsigned(row) >= composition->numPlies())
        return;
    const QcSmartPtr<vantlib::Material>& material = composition->ply(unsigned(row)).material();
    if (!material)
        return;
    wxRect inner = rect;
    inner.Deflate(2);
    if (inner.width <= 0 || inner.height <= 0)
        return;
    // One renderer serves a column; rows of the same material in turn reuse the picture.
    if (m_cachedMaterial != material.get() || m_cachedSize != inner.GetSize()) {
        m_cached = hatchPreview(material, vl_db::kHatchSection, inner.GetSize());
        m_cachedMaterial = material.get();
        m_cachedSize = inner.GetSize();
    }
    if (m_cached.IsOk())
        dc.DrawBitmap(m_cached, inner.GetTopLeft());
}

GridCellToggleRenderer::GridCellToggleRenderer() {
    const bool large = wxg::isDpiForLargeIcons();
    m_lock = wxXmlResource::Get()->LoadBitmap(large ? "BmpLock_x2" : "BmpLock");
    m_unlock = wxXmlResource::Get()->LoadBitmap(large ? "BmpUnlock_x2" : "BmpUnlock");
}

void GridCellToggleRenderer::Draw(wxGrid& grid, wxGridCellAttr& attr, wxDC& dc, const wxRect& rect, int row,
                                  int col, bool isSelected) {
    wxGridCellRenderer::Draw(grid, attr, dc, rect, row, col, isSelected);
    const wxBitmap& picture = grid.GetCellValue(row, col).empty() ? m_unlock : m_lock;
    if (!picture.IsOk())
        return;
    dc.DrawBitmap(picture, rect.x + (rect.width - picture.GetWidth()) / 2,
                  rect.y + (rect.height - picture.GetHeight()) / 2, true);
}

wxSize GridCellToggleRenderer::GetBestSize(wxGrid&, wxGridCellAttr&, wxDC&, int, int) {
    return m_lock.IsOk() ? m_lock.GetSize() : wxSize(16, 16);
}

// ---- grid

PlyGrid::PlyGrid(wxWindow* parent, wxWindowID id, PlyGridOwner& owner)
    : wxGrid(parent, id, wxDefaultPosition, wxDefaultSize, wxWANTS_CHARS | wxBORDER_THEME, "PlyGrid"),
      m_owner(owner) {
    CreateGrid(0, kColumns, wxGridSelectRows);
    SetColLabelValue(kColIndex, _("Ply Index"));
    SetColLabelValue(kColPattern, _("Pattern"));
    SetColLabelValue(kColName, _("Name"));
    SetColLabelValue(kColFunction, _("Function"));
    SetColLabelValue(kColVariable, wxString());
    SetDefaultCellAlignment(wxALIGN_CENTRE, wxALIGN_CENTRE);
    SetRowLabelAlignment(wxALIGN_CENTRE, wxALIGN_CENTRE);
    SetRowLabelSize(scaled(30));
    SetDefaultRowSize(scaled(30), true);
    DisableDragRowSize();
    EnableDragRowMove();
    SetColSize(kColIndex, 0);

    auto* pattern = new wxGridCellAttr;
    pattern->SetRenderer(new GridCellPreviewRenderer(&m_composition));
    pattern->SetReadOnly();
    SetColAttr(kColPattern, pattern);
    auto* name = new wxGridCellAttr;
    name->SetReadOnly();
    SetColAttr(kColName, name);
    auto* variable = new wxGridCellAttr;
    variable->SetRenderer(new GridCellToggleRenderer);
    variable->SetReadOnly();
    SetColAttr(kColVariable, variable);

    Bind(wxEVT_GRID_CELL_LEFT_CLICK, &PlyGrid::onCellClick, this);
    Bind(wxEVT_GRID_CELL_LEFT_DCLICK, &PlyGrid::onCellDoubleClick, this);
    Bind(wxEVT_GRID_CELL_CHANGING, &PlyGrid::onCellChanging, this);
    Bind(wxEVT_GRID_CELL_CHANGED, &PlyGrid::onCellChanged, this);
    Bind(wxEVT_GRID_ROW_MOVE, &PlyGrid::onRowMove, this);
    Bind(wxEVT_SIZE, &PlyGrid::onSize, this);
}

void PlyGrid::setComposition(const QcSmartPtr<vantlib::Composition>& composition, OdDb::UnitsValue unit,
                             bool writable) {
    m_composition = composition;
    m_unit = unit;
    m_writable = writable && composition;
    SetColLabelValue(kColThickness, wxString::Format(_("Thickness %s"), abbr(unit)));
    EnableEditing(m_writable);
    fill();
}

void PlyGrid::fill() {
    if (IsCellEditControlShown())
        DisableCellEditControl();
    BeginBatch();
    if (GetNumberRows() > 0)
        DeleteRows(0, GetNumberRows());
    const unsigned count = m_composition ? m_composition->numPlies() : 0;
    if (count > 0)
        AppendRows(int(count));
    for (int row = 0; row < int(count); ++row)
        fillRow(row);
    EndBatch();
}

void PlyGrid::fillRow(int row) {
    const vantlib::Ply& ply = m_composition->ply(unsigned(row));
    SetCellValue(row, kColIndex, wxString::Format("%d", row));
    SetCellValue(row, kColName, ply.material() ? toWx(ply.material()->name()) : wxString());
    SetCellValue(row, kColFunction, materialFunction(ply.function()));
    SetCellEditor(row, kColFunction, new wxGridCellChoiceEditor(functions()));
    SetCellValue(row, kColThickness, formatDistance(ply.thickness(), m_unit, false));
    SetCellValue(row, kColVariable, m_composition->variable_ply() == row ? kVariableMark : wxString());
    setReadOnlyCell(row, kColFunction, !m_writable);
    setReadOnlyCell(row, kColThickness, !m_writable || variableMaterial(ply));
}

void PlyGrid::setReadOnlyCell(int row, int col, bool readOnly) {
    SetReadOnly(row, col, readOnly);
    SetCellTextColour(row, col, readOnly ? wxg::readOnlyTextColour() : GetDefaultCellTextColour());
}

wxArrayInt PlyGrid::selectedPlies() const {
    wxArrayInt rows = GetSelectedRows();
    rows.Sort([](int* a, int* b) { return *a - *b; });
    return rows;
}

bool PlyGrid::change(const std::function<void(vantlib::Composition&)>& edit) {
    if (!m_composition || !m_writable)
        return false;
    edit(*m_composition);
    m_owner.pliesChanged();
    return true;
}

bool PlyGrid::addPly(const QcSmartPtr<vantlib::Material>& material) {
    if (!material || !m_composition || !m_writable)
        return false;
    const wxArrayInt selected = selectedPlies();
    const int at = selected.empty() ? int(m_composition->numPlies()) : selected.front();
    change([&](vantlib::Composition& composition) {
        const vantlib::Ply ply = vantlib::Ply::defaultPly(material);
        if (unsigned(at) >= composition.numPlies())
            composition.append_ply(ply);
        else
            composition.insert_ply(unsigned(at), ply);
    });
    fill();
    SelectRow(at);
    return true;
}

bool PlyGrid::removeSelectedPlies() {
    const wxArrayInt selected = selectedPlies();
    if (selected.empty() || !m_composition || !m_writable)
        return false;
    change([&](vantlib::Composition& composition) {
        for (size_t i = selected.size(); i-- > 0;)
            if (unsigned(selected[i]) < composition.numPlies())
                composition.remove_ply(unsigned(selected[i]));
    });
    fill();
    if (GetNumberRows() > 0)
        SelectRow(std::min(selected.front(), GetNumberRows() - 1));
    return true;
}

bool PlyGrid::duplicateSelectedPlies() {
    const wxArrayInt selected = selectedPlies();
    if (selected.empty() || !m_composition || !m_writable)
        return false;
    // From the last to the first, so each copy lands beside its source and the indices of the
    // rows still to copy stay valid.
    change([&](vantlib::Composition& composition) {
        for (size_t i = selected.size(); i-- > 0;) {
            const vantlib::Ply copy = composition.ply(unsigned(selected[i]));
            composition.insert_ply(unsigned(selected[i]), copy);
        }
    });
    fill();
    SelectRow(selected.front());
    return true;
}

void PlyGrid::toggleVariable(int row) {
    if (!m_composition || row < 0 || unsigned(row) >= m_composition->numPlies())
        return;
    const bool wasVariable = m_composition->variable_ply() == row;
    change([&](vantlib::Composition& composition) {
        if (wasVariable)
            composition.clear_variable_ply();
        else
            composition.set_variable_ply(row);
    });
    for (int other = 0; other < GetNumberRows(); ++other)
        SetCellValue(other, kColVariable, m_composition->variable_ply() == other ? kVariableMark : wxString());
}

void PlyGrid::replaceMaterial(int row) {
    if (!m_composition || !m_writable || row < 0 || unsigned(row) >= m_composition->numPlies())
        return;
    const QcSmartPtr<vantlib::Material> picked = m_owner.pickMaterial(m_composition->ply(unsigned(row)).material());
    if (!picked)
        return;
    change([&](vantlib::Composition& composition) {
        const vantlib::Ply ply = vantlib::Ply::defaultPly(picked);
        composition.set_ply(unsigned(row), ply);
        if (composition.variable_ply() == row && variableMaterial(ply))
            composition.clear_variable_ply();
    });
    fill();
    SelectRow(row);
}

void PlyGrid::movePly(int from, int to) {
    if (!m_composition || from == to || from < 0 || to < 0 || unsigned(from) >= m_composition->numPlies() ||
        unsigned(to) >= m_composition->numPlies())
        return;
    change([&](vantlib::Composition& composition) { composition.move_ply(unsigned(from), unsigned(to)); });
    fill();
    SelectRow(to);
}

void PlyGrid::onCellClick(wxGridEvent& event) {
    const int row = event.GetRow();
    const int col = event.GetCol();
    if (!m_writable || (col != kColFunction && col != kColThickness && col != kColVariable)) {
        event.Skip();
        return;
    }
    if (col == kColVariable) {
        toggleVariable(row);
        return;
    }
    if (IsReadOnly(row, col)) {
        event.Skip();
        return;
    }
    SetGridCursor(row, col);
    SelectRow(row);
    EnableCellEditControl();
}

void PlyGrid::onCellDoubleClick(wxGridEvent& event) {
    if (event.GetCol() == kColPattern || event.GetCol() == kColName)
        replaceMaterial(event.GetRow());
    else
        event.Skip();
}

void PlyGrid::onCellChanging(wxGridEvent& event) {
    // A thickness that is no distance, negative or too large is refused in the cell.
    double thickness = 0.0;
    if (event.GetCol() == kColThickness && !parsePlyThickness(thickness, event.GetString(), m_unit)) {
        wxBell();
        event.Veto();
    }
}

void PlyGrid::onCellChanged(wxGridEvent& event) {
    const int row = event.GetRow();
    if (!m_composition || row < 0 || unsigned(row) >= m_composition->numPlies())
        return;
    vantlib::Ply ply = m_composition->ply(unsigned(row));
    if (event.GetCol() == kColFunction) {
        const int index = functions().Index(GetCellValue(row, kColFunction));
        if (index == wxNOT_FOUND)
            return;
        ply.set_function(vantlib::MaterialFunction(index));
    } else if (event.GetCol() == kColThickness) {
        double thickness = ply.thickness();
        if (!parsePlyThickness(thickness, GetCellValue(row, kColThickness), m_unit))
            return;
        ply.set_thickness(thickness);
        SetCellValue(row, kColThickness, formatDistance(thickness, m_unit, false));
    } else {
        return;
    }
    change([&](vantlib::Composition& composition) { composition.set_ply(unsigned(row), ply); });
}

void PlyGrid::onRowMove(wxGridEvent& event) {
    // The grid moves the row on screen after this event; the composition takes the move
    // instead, and the rows are refilled in ply order.
    const int from = event.GetRow();
    CallAfter([this, from] {
        const int to = GetRowPos(from);
        ResetRowPos();
        movePly(from, to);
    });
}

void PlyGrid::onSize(wxSizeEvent& event) {
    event.Skip();
    if (IsCellEditControlShown())
        SaveEditControlValue();
    if (IsCellEditControlShown())
        DisableCellEditControl();
    const int markWidth = scaled(30);
    const int usable = std::max(0, GetClientSize().x - GetRowLabelSize() - markWidth);
    SetColSize(kColIndex, 0);
    for (int col = kColPattern; col <= kColThickness; ++col)
        SetColSize(col, usable / 4);
    SetColSize(kColVariable, markWidth);
}

}  // namespace vl_app

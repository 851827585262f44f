#pragma once
// The ply table of the compositions dialog: one row per ply from the exterior (top) side to the
// interior (bottom) side, with the material's hatch and name, the ply's function, its thickness
// in the library's unit and the mark of the variable ply. Every edit is written into the
// composition at once and the owner is told, which saves it.
#include <functional>

#include <wx/bitmap.h>
#include <wx/grid.h>

#include <OdUnits.h>
#include <QcSmartPtr.h>

#include <vantlib/Composition.h>

namespace vl_app {

// The total thickness of a composition; with a variable ply, its minimum total.
class CmpThickness {
public:
    CmpThickness(const QcSmartPtr<vantlib::Composition>& composition, OdDb::UnitsValue unit);

    bool hasVariablePly() const { return m_variable; }
    int variablePly() const { return m_variablePly; }
    double minimum() const { return m_minimum; }
    double total() const { return m_total; }
    // "variable", "≥ <minimum total>" or the total, in the library's unit.
    wxString format() const;

private:
    bool m_variable = false;
    int m_variablePly = -1;
    double m_minimum = 0.0;
    double m_total = 0.0;
    OdDb::UnitsValue m_unit = OdDb::kUnitsUndefined;
};

// Reads a typed ply thickness in `unit`: a distance that is not negative and not too large to
// draw (at most 100 m). False leaves `out` unchanged.
bool parsePlyThickness(double& out, const wxString& text, OdDb::UnitsValue unit);

// What the grid asks of its dialog.
class PlyGridOwner {
public:
    virtual ~PlyGridOwner() = default;
    // The composition changed through the grid: save it and refresh preview and values.
    virtual void pliesChanged() = 0;
    // Lets the user pick a material of the composition's library (preselecting `current`);
    // null when the user cancelled.
    virtual QcSmartPtr<vantlib::Material> pickMaterial(const QcSmartPtr<vantlib::Material>& current) = 0;
};

// Draws the section hatch of the row's ply material filling the cell.
class GridCellPreviewRenderer : public wxGridCellRenderer {
public:
    explicit GridCellPreviewRenderer(const QcSmartPtr<vantlib::Composition>* composition)
        : m_composition(composition) {}
    void Draw(wxGrid& grid, wxGridCellAttr& attr, wxDC& dc, const wxRect& rect, int row, int col,
              bool isSelected) override;
    wxSize GetBestSize(wxGrid&, wxGridCellAttr&, wxDC&, int, int) override { return wxSize(60, 30); }
    wxGridCellRenderer* Clone() const override { return new GridCellPreviewRenderer(m_composition); }

private:
    const QcSmartPtr<vantlib::Composition>* m_composition;
    wxBitmap m_cached;
    const vantlib::Material* m_cachedMaterial = nullptr;
    wxSize m_cachedSize;
};

// Draws the lock on the variable ply's mark cell and the open lock on the others.
class GridCellToggleRenderer : public wxGridCellRenderer {
public:
    GridCellToggleRenderer();
    void Draw(wxGrid& grid, wxGridCellAttr& attr, wxDC& dc, const wxRect& rect, int row, int col,
              bool isSelected) override;
    wxSize GetBestSize(wxGrid&, wxGridCellAttr&, wxDC&, int, int) override;
    wxGridCellRenderer* Clone() const override { return new GridCellToggleRenderer(); }

private:
    wxBitmap m_lock;
    wxBitmap m_unlock;
};

class PlyGrid : public wxGrid {
public:
    enum Column { kColIndex = 0, kColPattern, kColName, kColFunction, kColThickness, kColVariable, kColumns };

    PlyGrid(wxWindow* parent, wxWindowID id, PlyGridOwner& owner);

    // Shows the plies of `composition` (null: none); `writable` allows editing.
    void setComposition(const QcSmartPtr<vantlib::Composition>& composition, OdDb::UnitsValue unit, bool writable);
    const QcSmartPtr<vantlib::Composition>& composition() const { return m_composition; }
    // Refills every row from the composition.
    void fill();
    // Selected rows, ascending.
    wxArrayInt selectedPlies() const;

    // Ply commands of the dialog's toolbar; each returns whether the composition changed.
    bool addPly(const QcSmartPtr<vantlib::Material>& material);
    bool removeSelectedPlies();
    bool duplicateSelectedPlies();
    // Makes `row` the variable ply, or no ply variable when it is already.
    void toggleVariable(int row);
    // Replaces the material of the ply in `row` with the user's pick.
    void replaceMaterial(int row);
    // Moves the ply of row `from` to row `to`, as dragging its label does.
    void movePly(int from, int to);

private:
    void onCellClick(wxGridEvent& event);
    void onCellDoubleClick(wxGridEvent& event);
    void onCellChanging(wxGridEvent& event);
    void onCellChanged(wxGridEvent& event);
    void onRowMove(wxGridEvent& event);
    void onSize(wxSizeEvent& event);
    void fillRow(int row);
    void setReadOnlyCell(int row, int col, bool readOnly);
    // Runs a change of the composition, telling the owner; false when nothing may change.
    bool change(const std::function<void(vantlib::Composition&)>& edit);

    PlyGridOwner& m_owner;
    QcSmartPtr<vantlib::Composition> m_composition;
    OdDb::UnitsValue m_unit = OdDb::kUnitsMillimeters;
    bool m_writable = false;
    bool m_editing = false;
};

}  // namespace vl_app

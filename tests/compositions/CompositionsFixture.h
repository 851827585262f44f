#pragma once
// Libraries with materials and compositions, and helpers that act on the compositions dialog
// and its ply grid as a user does: selecting rows, typing into cells, clicking marks.
#include <initializer_list>
#include <memory>

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/combobox.h>
#include <wx/grid.h>
#include <wx/propgrid/propgrid.h>
#include <wx/listctrl.h>
#include <wx/textctrl.h>
#include <wx/xrc/xmlres.h>

#include <OdStringWx.h>

#include <vantlib/vantlib.h>

#include "TwoListDialogFixture.h"

#include <QcPropertyGrid.h>

#include "app/common/Helpers.h"
#include "app/compositions/DlgCompositions.h"

namespace vl_compositions_test {

struct PlyEntry {
    const wchar_t* material;
    double thickness;
};

class CompositionsFixture : public vl_test::TwoListDialogFixture<vl_app::DlgCompositions> {
protected:
    // A stored material with a hatch and, when positive, conductivity (W/(m·K)) and density
    // (kg/m³).
    QcSmartPtr<vantlib::Material> material(const std::shared_ptr<vantlib::Library>& library, const wchar_t* name,
                                           double conductivity = 0.0, double density = 0.0) {
        auto material = vantlib::Material::create(name);
        material->section_pattern().set_type(vantlib::Pattern::kPredefined);
        material->section_pattern().set_name(L"DIAG");
        if (conductivity > 0.0)
            material->physical_asset(true)->set_thermal_conductivity(conductivity, L"W/(m\u00B7K)");
        if (density > 0.0)
            material->physical_asset(true)->set_density(density, L"kg/m\u00B3");
        return library->save(material);
    }

    QcSmartPtr<vantlib::Composition> composition(const std::shared_ptr<vantlib::Library>& library,
                                                 const wchar_t* name, vantlib::Composition::Type type,
                                                 std::initializer_list<PlyEntry> plies) {
        auto composition = vantlib::Composition::create(name, type);
        for (const PlyEntry& ply : plies) {
            auto used = library->get<vantlib::Material>(vantlib::NameKey(ply.material));
            composition->append_ply(vantlib::Ply(used, ply.thickness, vantlib::kFunctionStructure));
        }
        return library->save(composition);
    }

    QcSmartPtr<vantlib::Composition> stored(const std::shared_ptr<vantlib::Library>& library, const wchar_t* name) {
        return library->get<vantlib::Composition>(vantlib::NameKey(name));
    }

    vl_app::DlgCompositions& open(vl_db::EMode mode = vl_db::kModeManager, vl_db::EDbType type = vl_db::kDbNone,
                                  unsigned id = 0, const wxString& filter = wxString()) {
        dialog = std::make_unique<vl_app::DlgCompositions>(nullptr, libs, mode, type, id, filter);
        dialog->Show();
        return *dialog;
    }

    vl_app::PlyGrid* grid() const { return dialog->plyGrid(); }

    // A left click on a grid cell, as the grid reports it.
    void clickCell(int row, int col) {
        pressCell(row, col);
        settle();
    }

    void pressCell(int row, int col) {
        wxGridEvent event(grid()->GetId(), wxEVT_GRID_CELL_LEFT_CLICK, grid(), row, col);
        grid()->GetEventHandler()->ProcessEvent(event);
    }

    void doubleClickCell(int row, int col) {
        wxGridEvent event(grid()->GetId(), wxEVT_GRID_CELL_LEFT_DCLICK, grid(), row, col);
        grid()->GetEventHandler()->ProcessEvent(event);
        settle();
    }

    // Clicks a cell, types into its editor and leaves it, as Enter does.
    void typeInCell(int row, int col, const wxString& text) {
        pressCell(row, col);
        ASSERT_TRUE(grid()->IsCellEditControlEnabled());
        wxGridCellEditor* editor = grid()->GetCellEditor(row, col);
        auto* entry = dynamic_cast<wxTextEntry*>(editor->GetControl());
        editor->DecRef();
        ASSERT_TRUE(entry);
        entry->SetValue(text);
        grid()->DisableCellEditControl();
        settle();
    }

    void selectPlies(std::initializer_list<int> rows) {
        grid()->ClearSelection();
        for (const int index : rows)
            grid()->SelectRow(index, true);
    }
};

}  // namespace vl_compositions_test

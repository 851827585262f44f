// Opening the compositions dialog on large libraries: the time to build the dialog, fill both
// lists and paint them with their thumbnails, against a floor measured in the same run: the raw
// SQLite read of what the lists show (id, name and the plies that make the thumbnail) from both
// library files. Then the time of one thickness edit in a composition of 30 plies (grid, saving,
// preview, thickness and building-physics values) against redrawing the preview alone.
// Needs a display; without one the program runs itself again under xvfb-run.
#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

#include <wx/app.h>
#include <wx/textctrl.h>

#include <vantlib/vantlib.h>

#include <sqlite3.h>

#include "DialogBench.h"
#include "app/common/Previews.h"
#include "app/compositions/DlgCompositions.h"

namespace {

using vl_bench::Clock;
using vl_bench::msSince;
namespace fs = vl_bench::fs;

const wchar_t* const kPatterns[] = {L"DIAG", L"BRICK", L"CONCRETE", L"INSUL", L"WOOD", L"STONE", L"NET", L"SOLID"};

// Materials with conductivity and density, each with its own hatch.
std::vector<QcSmartPtr<vantlib::Material>> fillMaterials(const std::shared_ptr<vantlib::Library>& library) {
    std::vector<QcSmartPtr<vantlib::Material>> materials;
    for (size_t index = 0; index < std::size(kPatterns); ++index) {
        auto material = vantlib::Material::create(OdString::formatted(L"Material %zu", index));
        material->section_pattern().set_type(vantlib::Pattern::kPredefined);
        material->section_pattern().set_name(kPatterns[index]);
        material->physical_asset(true)->set_thermal_conductivity(0.035 + 0.3 * double(index), L"W/(m\u00B7K)");
        material->physical_asset(true)->set_density(20.0 + 300.0 * double(index), L"kg/m\u00B3");
        materials.push_back(library->save(material));
    }
    return materials;
}

// Compositions of 3 to 5 plies; build-ups repeat in groups, as in real libraries, so that rows
// share thumbnails.
void fill(const std::shared_ptr<vantlib::Library>& library, size_t count, const wchar_t* prefix) {
    vantlib::Transaction transaction(library);
    const auto materials = fillMaterials(library);
    for (size_t index = 0; index < count; ++index) {
        const auto type = index % 3 == 0 ? vantlib::Composition::kSlab : vantlib::Composition::kWall;
        auto composition = vantlib::Composition::create(OdString::formatted(L"%ls %06zu", prefix, index), type);
        const size_t plies = 3 + index % 3;
        for (size_t ply = 0; ply < plies; ++ply)
            composition->append_ply(vantlib::Ply(materials[(index / 3 + ply) % materials.size()],
                                                 double(20 + 40 * ((index + ply) % 5)), vantlib::kFunctionStructure));
        library->save(composition);
    }
    transaction.commit();
}

double openDialog(vl_db::DocumentLibraries* libs, unsigned* drawn) {
    const auto start = Clock::now();
    vl_app::DlgCompositions dialog(nullptr, libs, vl_db::kModeManager, vl_db::kDbNone, 0, wxString());
    vl_bench::showAndPaint(dialog, [&dialog] { return dialog.browser(); },
                           libs->secondary()->count<vantlib::Composition>() > 0);
    const double ms = msSince(start);
    *drawn = dialog.browser()->thumbnails().drawn();
    return ms;
}

// The floor: id, name and the plies' thicknesses and hatches of every composition of both
// files, sorted by name, read with raw SQLite.
struct FloorRow {
    int64_t id;
    std::string name;
    std::string plies;
};

double openFloor(const fs::path& projectFile, const fs::path& centralFile, size_t* rows) {
    const auto start = Clock::now();
    std::vector<FloorRow> lists[2];
    const fs::path files[2] = {projectFile, centralFile};
    for (int i = 0; i < 2; ++i) {
        sqlite3* db = nullptr;
        if (sqlite3_open_v2(files[i].c_str(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK)
            throw std::runtime_error("floor: cannot open " + files[i].string());
        sqlite3_stmt* stmt = nullptr;
        sqlite3_prepare_v2(db,
                           "SELECT k.id, k.name, (SELECT group_concat(ply, ';') FROM (SELECT p.thickness || ':' ||"
                           " m.sect_type || ':' || m.sect_name || ':' || m.sect_scale || ':' || m.sect_space || ':' ||"
                           " m.sect_angle || ':' || m.sect_cross AS ply FROM lib_ply p JOIN lib_material m"
                           " ON m.id = p.material_id WHERE p.composition_id = k.id ORDER BY p.position)),"
                           " k.variable_ply FROM lib_composition k ORDER BY k.name",
                           -1, &stmt, nullptr);
        while (sqlite3_step(stmt) == SQLITE_ROW) {
            const auto* plies = reinterpret_cast<const char*>(sqlite3_column_text(stmt, 2));
            lists[i].push_back({sqlite3_column_int64(stmt, 0),
                                reinterpret_cast<const char*>(sqlite3_column_text(stmt, 1)), plies ? plies : ""});
        }
        sqlite3_finalize(stmt);
        sqlite3_close(db);
    }
    const double ms = msSince(start);
    *rows = lists[0].size() + lists[1].size();
    return ms;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// One thickness typed into the grid of a 30-ply composition, as the user does it, against
// redrawing the composition's preview alone.
void measureThicknessEdit(const fs::path& dir) {
    vl_bench::Drawing drawing(
        dir / "edit", [](const auto&) {},
        [](const std::shared_ptr<vantlib::Library>& library) {
            const auto materials = fillMaterials(library);
            auto composition = vantlib::Composition::create(L"Thirty plies", vantlib::Composition::kWall);
            for (size_t ply = 0; ply < 30; ++ply)
                composition->append_ply(
                    vantlib::Ply(materials[ply % materials.size()], 10.0 + double(ply), vantlib::kFunctionStructure));
            library->save(composition);
        });
    const auto composition =
        drawing.libs->primary()->get<vantlib::Composition>(vantlib::NameKey(L"Thirty plies"));
    vl_app::DlgCompositions dialog(nullptr, drawing.libs, vl_db::kModeManager, vl_db::kDbProject, composition->id(),
                                   wxString());
    dialog.Show();
    wxTheApp->Yield(true);
    vl_app::PlyGrid* grid = dialog.plyGrid();
    if (grid->GetNumberRows() != 30)
        throw std::runtime_error("the 30 plies are not shown");

    std::vector<double> edits, previews;
    for (int round = 0; round < 20; ++round) {
        const int row = round % 30;
        auto start = Clock::now();
        grid->SetGridCursor(row, vl_app::PlyGrid::kColThickness);
        grid->EnableCellEditControl();
        wxGridCellEditor* editor = grid->GetCellEditor(row, vl_app::PlyGrid::kColThickness);
        dynamic_cast<wxTextCtrl*>(editor->GetControl())->SetValue(wxString::Format("%d", 50 + round));
        editor->DecRef();
        grid->DisableCellEditControl();
        dialog.Update();
        edits.push_back(msSince(start));

        start = Clock::now();
        const wxBitmap picture = vl_app::preview(dialog.composition(), wxSize(64, 64), true);
        previews.push_back(msSince(start));
        if (!picture.IsOk())
            throw std::runtime_error("the preview was not drawn");
    }
    const auto stored = drawing.libs->primary()->get<vantlib::Composition>(composition->id());
    if (stored->ply(19).thickness() != 69.0)
        throw std::runtime_error("the typed thickness was not saved");
    std::printf("\none thickness edit in a composition of 30 plies (grid, save, preview, values) against the preview"
                " alone\n");
    std::printf("%12s %12s %9s\n", "edit ms", "preview ms", "ratio");
    const double edit = median(edits), picture = median(previews);
    std::printf("%12.2f %12.2f %8.1fx\n", edit, picture, edit / picture);
}

int run(const fs::path& dir) {
    vl_bench::runListDialogOpening(dir, {"compositions dialog", {1000, 5000, 50000}, 5000, fill, L"Central composition", L"Project composition", openDialog, openFloor});
    measureThicknessEdit(dir);
    return 0;
}

}  // namespace

int main(int argc, char** argv) { return vl_bench::benchMain(argc, argv, "bench_compositions_dialog", run); }

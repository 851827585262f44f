// Opening the materials dialog on large libraries: the time to build the dialog, fill both lists
// and paint them with their thumbnails, against a floor measured in the same run: the raw SQLite
// read of what the lists show (id, name and the key of the thumbnail) from both library files.
// The dialog's fixed cost (building it on empty libraries) is printed beside.
// Needs a display; without one the program runs itself again under xvfb-run.
#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

#include <vantlib/vantlib.h>

#include <sqlite3.h>

#include "DialogBench.h"
#include "app/materials/DlgMaterials.h"

namespace {

using vl_bench::Clock;
namespace fs = vl_bench::fs;
using vl_bench::msSince;
// Materials share their section hatch in groups, as real libraries do: these patterns at a few
// scales give 24 distinct thumbnails.
const wchar_t* const kPatterns[] = {L"DIAG", L"BRICK", L"CONCRETE", L"INSUL", L"WOOD", L"STONE", L"NET", L"SOLID"};
const double kScales[] = {0.5, 1.0, 2.0};

void fill(const std::shared_ptr<vantlib::Library>& library, size_t count, const wchar_t* prefix) {
    vantlib::Transaction transaction(library);
    for (size_t index = 0; index < count; ++index) {
        auto material = vantlib::Material::create(OdString::formatted(L"%ls %06zu", prefix, index));
        vantlib::Pattern& pattern = material->section_pattern();
        pattern.set_type(vantlib::Pattern::kPredefined);
        pattern.set_name(kPatterns[index % std::size(kPatterns)]);
        pattern.set_scale(kScales[(index / std::size(kPatterns)) % std::size(kScales)]);
        material->set_type(vantlib::MaterialType::create(index % 2 ? L"Masonry" : L"Concrete"));
        library->save(material);
    }
    transaction.commit();
}

// The dialog as a command opens it: built from its layout, shown, both lists filled, painted.
double openDialog(vl_db::DocumentLibraries* libs, unsigned* drawn) {
    const auto start = Clock::now();
    vl_app::DlgMaterials dialog(nullptr, libs, vl_db::kModeManager, vl_db::kDbNone, 0);
    vl_bench::showAndPaint(dialog, [&dialog] { return dialog.browser(); },
                           libs->secondary()->count<vantlib::Material>() > 0);
    const double ms = msSince(start);
    *drawn = dialog.browser()->thumbnails().drawn();
    return ms;
}

// The floor: what the lists show of each material, read with raw SQLite from both files,
// sorted by name, with the thumbnail key made from the section hatch's columns.
struct FloorRow {
    int64_t id;
    std::string name;
    std::string key;
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
                           "SELECT id, name, sect_type, sect_name, sect_scale, sect_space, sect_angle, sect_cross"
                           " FROM lib_material ORDER BY name",
                           -1, &stmt, nullptr);
        while (sqlite3_step(stmt) == SQLITE_ROW) {
            // The key as the raw bytes of the hatch's values: no formatting.
            FloorRow row{sqlite3_column_int64(stmt, 0), reinterpret_cast<const char*>(sqlite3_column_text(stmt, 1)), {}};
            const int type = sqlite3_column_int(stmt, 2);
            row.key.append(reinterpret_cast<const char*>(&type), sizeof type);
            row.key.append(reinterpret_cast<const char*>(sqlite3_column_text(stmt, 3)), size_t(sqlite3_column_bytes(stmt, 3)));
            for (int column = 4; column < 7; ++column) {
                const double value = sqlite3_column_double(stmt, column);
                row.key.append(reinterpret_cast<const char*>(&value), sizeof value);
            }
            row.key.push_back(char(sqlite3_column_int(stmt, 7)));
            lists[i].push_back(std::move(row));
        }
        sqlite3_finalize(stmt);
        sqlite3_close(db);
    }
    const double ms = msSince(start);
    *rows = lists[0].size() + lists[1].size();
    return ms;
}

int run(const fs::path& dir) {
    vl_bench::runListDialogOpening(dir, {"materials dialog", {1000, 5000, 20000, 100000}, 20000, fill, L"Central material", L"Project material", openDialog, openFloor});
    return 0;
}

}  // namespace

int main(int argc, char** argv) { return vl_bench::benchMain(argc, argv, "bench_materials_dialog", run); }

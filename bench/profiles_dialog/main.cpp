// The profiles dialog on large steel catalogues: opening it (build, fill and paint both lists),
// choosing one filter, and each keystroke of a search, against floors measured in the same run.
// Opening: the raw SQLite read of the same rows (id, standard, name, size, shape and dimensions
// of every profile the lists show, in list order) from both library files. The dialog reads the
// libraries once and narrows what it holds, so a filter or a keystroke is measured against the
// same rows held in plain structures and narrowed by plain code to the names a list shows.
// Needs a display; without one the program runs itself again under xvfb-run.
#include <algorithm>
#include <cwctype>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

#include <wx/app.h>
#include <wx/choice.h>
#include <wx/srchctrl.h>
#include <wx/xrc/xmlres.h>

#include <vantlib/vantlib.h>

#include <sqlite3.h>

#include "DialogBench.h"
#include "app/profiles/DlgProfiles.h"

namespace {

using vl_bench::Clock;
namespace fs = vl_bench::fs;
using vl_bench::msSince;
using P = vantlib::ShapeParameter;
constexpr int kRepeats = 3;
const wchar_t* const kStandards[] = {L"EN 10365", L"EN 10219", L"EN 10056", L"DIN 1025", L"AISC", L"JIS", L"BS 4"};
const wchar_t* const kNames[] = {L"IPE", L"HEA", L"HEB", L"HEM", L"RHS", L"SHS", L"UPN", L"W"};
const char* const kSearch = "HEB 2";

// Profiles spread over the standards and names, every eighth one a hollow rectangle.
void fill(const std::shared_ptr<vantlib::Library>& library, size_t count) {
    vantlib::Transaction transaction(library);
    std::vector<QcSmartPtr<vantlib::ProfileName>> names;
    for (const wchar_t* standard : kStandards) {
        auto owner = library->save(vantlib::ProfileStandard::create(standard));
        for (const wchar_t* name : kNames)
            names.push_back(library->save(vantlib::ProfileName::create(owner, name, vantlib::kProfileStructuralSteel)));
    }
    for (size_t index = 0; index < count; ++index) {
        const auto& name = names[index % names.size()];
        const OdString size = OdString::formatted(L"%zu", 80 + index / names.size());
        const double depth = 80.0 + double(index / names.size());
        QcSmartPtr<vantlib::Profile> profile;
        if (index % 8 == 7) {
            auto hollow = vantlib::RectangleHollowProfile::create(name, size);
            hollow->set_y_dim(depth);
            hollow->set_x_dim(depth / 2);
            hollow->set_wall_thickness(4);
            profile = hollow;
        } else {
            auto beam = vantlib::IShapeProfile::create(name, size);
            beam->set_overall_depth(depth);
            beam->set_overall_width(depth / 2);
            beam->set_web_thickness(5.6);
            beam->set_flange_thickness(8.5);
            beam->set_fillet_radius(12);
            profile = beam;
        }
        library->save(profile);
    }
    transaction.commit();
}

// The floor: every listed profile's row read with raw SQLite from both files, in list order;
// `where` narrows it as the dialog's query does.
double readFloor(const fs::path& projectFile, const fs::path& centralFile, const std::string& where,
                 size_t* rows) {
    const auto start = Clock::now();
    size_t count = 0;
    for (const fs::path& file : {centralFile, projectFile}) {
        sqlite3* db = nullptr;
        if (sqlite3_open_v2(file.c_str(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK)
            throw std::runtime_error("floor: cannot open " + file.string());
        const std::string sql =
            "SELECT p.id, s.name, n.name, p.size, p.object_type, n.type, p.description, p.parameters"
            " FROM lib_profile p LEFT JOIN lib_profile_name n ON n.id = p.name_id"
            " LEFT JOIN lib_profile_standard s ON s.id = n.standard_id " +
            where + " ORDER BY s.name, n.name, p.size";
        sqlite3_stmt* stmt = nullptr;
        if (sqlite3_prepare_v2(db, sql.c_str(), -1, &stmt, nullptr) != SQLITE_OK)
            throw std::runtime_error(std::string("floor: ") + sqlite3_errmsg(db));
        struct Row {
            int64_t id;
            std::string standard, name, size, parameters;
            int shape, type;
        };
        std::vector<Row> listed;
        const auto text = [stmt](int column) {
            const auto* value = reinterpret_cast<const char*>(sqlite3_column_text(stmt, column));
            return value ? std::string(value) : std::string();
        };
        while (sqlite3_step(stmt) == SQLITE_ROW)
            listed.push_back({sqlite3_column_int64(stmt, 0), text(1), text(2), text(3), text(7),
                              sqlite3_column_int(stmt, 4), sqlite3_column_int(stmt, 5)});
        count += listed.size();
        sqlite3_finalize(stmt);
        sqlite3_close(db);
    }
    *rows = count;
    return msSince(start);
}

// Rows as plain code holds them after one read.
struct HeldRow {
    int64_t id;
    std::wstring standard, name, size, description;
    int shape;
};

std::vector<HeldRow> holdRows(const fs::path& projectFile, const fs::path& centralFile) {
    std::vector<HeldRow> held;
    for (const fs::path& file : {centralFile, projectFile}) {
        sqlite3* db = nullptr;
        if (sqlite3_open_v2(file.c_str(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK)
            throw std::runtime_error("floor: cannot open " + file.string());
        sqlite3_stmt* stmt = nullptr;
        sqlite3_prepare_v2(db,
                           "SELECT p.id, s.name, n.name, p.size, p.description, p.object_type FROM lib_profile p"
                           " LEFT JOIN lib_profile_name n ON n.id = p.name_id"
                           " LEFT JOIN lib_profile_standard s ON s.id = n.standard_id ORDER BY s.name, n.name, p.size",
                           -1, &stmt, nullptr);
        const auto text = [stmt](int column) {
            const auto* value = reinterpret_cast<const char*>(sqlite3_column_text(stmt, column));
            return OdString::fromUtf8(value ? value : "").str();
        };
        while (sqlite3_step(stmt) == SQLITE_ROW)
            held.push_back({sqlite3_column_int64(stmt, 0), text(1), text(2), text(3), text(4), sqlite3_column_int(stmt, 5)});
        sqlite3_finalize(stmt);
        sqlite3_close(db);
    }
    return held;
}

// The floor of a filter or a keystroke: the held rows narrowed, and the names the list shows
// made for the rows kept.
template <class Keep>
double narrowFloor(const std::vector<HeldRow>& held, Keep keep, size_t* rows) {
    const auto start = Clock::now();
    std::vector<std::pair<int64_t, std::wstring>> shown;
    for (const HeldRow& row : held)
        if (keep(row))
            shown.emplace_back(row.id, row.name + L' ' + row.size);
    *rows = shown.size();
    return msSince(start);
}

// Whether the row's searched text (standard, name, size, description) holds `typed`, letter
// case ignored.
bool holdsText(const HeldRow& row, const std::wstring& typed) {
    std::wstring searched = row.standard + L' ' + row.name + L' ' + row.size + L' ' + row.description;
    for (wchar_t& ch : searched)
        ch = wchar_t(std::towlower(ch));
    return searched.find(typed) != std::wstring::npos;
}

// Marks both lists for painting.
void paint(vl_app::DlgProfiles& dialog) {
    for (const vl_db::EDbType type : {vl_db::kDbProject, vl_db::kDbCentral})
        dialog.list(type)->Refresh();
}

void choose(vl_app::DlgProfiles& dialog, vl_app::DlgProfiles::EFilterKind kind, const wxString& label) {
    wxChoice* choice = dialog.getFilter(kind);
    const int index = choice->FindString(label, true);
    if (index == wxNOT_FOUND)
        throw std::runtime_error("no filter value " + label.ToStdString());
    choice->SetSelection(index);
    wxCommandEvent event(wxEVT_CHOICE, choice->GetId());
    event.SetEventObject(choice);
    event.SetInt(index);
    event.SetString(label);
    choice->GetEventHandler()->ProcessEvent(event);
    paint(dialog);
    wxTheApp->Yield(true);
}

struct Figures {
    double open = 1e300, filter = 1e300, keystroke = 0;
    size_t rows = 0, filtered = 0;
};

// Opens the dialog as a command does, chooses the shape filter and types the search text.
Figures measureDialog(vl_db::DocumentLibraries* libs) {
    Figures figures;
    const auto start = Clock::now();
    vl_app::DlgProfiles dialog(nullptr, libs, vl_db::kModeManager, vl_db::kDbNone, 0, nullptr, nullptr);
    vl_bench::showAndPaint(dialog, [&dialog] { return dialog.browser(); }, false);
    figures.open = msSince(start);
    figures.rows = size_t(dialog.list(vl_db::kDbProject)->GetItemCount() + dialog.list(vl_db::kDbCentral)->GetItemCount());

    const auto filterStart = Clock::now();
    choose(dialog, vl_app::DlgProfiles::kFilterShape, "Hollow rectangle");
    figures.filter = msSince(filterStart);
    figures.filtered =
        size_t(dialog.list(vl_db::kDbProject)->GetItemCount() + dialog.list(vl_db::kDbCentral)->GetItemCount());
    choose(dialog, vl_app::DlgProfiles::kFilterShape, _("All"));

    // Each keystroke as the field reports it: the refill of both lists and the dialog's idle
    // refresh of the right side (the lists paint later, as after any refill).
    auto* search = XRCCTRL(dialog, "ID_PROFILEFILTER", wxSearchCtrl);
    std::string typed;
    for (const char* key = kSearch; *key; ++key) {
        typed.push_back(*key);
        const auto keyStart = Clock::now();
        search->ChangeValue(typed);
        wxCommandEvent typedEvent(wxEVT_TEXT, search->GetId());
        typedEvent.SetEventObject(search);
        typedEvent.SetString(typed);
        search->GetEventHandler()->ProcessEvent(typedEvent);
        paint(dialog);
        wxTheApp->ProcessPendingEvents();
        wxIdleEvent idleEvent;
        dialog.ProcessWindowEvent(idleEvent);
        figures.keystroke = std::max(figures.keystroke, msSince(keyStart));
    }
    return figures;
}

// The dialog's cost on empty libraries: its layout, controls and settings.
double fixedCost(const fs::path& dir) {
    const vl_bench::LibraryFill nothing = [](const std::shared_ptr<vantlib::Library>&) {};
    vl_bench::Drawing empty(dir / "empty", nothing, nothing);
    double best = 1e300;
    for (int repeat = 0; repeat < kRepeats; ++repeat) {
        const auto start = Clock::now();
        vl_app::DlgProfiles dialog(nullptr, empty.libs, vl_db::kModeManager, vl_db::kDbNone, 0, nullptr, nullptr);
        vl_bench::showAndPaint(dialog, [&dialog] { return dialog.browser(); }, false);
        best = std::min(best, msSince(start));
    }
    return best;
}

int run(const fs::path& dir) {
    const double fixedMs = fixedCost(dir);
    std::printf("\nprofiles dialog: open, one filter and the slowest search keystroke (\"%s\") against the raw SQLite "
                "read of the same rows (sql), and filter and keystroke also against those rows held and narrowed in "
                "plain code (held)\n",
                kSearch);
    std::printf("fixed cost of the dialog (empty libraries): %.1f ms\n", fixedMs);
    std::printf("%8s %8s | %8s %8s %7s | %8s %8s %7s %8s %7s | %8s %8s %7s %8s %7s\n", "central", "project", "open ms",
                "sql", "ratio", "filter", "sql", "ratio", "held", "ratio", "key ms", "sql", "ratio", "held", "ratio");
    bool targetMet = true, variableMet = true;
    for (const size_t n : {size_t(5000), size_t(50000)}) {
        vl_bench::Drawing drawing(
            dir / std::to_string(n), [n](const auto& library) { fill(library, n); },
            [n](const auto& library) { fill(library, n / 10); });
        Figures best;
        double openFloor = 1e300, filterFloor = 1e300, keyFloor = 1e300, filterSql = 1e300, keySql = 1e300;
        size_t rows = 0, filtered = 0, found = 0;
        for (int repeat = 0; repeat < kRepeats; ++repeat) {
            openFloor = std::min(openFloor, readFloor(drawing.drawingFile, drawing.centralFile, "", &rows));
            size_t sqlRows = 0;
            filterSql = std::min(filterSql, readFloor(drawing.drawingFile, drawing.centralFile,
                                                      "WHERE p.object_type = " +
                                                          std::to_string(int(vantlib::kRectangleHollowProfile)),
                                                      &sqlRows));
            keySql = std::min(keySql, readFloor(drawing.drawingFile, drawing.centralFile,
                                                "WHERE (s.name || ' ' || n.name || ' ' || p.size || ' ' || "
                                                "p.description) LIKE '%H%'",
                                                &sqlRows));
            const std::vector<HeldRow> held = holdRows(drawing.drawingFile, drawing.centralFile);
            filterFloor = std::min(filterFloor, narrowFloor(held, [](const HeldRow& row) {
                                       return row.shape == int(vantlib::kRectangleHollowProfile);
                                   }, &filtered));
            // Each keystroke's floor; the slowest one counts, as for the dialog.
            double slowestKey = 0.0;
            std::wstring typed;
            for (const char* key = kSearch; *key; ++key) {
                typed.push_back(wchar_t(std::towlower(*key)));
                slowestKey = std::max(slowestKey, narrowFloor(held, [&typed](const HeldRow& row) {
                                                      return holdsText(row, typed);
                                                  }, &found));
            }
            keyFloor = std::min(keyFloor, slowestKey);
            const Figures figures = measureDialog(drawing.libs);
            if (figures.rows != rows || figures.filtered != filtered)
                throw std::runtime_error("the dialog listed " + std::to_string(figures.rows) + " / " +
                                         std::to_string(figures.filtered) + " rows, the floor " + std::to_string(rows) +
                                         " / " + std::to_string(filtered));
            best.open = std::min(best.open, figures.open);
            best.filter = std::min(best.filter, figures.filter);
            best.keystroke = repeat == 0 ? figures.keystroke : std::min(best.keystroke, figures.keystroke);
        }
        const double openRatio = best.open / openFloor, filterRatio = best.filter / filterSql,
                     keyRatio = best.keystroke / keySql;
        std::printf("%8zu %8zu | %8.1f %8.1f %6.2fx | %8.1f %8.1f %6.2fx %8.1f %6.2fx | %8.1f %8.1f %6.2fx %8.1f %6.2fx\n",
                    n, n / 10, best.open, openFloor, openRatio, best.filter, filterSql, filterRatio, filterFloor,
                    best.filter / filterFloor, best.keystroke, keySql, keyRatio, keyFloor, best.keystroke / keyFloor);
        if (n >= 50000 && (openRatio > 2.0 || filterRatio > 2.0 || keyRatio > 2.0))
            targetMet = false;
        if (n >= 50000 && std::max(0.0, best.open - fixedMs) / openFloor > 2.0)
            variableMet = false;
    }
    // The verdict is reported, not enforced: timings depend on the machine's load.
    std::printf("target at 50k (open, filter and keystroke within 2x of the SQLite read): %s; opening beyond the fixed "
                "cost <= 2x: %s\n",
                targetMet ? "met" : "NOT MET", variableMet ? "met" : "NOT MET");
    return 0;
}

}  // namespace

int main(int argc, char** argv) { return vl_bench::benchMain(argc, argv, "bench_profiles_dialog", run); }

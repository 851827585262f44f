#pragma once
// What the dialog benchmarks share: a drawing with a central and a project library filled by
// the benchmark, the wait until a dialog's two lists have painted, and a main() frame that
// starts the wx application (under xvfb-run when there is no display) and the host.
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

#include <OdDbDatabase.h>
#include <OdString.h>

#include <vantlib/Library.h>

#include <vl_db/DbPreferencesProvider.h>
#include <vl_db/DocumentLibraries.h>

class wxDialog;

namespace vl_app {
class TwoListBrowser;
}

namespace vl_bench {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

double msSince(Clock::time_point start);
OdString od(const fs::path& path);

using LibraryFill = std::function<void(const std::shared_ptr<vantlib::Library>& library)>;

// A drawing in `folder` with an embedded project library and a central library file, the host's
// active drawing while it lives.
struct Drawing {
    Drawing(const fs::path& folder, const LibraryFill& fillCentral, const LibraryFill& fillProject);
    ~Drawing();

    vl_db::MemoryPreferencesProvider preferences;
    std::unique_ptr<OdDbDatabase> db;
    vl_db::DocumentLibraries* libs = nullptr;
    fs::path drawingFile, centralFile;
};

// Shows `dialog` and waits until both of its lists have painted and, when `rows`, drawn at least
// one thumbnail; the browser exists once the dialog is shown. Throws when that never happens.
void showAndPaint(wxDialog& dialog, const std::function<vl_app::TwoListBrowser*()>& browser, bool rows);

// A two-list dialog opened on libraries of growing size against the raw read of what its lists
// show: the table of opening times, floors, ratios and thumbnails drawn, with the dialog's fixed
// cost (empty libraries) printed beside.
struct ListDialogOpening {
    const char* title;  // "materials dialog"
    std::vector<size_t> sizes;  // central rows; the project library gets a tenth
    size_t targetFrom;          // the target holds from this size on
    // Fills a library with `count` objects named after `prefix`.
    std::function<void(const std::shared_ptr<vantlib::Library>&, size_t count, const wchar_t* prefix)> fill;
    const wchar_t* centralPrefix;
    const wchar_t* projectPrefix;
    // Builds, shows and paints the dialog; returns its time and the thumbnails drawn.
    std::function<double(vl_db::DocumentLibraries* libs, unsigned* drawn)> open;
    // The floor: reads the rows of both files; returns its time and the rows read.
    std::function<double(const fs::path& projectFile, const fs::path& centralFile, size_t* rows)> floor;
};
void runListDialogOpening(const fs::path& dir, const ListDialogOpening& bench);

// The main() of a dialog benchmark: runs `run` in a folder of its own, with a display.
int benchMain(int argc, char** argv, const char* name, const std::function<int(const fs::path&)>& run);

}  // namespace vl_bench

// Library exchange benchmark: export of a whole library into its JSON document and import of
// that document into an empty library, against the raw SQLite floor of reading and inserting
// the same rows, measured in the same run.
// Usage: bench_exchange [N ...]   (N materials and N compositions; default 5000 50000, so the
// largest library holds 100k objects)
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include <vantlib/Exchange.h>
#include <vantlib/vantlib.h>

#include "BenchBasics.h"
#include "Floor.h"
#include "LibraryWork.h"
#include "Records.h"

using namespace vantlib;

namespace {

using vl_bench::Folder;
using vl_bench::timeMs;

std::shared_ptr<Library> newLibrary(const std::string& path) {
    return Library::create(OdString::fromUtf8(path), OdDb::kUnitsMillimeters);
}

struct Figures {
    size_t n = 0;
    size_t bytes = 0;
    double exportMs = 0, readFloorMs = 0, importMs = 0, insertFloorMs = 0;
};

Figures run(size_t n) {
    Folder folder("vantlib-exchange-bench");
    const std::vector<MaterialRecord> materialRecords = makeMaterials(n);
    const std::vector<CompositionRecord> compositionRecords = makeCompositions(n, n);

    // The library to export, filled through the library (not timed).
    auto library = newLibrary(folder.file("library.vlib"));
    {
        Transaction transaction(library);
        for (const auto& r : materialRecords)
            library->save(toMaterial(r));
        transaction.commit();
    }
    std::vector<QcSmartPtr<Material>> stored;
    library->get(stored, MaterialCriteria());
    {
        Transaction transaction(library);
        for (const auto& r : compositionRecords)
            library->save(toComposition(r, stored));
        transaction.commit();
    }

    Figures figures;
    figures.n = n;
    // Floor of the import: the same rows inserted into an empty file; of the export: those
    // rows read back, every column with tags and plies.
    const std::string floorPath = folder.file("floor.vlib");
    newLibrary(floorPath);
    Floor floor(floorPath);
    figures.insertFloorMs = timeMs([&] {
        floor.saveMaterials(materialRecords);
        floor.saveCompositions(compositionRecords, materialRecords);
    });
    size_t floorRows = 0;
    figures.readFloorMs = timeMs([&] { floorRows = floor.queryAllMaterials() + floor.queryAllCompositions(); });

    std::string document;
    figures.exportMs = timeMs([&] { document = exportLibrary(*library); });
    figures.bytes = document.size();

    auto target = newLibrary(folder.file("imported.vlib"));
    ImportReport report;
    figures.importMs = timeMs([&] { report = importLibrary(target, document); });
    const size_t imported = target->count<Material>() + target->count<Composition>();
    if (imported != floorRows || imported != 2 * n)
        throw std::runtime_error("the import and the floor disagree on the number of objects");
    if (exportLibrary(*target) != document)
        throw std::runtime_error("the imported library does not export to the same document");
    return figures;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<size_t> sizes;
    for (int i = 1; i < argc; ++i)
        sizes.push_back(size_t(std::strtoul(argv[i], nullptr, 10)));
    if (sizes.empty())
        sizes = {5000, 50000};

    std::vector<Figures> results;
    try {
        for (size_t n : sizes) {
            std::fprintf(stderr, "N = %zu materials and %zu compositions\n", n, n);
            results.push_back(run(n));
        }
    } catch (const std::exception& e) {
        std::fprintf(stderr, "benchmark failed: %s\n", e.what());
        return 1;
    }

    std::printf("\nexchange: whole-library export and import against the raw SQLite floor of the same rows\n");
    std::printf("%-10s %9s %11s %12s %12s %7s\n", "operation", "objects", "document", "time ms", "floor ms", "ratio");
    bool met = true;
    for (const Figures& f : results) {
        const double exportRatio = f.exportMs / f.readFloorMs, importRatio = f.importMs / f.insertFloorMs;
        std::printf("%-10s %9zu %9.1f MB %12.1f %12.1f %6.2fx\n", "export", 2 * f.n, f.bytes / 1e6, f.exportMs,
                    f.readFloorMs, exportRatio);
        std::printf("%-10s %9zu %9.1f MB %12.1f %12.1f %6.2fx\n", "import", 2 * f.n, f.bytes / 1e6, f.importMs,
                    f.insertFloorMs, importRatio);
        if (2 * f.n >= 100000 && (exportRatio > 3.0 || importRatio > 3.0))
            met = false;
    }
    if (!results.empty() && 2 * results.back().n >= 100000)
        std::printf("target at 100k objects (ratio <= 3x): %s\n", met ? "met" : "NOT MET");
    return 0;
}

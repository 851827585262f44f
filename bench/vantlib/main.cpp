// Library data module benchmark: every operation against the raw SQLite floor of the same
// rows, measured in the same run, at 1k, 10k and 100k materials and compositions.
// Usage: bench_vantlib [N ...]   (default 1000 10000 100000)
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include <vantlib/vantlib.h>

#include "BenchBasics.h"
#include "Floor.h"
#include "LibraryWork.h"
#include "Records.h"

using namespace vantlib;

namespace {

using vl_bench::Folder;
using vl_bench::timeMs;

struct Measure {
    std::string operation;
    size_t n;
    double ms;
    double floorMs;
};

void expectSame(size_t ours, size_t floor, const char* what) {
    if (ours != floor)
        throw std::runtime_error(std::string(what) + ": library and floor disagree on the number of objects");
}

// A library file used by the floor: the same tables, created empty and closed again.
std::string floorFile(const Folder& folder, const char* name) {
    std::string path = folder.file(name);
    Library::create(OdString::fromUtf8(path), OdDb::kUnitsMillimeters);
    return path;
}

void run(size_t n, std::vector<Measure>& results) {
    Folder folder("vantlib-bench");
    std::vector<MaterialRecord> materialRecords = makeMaterials(n);
    std::vector<CompositionRecord> compositionRecords = makeCompositions(n, n);
    auto library = Library::create(OdString::fromUtf8(folder.file("library.vlib")), OdDb::kUnitsMillimeters);
    Floor floor(floorFile(folder, "floor.vlib"));
    auto record = [&](const char* operation, double ms, double floorMs) {
        results.push_back(Measure{operation, n, ms, floorMs});
        std::fprintf(stderr, "  %-32s N=%-7zu %10.1f ms  floor %10.1f ms\n", operation, n, ms, floorMs);
    };

    // ---- Materials
    std::vector<QcSmartPtr<Material>> materials;
    for (const auto& r : materialRecords)
        materials.push_back(toMaterial(r));
    double ms = timeMs([&] {
        Transaction transaction(library);
        for (const auto& m : materials)
            library->save(m);
        transaction.commit();
    });
    record("material save", ms, timeMs([&] { floor.saveMaterials(materialRecords); }));

    std::vector<OdString> names;
    for (const auto& r : materialRecords)
        names.push_back(OdString::fromUtf8(r.name));
    size_t found = 0, floorFound = 0;
    ms = timeMs([&] {
        for (const auto& name : names)
            found += library->get<Material>(NameKey(name)) ? 1 : 0;
    });
    record("material get by name", ms, timeMs([&] { floorFound = floor.getMaterialsByName(materialRecords); }));
    expectSame(found, floorFound, "material get by name");

    std::vector<QcSmartPtr<Material>> all;
    ms = timeMs([&] { library->get(all, MaterialCriteria()); });
    record("material query all", ms, timeMs([&] { floorFound = floor.queryAllMaterials(); }));
    expectSame(all.size(), floorFound, "material query all");

    MaterialCriteria byClassAndTag;
    byClassAndTag.materialClass.equals(OdString::fromUtf8(kQueryClass));
    byClassAndTag.tags = {OdString::fromUtf8(kQueryTag)};
    std::vector<QcSmartPtr<Material>> some;
    ms = timeMs([&] { library->get(some, byClassAndTag); });
    record("material query class+tag", ms, timeMs([&] { floorFound = floor.queryMaterialsByClassAndTag(); }));
    expectSame(some.size(), floorFound, "material query class+tag");

    // ---- Compositions (plies refer to the stored materials)
    std::vector<QcSmartPtr<Composition>> compositions;
    for (const auto& r : compositionRecords)
        compositions.push_back(toComposition(r, all));
    ms = timeMs([&] {
        Transaction transaction(library);
        for (const auto& c : compositions)
            library->save(c);
        transaction.commit();
    });
    record("composition save", ms, timeMs([&] { floor.saveCompositions(compositionRecords, materialRecords); }));

    std::vector<OdString> compositionNames;
    for (const auto& r : compositionRecords)
        compositionNames.push_back(OdString::fromUtf8(r.name));
    found = 0;
    ms = timeMs([&] {
        for (const auto& name : compositionNames)
            found += library->get<Composition>(NameKey(name)) ? 1 : 0;
    });
    record("composition get by name", ms, timeMs([&] { floorFound = floor.getCompositionsByName(compositionRecords); }));
    expectSame(found, floorFound, "composition get by name");

    std::vector<QcSmartPtr<Composition>> allCompositions;
    ms = timeMs([&] { library->get(allCompositions, CompositionCriteria()); });
    record("composition query all", ms, timeMs([&] { floorFound = floor.queryAllCompositions(); }));
    expectSame(allCompositions.size(), floorFound, "composition query all");

    CompositionCriteria byTypeAndTag;
    byTypeAndTag.baseType = Composition::Type(kQueryBaseType);
    byTypeAndTag.tags = {OdString::fromUtf8(kQueryCompositionTag)};
    std::vector<QcSmartPtr<Composition>> someCompositions;
    ms = timeMs([&] { library->get(someCompositions, byTypeAndTag); });
    record("composition query type+tag", ms, timeMs([&] { floorFound = floor.queryCompositionsByTypeAndTag(); }));
    expectSame(someCompositions.size(), floorFound, "composition query type+tag");

    // ---- Copies into libraries that already hold every other name; clashes are overwritten.
    OverwriteReactor reactor;
    LibraryManager::instance()->setReactor(&reactor);
    std::set<unsigned> materialIds, compositionIds;
    for (const auto& m : all)
        materialIds.insert(m->id());
    for (const auto& c : allCompositions)
        compositionIds.insert(c->id());

    auto copyTarget = Library::create(OdString::fromUtf8(folder.file("copy.vlib")), OdDb::kUnitsMillimeters);
    Floor floorCopy(floorFile(folder, "floor-copy.vlib"));
    {
        Transaction transaction(copyTarget);
        for (size_t i = 0; i < n; i += 2)
            copyTarget->save(Material::create(names[i]));
        transaction.commit();
        floorCopy.saveMaterials(std::vector<MaterialRecord>());
        sqlite3_exec(floorCopy.db(), "BEGIN", nullptr, nullptr, nullptr);
        for (size_t i = 0; i < n; i += 2)
            sqlite3_exec(floorCopy.db(), ("INSERT INTO lib_material(name) VALUES ('" + materialRecords[i].name + "')").c_str(),
                         nullptr, nullptr, nullptr);
        sqlite3_exec(floorCopy.db(), "COMMIT", nullptr, nullptr, nullptr);
    }
    ms = timeMs([&] { copyTarget->copy<Material>(library, materialIds); });
    record("material copy, half clash", ms, timeMs([&] { floorCopy.copyMaterials(floor); }));
    expectSame(copyTarget->count<Material>(), size_t(floorCopy.count("lib_material")), "material copy");

    auto compositionTarget = Library::create(OdString::fromUtf8(folder.file("copy2.vlib")), OdDb::kUnitsMillimeters);
    Floor floorCompositionCopy(floorFile(folder, "floor-copy2.vlib"));
    {
        Transaction transaction(compositionTarget);
        for (size_t i = 0; i < n; i += 2)
            compositionTarget->save(Composition::create(compositionNames[i]));
        transaction.commit();
        sqlite3_exec(floorCompositionCopy.db(), "BEGIN", nullptr, nullptr, nullptr);
        for (size_t i = 0; i < n; i += 2)
            sqlite3_exec(floorCompositionCopy.db(),
                         ("INSERT INTO lib_composition(name) VALUES ('" + compositionRecords[i].name + "')").c_str(),
                         nullptr, nullptr, nullptr);
        sqlite3_exec(floorCompositionCopy.db(), "COMMIT", nullptr, nullptr, nullptr);
    }
    ms = timeMs([&] { compositionTarget->copy<Composition>(library, compositionIds); });
    record("composition copy, half clash", ms, timeMs([&] { floorCompositionCopy.copyCompositions(floor); }));
    expectSame(compositionTarget->count<Composition>(), size_t(floorCompositionCopy.count("lib_composition")),
               "composition copy");
    LibraryManager::instance()->setReactor(nullptr);

    // ---- Removal: compositions first, then the materials they no longer use.
    ms = timeMs([&] { library->remove<Composition>(compositionIds); });
    record("composition remove", ms, timeMs([&] { floor.removeCompositions(); }));
    ms = timeMs([&] { library->remove<Material>(materialIds); });
    record("material remove", ms, timeMs([&] { floor.removeMaterials(); }));
    expectSame(library->count<Material>(), size_t(floor.count("lib_material")), "material remove");
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<size_t> sizes;
    for (int i = 1; i < argc; ++i)
        sizes.push_back(size_t(std::strtoul(argv[i], nullptr, 10)));
    if (sizes.empty())
        sizes = {1000, 10000, 100000};

    std::vector<Measure> results;
    try {
        for (size_t n : sizes) {
            std::fprintf(stderr, "N = %zu\n", n);
            run(n, results);
        }
    } catch (const std::exception& e) {
        std::fprintf(stderr, "benchmark failed: %s\n", e.what());
        return 1;
    }

    std::map<std::pair<std::string, size_t>, double> byKey, floorByKey;
    for (const auto& m : results) {
        byKey[{m.operation, m.n}] = m.ms;
        floorByKey[{m.operation, m.n}] = m.floorMs;
    }
    std::printf("\nvantlib: library operations against the raw SQLite floor of the same rows\n");
    std::printf("%-30s %8s %12s %12s %7s %17s %13s\n", "operation", "N", "time ms", "floor ms", "ratio",
                "growth 10k->100k", "floor growth");
    bool allMet = true;
    for (const auto& m : results) {
        double ratio = m.floorMs > 0 ? m.ms / m.floorMs : 0.0;
        std::string growth, floorGrowth;
        if (m.n == 100000 && byKey.count({m.operation, 10000})) {
            double g = m.ms / byKey[{m.operation, 10000}];
            char text[32];
            std::snprintf(text, sizeof text, "%.1fx", g);
            growth = text;
            std::snprintf(text, sizeof text, "%.1fx", m.floorMs / floorByKey[{m.operation, 10000}]);
            floorGrowth = text;
            if (g > 12.0)
                allMet = false;
        }
        if (m.n == 100000 && ratio > 3.0)
            allMet = false;
        std::printf("%-30s %8zu %12.1f %12.1f %6.2fx %17s %13s\n", m.operation.c_str(), m.n, m.ms, m.floorMs, ratio,
                    growth.c_str(), floorGrowth.c_str());
    }
    if (byKey.count({"material save", 100000}))
        std::printf("targets at 100k (ratio <= 3x, growth <= 12x): %s\n", allMet ? "met" : "NOT MET");
    return 0;
}

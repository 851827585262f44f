// A steel catalogue read into a library: the CSV preset table import (parse, build the profiles,
// write them in one transaction) against the floor of plain code doing the same work: the same
// file split into fields, numbers parsed, and the same rows inserted with prepared statements in
// one transaction.
#include "CatalogueImport.h"

#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <BenchBasics.h>
#include <vantlib/ProfileCatalogues.h>
#include <vantlib/vantlib.h>

namespace {

// I-shapes of four families and hollow rectangles, each size once.
std::string catalogueText(size_t rows) {
    const char* const families[] = {"HEA", "HEB", "HEM", "IPE"};
    std::string text = "# category, label, class, dimensions\n";
    char line[160];
    for (size_t i = 0; i < rows; ++i) {
        const double depth = 80.0 + double(i / 5);
        if (i % 5 == 4)
            std::snprintf(line, sizeof line, "RHS,RHS%zux%zux4,RH,%g,%g,4\n", size_t(depth), size_t(depth / 2), depth,
                          depth / 2);
        else
            std::snprintf(line, sizeof line, "%s,%s%zu,H,%g,%g,%g,%g\n", families[i % 5], families[i % 5],
                          size_t(depth), depth / 2, depth, 4.0 + depth / 100, 6.0 + depth / 50);
        text += line;
    }
    return text;
}

void check(int code, sqlite3* db, const char* what) {
    if (code != SQLITE_OK && code != SQLITE_DONE && code != SQLITE_ROW)
        throw std::runtime_error(std::string("floor: ") + what + ": " + sqlite3_errmsg(db));
}

std::string number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

// The floor: the file read and split, the rows written straight into the library's tables.
size_t floorImport(const std::string& csv, const std::string& libraryFile) {
    std::ifstream in(csv, std::ios::binary);
    std::stringstream whole;
    whole << in.rdbuf();
    sqlite3* db = nullptr;
    check(sqlite3_open(libraryFile.c_str(), &db), db, "open");
    check(sqlite3_exec(db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), db, "begin");
    sqlite3_stmt* addName = nullptr;
    sqlite3_stmt* addProfile = nullptr;
    check(sqlite3_prepare_v2(db, "INSERT INTO lib_profile_name(name, standard_id, type) VALUES (?, NULL, ?)", -1, &addName,
                             nullptr),
          db, "prepare");
    check(sqlite3_prepare_v2(db,
                             "INSERT INTO lib_profile(size, name_id, description, object_type, parameters) "
                             "VALUES (?, ?, '', ?, ?)",
                             -1, &addProfile, nullptr),
          db, "prepare");
    std::map<std::string, sqlite3_int64> names;
    size_t count = 0;
    std::string line;
    while (std::getline(whole, line)) {
        if (line.empty() || line[0] == '#')
            continue;
        std::vector<std::string> fields;
        std::stringstream cells(line);
        for (std::string cell; std::getline(cells, cell, ',');)
            fields.push_back(cell);
        const std::string& label = fields[1];
        size_t letters = 0;
        while (letters < label.size() && std::isalpha(static_cast<unsigned char>(label[letters])))
            ++letters;
        const std::string name = label.substr(0, letters);
        const std::string size = label.substr(letters);
        std::vector<double> v;
        for (size_t i = 3; i < fields.size(); ++i)
            v.push_back(std::strtod(fields[i].c_str(), nullptr));
        auto found = names.find(name);
        if (found == names.end()) {
            sqlite3_bind_text(addName, 1, name.c_str(), -1, SQLITE_TRANSIENT);
            sqlite3_bind_int(addName, 2, int(vantlib::kProfileStructuralSteel));
            check(sqlite3_step(addName), db, "insert name");
            sqlite3_reset(addName);
            found = names.emplace(name, sqlite3_last_insert_rowid(db)).first;
        }
        std::string parameters;
        int type = 0;
        if (fields[2] == "H") {
            type = vantlib::kIShapeProfile;
            parameters = "{\"overall_depth\":" + number(v[1]) + ",\"overall_width\":" + number(v[0]) +
                         ",\"web_thickness\":" + number(v[2]) + ",\"flange_thickness\":" + number(v[3]) + "}";
        } else {
            type = vantlib::kRectangleHollowProfile;
            parameters = "{\"x_dim\":" + number(v[0]) + ",\"y_dim\":" + number(v[1]) + ",\"wall_thickness\":" +
                         number(v[2]) + "}";
        }
        sqlite3_bind_text(addProfile, 1, size.c_str(), -1, SQLITE_TRANSIENT);
        sqlite3_bind_int64(addProfile, 2, found->second);
        sqlite3_bind_int(addProfile, 3, type);
        sqlite3_bind_text(addProfile, 4, parameters.c_str(), -1, SQLITE_TRANSIENT);
        check(sqlite3_step(addProfile), db, "insert profile");
        sqlite3_reset(addProfile);
        ++count;
    }
    sqlite3_finalize(addName);
    sqlite3_finalize(addProfile);
    check(sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr), db, "commit");
    sqlite3_close(db);
    return count;
}

}  // namespace

bool benchCatalogueImport(const std::vector<size_t>& sizes) {
    std::printf("\nSteel catalogue (CSV presets) imported into an empty library, against plain code parsing the same "
                "file and inserting the same rows (target: within 3x)\n");
    std::printf("%8s %12s %12s %7s\n", "rows", "import ms", "floor ms", "ratio");
    bool withinTarget = true;
    for (size_t n : sizes) {
        vl_bench::Folder folder("bench-catalogue");
        const std::string csv = folder.file("presets.csv");
        std::ofstream(csv, std::ios::binary) << catalogueText(n);
        double best = 1e300, bestFloor = 1e300;
        for (int round = 0; round < 3; ++round) {
            const std::string productFile = folder.file(("product-" + std::to_string(round) + ".vlib").c_str());
            const std::string floorFile = folder.file(("floor-" + std::to_string(round) + ".vlib").c_str());
            auto library = vantlib::Library::create(OdString::fromUtf8(productFile), OdDb::kUnitsMillimeters);
            vantlib::Library::create(OdString::fromUtf8(floorFile), OdDb::kUnitsMillimeters).reset();
            size_t imported = 0, inserted = 0;
            best = std::min(best, vl_bench::timeMs([&] {
                imported = vantlib::importProfileCatalogues(library, {csv}).import.total().created;
            }));
            bestFloor = std::min(bestFloor, vl_bench::timeMs([&] { inserted = floorImport(csv, floorFile); }));
            // Profile names are created as well as profiles.
            if (library->count<vantlib::Profile>() != inserted || imported < inserted)
                throw std::runtime_error("the import and the floor wrote different rows");
        }
        const double ratio = best / bestFloor;
        withinTarget = withinTarget && ratio <= 3.0;
        std::printf("%8zu %12.1f %12.1f %6.2fx\n", n, best, bestFloor, ratio);
    }
    return withinTarget;
}

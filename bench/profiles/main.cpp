// Profile queries as the profiles dialog runs them, at 5k and 50k profiles: each single filter
// and the text search, read and sorted, against the raw SQLite floor of the same rows; then the
// import of a steel catalogue (CatalogueImport.cpp).
// Usage: bench_profiles [N ...]   (default 5000 50000)
#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include <vantlib/vantlib.h>
#include <vl_db/Profiles.h>

#include "BenchBasics.h"
#include "CatalogueImport.h"

using namespace vantlib;

namespace {

const wchar_t* const kStandards[] = {L"EN 10365", L"EN 10056", L"EN 10210", L"EN 10219", L"DIN 1025",
                                     L"AISC 360", L"BS 4",     L"JIS G 3192", L"GB 706",  L"AS 3679"};
const ProfileType kTypes[] = {kProfileStructuralSteel, kProfileStructuralConcrete, kProfileGeneric,
                              kProfileHvac,            kProfilePiping,             kProfileElectrical};

// N profiles of five shapes under N/50 profile names spread over ten standards and six types.
void fill(Library& library, size_t n) {
    Transaction transaction(library.shared_from_this());
    std::vector<QcSmartPtr<ProfileStandard>> standards;
    for (const wchar_t* name : kStandards)
        standards.push_back(library.save(ProfileStandard::create(OdString(name))));
    const size_t perName = 50;
    std::vector<QcSmartPtr<ProfileName>> names;
    for (size_t i = 0; i * perName < n; ++i)
        names.push_back(library.save(ProfileName::create(standards[i % standards.size()],
                                                         OdString::formatted(L"P%zu", i), kTypes[i % 6])));
    for (size_t i = 0; i < n; ++i) {
        const QcSmartPtr<ProfileName>& name = names[i / perName];
        const double d = 80.0 + double(i % perName) * 20.0;
        const OdString size = OdString::formatted(L"%zu", size_t(d));
        QcSmartPtr<Profile> profile;
        switch (i % 5) {
        case 0: {
            auto p = IShapeProfile::create(name, size);
            p->set_overall_depth(d);
            p->set_overall_width(d / 2);
            p->set_web_thickness(d / 35);
            p->set_flange_thickness(d / 22);
            p->set_fillet_radius(d / 20);
            profile = QcSmartPtr<Profile>(p.get());
            break;
        }
        case 1: {
            auto p = UShapeProfile::create(name, size);
            p->set_depth(d);
            p->set_flange_width(d / 3);
            p->set_web_thickness(d / 30);
            p->set_flange_thickness(d / 20);
            profile = QcSmartPtr<Profile>(p.get());
            break;
        }
        case 2: {
            auto p = LShapeProfile::create(name, size);
            p->set_depth(d);
            p->set_thickness(d / 10);
            p->set_fillet_radius(d / 9);
            profile = QcSmartPtr<Profile>(p.get());
            break;
        }
        case 3: {
            auto p = CircleHollowProfile::create(name, size);
            p->set_radius(d / 2);
            p->set_wall_thickness(d / 25);
            profile = QcSmartPtr<Profile>(p.get());
            break;
        }
        default: {
            auto p = RectangleHollowProfile::create(name, size);
            p->set_x_dim(d / 2);
            p->set_y_dim(d);
            p->set_wall_thickness(d / 25);
            profile = QcSmartPtr<Profile>(p.get());
            break;
        }
        }
        profile->set_description(OdString::formatted(L"section %zu of the catalogue", i));
        library.save(profile);
    }
    transaction.commit();
}

// The floor: one statement over the same tables and conditions reading every column a profile
// is built from, then the rows sorted in memory by standard, name and size (sizes by length,
// then text: the order of numbers of the same length). Sorting in memory beats SQLite's ORDER
// BY over the joined columns.
class Floor {
public:
    explicit Floor(const std::string& path) {
        if (sqlite3_open_v2(path.c_str(), &m_db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK)
            throw std::runtime_error("floor: cannot open " + path);
    }
    ~Floor() { sqlite3_close(m_db); }

    size_t run(const std::string& condition, const std::string& value, int64_t number) {
        const std::string sql =
            "SELECT p.id, p.size, p.description, p.material_id, p.object_type, p.has_offset, p.offset_x, "
            "p.offset_y, p.parameters, p.geometry, pn.id, pn.name, pn.type, s.id, s.name FROM lib_profile p "
            "LEFT JOIN lib_profile_name pn ON pn.id = p.name_id LEFT JOIN lib_profile_standard s ON s.id = "
            "pn.standard_id" +
            (condition.empty() ? std::string() : " WHERE " + condition);
        sqlite3_stmt* stmt = nullptr;
        if (sqlite3_prepare_v2(m_db, sql.c_str(), -1, &stmt, nullptr) != SQLITE_OK)
            throw std::runtime_error(std::string("floor: ") + sqlite3_errmsg(m_db));
        if (!value.empty())
            sqlite3_bind_text(stmt, 1, value.c_str(), -1, SQLITE_TRANSIENT);
        else if (number)
            sqlite3_bind_int64(stmt, 1, number);
        struct Row {
            int64_t id, materialId, type, nameId, nameType, standardId;
            std::string size, description, parameters, geometry, name, standard;
            double offsetX, offsetY;
            bool hasOffset;
        };
        std::vector<Row> rows;
        auto text = [stmt](int column) {
            const auto* value = sqlite3_column_text(stmt, column);
            return value ? std::string(reinterpret_cast<const char*>(value), size_t(sqlite3_column_bytes(stmt, column)))
                         : std::string();
        };
        while (sqlite3_step(stmt) == SQLITE_ROW)
            rows.push_back(Row{sqlite3_column_int64(stmt, 0), sqlite3_column_int64(stmt, 3), sqlite3_column_int64(stmt, 4),
                               sqlite3_column_int64(stmt, 10), sqlite3_column_int64(stmt, 12),
                               sqlite3_column_int64(stmt, 13), text(1), text(2), text(8), text(9), text(11), text(14),
                               sqlite3_column_double(stmt, 6), sqlite3_column_double(stmt, 7),
                               sqlite3_column_int(stmt, 5) != 0});
        sqlite3_finalize(stmt);
        std::sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) {
            if (a.standard != b.standard)
                return a.standard < b.standard;
            if (a.name != b.name)
                return a.name < b.name;
            if (a.size.size() != b.size.size())
                return a.size.size() < b.size.size();
            return a.size < b.size;
        });
        return rows.size();
    }

private:
    sqlite3* m_db = nullptr;
};

struct Case {
    const char* label;
    ProfilesPanelQuery query;
    std::string floorCondition;
    std::string floorText;
    int64_t floorNumber;
};

std::vector<Case> cases() {
    std::vector<Case> result;
    ProfilesPanelQuery all;
    result.push_back({"all profiles", all, "", "", 0});
    ProfilesPanelQuery type;
    type.type = kProfileStructuralSteel;
    result.push_back({"type", type, "(pn.type & ?1) <> 0", "", kProfileStructuralSteel});
    ProfilesPanelQuery shape;
    shape.className = OdString(L"vantlib::IShapeProfile");
    result.push_back({"shape", shape, "p.object_type = ?1", "", kIShapeProfile});
    ProfilesPanelQuery standard;
    standard.standards.insert(OdString(L"EN 10365"));
    result.push_back({"standard", standard, "s.name = ?1", "EN 10365", 0});
    ProfilesPanelQuery name;
    name.name.equals(OdString(L"P7"));
    result.push_back({"name", name, "pn.name = ?1", "P7", 0});
    ProfilesPanelQuery text;
    text.text.contains(OdString(L"section 12"));
    result.push_back({"text", text,
                      "(coalesce(s.name || ' ', '') || coalesce(pn.name || ' ', '') || p.size || ' ' || p.description) "
                      "LIKE '%' || ?1 || '%'",
                      "section 12", 0});
    return result;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<size_t> sizes;
    for (int i = 1; i < argc; ++i)
        sizes.push_back(std::strtoul(argv[i], nullptr, 10));
    if (sizes.empty())
        sizes = {5000, 50000};
    try {
        std::printf("Profiles dialog query, read and sorted, against the raw SQLite floor (target: within 3x)\n");
        std::printf("%-14s %8s %8s %12s %12s %7s\n", "filter", "N", "rows", "ms", "floor ms", "ratio");
        bool withinTarget = true;
        for (size_t n : sizes) {
            const std::filesystem::path file =
                std::filesystem::temp_directory_path() / ("bench-profiles-" + std::to_string(n) + ".vlib");
            std::filesystem::remove(file);
            {
                auto library = Library::create(OdString(file.wstring()), OdDb::kUnitsMillimeters);
                fill(*library, n);
                Floor floor(file.string());
                for (const Case& c : cases()) {
                    size_t rows = 0, floorRows = 0;
                    const double ms = vl_bench::bestMs([&] {
                        std::vector<vl_db::ProfilePtr> profiles;
                        library->get(profiles, c.query);
                        vl_db::sortProfiles(profiles);
                        rows = profiles.size();
                    });
                    const double floorMs = vl_bench::bestMs([&] { floorRows = floor.run(c.floorCondition, c.floorText, c.floorNumber); });
                    if (rows != floorRows)
                        throw std::runtime_error(std::string(c.label) + ": the library and the floor disagree on the rows");
                    const double ratio = ms / std::max(floorMs, 1e-3);
                    withinTarget = withinTarget && ratio <= 3.0;
                    std::printf("%-14s %8zu %8zu %12.2f %12.2f %6.2fx\n", c.label, n, rows, ms, floorMs, ratio);
                }
            }
            std::filesystem::remove(file);
        }
        std::printf(withinTarget ? "Every query is within 3x of its floor.\n" : "Some query is beyond 3x of its floor.\n");
        const bool importWithin = benchCatalogueImport({10000, 50000});
        std::printf(importWithin ? "The import is within 3x of its floor.\n" : "The import is beyond 3x of its floor.\n");
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench_profiles: %s\n", error.what());
        return 1;
    }
    return 0;
}

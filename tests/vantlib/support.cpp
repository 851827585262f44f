#include "support.h"

#include <sqlite3.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace vltest {

TempDir::TempDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "vantlib-test-XXXXXX").string();
    std::vector<char> buffer(pattern.begin(), pattern.end());
    buffer.push_back('\0');
    if (!mkdtemp(buffer.data()))
        throw std::runtime_error("cannot create a temporary folder");
    m_path = buffer.data();
}

TempDir::~TempDir() {
    std::error_code ignored;
    std::filesystem::permissions(m_path, std::filesystem::perms::owner_all, ignored);
    std::filesystem::remove_all(m_path, ignored);
}

OdString TempDir::file(const char* name) const { return OdString::fromUtf8(m_path + "/" + name); }

OdString W(const char* utf8) { return OdString::fromUtf8(utf8); }

QcSmartPtr<Material> sampleMaterial(const OdString& name, const OdString& className) {
    QcSmartPtr<Material> material = Material::create(name);
    material->set_description(name + L" description");
    if (!className.isEmpty())
        material->set_type(MaterialType::create(className));
    material->add_tag(W("Exterior"));
    material->add_tag(W("Load bearing"));
    BimAsset* bim = material->bim_asset(true);
    bim->set_layer(Layer::create(W("A-WALL-PATT")));
    bim->set_default_function(kFunctionStructure);
    bim->set_thicknesses({0.115, 0.175, 0.24});
    material->set_custom_value(CustomProperty::create(W("Fire rating"), kMaterial), W("REI 90"));
    return material;
}

QcSmartPtr<Composition> sampleComposition(const OdString& name, const std::vector<QcSmartPtr<Material>>& materials) {
    QcSmartPtr<Composition> composition = Composition::create(name, Composition::kWall);
    composition->set_type(CompositionType::create(W("Exterior wall")));
    composition->add_tag(W("Exterior"));
    for (const auto& material : materials)
        composition->append_ply(Ply::defaultPly(material));
    return composition;
}

std::string dumpLibrary(const OdString& path) {
    sqlite3* db = nullptr;
    std::ostringstream out;
    if (sqlite3_open_v2(path.toUtf8().c_str(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
        sqlite3_close(db);
        return "<cannot open>";
    }
    std::vector<std::string> tables;
    sqlite3_stmt* list = nullptr;
    sqlite3_prepare_v2(db, "SELECT name FROM sqlite_master WHERE type = 'table' AND name LIKE 'lib%' ORDER BY name", -1, &list, nullptr);
    while (sqlite3_step(list) == SQLITE_ROW)
        tables.push_back(reinterpret_cast<const char*>(sqlite3_column_text(list, 0)));
    sqlite3_finalize(list);
    for (const auto& table : tables) {
        out << "[" << table << "]\n";
        sqlite3_stmt* rows = nullptr;
        sqlite3_prepare_v2(db, ("SELECT * FROM " + table).c_str(), -1, &rows, nullptr);
        int columns = sqlite3_column_count(rows);
        sqlite3_finalize(rows);
        std::string order;
        for (int i = 1; i <= columns; ++i)
            order += (i > 1 ? ", " : " ORDER BY ") + std::to_string(i);
        sqlite3_prepare_v2(db, ("SELECT * FROM " + table + order).c_str(), -1, &rows, nullptr);
        while (rows && sqlite3_step(rows) == SQLITE_ROW) {
            for (int i = 0; i < sqlite3_column_count(rows); ++i) {
                const unsigned char* text = sqlite3_column_text(rows, i);
                out << (text ? reinterpret_cast<const char*>(text) : "NULL") << '|';
            }
            out << '\n';
        }
        sqlite3_finalize(rows);
    }
    sqlite3_close(db);
    return out.str();
}

std::string withoutTables(const std::string& dump, const std::string& prefix) {
    std::string kept;
    bool skipping = false;
    size_t start = 0;
    while (start < dump.size()) {
        size_t end = dump.find('\n', start);
        end = end == std::string::npos ? dump.size() : end + 1;
        const std::string line = dump.substr(start, end - start);
        if (line.rfind("[", 0) == 0)
            skipping = line.rfind(prefix, 0) == 0;
        if (!skipping)
            kept += line;
        start = end;
    }
    return kept;
}

std::string fileBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

}  // namespace vltest

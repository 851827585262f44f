#pragma once
// Temporary folders with real drawings and libraries, preferences held in memory and a reactor
// that records the file errors it is told about.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <unistd.h>

#include <gtest/gtest.h>

#include <OdDbDatabase.h>

#include <vantlib/vantlib.h>

#include <vl_db/DbPreferencesProvider.h>
#include <vl_db/DocumentLibraries.h>
#include <vl_db/LibraryReactor.h>

namespace vl_db_test {

namespace fs = std::filesystem;

struct FileErrorCall {
    enum Kind { kMissing, kLoading, kUnknown } kind;
    OdString path;
    vl_db::EDbType type;
};

class RecordingReactor : public vl_db::LibraryReactor {
public:
    void onLibraryFileMissing(OdDbDatabase*, const OdString& path, vl_db::EDbType type) override {
        calls.push_back({FileErrorCall::kMissing, path, type});
    }
    void onLibraryFileLoadingError(OdDbDatabase*, const OdString& path, vl_db::EDbType type) override {
        calls.push_back({FileErrorCall::kLoading, path, type});
    }
    void onLibraryFileUnknownError(OdDbDatabase*, const OdString& path, vl_db::EDbType type) override {
        calls.push_back({FileErrorCall::kUnknown, path, type});
    }
    std::vector<FileErrorCall> calls;
};

inline std::string readBytes(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline void writeBytes(const fs::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

inline std::string randomBytes(size_t count, unsigned seed) {
    std::mt19937 generator(seed);
    std::string bytes(count, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(generator() & 0xFF);
    return bytes;
}

inline OdString od(const fs::path& path) {
    return OdString(path.wstring());
}

class DrawingFixture : public ::testing::Test {
protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        m_dir = fs::temp_directory_path() /
                ("vl_db_" + std::string(info->test_suite_name()) + "_" + info->name() + "_" + std::to_string(::getpid()));
        fs::remove_all(m_dir);
        fs::create_directories(m_dir);
        vl_db::DbPreferencesProvider::setInstance(&preferences);
        vantlib::LibraryManager::instance()->setReactor(&reactor);
    }

    void TearDown() override {
        for (auto& db : m_drawings)
            vl_db::closeDocLibs(db.get());
        m_drawings.clear();
        vantlib::LibraryManager::instance()->setReactor(nullptr);
        vl_db::DbPreferencesProvider::setInstance(nullptr);
        std::error_code ec;
        fs::remove_all(m_dir, ec);
    }

    fs::path path(const std::string& name) const { return m_dir / name; }

    // A drawing kept open for the test; closed (and its libraries dropped) at the end.
    OdDbDatabase* newDrawing(const std::string& name, OdDb::UnitsValue units = OdDb::kUnitsMillimeters) {
        m_drawings.push_back(OdDbDatabase::create(od(path(name)), units));
        return m_drawings.back().get();
    }
    OdDbDatabase* openDrawing(const fs::path& file) {
        m_drawings.push_back(OdDbDatabase::open(od(file)));
        return m_drawings.back().get();
    }
    void closeDrawing(OdDbDatabase* db) {
        vl_db::closeDocLibs(db);
        for (auto it = m_drawings.begin(); it != m_drawings.end(); ++it)
            if (it->get() == db) {
                m_drawings.erase(it);
                return;
            }
    }

    // A library file with one material of each name.
    fs::path newLibrary(const std::string& name, const std::vector<std::wstring>& materials,
                        OdDb::UnitsValue unit = OdDb::kUnitsMillimeters) {
        const fs::path file = path(name);
        const auto library = vantlib::Library::create(od(file), unit);
        // One commit: each one costs the journal's file syncs.
        vantlib::Transaction transaction(library);
        for (const auto& material : materials)
            library->save(vantlib::Material::create(material.c_str()));
        transaction.commit();
        return file;
    }

    vl_db::MemoryPreferencesProvider preferences;
    RecordingReactor reactor;

private:
    fs::path m_dir;
    std::vector<std::unique_ptr<OdDbDatabase>> m_drawings;
};

}  // namespace vl_db_test

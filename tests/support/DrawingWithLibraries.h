#pragma once
// A drawing with an embedded project library and a central library file in a fresh folder; the
// drawing is the host's active drawing while a test runs.
#include <filesystem>
#include <memory>
#include <string>

#include <unistd.h>

#include <gtest/gtest.h>

#include <CaApp.h>
#include <OdDbDatabase.h>

#include <vantlib/vantlib.h>

#include <vl_db/DbPreferencesProvider.h>
#include <vl_db/DocumentLibraries.h>

namespace vl_test {

namespace fs = std::filesystem;

inline OdString od(const fs::path& path) { return OdString(path.wstring()); }

class DrawingWithLibraries : public ::testing::Test {
protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        m_dir = fs::temp_directory_path() / ("vl_test_" + std::string(info->test_suite_name()) + "_" + info->name() +
                                             "_" + std::to_string(::getpid()));
        fs::remove_all(m_dir);
        fs::create_directories(m_dir);
        vantlib::Library::create(od(m_dir / "central.vlib"), OdDb::kUnitsMillimeters);
        preferences.setDefaultMetricLibrary(od(m_dir / "central.vlib"));
        vl_db::DbPreferencesProvider::setInstance(&preferences);
        db = OdDbDatabase::create(od(m_dir / "house.vldwg"), OdDb::kUnitsMillimeters);
        ca::CaApp::instance()->setActiveDatabase(db.get());
        libs = vl_db::docLibs(db.get());
        project = libs->primary(true);
        central = libs->secondary();
    }

    void TearDown() override {
        ca::CaApp::instance()->setActiveDatabase(nullptr);
        project.reset();
        central.reset();
        vl_db::closeDocLibs(db.get());
        db.reset();
        vl_db::DbPreferencesProvider::setInstance(nullptr);
        std::error_code ignored;
        fs::remove_all(m_dir, ignored);
    }

    fs::path path(const std::string& name) const { return m_dir / name; }

    vl_db::MemoryPreferencesProvider preferences;
    std::unique_ptr<OdDbDatabase> db;
    vl_db::DocumentLibraries* libs = nullptr;
    std::shared_ptr<vantlib::Library> project;
    std::shared_ptr<vantlib::Library> central;

private:
    fs::path m_dir;
};

}  // namespace vl_test

#pragma once
// A drawing with an embedded project library, active in a host application object, and a
// central library file beside it, all in a temporary folder.
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <OaApp.h>
#include <OdDbDatabase.h>

#include <vantlib/vantlib.h>

namespace app_test {

namespace fs = std::filesystem;

inline OdString od(const fs::path& path) { return OdString(path.wstring()); }

// Processes events until `done` holds or the time is up; returns done().
bool pumpUntil(const std::function<bool()>& done, int timeoutMs = 5000);

class ProjectFixture : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    fs::path path(const std::string& name) const { return m_dir / name; }
    static void addMaterials(const std::shared_ptr<vantlib::Library>& library, const std::vector<std::wstring>& names);
    // Names of the library's materials, in id order.
    static std::vector<std::wstring> materialNames(const vantlib::Library& library);
    // Copies the central library's materials of these names into the project library.
    vantlib::IdMapping copyToProject(const std::vector<std::wstring>& names);

    std::unique_ptr<oa::OaApp> app;
    std::unique_ptr<OdDbDatabase> drawing;
    std::shared_ptr<vantlib::Library> project;
    std::shared_ptr<vantlib::Library> central;

private:
    fs::path m_dir;
};

}  // namespace app_test

#include "AppTestSupport.h"

#include <chrono>
#include <set>

#include <unistd.h>

#include <wx/app.h>
#include <wx/utils.h>

#include <CaPreferences.h>

#include <vl_db/DocumentLibraries.h>

namespace app_test {

bool pumpUntil(const std::function<bool()>& done, int timeoutMs) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    while (!done() && std::chrono::steady_clock::now() < end) {
        wxTheApp->ProcessPendingEvents();
        wxTheApp->Yield(true);
        wxMilliSleep(5);
    }
    return done();
}

void ProjectFixture::SetUp() {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    m_dir = fs::temp_directory_path() /
            ("vl_app_" + std::string(info->test_suite_name()) + "_" + info->name() + "_" + std::to_string(::getpid()));
    fs::remove_all(m_dir);
    fs::create_directories(m_dir);
    ca::preferences().set_VantlibDefaultClashAnswer(0);

    app = std::make_unique<oa::OaApp>();
    drawing = OdDbDatabase::create(od(path("project.vldwg")), OdDb::kUnitsMillimeters);
    app->setActiveDatabase(drawing.get());
    project = vl_db::docLibs(drawing.get())->primary(true);
    central = vantlib::Library::create(od(path("central.vlib")), OdDb::kUnitsMillimeters);
}

void ProjectFixture::TearDown() {
    app->setActiveDatabase(nullptr);
    vl_db::closeDocLibs(drawing.get());
    project.reset();
    central.reset();
    drawing.reset();
    app.reset();
    std::error_code ignored;
    fs::remove_all(m_dir, ignored);
}

void ProjectFixture::addMaterials(const std::shared_ptr<vantlib::Library>& library, const std::vector<std::wstring>& names) {
    for (const auto& name : names)
        library->save(vantlib::Material::create(name.c_str()));
}

std::vector<std::wstring> ProjectFixture::materialNames(const vantlib::Library& library) {
    std::vector<QcSmartPtr<vantlib::Material>> materials;
    library.get<vantlib::Material>(materials);
    std::vector<std::wstring> names;
    for (const auto& material : materials)
        names.push_back(material->name().c_str());
    return names;
}

vantlib::IdMapping ProjectFixture::copyToProject(const std::vector<std::wstring>& names) {
    std::set<unsigned> ids;
    for (const auto& name : names)
        ids.insert(central->get<vantlib::Material>(vantlib::NameKey(name.c_str()))->id());
    return project->copy<vantlib::Material>(central, ids);
}

}  // namespace app_test

// Test runner with a wx application object and the module's layouts loaded. Settings go to a
// temporary folder so that nothing of the user's is read or written.
#include <cstdlib>
#include <filesystem>
#include <string>

#include <unistd.h>

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/image.h>
#include <wx/init.h>
#include <wx/xrc/xmlres.h>

#include <CaApp.h>

#include <vl_resources.h>

namespace {
class TestApp : public wxApp {
public:
    bool OnInit() override {
        wxInitAllImageHandlers();
        wxXmlResource::Get()->InitAllHandlers();
        InitVantlibXmlResource();
        return true;
    }
};
}  // namespace

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (::testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();

    const auto configDir =
        std::filesystem::temp_directory_path() / ("vl_materials_config_" + std::to_string(::getpid()));
    std::filesystem::create_directories(configDir);
    ::setenv("VL_CONFIG_DIR", configDir.c_str(), 1);

    wxApp::SetInstance(new TestApp());
    if (!wxEntryStart(argc, argv) || !wxTheApp->CallOnInit()) {
        std::fprintf(stderr, "test_materials_dialog: the wx application could not start\n");
        return 2;
    }
    int result = 0;
    {
        ca::CaApp host;
        result = RUN_ALL_TESTS();
    }
    wxTheApp->OnExit();
    wxEntryCleanup();
    std::error_code ignored;
    std::filesystem::remove_all(configDir, ignored);
    return result;
}

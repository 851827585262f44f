// Runs the tests inside a wx application object with an active event loop, with the settings
// store in a temporary folder.
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include <unistd.h>

#include <gtest/gtest.h>

#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/image.h>

#include <MainThread.h>
#include <WxgConfig.h>

#include <WxDisplay.h>

namespace {
class TestApp : public wxApp {
public:
    bool OnInit() override { return true; }
};
}  // namespace

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    // ctest lists the tests before it runs them; listing needs no display.
    if (::testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();
    const auto settings = std::filesystem::temp_directory_path() / ("vl_app_settings_" + std::to_string(::getpid()));
    std::filesystem::create_directories(settings);
    ::setenv("VL_CONFIG_DIR", settings.c_str(), 1);

    int wxArgc = 1;
    if (!vl_test::startWxWithDisplay([] { return new TestApp; }, wxArgc, argv))
        return 1;
    wxTheApp->CallOnInit();
    wxInitAllImageHandlers();
    wxg::WxgConfig::reload();
    ca::installMainThreadDispatcher();
    int result = 0;
    {
        wxEventLoop loop;
        wxEventLoopActivator activate(&loop);
        result = RUN_ALL_TESTS();
    }
    ca::uninstallMainThreadDispatcher();
    wxTheApp->OnExit();
    wxEntryCleanup();
    std::error_code ignored;
    std::filesystem::remove_all(settings, ignored);
    return result;
}

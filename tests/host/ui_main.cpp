// Runs the UI tests inside a wx application object with an active event loop.
#include <gtest/gtest.h>

#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/image.h>

#include "MainThread.h"
#include "TestSupport.h"
#include "WxDisplay.h"

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
    int wxArgc = 1;
    if (!vl_test::startWxWithDisplay([] { return new TestApp; }, wxArgc, argv))
        return 1;
    wxTheApp->CallOnInit();
    wxInitAllImageHandlers();
    useTemporarySettingsFolder();
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
    return result;
}

// Test runner with a wx application object and the module's layouts loaded. Settings go to a
// temporary folder so that nothing of the user's is read or written. A failed wx assertion
// fails the running test instead of stopping the program.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <unistd.h>

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/filename.h>
#include <wx/image.h>
#include <wx/init.h>
#include <wx/log.h>
#include <wx/xrc/xmlres.h>

#include <CaApp.h>

#include <vl_resources.h>

#include "WxDisplay.h"

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

void failOnAssert(const wxString& file, int line, const wxString& function, const wxString& condition,
                  const wxString& message) {
    ADD_FAILURE_AT(file.utf8_str(), line) << "wx assertion in " << function.utf8_str() << ": "
                                          << condition.utf8_str() << " " << message.utf8_str();
}

}  // namespace

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    // The build lists the tests without a display; listing needs no application object.
    if (::testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();

    const std::string program = wxFileName(wxString::FromUTF8(argv[0])).GetName().utf8_string();
    const auto configDir =
        std::filesystem::temp_directory_path() / (program + "_config_" + std::to_string(::getpid()));
    std::filesystem::create_directories(configDir);
    ::setenv("VL_CONFIG_DIR", configDir.c_str(), 1);

    if (!vl_test::startWxWithDisplay([] { return new TestApp(); }, argc, argv))
        return 2;
    // Log messages go to the test output, not to message boxes.
    delete wxLog::SetActiveTarget(new wxLogStderr);
    if (!wxTheApp->CallOnInit()) {
        std::fprintf(stderr, "%s: the wx application could not start\n", program.c_str());
        return 2;
    }
    wxSetAssertHandler(failOnAssert);
    int result = 0;
    {
        ca::CaApp host;  // the active drawing of the tests is set through it
        result = RUN_ALL_TESTS();
    }
    wxTheApp->OnExit();
    wxEntryCleanup();
    std::error_code ignored;
    std::filesystem::remove_all(configDir, ignored);
    return result;
}

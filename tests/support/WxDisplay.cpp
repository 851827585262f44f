#include "WxDisplay.h"

#include <chrono>
#include <cstdio>
#include <thread>

#include <wx/app.h>
#include <wx/init.h>
#include <wx/log.h>

namespace vl_test {

bool startWxWithDisplay(const std::function<wxApp*()>& makeApp, int& argc, char** argv) {
    int delayMs = kFirstRetryDelayMs;
    for (int attempt = 1; attempt <= kDisplayAttempts; ++attempt) {
        // Why a start fails goes to stderr: left alone, wx would show it in a message box, which
        // without a display ends the program. Once started, wx makes its usual log target.
        delete wxLog::SetActiveTarget(new wxLogStderr);
        wxApp::SetInstance(makeApp());
        if (wxEntryStart(argc, argv)) {
            delete wxLog::SetActiveTarget(nullptr);
            return true;
        }
        if (attempt == kDisplayAttempts)
            break;
        std::fprintf(stderr, "The display refused the connection (attempt %d of %d); retrying in %d ms.\n", attempt,
                     kDisplayAttempts, delayMs);
        std::this_thread::sleep_for(std::chrono::milliseconds(delayMs));
        delayMs *= 2;
    }
    std::fprintf(stderr, "No display after %d attempts: the tests that need one fail (run them under xvfb-run).\n",
                 kDisplayAttempts);
    return false;
}

}  // namespace vl_test

#pragma once
// Start of wx's user interface for the test programs. A display server under load now and then
// refuses a connection for a moment (an X server also does while it resets after its last
// client left), so a refused start is retried a few times with a short back-off before it
// counts as failed; a failure is then the caller's to report as a failed run, never a skip.
#include <functional>

class wxApp;

namespace vl_test {

// Attempts before the start counts as failed, and the wait before the first retry (doubled for
// each further one).
constexpr int kDisplayAttempts = 6;
constexpr int kFirstRetryDelayMs = 100;

// Starts wx with an application object from `makeApp` (a refused attempt deletes the object, so
// each attempt gets a new one). Each refusal is written to stderr with wx's reason. On success
// the caller ends wx with wxEntryCleanup().
bool startWxWithDisplay(const std::function<wxApp*()>& makeApp, int& argc, char** argv);

}  // namespace vl_test

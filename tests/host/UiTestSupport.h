#pragma once
// Driving the event loop from UI tests.
#include <chrono>
#include <functional>

#include <wx/app.h>
#include <wx/utils.h>

// Processes events until `done` holds or the time is up; returns `done()`.
inline bool pumpUntil(const std::function<bool()>& done, int timeoutMs = 5000) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    while (!done() && std::chrono::steady_clock::now() < end) {
        wxTheApp->ProcessPendingEvents();
        wxTheApp->Yield(true);
        wxMilliSleep(5);
    }
    return done();
}

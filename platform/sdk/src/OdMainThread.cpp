#include "OdMainThread.h"

#include <condition_variable>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>

#include "OdError.h"

namespace {

struct MainThreadState {
    std::mutex mutex;
    std::thread::id mainThread = std::this_thread::get_id();
    std::function<void(std::function<void()>)> dispatcher;
    std::deque<std::function<void()>> pending;
};

MainThreadState& state() {
    static MainThreadState instance;
    return instance;
}

// Built while the library loads, so the loading thread is the main thread until told otherwise.
const bool kLoadingThreadRecorded = (state(), true);

// What a waiting worker and the main thread share for one blocking hand-over.
struct Completion {
    std::mutex mutex;
    std::condition_variable finished;
    bool done = false;
    std::exception_ptr error;
};

void post(std::function<void()> task) {
    MainThreadState& s = state();
    std::function<void(std::function<void()>)> dispatcher;
    {
        std::lock_guard<std::mutex> lock(s.mutex);
        if (!s.dispatcher) {
            s.pending.push_back(std::move(task));
            return;
        }
        dispatcher = s.dispatcher;
    }
    dispatcher(std::move(task));
}

// Nobody waits for a non-blocking action, so whatever it throws stops here.
void runDetached(const std::function<void()>& action) {
    try {
        action();
    } catch (...) {
    }
}

}  // namespace

void odSetMainThread() {
    (void)kLoadingThreadRecorded;
    MainThreadState& s = state();
    std::lock_guard<std::mutex> lock(s.mutex);
    s.mainThread = std::this_thread::get_id();
}

bool odIsMainThread() {
    MainThreadState& s = state();
    std::lock_guard<std::mutex> lock(s.mutex);
    return s.mainThread == std::this_thread::get_id();
}

void odSetMainThreadDispatcher(std::function<void(std::function<void()>)> dispatcher) {
    MainThreadState& s = state();
    std::deque<std::function<void()>> queued;
    {
        std::lock_guard<std::mutex> lock(s.mutex);
        s.dispatcher = std::move(dispatcher);
        if (s.dispatcher) queued.swap(s.pending);
    }
    // Actions queued while no dispatcher was installed go to the new one, in order.
    for (auto& task : queued) post(std::move(task));
}

int odRunPendingMainThreadActions() {
    if (!odIsMainThread()) throw OdError(eInvalidContext, L"Pending main-thread actions can only run on the main thread");
    MainThreadState& s = state();
    std::deque<std::function<void()>> batch;
    {
        std::lock_guard<std::mutex> lock(s.mutex);
        batch.swap(s.pending);
    }
    for (auto& task : batch) task();
    return static_cast<int>(batch.size());
}

void odExecuteMainThreadAction(std::function<void()> action, bool nonBlocking) {
    if (!action) throw OdError(eInvalidInput, L"No action to run on the main thread");
    if (odIsMainThread()) {
        action();
        return;
    }
    if (nonBlocking) {
        post([action = std::move(action)] { runDetached(action); });
        return;
    }
    auto completion = std::make_shared<Completion>();
    post([action = std::move(action), completion] {
        try {
            action();
        } catch (...) {
            completion->error = std::current_exception();
        }
        std::lock_guard<std::mutex> lock(completion->mutex);
        completion->done = true;
        completion->finished.notify_all();
    });
    std::unique_lock<std::mutex> lock(completion->mutex);
    completion->finished.wait(lock, [&] { return completion->done; });
    if (completion->error) std::rethrow_exception(completion->error);
}

void odExecuteMainThreadAction(OdMainThreadFunc func, void* data, bool nonBlocking) {
    if (!func) throw OdError(eInvalidInput, L"No action to run on the main thread");
    odExecuteMainThreadAction(std::function<void()>([func, data] { func(data); }), nonBlocking);
}

#include <gtest/gtest.h>

#include <atomic>
#include <deque>
#include <mutex>
#include <thread>

#include "OdError.h"
#include "OdMainThread.h"

namespace {

// Drains the queue on this (main) thread until `done` is set by the worker.
void pumpUntil(const std::atomic<bool>& done) {
    while (!done) {
        odRunPendingMainThreadActions();
        std::this_thread::yield();
    }
    odRunPendingMainThreadActions();
}

class MainThreadHandOver : public ::testing::Test {
protected:
    void SetUp() override {
        odSetMainThread();
        odSetMainThreadDispatcher(nullptr);
    }
    void TearDown() override {
        odSetMainThreadDispatcher(nullptr);
        odRunPendingMainThreadActions();
    }
};

}  // namespace

TEST_F(MainThreadHandOver, RunsAtOnceOnTheMainThread) {
    EXPECT_TRUE(odIsMainThread());
    int runs = 0;
    odExecuteMainThreadAction([](void* data) { ++*static_cast<int*>(data); }, &runs, true);
    odExecuteMainThreadAction(std::function<void()>([&runs] { ++runs; }), false);
    EXPECT_EQ(runs, 2);
    EXPECT_THROW(odExecuteMainThreadAction(std::function<void()>([] { throw OdError(eInvalidInput); }), true), OdError);
}

TEST_F(MainThreadHandOver, BlockingCallFromAWorkerWaitsForTheMainThread) {
    const std::thread::id mainId = std::this_thread::get_id();
    std::thread::id ranOn;
    std::atomic<bool> workerDone{false};
    bool ranBeforeReturn = false;
    std::thread worker([&] {
        EXPECT_FALSE(odIsMainThread());
        EXPECT_THROW(odRunPendingMainThreadActions(), OdError);
        bool ran = false;
        odExecuteMainThreadAction(std::function<void()>([&] {
                                      ranOn = std::this_thread::get_id();
                                      ran = true;
                                  }),
                                  false);
        ranBeforeReturn = ran;
        workerDone = true;
    });
    pumpUntil(workerDone);
    worker.join();
    EXPECT_EQ(ranOn, mainId);
    EXPECT_TRUE(ranBeforeReturn);
}

TEST_F(MainThreadHandOver, ExceptionReachesTheWaitingWorker) {
    std::atomic<bool> workerDone{false};
    OdResult caught = eOk;
    std::thread worker([&] {
        try {
            odExecuteMainThreadAction(std::function<void()>([] { throw OdError(eKeyNotFound); }), false);
        } catch (const OdError& e) {
            caught = e.code();
        }
        workerDone = true;
    });
    pumpUntil(workerDone);
    worker.join();
    EXPECT_EQ(caught, eKeyNotFound);
}

TEST_F(MainThreadHandOver, DispatcherReceivesWorkInOrderIncludingEarlierQueue) {
    std::mutex mutex;
    std::deque<std::function<void()>> hostLoop;  // stands for the host's event queue
    std::vector<int> order;

    // Queued before the host installed its dispatcher.
    std::thread early([&] { odExecuteMainThreadAction(std::function<void()>([&] { order.push_back(1); }), true); });
    early.join();
    odSetMainThreadDispatcher([&](std::function<void()> task) {
        std::lock_guard<std::mutex> lock(mutex);
        hostLoop.push_back(std::move(task));
    });

    std::atomic<bool> workerDone{false};
    std::thread worker([&] {
        odExecuteMainThreadAction(std::function<void()>([&] { order.push_back(2); }), true);
        odExecuteMainThreadAction(std::function<void()>([&] { throw OdError(eInvalidInput); }), true);
        odExecuteMainThreadAction(std::function<void()>([&] { order.push_back(3); }), false);
        workerDone = true;
    });
    while (!workerDone) {
        std::function<void()> task;
        {
            std::lock_guard<std::mutex> lock(mutex);
            if (!hostLoop.empty()) {
                task = std::move(hostLoop.front());
                hostLoop.pop_front();
            }
        }
        if (task) task();  // a non-blocking action's exception must not escape into the loop
        std::this_thread::yield();
    }
    worker.join();
    EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(odRunPendingMainThreadActions(), 0);
}

// Hand-over of work from worker threads to the user-interface thread.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "OdMainThread.h"
#include "Prompt.h"
#include "UiTestSupport.h"
#include "UtFile.h"

TEST(MainThread, WorkerActionRunsLaterOnTheMainThread) {
    ASSERT_TRUE(ut::isMainThread());
    std::atomic<bool> ran{false};
    std::atomic<bool> ranOnMain{false};
    std::atomic<bool> workerWasMain{true};
    std::thread worker([&] {
        workerWasMain = ut::isMainThread();
        odExecuteMainThreadAction([&] {
            ranOnMain = ut::isMainThread();
            ran = true;
        }, true);
    });
    worker.join();
    EXPECT_FALSE(ran) << "nothing runs until the event loop turns";
    EXPECT_TRUE(pumpUntil([&] { return ran.load(); }));
    EXPECT_TRUE(ranOnMain);
    EXPECT_FALSE(workerWasMain);
}

TEST(MainThread, BlockingHandOverWaitsForTheResult) {
    std::atomic<bool> workerDone{false};
    int value = 0;
    std::thread worker([&] {
        odExecuteMainThreadAction([&] { value = 42; }, false);
        workerDone = true;
    });
    EXPECT_TRUE(pumpUntil([&] { return workerDone.load(); }));
    worker.join();
    EXPECT_EQ(value, 42);
}

TEST(MainThread, PromptFromAWorkerReachesTheSinkOnTheMainThread) {
    ca::clearPromptLog();
    std::atomic<int> delivered{0};
    std::atomic<bool> onMain{false};
    ca::setPromptSink([&](const wxString&) {
        onMain = ut::isMainThread();
        ++delivered;
    });
    std::thread worker([] { ca::promptf(L"from worker %d", 7); });
    worker.join();
    EXPECT_EQ(ca::promptLog().size(), 1u) << "logged at once";
    EXPECT_TRUE(pumpUntil([&] { return delivered.load() == 1; }));
    EXPECT_TRUE(onMain);
    ca::setPromptSink({});
}

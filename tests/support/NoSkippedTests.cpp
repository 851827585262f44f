// Linked into every test program. A test never passes by not running: when a suite's or the
// program's set-up fails, gtest reports the tests behind it as skipped, which ctest counts as
// passed. Such a test is made a failure here. Listeners see the end of a test in reverse order,
// so this one runs before the printer, which then shows the test as failed.
#include <gtest/gtest.h>

namespace {

class SkippedTestFails : public ::testing::EmptyTestEventListener {
    void OnTestEnd(const ::testing::TestInfo& test) override {
        if (test.result()->Skipped())
            ADD_FAILURE() << "The test did not run: its set-up failed or it skipped itself.";
    }
};

const bool g_registered = [] {
    ::testing::UnitTest::GetInstance()->listeners().Append(new SkippedTestFails);
    return true;
}();

}  // namespace

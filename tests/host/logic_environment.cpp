// The host services run inside a wx application; the logic tests get a console one.
#include <gtest/gtest.h>

#include <wx/init.h>

#include "TestSupport.h"

namespace {

class WxBaseEnvironment : public ::testing::Environment {
public:
    void SetUp() override {
        ASSERT_TRUE(wxInitialize());
        useTemporarySettingsFolder();
    }
    void TearDown() override { wxUninitialize(); }
};

::testing::Environment* const g_wxBase = ::testing::AddGlobalTestEnvironment(new WxBaseEnvironment);

}  // namespace

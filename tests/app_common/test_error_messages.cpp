// The one text a user reads for any failure.
#include <stdexcept>

#include <gtest/gtest.h>

#include <OdError.h>

#include <vantlib/Exception.h>

#include "app/common/ErrorMessages.h"

TEST(ErrorMessages, EveryKindOfFailureHasItsText) {
    EXPECT_EQ(vl_app::errorText(vantlib::ObjectNotUnique()), "An object with that name already exists");
    EXPECT_EQ(vl_app::errorText(std::runtime_error("disk on fire")), "disk on fire");
    const OdError sdkError(eInvalidInput, OdString(L"Bad length"));
    EXPECT_TRUE(vl_app::errorText(sdkError).Contains("Bad length"));

    // Files that stop taking writes are told in the user's words, naming the file, and mark
    // the library read-only.
    const vantlib::FileReplaced replaced(OdString(L"/data/central.vlib"));
    EXPECT_TRUE(vl_app::errorText(replaced).StartsWith("The library file /data/central.vlib was deleted or replaced"));
    EXPECT_TRUE(vl_app::madeLibraryReadOnly(replaced));
    EXPECT_TRUE(vl_app::madeLibraryReadOnly(vantlib::WriteRefused(OdString(L"/x.vlib"), OdString(L"disk full"))));
    EXPECT_FALSE(vl_app::madeLibraryReadOnly(vantlib::ObjectNotUnique()));
}

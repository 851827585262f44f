// When the list commands of the two-list dialogs are enabled, without any window.
#include <gtest/gtest.h>

#include "app/common/BrowserRules.h"

using vl_app::BrowserState;
using vl_app::ListCommand;

namespace {

BrowserState state(vl_db::EDbType current, bool project, bool central, int selected) {
    BrowserState s;
    s.current = current;
    s.projectWritable = project;
    s.centralWritable = central;
    s.selected = selected;
    s.currentStored = selected > 0;
    return s;
}

}  // namespace

TEST(BrowserRules, NewGoesToTheCurrentLibraryOrFallsBackToTheProject) {
    EXPECT_EQ(vl_app::creationTarget(state(vl_db::kDbCentral, true, true, 1)), vl_db::kDbCentral);
    EXPECT_EQ(vl_app::creationTarget(state(vl_db::kDbCentral, true, false, 1)), vl_db::kDbProject);
    EXPECT_EQ(vl_app::creationTarget(state(vl_db::kDbNone, true, true, 0)), vl_db::kDbProject);
    EXPECT_TRUE(vl_app::isEnabled(ListCommand::kNew, state(vl_db::kDbCentral, true, false, 0)));
    EXPECT_FALSE(vl_app::isEnabled(ListCommand::kNew, state(vl_db::kDbCentral, false, false, 0)));
    EXPECT_FALSE(vl_app::isEnabled(ListCommand::kNewInCentral, state(vl_db::kDbProject, true, false, 0)));
}

TEST(BrowserRules, CommandsOnTheSelectionNeedOneAndAWritableLibrary) {
    for (const ListCommand command : {ListCommand::kDuplicate, ListCommand::kDelete, ListCommand::kDerive}) {
        EXPECT_FALSE(vl_app::isEnabled(command, state(vl_db::kDbProject, true, true, 0))) << int(command);
        EXPECT_TRUE(vl_app::isEnabled(command, state(vl_db::kDbProject, true, true, 2))) << int(command);
    }
    // A read-only central library: its rows can be neither deleted nor derived from, but a
    // duplicate lands in the project library.
    const BrowserState readOnlyCentral = state(vl_db::kDbCentral, true, false, 1);
    EXPECT_FALSE(vl_app::isEnabled(ListCommand::kDelete, readOnlyCentral));
    EXPECT_FALSE(vl_app::isEnabled(ListCommand::kDerive, readOnlyCentral));
    EXPECT_TRUE(vl_app::isEnabled(ListCommand::kDuplicate, readOnlyCentral));
}

TEST(BrowserRules, CopiesGoOnlyToTheOtherWritableLibrary) {
    EXPECT_TRUE(vl_app::isEnabled(ListCommand::kCopyToProject, state(vl_db::kDbCentral, true, false, 1)));
    EXPECT_FALSE(vl_app::isEnabled(ListCommand::kCopyToProject, state(vl_db::kDbProject, true, true, 1)));
    EXPECT_FALSE(vl_app::isEnabled(ListCommand::kCopyToProject, state(vl_db::kDbCentral, false, true, 1)));
    EXPECT_TRUE(vl_app::isEnabled(ListCommand::kCopyToCentral, state(vl_db::kDbProject, false, true, 1)));
    EXPECT_FALSE(vl_app::isEnabled(ListCommand::kCopyToCentral, state(vl_db::kDbProject, true, false, 1)));
    EXPECT_FALSE(vl_app::isEnabled(ListCommand::kCopyToCentral, state(vl_db::kDbProject, true, true, 0)));
}

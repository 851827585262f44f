// Rules of the materials dialog that need no window.
#include <set>

#include <gtest/gtest.h>

#include "app/materials/MaterialEditRules.h"

namespace {

using namespace vl_app;

TEST(MaterialRules, NameStatusComparesWithTheLoadedNameExactly) {
    EXPECT_EQ(nameStatus("", "Brick", false), 1u);
    EXPECT_EQ(nameStatus("Stone", "Brick", true), 2u);
    // Typing the loaded name back is valid although the library holds it.
    EXPECT_EQ(nameStatus("Brick", "Brick", true), 0u);
    // Another letter case is another name for this rule.
    EXPECT_EQ(nameStatus("brick", "Brick", true), 2u);
    EXPECT_EQ(nameStatus("Stone", "Brick", false), 0u);
}

TEST(MaterialRules, ClassStatusAndStatusTexts) {
    EXPECT_EQ(classStatus("", false), 3u);
    EXPECT_EQ(classStatus("Masonry", false), 4u);
    EXPECT_EQ(classStatus("Masonry", true), 0u);
    EXPECT_TRUE(statusText(0, "").empty());
    EXPECT_EQ(statusText(1, ""), "Please enter a name");
    EXPECT_EQ(statusText(4, "Glass"), "Class 'Glass' does not exist in the library");
}

TEST(MaterialRules, UniqueNamesSkipOneAndStripNumerals) {
    std::set<wxString> used;
    const auto isUsed = [&](const wxString& name) { return used.count(name) != 0; };
    EXPECT_EQ(uniqueName("New", isUsed), "New");
    used = {"New"};
    EXPECT_EQ(uniqueName("New", isUsed), "New-2");
    used = {"New", "New-2"};
    EXPECT_EQ(uniqueName("New", isUsed), "New-3");
    used = {"Brick-2", "Brick-3"};
    EXPECT_EQ(uniqueName("Brick-2", isUsed), "Brick-4");
    used = {"Brick_2"};
    EXPECT_EQ(uniqueName("Brick_2", isUsed), "Brick_2-2");
}

TEST(MaterialRules, RemovalMessagesNameTheKeptMaterials) {
    EXPECT_TRUE(removalMessage({}).empty());
    EXPECT_EQ(removalMessage({"Brick"}),
              "Couldn't remove material 'Brick'.\nIt is referenced in one or more compositions.");
    EXPECT_EQ(removalMessage({"Brick", "Stone"}),
              "Some materials couldn't be removed.\nThese are referenced in one or more compositions:"
              "\n    Brick\n    Stone");
}

}  // namespace

// SPDX-License-Identifier: MIT
#include "ui/Menu.h"

#include <gtest/gtest.h>

namespace dorvanel::test {
namespace {

using ui::Menu;
using ui::MenuItem;

TEST(MenuTest, AnItemIsFoundByItsExactTitle) {
    Menu menu;
    menu.addItemWithTitle("File", {}, "");
    menu.addItemWithTitle("Profiles", {}, "p");
    EXPECT_EQ(menu.indexOfItemWithTitle("Profiles"), 1);
    EXPECT_EQ(menu.itemAtIndex(1).keyEquivalent(), "p");
    EXPECT_EQ(menu.indexOfItemWithTitle("profiles"), -1);
}

TEST(MenuTest, ASeparatorHasNoTitleToBeFoundBy) {
    Menu menu;
    EXPECT_TRUE(menu.addSeparatorItem().isSeparatorItem());
    EXPECT_EQ(menu.indexOfItemWithTitle(""), -1);
}

TEST(MenuTest, AutomaticEnablingDimsWhatCanDoNothing) {
    Menu menu;
    MenuItem& heading = menu.addItemWithTitle("Heading", {}, "");
    MenuItem& command = menu.addItemWithTitle(
        "Command", [](MenuItem&) {}, "");
    MenuItem& folder = menu.addItemWithTitle("More", {}, "");
    folder.makeSubmenu();
    EXPECT_FALSE(heading.isEnabled());
    EXPECT_TRUE(command.isEnabled());
    EXPECT_TRUE(folder.isEnabled());
    folder.setEnabled(false);
    EXPECT_FALSE(folder.isEnabled());
    menu.setAutoenablesItems(false);
    EXPECT_TRUE(heading.isEnabled());
}

TEST(MenuTest, AClickSendsTheActionWithItsItemUnlessDimmed) {
    Menu menu;
    int clicks = 0;
    MenuItem& item = menu.addItemWithTitle(
        "Tick",
        [&](MenuItem& clicked) {
            clicked.setState(!clicked.state());
            ++clicks;
        },
        "");
    item.performAction();
    EXPECT_TRUE(item.state());
    item.setEnabled(false);
    item.performAction();
    EXPECT_EQ(clicks, 1);
}

TEST(MenuTest, AnItemStaysWhereItIsWhenOthersAreAdded) {
    Menu menu;
    MenuItem& first = menu.addItemWithTitle("first", {}, "");
    for (int i = 0; i < 100; ++i) menu.addSeparatorItem();
    EXPECT_EQ(&menu.itemAtIndex(0), &first);
}

}  // namespace
}  // namespace dorvanel::test

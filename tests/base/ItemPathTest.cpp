// SPDX-License-Identifier: MIT
#include "base/PathComponents.h"

#include <gtest/gtest.h>

namespace dorvanel::test {
namespace {

struct Case {
    const char* path;
    const char* folder;
    const char* name;
};

TEST(ItemPathTest, IsTheFolderAndTheLastComponent) {
    const Case cases[] = {
        {"/a/b", "/a", "b"},
        {"/a", "/", "a"},
        {"/a/b/", "/a", "b"},
        {"/a/b///", "/a", "b"},
        {"/a//b", "/a", "b"},
        {"/a/b/.", "/a", "b"},
        {"/a/b/././", "/a", "b"},
        {"//a", "/", "a"},
        {"/a/.b", "/a", ".b"},
        {"/a/b.", "/a", "b."},
        {"/a/...", "/a", "..."},
        {"a", ".", "a"},
        {"a/", ".", "a"},
        {"a/b", "a", "b"},
        {"/a/-b", "/a", "-b"},
        {"/a/ ", "/a", " "},
        {"/a/\xFF\n", "/a", "\xFF\n"},
        {"/a/./b", "/a/.", "b"},
        {"/a/b/../c", "/a/b/..", "c"},
    };
    for (const Case& each : cases) {
        const ItemPath item(each.path);
        EXPECT_EQ(item.folder, each.folder) << each.path;
        EXPECT_EQ(item.name, each.name) << each.path;
    }
}

TEST(ItemPathTest, TheRootHasNoNameOfItsOwn) {
    for (const char* path : {"/", "//", "/."}) {
        EXPECT_EQ(ItemPath(path).folder, "/") << path;
        EXPECT_EQ(ItemPath(path).name, "") << path;
    }
}

}  // namespace
}  // namespace dorvanel::test

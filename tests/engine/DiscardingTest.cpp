// SPDX-License-Identifier: MIT
#include "engine/Discarding.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <map>

namespace dorvanel::test {
namespace {

using platform::FileSystemPlace;
using platform::FreeSpace;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// File systems as a test sets them, by folder.
class FakeFreeSpace final : public FreeSpace {
  public:
    [[nodiscard]] Result<FileSystemPlace> placeOf(const std::string& folder) override {
        const auto found = places.find(folder);
        if (found == places.end()) return Error{ENOENT, "look at", folder, {}};
        return found->second;
    }
    Discarded discard(const std::string& folder) override {
        discarded.push_back(folder);
        return answers[folder];
    }

    std::map<std::string, FileSystemPlace> places;
    std::map<std::string, Discarded> answers;
    std::vector<std::string> discarded;
};

std::string plainly(const std::string& path) {
    return path;
}

class DiscardingTest : public ::testing::Test {
  protected:
    DiscardingTest() {
        space.places = {{"/", {"/", "8:1"}},
                        {"/disk", {"/disk", "0:40"}},
                        {"/disk/volume", {"/disk/volume", "0:40"}},
                        {"/stick", {"/stick", "8:17"}}};
    }
    FakeFreeSpace space;
    Discarding discarding{space};
};

TEST_F(DiscardingTest, EachFileSystemOfTheItemsComesOnce) {
    for (const char* path : {"/disk/a", "/disk/b", "/disk/volume/c", "/stick/d", "/disk/e"}) {
        discarding.addItem(path);
    }
    EXPECT_THAT(discarding.discard(), SizeIs(2));
    EXPECT_THAT(space.discarded, ElementsAre("/disk", "/stick"));
}

TEST_F(DiscardingTest, TheFileSystemsOfLinkTargetsComeToo) {
    PlanItem item{.path = "/disk/item"};
    item.notes.push_back(
        {.kind = PlanNote::Kind::link, .path = "/disk/item/link", .target = "/stick/target"});
    discarding.add(Plan{{item}, {}});
    (void)discarding.discard();
    EXPECT_THAT(space.discarded, ElementsAre("/disk", "/stick"));
}

TEST_F(DiscardingTest, WhereTheFolderHasGoneTheOneAboveTells) {
    discarding.addItem("/stick/gone/away/item");
    (void)discarding.discard();
    EXPECT_THAT(space.discarded, ElementsAre("/stick"));
}

TEST_F(DiscardingTest, NothingIsDiscardedWithoutItems) {
    EXPECT_THAT(discarding.discard(), IsEmpty());
    EXPECT_THAT(space.discarded, IsEmpty());
}

TEST_F(DiscardingTest, WhatCameOfItIsSaid) {
    const auto line = [](FreeSpace::Answer answer, int code) {
        return DiscardedSpace{"/mnt/x", {answer, 0, code}}.line(plainly);
    };
    EXPECT_EQ(line(FreeSpace::Answer::discarded, 0), "discarded the free space of /mnt/x");
    EXPECT_EQ(line(FreeSpace::Answer::notPermitted, EPERM),
              "the free space of /mnt/x was not discarded: not permitted; as root: fstrim /mnt/x");
    EXPECT_EQ(line(FreeSpace::Answer::notSupported, EOPNOTSUPP),
              "the free space of /mnt/x was not discarded: the medium or its file system does not "
              "support it");
    EXPECT_EQ(line(FreeSpace::Answer::failed, EIO),
              "the free space of /mnt/x was not discarded: Input/output error");
}

}  // namespace
}  // namespace dorvanel::test

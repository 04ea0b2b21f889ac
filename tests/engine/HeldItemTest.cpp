// SPDX-License-Identifier: MIT
#include "engine/HeldItem.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "support/Disk.h"
#include "support/EngineFixture.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// A machine that gives out few descriptors.
class FewDescriptors final : public ForwardingSystemCalls {
  public:
    using ForwardingSystemCalls::ForwardingSystemCalls;
    int descriptorLimit() override { return 40; }
};

/// A file system that numbers its files anew from time to time.
class NewNumbers final : public ForwardingSystemCalls {
  public:
    using ForwardingSystemCalls::ForwardingSystemCalls;
    int status(int descriptor, platform::FileStatus& status) override {
        return numbered(inner_.status(descriptor, status), status);
    }
    int statusAt(int folder, const char* name, Links links, platform::FileStatus& status) override {
        return numbered(inner_.statusAt(folder, name, links, status), status);
    }
    int makeFolder(int folder, const char* name, std::uint32_t permissions) override {
        ++shift_;
        return inner_.makeFolder(folder, name, permissions);
    }

  private:
    int numbered(int result, platform::FileStatus& status) const {
        status.inode += shift_ << 40;
        return result;
    }
    std::uint64_t shift_ = 0;
};

/// Items between the look at them and their turn.
class HeldItemTest : public EngineFixture {
  protected:
    void SetUp() override {
        writeFile(folder / "parent/tree/a", "the user's");
        writeFile(folder / "parent/file", "the user's");
        writeFile(folder / "victims/tree/a", "not in the item");
        writeFile(folder / "victims/file", "not in the item");
        writeFile(folder / "replacement", "not in the item");
    }
    std::vector<HeldItem> held() {
        return holdAll(*real, {folder / "parent/tree", folder / "parent/file"});
    }
    const Outcome& shredHeld(std::vector<HeldItem> items) {
        access.shredItems(items);
        EXPECT_THAT(items, IsEmpty());
        return access.outcome();
    }
    void swapParent() const {
        fs::rename(folder / "parent", folder / "moved away");
        fs::create_symlink(folder / "victims", folder / "parent");
    }
    void expectVictimsUnharmed() const {
        EXPECT_EQ(readFile(folder / "victims/tree/a"), "not in the item");
        EXPECT_EQ(readFile(folder / "victims/file"), "not in the item");
    }
};

TEST_F(HeldItemTest, ItKnowsItsPlaceAndWhatItIs) {
    const HeldItem item = hold(*real, (folder / "parent/tree") + "/./");
    EXPECT_EQ(item.code, 0);
    EXPECT_EQ(item.folder, folder / "parent");
    EXPECT_EQ(item.name, "tree");
    EXPECT_EQ(item.status.kind, platform::EntryKind::folder);
    EXPECT_NE(item.item, nullptr);
    EXPECT_NE(item.parent, nullptr);
    EXPECT_NE(item.status.mount, 0U);
    EXPECT_FALSE(item.status.isBeyondMountOf(item.parentStatus));
}

TEST_F(HeldItemTest, OneThatIsNotThereSaysSo) {
    EXPECT_EQ(hold(*real, folder / "nothing").code, ENOENT);
    EXPECT_EQ(hold(*real, folder / "nothing/below").code, ENOENT);
    EXPECT_EQ(hold(*real, "").code, ENOENT);
    EXPECT_FALSE(hold(*real, folder / "nothing").isThere());
    fs::create_symlink("nowhere", folder / "link");
    const HeldItem link = hold(*real, folder / "link");
    EXPECT_EQ(link.code, ENOENT);
    EXPECT_TRUE(link.isThere());
}

TEST_F(HeldItemTest, ItsDescriptorsAreSharedAndClosed) {
    const std::size_t open = openDescriptors();
    {
        const std::vector<HeldItem> items = held();
        EXPECT_EQ(openDescriptors(), open + 3);
        EXPECT_EQ(items[0].parent, items[1].parent);
    }
    EXPECT_EQ(openDescriptors(), open);
}

TEST_F(HeldItemTest, AParentSwappedSinceThenIsNotEntered) {
    std::vector<HeldItem> items = held();
    swapParent();
    const Outcome& outcome = shredHeld(std::move(items));
    expectVictimsUnharmed();
    EXPECT_EQ(outcome.filesOverwritten, 2U) << "what was looked at is shredded";
    EXPECT_THAT(namesIn(folder / "moved away"), IsEmpty());
}

TEST_F(HeldItemTest, BeyondTheDescriptorsASwappedParentIsSeen) {
    FewDescriptors few(*real);
    std::vector<std::string> paths;
    for (int i = 0; i < 20; ++i) {
        paths.push_back(folder.path() / ("parent" + std::to_string(i)) / "file");
        writeFile(paths.back(), "x");
    }
    paths.push_back(folder / "parent/file");
    std::vector<HeldItem> items = holdAll(few, paths);
    EXPECT_NE(items.front().item, nullptr);
    EXPECT_EQ(items.back().item, nullptr);
    EXPECT_EQ(items.back().parent, nullptr);
    swapParent();
    const Outcome& outcome = shredHeld(std::move(items));
    expectVictimsUnharmed();
    EXPECT_EQ(outcome.filesOverwritten, 20U);
    EXPECT_EQ(outcome.notRemoved, 1U);
    EXPECT_EQ(outcome.troubles.at(0).code, ESTALE);
}

TEST_F(HeldItemTest, AnItemSwappedSinceThenStaysAsItIsAndIsTold) {
    std::vector<HeldItem> items = held();
    fs::rename(folder / "parent/tree", folder / "aside");
    fs::rename(folder / "victims/tree", folder / "parent/tree");
    fs::remove(folder / "parent/file");
    fs::rename(folder / "replacement", folder / "parent/file");
    const Outcome& outcome = shredHeld(std::move(items));
    EXPECT_EQ(readFile(folder / "parent/tree/a"), "not in the item");
    EXPECT_EQ(readFile(folder / "parent/file"), "not in the item");
    EXPECT_EQ(readFile(folder / "aside/a"), "the user's") << "it is not looked for";
    EXPECT_EQ(outcome.notRemoved, 2U);
    ASSERT_THAT(outcome.troubles, SizeIs(2));
    EXPECT_EQ(outcome.troubles[0].path, folder / "parent/tree");
    EXPECT_EQ(outcome.troubles[1].path, folder / "parent/file");
    EXPECT_EQ(outcome.troubles[0].code, ESTALE);
}

TEST_F(HeldItemTest, WhereFilesAreNumberedAnewTheItemIsStillKnown) {
    NewNumbers numbers(*real);
    FileAccess engine({numbers, clock, draws}, preferences, shreddingProgress, fileName);
    std::vector<HeldItem> items =
        holdAll(numbers, {folder / "parent/tree", folder / "parent/file"});
    engine.shredItems(items);
    EXPECT_EQ(engine.outcome().filesOverwritten, 2U);
    EXPECT_THAT(engine.outcome().troubles, IsEmpty());
    EXPECT_THAT(namesIn(folder / "parent"), IsEmpty());
}

TEST_F(HeldItemTest, WhatIsProtectedOrHoldsItIsLeftWhole) {
    const HeldItem userHome = hold(*real, folder / "parent/tree");
    access.protect({Identity::of(userHome.status), Identity::of(userHome.parentStatus)});
    for (const char* item : {"parent", "parent/tree"}) {
        const Outcome& outcome = shred({folder / item});
        EXPECT_EQ(outcome.notRemoved, 1U);
        EXPECT_EQ(outcome.troubles.at(0).reason, "is the home folder or a folder above it");
    }
    access.protect({Identity::of(userHome.status)});
    const Outcome& outcome = shred({folder / "parent", folder / "victims"});
    EXPECT_EQ(readFile(folder / "parent/tree/a"), "the user's");
    EXPECT_EQ(readFile(folder / "parent/file"), "the user's");
    EXPECT_FALSE(fs::exists(folder / "victims"));
    EXPECT_EQ(outcome.notRemoved, 1U);
    EXPECT_EQ(outcome.troubles.at(0).reason,
              "holds the home folder \"" + (folder / "parent/tree") + "\"");
}

}  // namespace
}  // namespace dorvanel::test

// SPDX-License-Identifier: MIT
#include "engine/plan/ItemPlanner.h"

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "support/Disk.h"
#include "support/FakeMedium.h"
#include "support/FakeOpenFiles.h"
#include "support/MountNamespace.h"
#include "support/OnlyLookingSystemCalls.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;
using Kind = PlanNote::Kind;
using Links = platform::SystemCalls::Links;
using Reason = PlanSkip::Reason;

/// A planner on the real disk that fails the test where it changes anything.
struct Planning {
    Plan plan(const std::vector<std::string>& paths, Links links = Links::follow) {
        return planOf(holdAll(system, paths, links),
                      {system, &medium, &openFiles, nullptr, spared, stop});
    }
    PlanItem planOne(const std::string& path, Links links = Links::follow) {
        const Plan made = plan({path}, links);
        EXPECT_THAT(made.items, SizeIs(1));
        return made.items.empty() ? PlanItem{} : made.items.front();
    }
    Identity identityOf(const std::string& path) {
        platform::FileStatus status;
        EXPECT_EQ(system.statusAt(platform::SystemCalls::workingFolder, path.c_str(), Links::stay,
                                  status),
                  0);
        return Identity::of(status);
    }

    std::unique_ptr<platform::SystemCalls> real = platform::makeSystemCalls();
    OnlyLookingSystemCalls system{*real};
    FakeMedium medium;
    FakeOpenFiles openFiles;
    std::vector<Identity> spared;
    std::function<bool()> stop;
};

class ItemPlannerTest : public ::testing::Test, public Planning {
  protected:
    TemporaryFolder folder{quickPlace()};
};

TEST_F(ItemPlannerTest, CountsFilesFoldersAndBytesTheItemWithThem) {
    writeFile(folder / "item/a", std::string(10, 'a'));
    writeFile(folder / "item/sub/b", std::string(200, 'b'));
    writeFile(folder / "item/sub/empty");
    ::mkfifo((folder / "item/fifo").c_str(), 0600);
    fs::create_symlink("nowhere", folder / "item/link");
    const PlanItem item = planOne(folder / "item");
    EXPECT_EQ(item.path, folder / "item");
    EXPECT_EQ(item.files, 5U);
    EXPECT_EQ(item.folders, 2U);
    EXPECT_EQ(item.bytes, 210U);
    EXPECT_THAT(item.notes, IsEmpty());
    const PlanItem file = planOne(folder / "item/a");
    EXPECT_EQ(file.files, 1U);
    EXPECT_EQ(file.folders, 0U);
    EXPECT_EQ(file.bytes, 10U);
}

TEST_F(ItemPlannerTest, WhatIsNotThereIsInNoListAndALinkToNothingIsPassedOver) {
    fs::create_symlink("nowhere", folder / "dangling");
    const Plan followed = plan({folder / "none", folder / "dangling"});
    EXPECT_THAT(followed.items, IsEmpty());
    ASSERT_THAT(followed.skipped, SizeIs(1));
    EXPECT_EQ(followed.skipped[0].path, folder / "dangling");
    EXPECT_EQ(followed.skipped[0].reason, Reason::unreadable);
    EXPECT_EQ(followed.skipped[0].detail, "is a symbolic link that leads nowhere");
    const PlanItem stays = planOne(folder / "dangling", Links::stay);
    EXPECT_EQ(stays.files, 1U);
}

TEST_F(ItemPlannerTest, ALinkIsNotedWithTheTargetThatWouldBeOverwritten) {
    writeFile(folder / "target", std::string(100, 't'));
    fs::create_symlink(folder / "target", folder / "way");
    fs::create_directory(folder / "item");
    fs::create_symlink(folder / "way", folder / "item/one");
    fs::create_symlink(folder / "target", folder / "item/two");
    const PlanItem item = planOne(folder / "item");
    EXPECT_EQ(item.files, 2U);
    EXPECT_EQ(item.bytes, 200U) << "each link has it overwritten";
    const auto link = [&](const std::string& name) {
        return AllOf(Field(&PlanNote::kind, Kind::link),
                     Field(&PlanNote::path, folder / ("item/" + name)),
                     Field(&PlanNote::target, folder / "target"));
    };
    EXPECT_THAT(item.notes, UnorderedElementsAre(link("one"), link("two")));
    const PlanItem stays = planOne(folder / "item", Links::stay);
    EXPECT_EQ(stays.files, 2U);
    EXPECT_EQ(stays.bytes, 0U);
    EXPECT_THAT(stays.notes, IsEmpty());
}

TEST_F(ItemPlannerTest, ALinkIntoWhatHasGoneByThenLeadsNowhere) {
    writeFile(folder / "first/file", "12345");
    fs::create_directory(folder / "second");
    fs::create_symlink(folder / "first/file", folder / "second/link");
    EXPECT_EQ(plan({folder / "first", folder / "second"}).items.at(1).bytes, 0U);
    EXPECT_EQ(plan({folder / "second", folder / "first"}).items.at(0).bytes, 5U);
}

TEST_F(ItemPlannerTest, AnItemInAnEarlierOneGoesWithIt) {
    writeFile(folder / "item/sub/file", "12345");
    writeFile(folder / "item/other", "1");
    fs::create_directory_symlink(folder / "item", folder / "detour");
    const Plan outerFirst =
        plan({folder / "item", folder / "item/sub", folder / "item", folder / "detour/sub/file"});
    EXPECT_THAT(outerFirst.items, ElementsAre(Field(&PlanItem::bytes, 6U)));
    const Plan innerFirst = plan({folder / "item/sub", folder / "item"});
    EXPECT_THAT(innerFirst.items,
                ElementsAre(Field(&PlanItem::bytes, 5U), Field(&PlanItem::bytes, 1U)));
    EXPECT_THAT(innerFirst.items,
                ElementsAre(Field(&PlanItem::folders, 1U), Field(&PlanItem::folders, 1U)));
}

TEST_F(ItemPlannerTest, AFileWithSeveralNamesIsNotedOnceWithThoseInTheItem) {
    writeFile(folder / "item/one", std::string(100, 'x'));
    hardLink(folder / "item/one", folder / "item/two");
    hardLink(folder / "item/one", folder / "outside");
    const PlanItem item = planOne(folder / "item");
    EXPECT_EQ(item.files, 2U);
    EXPECT_EQ(item.bytes, 200U);
    ASSERT_THAT(item.notes, SizeIs(1));
    const PlanNote& note = item.notes.front();
    EXPECT_EQ(note.kind, Kind::hardLink);
    EXPECT_EQ(note.links, 3U);
    EXPECT_EQ(note.path, note.names.at(0));
    EXPECT_THAT(note.names, UnorderedElementsAre(folder / "item/one", folder / "item/two"));
}

TEST_F(ItemPlannerTest, AnOpenFileIsNotedWithWhoHasItOpen) {
    writeFile(folder / "item/open", "x");
    writeFile(folder / "item/shut", "x");
    const Identity file = identityOf(folder / "item/open");
    openFiles.holders[{file.device, file.inode}] = "reader (17)";
    const PlanItem item = planOne(folder / "item");
    EXPECT_THAT(item.notes, ElementsAre(AllOf(Field(&PlanNote::kind, Kind::open),
                                              Field(&PlanNote::path, folder / "item/open"),
                                              Field(&PlanNote::detail, "reader (17)"))));
    EXPECT_EQ(openFiles.looked, 1) << "once for a plan";
}

TEST_F(ItemPlannerTest, AMediumThatMayKeepTheOldContentsIsNotedForTheItem) {
    writeFile(folder / "item/file", "x");
    medium.media[folder / "item"] = {platform::Medium::Kind::copyOnWrite, "btrfs"};
    const PlanItem item = planOne(folder / "item");
    EXPECT_THAT(item.notes,
                ElementsAre(AllOf(Field(&PlanNote::kind, Kind::medium),
                                  Field(&PlanNote::path, folder / "item"),
                                  Field(&PlanNote::detail, "btrfs writes to other blocks"))));
}

TEST_F(ItemPlannerTest, TheHomeFolderAndWhatHoldsItArePassedOver) {
    writeFile(folder / "users/home/file", "x");
    writeFile(folder / "after", "x");
    spared = {identityOf(folder / "users/home")};
    const Plan made = plan({folder / "users/home", folder / "users", folder / "after"});
    ASSERT_THAT(made.skipped, SizeIs(2));
    EXPECT_EQ(made.skipped[0].detail, "is the home folder or a folder above it");
    EXPECT_EQ(made.skipped[1].detail, "holds the home folder \"" + (folder / "users/home") + "\"");
    EXPECT_THAT(made.items, ElementsAre(Field(&PlanItem::path, folder / "after")));
}

TEST_F(ItemPlannerTest, WhatHoldsAMountPointOrIsOneIsPassedOver) {
    const auto said = inMountNamespace([&]() -> std::string {
        if (!mountTmpfs(folder / "item/disk")) return "not mounted";
        writeFile(folder / "item/disk/file", "x");
        writeFile(folder / "after", "x");
        const Plan made = plan({folder / "item/disk", folder / "item", folder / "after"});
        if (made.skipped.size() != 2 || made.items.size() != 1) return "lists";
        if (made.skipped[0].reason != Reason::mount) return "reason of the mount point";
        if (made.skipped[1].reason != Reason::mount) return "reason of what holds it";
        if (made.skipped[0].detail != "is a mount point") return made.skipped[0].detail;
        const std::string held = "holds the mount point \"" + (folder / "item/disk") + "\"";
        return made.skipped[1].detail == held ? "" : made.skipped[1].detail;
    });
    if (!said) return sayNotRun("no mount namespace");
    if (*said == "not mounted") return sayNotRun("nothing can be mounted");
    EXPECT_EQ(*said, "");
}

TEST_F(ItemPlannerTest, WhatCannotBeLookedIntoWithoutTouchingItIsNoted) {
    setMode(folder.path(), 0777);
    const std::string said = asOrdinaryUser([&]() -> std::string {
        writeFile(folder / "item/shut/file", "12345");
        writeFile(folder / "item/none", "123");
        setMode(folder / "item/shut", 0);
        setMode(folder / "item/none", 0);
        const PlanItem item = planOne(folder / "item");
        if (modeOf(folder / "item/shut") != 0) return "a mode was changed";
        setMode(folder / "item/shut", 0700);
        if (item.files != 1 || item.folders != 2 || item.bytes != 3) return "counts";
        if (item.notes.size() != 1) return "notes";
        if (item.notes[0].kind != Kind::unreadable) return "kind";
        if (item.notes[0].path != folder / "item/shut") return item.notes[0].path;
        return item.notes[0].detail == "cannot be looked into: Permission denied"
                   ? ""
                   : item.notes[0].detail;
    });
    EXPECT_EQ(said, "");
}

TEST_F(ItemPlannerTest, AnothersFileThatMayNotBeWrittenIsNotedAndNotCountedAsOverwritten) {
    if (!isRoot()) return sayNotRun("only root can give a file to another user");
    setMode(folder.path(), 0777);
    fs::create_directory(folder / "item");
    setMode(folder / "item", 0777);
    writeFile(folder / "item/roots", "12345");
    writeFile(folder / "item/free", "12");
    setMode(folder / "item/free", 0666);
    const std::string said = asOrdinaryUser([&]() -> std::string {
        const PlanItem item = planOne(folder / "item");
        if (item.files != 2 || item.bytes != 2) return "counts";
        if (item.notes.size() != 1) return "notes";
        if (item.notes[0].path != folder / "item/roots") return item.notes[0].path;
        return item.notes[0].detail == "cannot be overwritten: Permission denied"
                   ? ""
                   : item.notes[0].detail;
    });
    EXPECT_EQ(said, "");
}

TEST_F(ItemPlannerTest, EachFileIsLookedAtOnce) {
    for (int i = 0; i < 1000; ++i) writeFile(folder / ("item/" + std::to_string(i)), "x");
    const std::vector<HeldItem> held = holdAll(system, {folder / "item"});
    system.looks = 0;
    planOf(held, {system, &medium, &openFiles});
    EXPECT_EQ(system.looks, 1000U);
}

TEST_F(ItemPlannerTest, TooManyNotesAreCounted) {
    fs::create_directory(folder / "item");
    writeFile(folder / "target", "x");
    const std::size_t links = Plan::mostNotes + 5;
    for (std::size_t i = 0; i < links; ++i) {
        fs::create_symlink(folder / "target", folder / ("item/" + std::to_string(i)));
    }
    const PlanItem item = planOne(folder / "item");
    EXPECT_THAT(item.notes, SizeIs(Plan::mostNotes));
    EXPECT_EQ(item.moreNotes, 5U);
    EXPECT_EQ(item.bytes, links);
}

TEST_F(ItemPlannerTest, AStopLeavesOutWhatWasNotLookedAtWholly) {
    writeFile(folder / "first", "x");
    for (int i = 0; i < 1000; ++i) writeFile(folder / ("second/" + std::to_string(i)), "x");
    int asked = 0;
    const std::vector<HeldItem> held = holdAll(system, {folder / "first", folder / "second"});
    ItemPlanner planner({.system = system, .stop = [&] { return ++asked > 3; }});
    Plan made;
    EXPECT_FALSE(planner.add(held, made));
    EXPECT_THAT(made.items, ElementsAre(Field(&PlanItem::path, folder / "first")));
}

TEST_F(ItemPlannerTest, AnItemBearsWhomItBelongsTo) {
    writeFile(folder / "first", "x");
    writeFile(folder / "second", "x");
    fs::create_symlink("nowhere", folder / "third");
    const std::vector<HeldItem> held =
        holdAll(system, {folder / "first", folder / "none", folder / "second", folder / "third"});
    ItemPlanner planner({.system = system});
    Plan made;
    EXPECT_TRUE(planner.add(held, made, [](std::size_t item) {
        return ItemPlanner::Origin{"App " + std::to_string(item), "cache", "default"};
    }));
    EXPECT_THAT(made.items, ElementsAre(Field(&PlanItem::application, "App 0"),
                                        Field(&PlanItem::application, "App 2")));
    EXPECT_EQ(made.items[1].trace, "cache");
    EXPECT_EQ(made.items[1].profile, "default");
    EXPECT_THAT(made.skipped, ElementsAre(Field(&PlanSkip::application, "App 3")));
}

std::size_t peakKilobytes() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::size_t>(usage.ru_maxrss);
}

TEST_F(ItemPlannerTest, ALargeTreeTakesNoMemoryForEachOfItsFiles) {
    if (isSanitized()) return sayNotRun("a sanitizer's own memory would be measured");
    const TemporaryFolder place(quickPlace());
    constexpr int folders = 200;
    constexpr int files = 1000;
    for (int i = 0; i < folders; ++i) {
        const std::string inner = place / ("item/" + std::to_string(i));
        fs::create_directories(inner);
        for (int j = 0; j < files; ++j) {
            ::mknod((inner + "/file of the tree " + std::to_string(j)).c_str(), S_IFREG | 0600, 0);
        }
    }
    const std::string said = inChild([&]() -> std::string {
        planOne(place / "item/0");  // what any plan needs
        const std::size_t before = peakKilobytes();
        const PlanItem item = planOne(place / "item");
        const std::size_t grown = peakKilobytes() - before;
        if (item.files != folders * files) return "not all files";
        // Sixteen bytes for each file would be 3 MiB.
        return grown <= 2048 ? "" : std::to_string(grown) + " KiB";
    });
    EXPECT_EQ(said, "");
}

}  // namespace
}  // namespace dorvanel::test

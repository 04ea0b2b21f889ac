// SPDX-License-Identifier: MIT
#include "targets/traces/FoundTraces.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

#include "support/EnvironmentVariable.h"
#include "support/ForwardingSystemCalls.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::traces {
namespace {

namespace fs = std::filesystem;

using test::EnvironmentVariable;
using test::TemporaryFolder;
using test::TemporaryHome;
using test::writeFile;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;
using List = catalogue::Profiles::List;

/// An application that is described by the test, in a home of the test's own.
class FoundTracesTest : public ::testing::Test {
  protected:
    FoundTracesTest() {
        entry.id = "lynx";
        entry.installs = {
            {"native", {{"config", "$XDG_CONFIG_HOME/lynx"}, {"cache", "$XDG_CACHE_HOME/lynx"}}}};
        entry.traces = {{.kind = "cache"}};
    }

    void profiles(List list, const std::string& pattern = {}) {
        entry.profiles = {list, pattern, "{config}"};
    }
    void shred(const std::vector<std::string>& patterns) { entry.traces[0].shred = patterns; }

    FoundTraces found() { return findTraces(entry, *system); }
    std::vector<std::string> paths() {
        std::vector<std::string> below;
        result = found();
        for (const TraceItem& item : result.items) below.push_back(belowHome(item.path));
        return below;
    }
    std::vector<std::string> obstacles() {
        std::vector<std::string> told;
        for (const Obstacle& obstacle : found().obstacles) {
            told.push_back(belowHome(obstacle.path) + ": " + obstacle.reason);
        }
        return told;
    }
    std::string belowHome(const std::string& path) const {
        const std::string start = home.path().native() + "/";
        return path.starts_with(start) ? path.substr(start.size()) : path;
    }

    TemporaryHome home;
    EnvironmentVariable config{"XDG_CONFIG_HOME", ""};
    EnvironmentVariable cache{"XDG_CACHE_HOME", ""};
    catalogue::Entry entry;
    FoundTraces result;
    std::unique_ptr<platform::SystemCalls> real = platform::makeSystemCalls();
    std::unique_ptr<platform::SystemCalls> system =
        std::make_unique<test::ForwardingSystemCalls>(*real);
};

TEST_F(FoundTracesTest, NothingIsFoundOfAnApplicationThatIsNotThere) {
    shred({"{config}/*"});
    EXPECT_THAT(paths(), IsEmpty());
    EXPECT_FALSE(result.isInstalled);
    EXPECT_THAT(obstacles(), IsEmpty());
}

TEST_F(FoundTracesTest, WhatPatternsDescribeIsFoundByNameEachOnce) {
    writeFile(home / ".config/lynx/visited-2.db");
    writeFile(home / ".config/lynx/visited-1.db");
    writeFile(home / ".config/lynx/settings");
    writeFile(home / ".cache/lynx/a/b");
    shred({"{config}/visited-*.db", "{config}/visited-1.db", "{config}/none", "{cache}"});
    EXPECT_THAT(paths(), ElementsAre(".config/lynx/visited-1.db", ".config/lynx/visited-2.db",
                                     ".cache/lynx"));
    EXPECT_TRUE(result.isInstalled);
}

TEST_F(FoundTracesTest, TheVariablesOfXdgMoveTheRootsAndRelativeOnesDoNot) {
    writeFile(home / "elsewhere/lynx/a");
    writeFile(home / ".cache/lynx/b");
    shred({"{config}/a", "{cache}/b"});
    const EnvironmentVariable moved("XDG_CONFIG_HOME", home / "elsewhere");
    const EnvironmentVariable relative("XDG_CACHE_HOME", "elsewhere");
    EXPECT_THAT(paths(), ElementsAre("elsewhere/lynx/a", ".cache/lynx/b"));
}

TEST_F(FoundTracesTest, ARootOutsideOfTheHomeFolderIsNotLookedAt) {
    const TemporaryFolder outside;
    writeFile(outside / "lynx/a");
    shred({"{config}/a"});
    {
        const EnvironmentVariable moved("XDG_CONFIG_HOME", outside.path());
        EXPECT_THAT(paths(), IsEmpty());
    }
    fs::create_directory(home / ".config");
    fs::create_directory_symlink(outside / "lynx", home / ".config/lynx");
    EXPECT_THAT(paths(), IsEmpty());
    EXPECT_FALSE(result.isInstalled);
}

TEST_F(FoundTracesTest, ARootThatIsALinkWithinTheHomeFolderIsItsTarget) {
    writeFile(home / "dotfiles/lynx/a");
    fs::create_directory(home / ".config");
    fs::create_directory_symlink(home / "dotfiles/lynx", home / ".config/lynx");
    shred({"{config}/a"});
    EXPECT_THAT(paths(), ElementsAre("dotfiles/lynx/a"));
}

TEST_F(FoundTracesTest, TheHomeFolderItselfIsNeverARoot) {
    entry.installs = {{"native", {{"config", "$XDG_CONFIG_HOME"}}}};
    writeFile(home / "a");
    shred({"{config}/a"});
    const EnvironmentVariable moved("XDG_CONFIG_HOME", home.path());
    EXPECT_THAT(paths(), IsEmpty());
}

TEST_F(FoundTracesTest, SeveralWaysOfInstallingAreLookedAtAndASharedFolderOnce) {
    entry.installs.push_back(
        {"native", {{"config", "~/.lynx"}, {"cache", "$XDG_CACHE_HOME/lynx"}}});
    entry.installs.push_back({"snap", {{"config", "~/snap/lynx/common"}}});
    for (const char* path : {".config/lynx/a", ".lynx/a", "snap/lynx/common/a", ".cache/lynx/b"}) {
        writeFile(home / path);
    }
    shred({"{config}/a", "{cache}/b"});
    EXPECT_THAT(paths(), UnorderedElementsAre(".config/lynx/a", ".lynx/a", "snap/lynx/common/a",
                                              ".cache/lynx/b"));
}

TEST_F(FoundTracesTest, ALinkOnTheWayIsNotFollowedAndOneAtTheEndIsALink) {
    writeFile(home / "kept/inside/a");
    fs::create_directories(home / ".config/lynx");
    fs::create_directory_symlink(home / "kept/inside", home / ".config/lynx/storage");
    shred({"{config}/storage/*", "{config}/stor*"});
    EXPECT_THAT(paths(), ElementsAre(".config/lynx/storage"));
    EXPECT_THAT(obstacles(), ElementsAre(".config/lynx/storage: is a link, which is not followed"));
}

TEST_F(FoundTracesTest, WhatCannotBeReadIsToldAndNotTakenForNothing) {
    class Closed final : public test::ForwardingSystemCalls {
      public:
        using ForwardingSystemCalls::ForwardingSystemCalls;
        int openFolder(int folder, const char* name) override {
            return std::string(name) == "closed" ? -EACCES
                                                 : ForwardingSystemCalls::openFolder(folder, name);
        }
    };
    system = std::make_unique<Closed>(*real);
    writeFile(home / ".config/lynx/closed/a");
    shred({"{config}/closed/*"});
    EXPECT_THAT(paths(), IsEmpty());
    EXPECT_THAT(obstacles(), ElementsAre(".config/lynx/closed: Permission denied"));
}

TEST_F(FoundTracesTest, MozillasProfilesAreThoseOfTheListRelativeAndAbsolute) {
    profiles(List::mozilla);
    shred({"{profile}/a", "{cache}/{profile.path}", "{config}/common"});
    writeFile(home / ".config/lynx/profiles.ini",
              "[Profile0]\nName=one\nIsRelative=1\nPath=x.one\n"
              "[Profile1]\nName=two\nIsRelative=0\nPath=" +
                  (home / "work/two") +
                  "\n"
                  "[Profile2]\nName=deep\nIsRelative=1\nPath=Profiles/deep\n"
                  "[Profile3]\nName=gone\nPath=gone\n[InstallX]\nDefault=x.one\n");
    for (const char* path : {"x.one", "Profiles/deep"}) {
        writeFile(home / (".config/lynx/" + std::string(path) + "/a"));
        writeFile(home / (".cache/lynx/" + std::string(path) + "/cache2/b"));
    }
    writeFile(home / "work/two/a");
    writeFile(home / ".cache/lynx/work/kept");
    writeFile(home / ".config/lynx/common");
    EXPECT_THAT(paths(), ElementsAre(".config/lynx/common", ".config/lynx/x.one/a",
                                     ".cache/lynx/x.one", "work/two/a",
                                     ".config/lynx/Profiles/deep/a", ".cache/lynx/Profiles/deep"));
    EXPECT_EQ(result.items[1].profile, "one");
    EXPECT_EQ(result.items[3].profile, "two");
    EXPECT_THAT(obstacles(), IsEmpty());
}

TEST_F(FoundTracesTest, AProfileThatLeadsOutOfItsPlaceIsToldAndLeft) {
    const TemporaryFolder outside;
    writeFile(outside / "a");
    writeFile(home / "other/a");
    profiles(List::mozilla);
    shred({"{profile}/a", "{cache}/{profile.path}"});
    writeFile(home / ".config/lynx/profiles.ini",
              "[Profile0]\nPath=../../other\n[Profile1]\nPath=" + outside.path().native() +
                  "\n[Profile2]\nPath=.\n[Profile3]\nPath=a//b\n[Profile4]\nPath=/\n");
    fs::create_directories(home / ".cache/lynx");
    EXPECT_THAT(paths(), IsEmpty());
    EXPECT_EQ(obstacles().size(), 5U);
}

TEST_F(FoundTracesTest, AProfileThatIsALinkIsToldAndLeft) {
    writeFile(home / "backup/a");
    fs::create_directories(home / ".config/lynx");
    fs::create_directory_symlink(home / "backup", home / ".config/lynx/x.one");
    writeFile(home / ".config/lynx/profiles.ini", "[Profile0]\nPath=x.one\n");
    profiles(List::mozilla);
    shred({"{profile}/a"});
    EXPECT_THAT(paths(), IsEmpty());
    EXPECT_THAT(obstacles(), ElementsAre(HasSubstr("x.one: is a link")));
}

TEST_F(FoundTracesTest, AListThatIsALinkOrNoFileIsTold) {
    profiles(List::mozilla);
    writeFile(home / "list", "[Profile0]\nPath=x.one\n");
    writeFile(home / ".config/lynx/x.one/a");
    fs::create_symlink(home / "list", home / ".config/lynx/profiles.ini");
    shred({"{profile}/a"});
    EXPECT_THAT(paths(), IsEmpty());
    EXPECT_THAT(obstacles(), ElementsAre(HasSubstr("profiles.ini: is a link")));
}

TEST_F(FoundTracesTest, ChromiumsProfilesAreThoseOfLocalStateAndThoseWithPreferences) {
    profiles(List::chromium);
    shred({"{profile}/History", "{cache}/{profile.path}/Cache"});
    writeFile(home / ".config/lynx/Local State",
              R"({"profile":{"info_cache":{"Default":{"name":"Jo"},"Gone":{},"..":{},"a/b":{}}}})");
    writeFile(home / ".config/lynx/Default/History");
    writeFile(home / ".config/lynx/Default/Preferences");
    writeFile(home / ".config/lynx/Profile 7/Preferences");
    writeFile(home / ".config/lynx/Profile 7/History");
    writeFile(home / ".config/lynx/Profile 8/History");
    writeFile(home / ".cache/lynx/Default/Cache/data_0");
    EXPECT_THAT(paths(), ElementsAre(".config/lynx/Default/History", ".cache/lynx/Default/Cache",
                                     ".config/lynx/Profile 7/History"));
    EXPECT_EQ(result.items[0].profile, "Jo");
    EXPECT_THAT(obstacles(), ElementsAre(HasSubstr("..: leads out")));
}

TEST_F(FoundTracesTest, ADamagedLocalStateIsToldAndTheProfilesAreFoundByTheirFiles) {
    profiles(List::chromium);
    shred({"{profile}/History"});
    writeFile(home / ".config/lynx/Local State", "{\"profile\":");
    writeFile(home / ".config/lynx/Default/Preferences");
    writeFile(home / ".config/lynx/Default/History");
    EXPECT_THAT(paths(), ElementsAre(".config/lynx/Default/History"));
    EXPECT_THAT(obstacles(), ElementsAre(HasSubstr("Local State: does not list profiles")));
}

TEST_F(FoundTracesTest, ProfilesByAPatternAreFolders) {
    profiles(List::pattern, "*");
    entry.profiles->root = "{config}/profiles";
    shred({"{profile}/a", "{cache}/{profile.name}", "{cache}/{profile.name}.log"});
    writeFile(home / ".config/lynx/profiles/profiles.ini");
    writeFile(home / ".config/lynx/profiles/default/a");
    writeFile(home / ".config/lynx/profiles/*/a");
    writeFile(home / ".cache/lynx/default/b");
    writeFile(home / ".cache/lynx/default.log");
    writeFile(home / ".cache/lynx/other/b");
    EXPECT_THAT(paths(), ElementsAre(".config/lynx/profiles/*/a", ".config/lynx/profiles/default/a",
                                     ".cache/lynx/default", ".cache/lynx/default.log"));
}

TEST_F(FoundTracesTest, ANameThatIsNoComponentStandsForNothing) {
    profiles(List::mozilla);
    shred({"{cache}/{profile.name}", "{cache}/{profile.path}"});
    fs::create_directories(home / ".config/lynx/one");
    writeFile(home / ".cache/lynx/one/b");
    for (const char* name : {"..", ".", "../x", "one/.."}) {
        writeFile(home / ".config/lynx/profiles.ini",
                  "[Profile0]\nPath=one\nName=" + std::string(name) + "\n");
        EXPECT_THAT(paths(), ElementsAre(".cache/lynx/one")) << name;
    }
}

TEST_F(FoundTracesTest, DatabasesNameThoseThatTheyAreAttachedTo) {
    profiles(List::mozilla);
    writeFile(home / ".config/lynx/profiles.ini", "[Profile0]\nPath=one\n");
    writeFile(home / ".config/lynx/one/icons.sqlite");
    writeFile(home / ".config/lynx/one/places.sqlite");
    writeFile(home / ".config/lynx/one/trash");
    writeFile(home / ".config/lynx/one/Preferences");
    entry.traces = {
        {.kind = "icons",
         .clean = {{.database = "{profile}/icons.sqlite",
                    .attach = {{"p", "{profile}/places.sqlite"}, {"q", "{profile}/none"}}}}},
        {.kind = "trash",
         .empty = {"{profile}/trash"},
         .json = {{"{profile}/Preferences", {"a.b"}}}}};
    EXPECT_THAT(paths(), ElementsAre(".config/lynx/one/icons.sqlite", ".config/lynx/one/trash",
                                     ".config/lynx/one/Preferences"));
    EXPECT_EQ(result.items[0].attach.at("p"), home / ".config/lynx/one/places.sqlite");
    EXPECT_EQ(result.items[0].attach.at("q"), "");
    EXPECT_EQ(result.items[0].database, &entry.traces[0].clean[0]);
    EXPECT_EQ(result.items[1].action, TraceItem::Action::empty);
    EXPECT_EQ(result.items[2].action, TraceItem::Action::json);
    EXPECT_EQ(result.items[2].json, &entry.traces[1].json[0]);
}

TEST_F(FoundTracesTest, LocksAreFoundInEveryProfileAlsoAsLinks) {
    profiles(List::mozilla);
    writeFile(home / ".config/lynx/profiles.ini", "[Profile0]\nPath=one\n[Profile1]\nPath=two\n");
    writeFile(home / ".config/lynx/one/.parentlock");
    fs::create_directories(home / ".config/lynx/two");
    fs::create_symlink("127.0.0.1:+4711", home / ".config/lynx/two/lock");
    entry.locks = {"{profile}/.parentlock", "{profile}/lock", "{config}/SingletonLock"};
    EXPECT_THAT(findLocks(entry, *system),
                ElementsAre(home / ".config/lynx/one/.parentlock", home / ".config/lynx/two/lock"));
}

TEST_F(FoundTracesTest, LookingChangesNothing) {
    profiles(List::mozilla);
    writeFile(home / ".config/lynx/profiles.ini", "[Profile0]\nPath=one\n");
    writeFile(home / ".config/lynx/one/a");
    const auto before = fs::last_write_time(home / ".config/lynx/one");
    shred({"{profile}/*"});
    EXPECT_THAT(paths(), ElementsAre(".config/lynx/one/a"));
    EXPECT_EQ(fs::last_write_time(home / ".config/lynx/one"), before);
}

}  // namespace
}  // namespace dorvanel::traces

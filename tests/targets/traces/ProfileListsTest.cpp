// SPDX-License-Identifier: MIT
#include "targets/traces/ProfileLists.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Python.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::traces {
namespace {

using test::TemporaryFolder;
using test::writeFile;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

TEST(ProfilesIniTest, EveryProfileIsListedAndAfterThemWhatInstallationsName) {
    EXPECT_THAT(
        profilesOfIni("[Profile1]\r\nName=default\r\nIsRelative=1\r\nPath=a.default\r\n"
                      "Default=1\r\n\r\n"
                      "[Profile0]\r\nName=work\r\nIsRelative=0\r\nPath=/home/jo/work\r\n"
                      "[InstallABC]\r\nDefault=b.default-esr\r\nLocked=1\r\n"
                      "[General]\r\nVersion=2\r\nPath=none\r\n"),
        ElementsAre(ListedProfile{"a.default", "default"}, ListedProfile{"/home/jo/work", "work"},
                    ListedProfile{"b.default-esr", ""}));
}

TEST(ProfilesIniTest, InstallationsAreNamedByTheirHashInAFileOfTheirOwn) {
    EXPECT_THAT(profilesOfInstalls("[4F96D1932A9F858E]\nDefault=x.default\nLocked=1\n[Empty]\n"),
                ElementsAre(ListedProfile{"x.default", ""}));
}

TEST(ProfilesIniTest, AnyBytesWillDo) {
    EXPECT_THAT(profilesOfIni(""), IsEmpty());
    EXPECT_THAT(profilesOfIni("Path=before any section\n;[Profile0]\n#\n=\n[\n]\n"), IsEmpty());
    EXPECT_THAT(profilesOfIni(std::string_view("[Profile0]\nPath=a\0b\n\xFF\xFE", 20)), SizeIs(1));
    EXPECT_THAT(profilesOfIni("\xEF\xBB\xBF[Profile0]\nPath=first"),
                ElementsAre(ListedProfile{"first", ""}));
}

TEST(LocalStateTest, TheKeysOfTheInfoCacheAreFoldersAndHaveNames) {
    const auto listed = profilesOfLocalState(
        R"({"profile":{"info_cache":{"Default":{"name":"Jo"},"Profile 1":{}},"last_used":"x"}})");
    ASSERT_TRUE(listed);
    EXPECT_THAT(listed.value(),
                ElementsAre(ListedProfile{"Default", "Jo"}, ListedProfile{"Profile 1", ""}));
}

TEST(LocalStateTest, OneOfAFreshStartListsNone) {
    const auto listed = profilesOfLocalState(R"({"browser":{}})");
    ASSERT_TRUE(listed);
    EXPECT_THAT(listed.value(), IsEmpty());
}

TEST(LocalStateTest, WhatIsNoLocalStateIsAnError) {
    for (const char* bytes : {"", "{", "[]", "null", R"({"profile":{"info_cache":[1]}})", "\xFF"}) {
        EXPECT_FALSE(profilesOfLocalState(bytes)) << bytes;
    }
    const std::string deep(100'000, '[');
    EXPECT_FALSE(profilesOfLocalState(R"({"profile":)" + deep));
    EXPECT_FALSE(profilesOfLocalState(deep + std::string(deep.size(), ']')));
}

TEST(ProfileStoreTest, ProfilesThatOnlyTheStoreKnowsAreListed) {
    const TemporaryFolder folder;
    const std::string path = folder / "with # and % and ?.sqlite";
    test::python(
        folder.path(),
        "import sqlite3\n"
        "d = sqlite3.connect('with # and % and ?.sqlite')\n"
        "d.execute('CREATE TABLE Profiles(id INTEGER PRIMARY KEY, path TEXT, name TEXT)')\n"
        "d.execute(\"INSERT INTO Profiles VALUES(2, 'b.second', 'Second'),"
        " (1, '/home/a', NULL)\")\n"
        "d.commit()\n");
    const auto listed = profilesOfStore(path);
    ASSERT_TRUE(listed) << listed.error().message();
    EXPECT_THAT(listed.value(),
                ElementsAre(ListedProfile{"/home/a", ""}, ListedProfile{"b.second", "Second"}));
}

TEST(ProfileStoreTest, AProfileThatStillWaitsInTheLogIsListedAndTheLogStaysAsItIs) {
    const TemporaryFolder folder;
    test::python(
        folder.path(),
        "import os, sqlite3\n"
        "d = sqlite3.connect('s.sqlite')\n"
        "d.execute('PRAGMA journal_mode=wal')\n"
        "d.execute('CREATE TABLE Profiles(id INTEGER PRIMARY KEY, path TEXT, name TEXT)')\n"
        "d.execute(\"INSERT INTO Profiles VALUES(1, 'a.new', 'New')\")\n"
        "d.commit()\n"
        "os._exit(0)\n");
    const std::string log = test::readFile(folder / "s.sqlite-wal");
    ASSERT_FALSE(log.empty());
    const auto listed = profilesOfStore(folder / "s.sqlite");
    ASSERT_TRUE(listed) << listed.error().message();
    EXPECT_THAT(listed.value(), ElementsAre(ListedProfile{"a.new", "New"}));
    EXPECT_EQ(test::readFile(folder / "s.sqlite-wal"), log);
}

TEST(ProfileStoreTest, WhatIsNoStoreIsAnErrorAndStaysAsItIs) {
    const TemporaryFolder folder;
    writeFile(folder / "text.sqlite", "no database at all, but long enough to look at it twice");
    EXPECT_FALSE(profilesOfStore(folder / "text.sqlite"));
    writeFile(folder / "empty.sqlite");
    EXPECT_FALSE(profilesOfStore(folder / "empty.sqlite"));
    EXPECT_FALSE(profilesOfStore(folder / "none.sqlite"));
    EXPECT_EQ(test::readFile(folder / "empty.sqlite"), "");
    EXPECT_EQ(test::readFile(folder / "none.sqlite"), "");
}

}  // namespace
}  // namespace dorvanel::traces

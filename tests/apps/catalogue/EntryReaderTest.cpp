// SPDX-License-Identifier: MIT
#include "apps/catalogue/EntryReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace dorvanel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr std::string_view lynx = R"(name = "Lynx"
kind = "browser"
icon = "lynx"
processes = ["lynx"]
family = "chromium"
locks = ["{config}/lock"]

[[install]]
name = "native"
config = "$XDG_CONFIG_HOME/lynx"
cache = "$XDG_CACHE_HOME/lynx"

[profiles]
list = "mozilla"
root = "{config}"

[[trace]]
kind = "history"
recommended = true
why = "because"
shred = ["{profile}/visited-*.db"]
empty = ["{profile}/Trash"]

[[trace.clean]]
database = "{profile}/places.sqlite"
attach = { p = "{profile}/other.sqlite" }
run = ["DELETE FROM moz_historyvisits",
       { needs = ["moz_places.recalc_frecency"], sql = "UPDATE moz_places SET recalc_frecency=1" }]
keep = ["SELECT count(*) FROM moz_bookmarks"]

[[trace.json]]
file = "{profile}/Preferences"
remove = ["a.b", "c"]
)";

/// The faults as "LINE: reason".
std::vector<std::string> faultsIn(std::string_view bytes, const std::string& id = "lynx") {
    const catalogue::ReadEntry read = catalogue::readEntry(id, bytes);
    EXPECT_EQ(read.entry.has_value(), read.problems.empty());
    std::vector<std::string> faults;
    for (const catalogue::Problem& problem : read.problems) {
        faults.push_back(std::to_string(problem.line) + ": " + problem.reason);
    }
    return faults;
}

std::vector<std::string> faultsBehindName(const std::string& rest) {
    return faultsIn("name = \"Lynx\"\n" + rest);
}

TEST(EntryReaderTest, EveryPartOfAFileIsRead) {
    const catalogue::ReadEntry read = catalogue::readEntry("lynx", lynx);
    ASSERT_TRUE(read.entry.has_value());
    const catalogue::Entry& entry = *read.entry;
    EXPECT_EQ(entry.id, "lynx");
    EXPECT_EQ(entry.name, "Lynx");
    EXPECT_EQ(entry.kind, "browser");
    EXPECT_EQ(entry.icon, "lynx");
    EXPECT_THAT(entry.processes, ElementsAre("lynx"));
    EXPECT_EQ(entry.family, "chromium");
    EXPECT_THAT(entry.locks, ElementsAre("{config}/lock"));
    ASSERT_EQ(entry.installs.size(), 1U);
    EXPECT_EQ(entry.installs[0].name, "native");
    EXPECT_EQ(entry.installs[0].roots.at("cache"), "$XDG_CACHE_HOME/lynx");
    EXPECT_EQ(entry.profiles->list, catalogue::Profiles::List::mozilla);
    EXPECT_EQ(entry.profiles->root, "{config}");
    ASSERT_EQ(entry.traces.size(), 1U);
    const catalogue::Trace& trace = entry.traces[0];
    EXPECT_EQ(trace.kind, "history");
    EXPECT_TRUE(trace.recommended);
    EXPECT_EQ(trace.why, "because");
    EXPECT_THAT(trace.shred, ElementsAre("{profile}/visited-*.db"));
    EXPECT_THAT(trace.empty, ElementsAre("{profile}/Trash"));
    ASSERT_EQ(trace.clean.size(), 1U);
    EXPECT_EQ(trace.clean[0].database, "{profile}/places.sqlite");
    EXPECT_EQ(trace.clean[0].attach.at("p"), "{profile}/other.sqlite");
    ASSERT_EQ(trace.clean[0].run.size(), 2U);
    EXPECT_EQ(trace.clean[0].run[0].sql, "DELETE FROM moz_historyvisits");
    EXPECT_THAT(trace.clean[0].run[1].needs, ElementsAre("moz_places.recalc_frecency"));
    EXPECT_THAT(trace.clean[0].keep, ElementsAre("SELECT count(*) FROM moz_bookmarks"));
    ASSERT_EQ(trace.json.size(), 1U);
    EXPECT_THAT(trace.json[0].remove, ElementsAre("a.b", "c"));
}

TEST(EntryReaderTest, WhatDoesNotParseIsToldWithItsLine) {
    const std::vector<std::string> faults = faultsIn("name = \"Lynx\"\nkind = \n");
    ASSERT_EQ(faults.size(), 1U);
    EXPECT_THAT(faults[0], ::testing::StartsWith("2: "));
}

TEST(EntryReaderTest, AnUnknownFieldIsToldWhereverItStands) {
    EXPECT_THAT(faultsBehindName("colour = 1\n"), ElementsAre("2: unknown field \"colour\""));
    EXPECT_THAT(faultsBehindName("[[trace]]\nkind = \"cache\"\nshred = [\"{c}/x\"]\nif = 1\n"),
                ElementsAre("5: unknown field \"if\""));
    EXPECT_THAT(faultsBehindName("[profiles]\nlist = \"*\"\nroot = \"{c}\"\nx = 1\n"),
                ElementsAre("5: unknown field \"x\""));
}

TEST(EntryReaderTest, EveryFaultOfAFileIsToldInItsOrder) {
    EXPECT_THAT(faultsIn("kind = \"car\"\nprocesses = [\"/usr/bin/lynx\", 7]\nicon = 3\n"),
                ElementsAre("1: it has no name", "1: \"car\" is no kind",
                            "2: \"/usr/bin/lynx\" is not the last component of a program's path",
                            "2: processes holds what is no text", "3: icon is no text"));
}

TEST(EntryReaderTest, APathThatLeavesItsRootIsRefused) {
    EXPECT_THAT(
        faultsBehindName("[[trace]]\nkind = \"cache\"\nshred = [\"{config}/../x\", \"/etc\"]\n"),
        ElementsAre("4: \"{config}/../x\" leaves its root",
                    "4: \"/etc\" begins with no root in braces"));
    EXPECT_THAT(faultsBehindName("[[install]]\nname = \"native\"\nconfig = \"~/../x\"\n"
                                 "cache = \"/var\"\n"),
                ElementsAre("4: \"~/../x\" leaves its root",
                            "5: \"/var\" begins with neither \"~/\" nor an XDG variable"));
}

TEST(EntryReaderTest, AStatementThatDoesMoreThanToRemoveRowsIsRefused) {
    EXPECT_THAT(
        faultsBehindName("[[trace]]\nkind = \"cache\"\n[[trace.clean]]\ndatabase = \"{c}/x\"\n"
                         "run = [\"DROP TABLE t\", \"DELETE FROM t; DROP TABLE t\"]\n"
                         "keep = [\"PRAGMA user_version\"]\n"),
        ElementsAre("6: \"DROP TABLE t\" is no DELETE, UPDATE or CREATE TEMP TABLE",
                    "6: \"DELETE FROM t; DROP TABLE t\" is more than one statement",
                    "7: \"PRAGMA user_version\" is no SELECT"));
}

TEST(EntryReaderTest, ATraceNeedsAKindAndSomethingThatGoes) {
    EXPECT_THAT(faultsBehindName("[[trace]]\n[[trace]]\nkind = \"spots\"\nrecommended = 1\n"),
                ElementsAre("2: a trace has no kind", "2: nothing is to go", "3: nothing is to go",
                            "4: \"spots\" is no kind", "5: recommended is neither true nor false"));
    EXPECT_THAT(faultsBehindName("[[trace]]\nkind = \"logs\"\nshred = [\"{c}/x\"]\n"
                                 "[[trace]]\nkind = \"logs\"\nshred = [\"{c}/y\"]\n"),
                ElementsAre("0: two traces are of the kind \"logs\""));
}

TEST(EntryReaderTest, LettersThatAreNotAsciiAreWrittenByTheirNumber) {
    const std::string fault =
        ": holds a letter that is not ASCII: \"\\u\" and its number stand for it";
    EXPECT_THAT(faultsIn("\xD1\x9C\"]\n"), ElementsAre("1" + fault));
    EXPECT_THAT(faultsIn("name = \"a\"\n# \xC3\xA9\n"), ElementsAre("2" + fault));
    const catalogue::ReadEntry read = catalogue::readEntry("x", "name = \"\\u00E9\"\n");
    ASSERT_TRUE(read.entry.has_value());
    EXPECT_EQ(read.entry->name, "\xC3\xA9");
}

TEST(EntryReaderTest, TheNameOfAFileMustBeAnId) {
    for (const char* id : {"", "Lynx", "a b", "-a", "../x"}) {
        const std::vector<std::string> faults = faultsIn(lynx, id);
        ASSERT_EQ(faults.size(), 1U) << id;
        EXPECT_THAT(faults[0], HasSubstr("is no ID")) << id;
    }
}

TEST(EntryReaderTest, AFileThatIsTooLargeIsNotRead) {
    std::string large(lynx);
    large.append(catalogue::largestFile, '#');
    EXPECT_THAT(faultsIn(large),
                ElementsAre("0: is too large for a description of an application"));
}

}  // namespace
}  // namespace dorvanel::test

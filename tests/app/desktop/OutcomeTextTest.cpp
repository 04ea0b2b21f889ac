// SPDX-License-Identifier: MIT
#include "app/desktop/OutcomeText.h"

#include <gmock/gmock.h>

#include <cerrno>

namespace dorvanel::test {
namespace {

using desktop::detailsOf;
using desktop::failureOf;
using desktop::messageOf;

/// What the window says of how a request ended.
class DesktopOutcomeTextTest : public ::testing::Test {
  protected:
    /// An item that is still there for these things in it.
    void leave(const std::string& item, const std::vector<std::string>& left) {
        ItemOutcome outcome{.path = item};
        for (const std::string& path : left) outcome.left.push_back({path, "remove", EPERM});
        report.outcome.perItem.push_back(std::move(outcome));
    }
    RunReport report;
};

TEST_F(DesktopOutcomeTextTest, OneFileThatKeepsItsFoldersIsOneThing) {
    report.outcome.notRemoved = 4;  // the file, two folders and the item
    leave("/home/alice/Letters", {"/home/alice/Letters/2003/May/one.txt"});
    EXPECT_EQ(failureOf(report), "1 item is still there.");
}

TEST_F(DesktopOutcomeTextTest, FilesOfSeveralItemsAreCountedTogether) {
    report.outcome.notRemoved = 6;
    leave("/a", {"/a/one", "/a/two"});
    leave("/b", {"/b"});
    EXPECT_EQ(failureOf(report), "3 items are still there.");
}

TEST_F(DesktopOutcomeTextTest, WhatNoItemTellsOfIsCountedAsItIs) {
    report.outcome.notRemoved = 2;
    EXPECT_EQ(failureOf(report), "2 items are still there.");
}

TEST_F(DesktopOutcomeTextTest, BeyondWhatIsKeptWordByWordTheEnginesCountStands) {
    report.outcome.notRemoved = 5000;
    leave("/a", std::vector<std::string>(Outcome::keptTroubles, "/a/file"));
    EXPECT_TRUE(failureOf(report).endsWith(" items are still there."));
    EXPECT_TRUE(failureOf(report).remove(QLatin1Char(',')).startsWith("5000"));
}

TEST_F(DesktopOutcomeTextTest, EveryNumberAgreesWithItsWord) {
    report.outcome.items = 2;
    report.outcome.filesOverwritten = 1;
    report.outcome.bytesOverwritten = 6;
    report.outcome.notOverwritten = 1;
    report.outcome.filesVerified = 2;
    report.outcome.notVerified = 2;
    report.outcome.notFlushed = 1;
    report.outcome.vanished = 1;
    report.outcome.filesCleaned = 1;
    report.outcome.rowsRemoved = 12;
    report.outcome.notCleaned = 1;
    EXPECT_EQ(messageOf(report),
              "Shredded: 1 file, 6 bytes overwritten. Verified: 2 files. Cleaned: 1 file, "
              "12 rows removed.");
    EXPECT_EQ(failureOf(report),
              "1 file not wholly overwritten. 2 files read back otherwise or not at all. "
              "1 item vanished before being shredded. 1 file perhaps not on the medium yet. "
              "1 place could not be cleaned.");
}

TEST_F(DesktopOutcomeTextTest, DetailsNameWhatWasTriedAndWhy) {
    report.outcome.note("/a/one", "remove", EPERM);
    report.outcome.note({}, "shred", ENOMEM);
    report.outcome.left = {"/a/two"};
    EXPECT_EQ(detailsOf(report.outcome),
              "/a/one: could not remove: Operation not permitted\n"
              "could not shred: Cannot allocate memory\n"
              "Left: /a/two");
}

}  // namespace
}  // namespace dorvanel::test

// SPDX-License-Identifier: MIT
#include "app/desktop/results/RunHistory.h"

#include <gmock/gmock.h>

#include <cerrno>

namespace dorvanel::test {
namespace {

using desktop::RunEntry;
using desktop::RunHistory;
using Door = StartedBy::Door;

/// The requests of the session as a list.
class RunHistoryTest : public ::testing::Test {
  protected:
    static RunEntry entryOf(std::size_t items, std::size_t failed = 0) {
        RunEntry entry;
        entry.report.outcome.items = items;
        for (std::size_t i = 0; i < items; ++i) {
            PlanItem item{.path = "/item" + std::to_string(i), .outcome = ItemOutcome()};
            if (i < failed) item.outcome->left.push_back({item.path, "remove", EPERM});
            entry.report.plan.items.push_back(std::move(item));
        }
        entry.report.outcome.notRemoved = failed;
        return entry;
    }
    QString text(int row, int column) { return history.index(row, column).data().toString(); }
    QString starter(Door door, const std::vector<std::string>& applications = {}) {
        RunEntry entry;
        entry.report.startedBy = {door, applications};
        history.add(std::move(entry));
        return text(0, RunHistory::starter);
    }

    RunHistory history;
};

TEST_F(RunHistoryTest, TheNewestIsFirstAndKeepsItsNumber) {
    const quint64 first = history.add(entryOf(1));
    const quint64 second = history.add(entryOf(2));
    EXPECT_EQ(history.indexOf(second).row(), 0);
    EXPECT_EQ(history.indexOf(first).row(), 1);
    EXPECT_EQ(history.find(first)->report.plan.items.size(), 1U);
}

TEST_F(RunHistoryTest, AHundredAreKept) {
    const quint64 first = history.add(entryOf(1));
    for (int i = 0; i < 100; ++i) history.add(entryOf(1));
    EXPECT_EQ(history.rowCount(), 100);
    EXPECT_EQ(history.find(first), nullptr);
}

TEST_F(RunHistoryTest, OfOlderOnesOnlyWhatFailedIsKeptWordByWord) {
    const quint64 older = history.add(entryOf(12'000, 3));
    const quint64 newest = history.add(entryOf(30'000));
    EXPECT_EQ(history.find(newest)->report.plan.items.size(), 30'000U) << "the newest is whole";
    EXPECT_EQ(history.find(older)->report.plan.items.size(), 3U);
    EXPECT_EQ(history.find(older)->onlyCounted, 11'997U);
}

TEST_F(RunHistoryTest, AFailureIsMarkedUntilItIsDismissed) {
    const quint64 failed = history.add(entryOf(2, 1));
    history.add(entryOf(1));
    EXPECT_EQ(history.markedCount(), 1);
    EXPECT_EQ(text(1, RunHistory::result), "Failed: 1 item is still there.");
    EXPECT_FALSE(history.index(1, RunHistory::result).data(Qt::DecorationRole).isNull());
    history.dismiss(failed);
    EXPECT_EQ(history.markedCount(), 0);
    EXPECT_EQ(text(1, RunHistory::result), "Failed, dismissed: 1 item is still there.");
}

TEST_F(RunHistoryTest, EveryDoorHasItsName) {
    EXPECT_EQ(starter(Door::person), "You");
    EXPECT_EQ(starter(Door::browserWatch), "Browser Watch");
    EXPECT_EQ(starter(Door::browserWatch, {"Firefox", "Opera"}),
              "Browser Watch: Firefox, Opera quit");
    EXPECT_EQ(starter(Door::launch), "Launch");
    EXPECT_EQ(starter(Door::launcher), "Launcher");
    EXPECT_EQ(starter(Door::droppedFiles), "Dropped files");
    EXPECT_EQ(starter(Door::trash), "Trash");
    EXPECT_EQ(starter(Door::again), "Try Again");
}

TEST_F(RunHistoryTest, WhatItTookAndHowLong) {
    RunEntry entry = entryOf(1);
    entry.started = 1'000'000'000;
    entry.ended = entry.started + 125;
    history.add(entry);
    EXPECT_EQ(text(0, RunHistory::subject), "Chosen traces");
    EXPECT_EQ(text(0, RunHistory::duration), "2 min 5 s");
    entry.report.handedOver = true;
    entry.given = {"/one"};
    entry.ended = entry.started + 1;
    history.add(entry);
    EXPECT_EQ(text(0, RunHistory::subject), "1 item");
    EXPECT_EQ(text(0, RunHistory::duration), "1 second");
    entry.ended = entry.started;
    history.add(entry);
    EXPECT_EQ(text(0, RunHistory::duration), "less than a second");
}

TEST_F(RunHistoryTest, ARequestThatWasNotInitiatedIsAFailure) {
    RunEntry entry;
    entry.report.result = RunResult::notInitiated;
    entry.report.refusal = Refusal::noThread;
    history.add(std::move(entry));
    EXPECT_EQ(text(0, RunHistory::result),
              "Failed: Not started: the computer has no thread to give.");
    EXPECT_EQ(history.markedCount(), 1);
}

}  // namespace
}  // namespace dorvanel::test

// SPDX-License-Identifier: MIT
#include "app/desktop/results/RunEntry.h"

#include <gmock/gmock.h>

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cerrno>

#include "app/desktop/results/DetailLines.h"
#include "app/desktop/results/SavedReport.h"
#include "engine/HoldingFolderName.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

using desktop::leftBy;
using desktop::RunEntry;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

/// What is known of one request, and what it left.
class RunEntryTest : public ::testing::Test {
  protected:
    PlanItem& add(const std::string& path, const std::vector<std::string>& left = {}) {
        PlanItem item{.path = path, .outcome = ItemOutcome{.path = path, .overwritten = 1}};
        for (const std::string& one : left) item.outcome->left.push_back({one, "remove", EPERM});
        entry.report.plan.items.push_back(std::move(item));
        return entry.report.plan.items.back();
    }
    std::string details() { return desktop::asText(desktop::detailLinesOf(entry)).toStdString(); }

    RunEntry entry;
    TemporaryFolder folder;
};

TEST_F(RunEntryTest, WhatIsLeftIsToldByTheOutermostThings) {
    add("/a", {"/a/one", "/a/deep/two"});
    add("/b", {"/b", "/b/one"});
    EXPECT_THAT(leftBy(entry), ElementsAre("/a/deep/two", "/a/one", "/b"));
}

TEST_F(RunEntryTest, AHoldingFolderStandsForWhatIsInIt) {
    const std::string holding = "/home/alice/" + holdingFolderName(1'000'000'000);
    add("/home/alice/Letters", {holding + "/Xk3/Pq9", holding + "/Xk3/Zz1"});
    EXPECT_THAT(leftBy(entry), ElementsAre(holding));
}

TEST_F(RunEntryTest, AFileThatWasOnlyToBeCleanedIsNeverHandedOver) {
    add("/history.sqlite", {"/history.sqlite"}).action = PlanItem::Action::clean;
    PlanItem& list = add("/recent.xbel", {"/recent.xbel"});
    list.action = PlanItem::Action::mention;
    list.entries = 3;
    EXPECT_THAT(leftBy(entry), IsEmpty());
}

TEST_F(RunEntryTest, OfWhatSomebodyHandedOverNothingElseIsHandedOverAgain) {
    entry.report.handedOver = true;
    entry.given = {"/letter"};
    add("/letter", {"/letter"});
    add("/recent.xbel", {"/recent.xbel"});  // a list of the desktop that mentions it
    EXPECT_THAT(leftBy(entry), ElementsAre("/letter"));
}

TEST_F(RunEntryTest, AReportWithoutAPlanGetsOneOfItsOutcome) {
    RunReport report;
    report.outcome.perItem = {{.path = "/gone", .overwritten = 2, .bytes = 9, .removed = 2},
                              {.path = "/never there"}};
    const RunReport whole = desktop::withOutcomesInPlan(report);
    ASSERT_EQ(whole.plan.items.size(), 1U);
    EXPECT_EQ(whole.plan.items[0].files, 2U);
    EXPECT_EQ(whole.plan.items[0].bytes, 9U);
}

TEST_F(RunEntryTest, DetailsTellEveryItemAndWhyItIsStillThere) {
    add("/good").outcome->bytes = 6;
    PlanItem& bad = add("/bad");
    bad.application = "Firefox";
    bad.outcome->left.push_back({"/held/Xk3", "remove", EPERM, {}, "/bad/one"});
    bad.outcome->unwritten.push_back({"/bad/two", "write", EIO});
    entry.report.plan.skipped = {{.application = "Opera", .reason = PlanSkip::Reason::running},
                                 {.path = "/mnt", .reason = PlanSkip::Reason::mount}};
    entry.onlyCounted = 7;
    EXPECT_EQ(details(),
              "Still there\n"
              "    /bad/one: could not remove: Operation not permitted; now at /held/Xk3\n"
              "Not wholly overwritten\n"
              "    /bad/two: could not write: Input/output error\n"
              "Left alone\n"
              "    Opera: its application runs\n"
              "    /mnt: another file system is mounted there\n"
              "Items\n"
              "    /good: shredded: 1 file, 6 bytes\n"
              "    /bad: 1 thing still there (Firefox)\n"
              "    and 7 more items, as they should be");
}

TEST_F(RunEntryTest, ThousandsOfGoodItemsAreCountedNotListed) {
    for (int i = 0; i < 5000; ++i) add("/item" + std::to_string(i));
    add("/bad", {"/bad"});
    EXPECT_THAT(details(), HasSubstr("/bad: 1 thing still there"));
    EXPECT_THAT(details(), Not(HasSubstr("/item2001:")));
    EXPECT_THAT(details(), HasSubstr("more items, as they should be"));
}

TEST_F(RunEntryTest, TheSavedReportIsADocumentForItsOwnerAlone) {
    entry.started = 1'000'000'000;
    entry.ended = entry.started + 2;
    entry.failure = "1 item is still there.";
    add("/b\xff", {"/b\xff"});
    const std::string path = folder / "report.json";
    writeFile(path, "older");
    ASSERT_TRUE(desktop::saveReport(desktop::reportDocumentOf(entry), path));
    const QJsonObject document =
        QJsonDocument::fromJson(QByteArray::fromStdString(readFile(path))).object();
    EXPECT_EQ(document["status"].toInt(), 1);
    EXPECT_EQ(document["started"].toString(), "2001-09-09T01:46:40Z");
    EXPECT_EQ(document["items"].toArray().size(), 1);
    const auto rights = QFileInfo(QString::fromStdString(path)).permissions();
    const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                      QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    EXPECT_FALSE(rights & others) << "nobody else reads it";
}

TEST_F(RunEntryTest, AReportThatCannotBeWrittenSaysWhy) {
    const auto saved = desktop::saveReport("{}", folder / "no such folder/report.json");
    ASSERT_FALSE(saved);
    EXPECT_THAT(saved.error().message(), HasSubstr("No such file or directory"));
}

}  // namespace
}  // namespace dorvanel::test

// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <filesystem>

#include "run/RunFixture.h"
#include "run/RunPreview.h"
#include "run/TrashShredding.h"
#include "support/EnvironmentVariable.h"
#include "support/SampleIndex.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* lynx = R"toml(name = "Lynx"
kind = "browser"
processes = ["lynx"]
[[install]]
name = "native"
data = "~/.lynx"
[[trace]]
kind = "cache"
shred = ["{data}/cache", "{data}/thumb-*.png"]
[[trace]]
kind = "history"
[[trace.clean]]
database = "{data}/places.db"
run = ["DELETE FROM visits"]
[[trace]]
kind = "downloads"
[[trace.clean]]
database = "{data}/places.db"
run = ["DELETE FROM downloads"]
)toml";

/// Runs that carry out a plan which somebody has been shown before, while the disk goes on.
class PlannedRunTest : public RunFixture {
  protected:
    PlannedRunTest() {
        writeFile(home / "applications/lynx.toml", lynx);
        preferences.set("ShredCache", true);
        preferences.set("ConfirmShredding", true);
    }
    Plan look() {
        RunPreview preview({.preferencesInstance = preferences,
                            .browserWatch = watch,
                            .files = platform::defaultFileManager(),
                            .defaults = defaults,
                            .clock = clock,
                            .traces = traces});
        return preview.plan(false, {.system = *system});
    }
    void carryOut(const Plan& plan) {
        run.shredPlanned(plan);
        run.waitForWorker();
    }
    void chooseLynx(const std::vector<std::string>& kinds) {
        ASSERT_TRUE(TraceChoice(defaults).select("lynx", kinds));
    }
    /// A database with so many visits and downloads.
    void addPlaces(const char* visits, const char* downloads) {
        SampleIndex places(data + "/places.db");
        places.run(std::string("create table visits(page text); create table downloads(page text);"
                               "insert into visits select value from json_each('") +
                   visits + "'); insert into downloads select value from json_each('" + downloads +
                   "');");
    }

    const std::string data = home / ".lynx";
};

TEST_F(PlannedRunTest, ItTakesWhatWasShownAndAsksNoMore) {
    addSafariCache();
    const Plan plan = look();
    ASSERT_EQ(plan.items.size(), 1U);
    carryOut(plan);
    EXPECT_FALSE(fs::exists(plan.items[0].path));
    EXPECT_THAT(calls.calls(), Not(Contains(HasSubstr("alert"))));
    EXPECT_EQ(reports.back().result, RunResult::completed);
    EXPECT_EQ(reports.back().leftForNextRun, 0U);
    EXPECT_FALSE(run.awaitingConfirmation());
}

TEST_F(PlannedRunTest, APlaceThatHasComeSinceStaysForTheNextRunAndThatIsSaid) {
    addSafariCache();
    const Plan plan = look();
    const std::string other = home / "Library/Caches/MS Internet Cache";
    const std::string page = home / "Library/Preferences/iCab Preferences/iCab Cache/page";
    for (const std::string& path : {other, page}) writeFile(path, "new");
    carryOut(plan);
    EXPECT_FALSE(fs::exists(plan.items[0].path));
    EXPECT_TRUE(fs::exists(other));
    EXPECT_TRUE(fs::exists(page));

    const Plan next = look();
    const std::size_t left = next.items.size();
    EXPECT_EQ(left, 2U) << "the next run takes both";
    EXPECT_EQ(reports.back().leftForNextRun, left);
    EXPECT_THAT(logLines(), Contains(HasSubstr("left for the next run: ")));
    run.shredPlanned(next);
    run.waitForWorker();
    EXPECT_FALSE(fs::exists(other));
    EXPECT_FALSE(fs::exists(page));
}

TEST_F(PlannedRunTest, OfAnApplicationOfTodayOnlyWhatWasShownGoes) {
    writeFile(data + "/cache/a", "canary");
    writeFile(data + "/thumb-1.png", "canary");
    chooseLynx({"cache"});
    const Plan plan = look();
    ASSERT_EQ(plan.items.size(), 2U);
    writeFile(data + "/thumb-2.png", "new");
    carryOut(plan);
    EXPECT_FALSE(fs::exists(data + "/cache"));
    EXPECT_FALSE(fs::exists(data + "/thumb-1.png"));
    EXPECT_EQ(readFile(data + "/thumb-2.png"), "new");
    EXPECT_EQ(reports.back().leftForNextRun, 1U);
    EXPECT_THAT(logLines(), Contains("Skip: ~/.lynx/thumb-2.png (not in the preview)"));
}

TEST_F(PlannedRunTest, AKindOfRowsThatThereWereNoneOfStaysInTheDatabase) {
    addPlaces(R"(["a","b"])", "[]");
    chooseLynx({"history", "downloads"});
    const Plan plan = look();
    ASSERT_EQ(plan.items.size(), 1U);
    EXPECT_EQ(plan.items[0].trace, "history");
    SampleIndex(data + "/places.db").run("insert into downloads values('new')");
    carryOut(plan);
    SampleIndex places(data + "/places.db");
    EXPECT_EQ(places.number("select count(*) from visits"), 0);
    EXPECT_EQ(places.number("select count(*) from downloads"), 1);
    EXPECT_EQ(reports.back().outcome.filesCleaned, 1U);
}

TEST_F(PlannedRunTest, AnApplicationThatRanWhenThePlanWasMadeKeepsAllItHas) {
    addSafariCache();
    writeFile(data + "/cache/a", "kept");
    chooseLynx({"cache"});
    programs.start("/usr/bin/lynx");
    const Plan plan = look();
    programs.programs.clear();
    carryOut(plan);
    EXPECT_EQ(readFile(data + "/cache/a"), "kept");
    EXPECT_EQ(reports.back().outcome.filesOverwritten, 1U);
}

TEST_F(PlannedRunTest, AnIndexThatThePlanDoesNotHoldIsNotOpened) {
    addSafariCache();
    preferences.set("ShredMailTrash", true);
    const Plan plan = look();
    const std::string index = home / "Library/Mail/Envelope Index";
    {
        SampleIndex mail(index);
        mail.createTables();
        mail.addMailbox("local:///Trash", 5);
    }
    const std::string before = readFile(index);
    carryOut(plan);
    EXPECT_EQ(SampleIndex(index).messages(1), 5);
    EXPECT_EQ(readFile(index), before);
    EXPECT_EQ(reports.back().leftForNextRun, 1U);
}

TEST_F(PlannedRunTest, ASpamMailboxThatThePlanDoesNotHoldIsNotMoved) {
    addSafariCache();
    preferences.set("ShredMailsmithSpam", true);
    const std::string mail = home / "Mail/Mailsmith User Data/Mail/";
    fs::create_directories(mail + "(dorvanelx)");
    const Plan plan = look();
    writeFile(mail + "(spam)/letter", "new");
    carryOut(plan);
    EXPECT_EQ(readFile(mail + "(spam)/letter"), "new");
    EXPECT_FALSE(fs::exists(mail + "(dorvanelspam)"));

    carryOut(look());
    EXPECT_FALSE(fs::exists(mail + "(spam)/letter")) << "it was shown this time";
    EXPECT_FALSE(fs::exists(mail + "(dorvanelspam)"));
    EXPECT_TRUE(fs::exists(mail + "(spam)"));
}

TEST_F(PlannedRunTest, TheNextRunHasNoLimitAnyMore) {
    addSafariCache();
    preferences.set("ConfirmShredding", false);
    carryOut({});
    EXPECT_TRUE(fs::exists(home / "Library/Caches/Safari"));
    EXPECT_EQ(reports.back().result, RunResult::nothingSelected);
    run.shredAndNothing();
    run.waitForWorker();
    EXPECT_FALSE(fs::exists(home / "Library/Caches/Safari"));
}

TEST_F(PlannedRunTest, BesideAnotherQuestionItIsRefusedAndThatRunKeepsNoLimitOfIt) {
    addSafariCache();
    alerts.onAlert = [this](const std::string&) { run.shredPlanned({}); };
    run.shredAndNothing();
    run.waitForWorker();
    ASSERT_EQ(reports.size(), 2U);
    EXPECT_EQ(reports[0].refusal, Refusal::atWork);
    EXPECT_EQ(reports[1].outcome.filesOverwritten, 1U);
}

TEST_F(PlannedRunTest, TheTrashGoesThroughTheSameDoorAsEverythingElse) {
    const EnvironmentVariable folder{"XDG_DATA_HOME", home / "data"};
    const std::string bin = home / "data/Trash";
    writeFile(bin + "/files/old", "secret");
    writeFile(bin + "/info/old.trashinfo", "[Trash Info]\nPath=/x\n");
    auto trash =
        std::make_shared<TrashShredding>(mentions::Mentions::Parts{*system, *cleaningCalls, clock});
    trash->find(home / "data", {}, {.system = *system});
    writeFile(bin + "/files/later", "kept");
    const std::weak_ptr<TrashShredding> held = trash;
    EXPECT_TRUE(run.shredTrash(std::move(trash)));
    run.waitForWorker();
    EXPECT_FALSE(fs::exists(bin + "/files/old"));
    EXPECT_FALSE(fs::exists(bin + "/info/old.trashinfo"));
    EXPECT_EQ(readFile(bin + "/files/later"), "kept");
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_TRUE(reports[0].handedOver);
    EXPECT_EQ(reports[0].outcome.items, 2U);
    EXPECT_TRUE(held.expired()) << "the items are let go of";
}

TEST_F(PlannedRunTest, TheTrashIsRefusedWhileAnotherRequestIsAtWork) {
    auto trash =
        std::make_shared<TrashShredding>(mentions::Mentions::Parts{*system, *cleaningCalls, clock});
    bool isStarted = true;
    alerts.onAlert = [&](const std::string&) { isStarted = run.shredTrash(trash); };
    addSafariCache();
    run.shredAndNothing();
    run.waitForWorker();
    EXPECT_FALSE(isStarted);
    EXPECT_EQ(reports[0].refusal, Refusal::atWork);
}

}  // namespace
}  // namespace dorvanel::test

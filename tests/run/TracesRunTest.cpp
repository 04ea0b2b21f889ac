// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <filesystem>
#include <functional>
#include <map>

#include "run/RunFixture.h"
#include "support/SampleIndex.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ui::AlertButton;

constexpr const char* lynx = R"toml(name = "Lynx"
kind = "browser"
processes = ["lynx"]
[[install]]
name = "native"
data = "~/.lynx"
[[trace]]
kind = "cache"
recommended = true
shred = ["{data}/cache", "{data}/thumb-*.png"]
[[trace]]
kind = "history"
[[trace.clean]]
database = "{data}/places.db"
run = ["DELETE FROM visits", { needs = ["none"], sql = "DELETE FROM none" }]
keep = ["SELECT count(*) FROM bookmarks"]
[[trace]]
kind = "downloads"
[[trace.clean]]
database = "{data}/places.db"
run = ["DELETE FROM downloads"]
[[trace]]
kind = "icons"
[[trace.clean]]
database = "{data}/icons.db"
attach = { p = "{data}/places.db" }
run = ["DELETE FROM icons WHERE page NOT IN (SELECT page FROM p.visits)"]
[[trace]]
kind = "permissions"
shred = ["{data}/places.db*"]
[[trace]]
kind = "trash"
empty = ["{data}/Trash"]
[[trace]]
kind = "sitedata"
[[trace.json]]
file = "{data}/Preferences"
remove = ["sites.seen"]
)toml";

/// Runs over an application of today that a description of the test's own describes.
class TracesRunTest : public RunFixture {
  protected:
    TracesRunTest() {
        describe("lynx", lynx);
        preferences.set("ConfirmShredding", false);
    }

    void describe(const std::string& id, const std::string& text) {
        writeFile(home / ("applications/" + id + ".toml"), text);
    }
    void choose(const std::vector<std::string>& kinds, const std::string& id = "lynx") {
        ASSERT_TRUE(TraceChoice(defaults).select(id, kinds));
    }

    /// Three visits, two downloads, a bookmark.
    void addPlaces() {
        SampleIndex places(home / ".lynx/places.db");
        places.run(
            "create table visits(page text); create table downloads(page text);"
            "create table bookmarks(page text);"
            "insert into visits values('canary-a'),('canary-b'),('canary-c');"
            "insert into downloads values('canary-d'),('canary-e');"
            "insert into bookmarks values('kept');");
    }
    void addIcons() {
        SampleIndex icons(home / ".lynx/icons.db");
        icons.run("create table icons(page text); insert into icons values('canary-a'),('x');");
    }

    void runOnce() {
        run.shredAndNothing();
        run.waitForWorker();
    }

    /// The lines of one application, from its name to the empty line.
    std::vector<std::string> linesOf(const std::string& name) {
        std::vector<std::string> all = logLines();
        const auto begin = std::find(all.begin(), all.end(), name);
        const auto end = std::find(begin, all.end(), "");
        return {begin, end};
    }
    const Outcome& outcome() { return reports.back().outcome; }

    /// Every file below the home folder with its bytes, but for the log.
    std::map<std::string, std::string> everything() {
        std::map<std::string, std::string> files;
        for (const auto& entry : fs::recursive_directory_iterator(home.path())) {
            const std::string path = entry.path().native();
            if (path.find("/Library/Logs/") != std::string::npos) continue;
            files[path] = entry.is_regular_file() && !entry.is_symlink() ? readFile(path) : "";
        }
        return files;
    }

    fs::path data() const { return home / ".lynx"; }
};

TEST_F(TracesRunTest, WithNothingChosenNotAByteChangesAndTheLogIsAsEver) {
    addPlaces();
    writeFile(data() / "cache/a", "canary");
    preferences.set("ShredCache", true);
    runOnce();
    const std::vector<std::string> described = logLines();
    const auto before = everything();
    runOnce();
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(logLines(), described);
    EXPECT_THAT(described, Not(Contains("Lynx")));
    EXPECT_EQ(programs.lists, 0);
}

TEST_F(TracesRunTest, TheChosenKindsGoUnderTheNameOfTheirApplication) {
    writeFile(data() / "cache/a", "canary");
    writeFile(data() / "thumb-1.png", "canary");
    writeFile(data() / "kept", "kept");
    addPlaces();
    choose({"cache"});
    runOnce();
    EXPECT_THAT(linesOf("Lynx"),
                ElementsAre("Lynx", "Shred: ~/.lynx/cache", "Shred: ~/.lynx/thumb-1.png"));
    EXPECT_FALSE(fs::exists(data() / "cache"));
    EXPECT_FALSE(fs::exists(data() / "thumb-1.png"));
    EXPECT_EQ(readFile(data() / "kept"), "kept");
    EXPECT_EQ(SampleIndex(data() / "places.db").number("select count(*) from visits"), 3);
    EXPECT_EQ(outcome().filesOverwritten, 2U);
    EXPECT_EQ(outcome().allTroubles, 0U);
}

TEST_F(TracesRunTest, ItsLinesStandBehindThoseOfTheLastCollector) {
    writeFile(data() / "cache/a", "canary");
    choose({"cache"});
    runOnce();
    const auto lines = logLines();
    const auto own = std::find(lines.begin(), lines.end(), "Lynx");
    const auto start = std::find(lines.begin(), lines.end(), "Start Shredding Now");
    ASSERT_NE(own, lines.end());
    EXPECT_EQ(start - own, 3);  // the name, one line, the separator
    EXPECT_EQ(*(own - 1), "");
    EXPECT_EQ(lines.back(), "Dorvanel Completed Successfully");
}

TEST_F(TracesRunTest, ALinkAmongTheTracesGoesAndItsTargetStays) {
    writeFile(home / "Documents/letter", "kept");
    fs::create_directories(data() / "cache");
    fs::create_symlink(home / "Documents/letter", data() / "cache/link");
    fs::create_directory_symlink(home / "Documents", data() / "thumb-x.png");
    choose({"cache"});
    runOnce();
    EXPECT_FALSE(fs::exists(data() / "cache"));
    EXPECT_FALSE(fs::is_symlink(data() / "thumb-x.png"));
    EXPECT_EQ(readFile(home / "Documents/letter"), "kept");
}

TEST_F(TracesRunTest, ADatabaseLosesItsRowsAndKeepsTheRest) {
    addPlaces();
    fs::permissions(data() / "places.db", fs::perms(0640));
    choose({"history"});
    runOnce();
    EXPECT_THAT(linesOf("Lynx"), ElementsAre("Lynx", "Clean: ~/.lynx/places.db (3 rows)"));
    SampleIndex places(data() / "places.db");
    EXPECT_EQ(places.number("select count(*) from visits"), 0);
    EXPECT_EQ(places.number("select count(*) from downloads"), 2);
    EXPECT_EQ(places.number("select count(*) from bookmarks"), 1);
    EXPECT_EQ(fs::status(data() / "places.db").permissions(), fs::perms(0640));
    for (const auto& [path, bytes] : everything()) {
        EXPECT_THAT(bytes, Not(HasSubstr("canary-a"))) << path;
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(data()), {}), 1);
    EXPECT_EQ(outcome().filesCleaned, 1U);
    EXPECT_EQ(outcome().rowsRemoved, 3U);
    EXPECT_EQ(outcome().filesOverwritten, 1U);
    EXPECT_EQ(outcome().allTroubles, 0U);
}

TEST_F(TracesRunTest, KindsOfOneDatabaseAreCleanedTogetherAndBeforeWhatIsAttachedToIt) {
    addPlaces();
    addIcons();
    choose({"icons", "history", "downloads"});
    runOnce();
    EXPECT_THAT(linesOf("Lynx"), ElementsAre("Lynx", "Clean: ~/.lynx/places.db (5 rows)",
                                             "Clean: ~/.lynx/icons.db (2 rows)"));
    EXPECT_EQ(outcome().filesCleaned, 2U);
    EXPECT_EQ(outcome().rowsRemoved, 7U);
}

TEST_F(TracesRunTest, ADatabaseThatGoesWholeIsNotCleanedFirst) {
    addPlaces();
    choose({"history", "permissions"});
    runOnce();
    EXPECT_THAT(linesOf("Lynx"), ElementsAre("Lynx", "Shred: ~/.lynx/places.db"));
    EXPECT_FALSE(fs::exists(data() / "places.db"));
}

TEST_F(TracesRunTest, AnEmptyFileAndAJsonFileWithoutItsKeysTakeThePlaceOfTheOld) {
    writeFile(data() / "Trash", "From canary");
    writeFile(data() / "Preferences", R"({"sites": {"seen": ["canary"]}, "size": 1.5})");
    choose({"trash", "sitedata"});
    runOnce();
    EXPECT_THAT(linesOf("Lynx"),
                ElementsAre("Lynx", "Shred: ~/.lynx/Trash", "Clean: ~/.lynx/Preferences (1 keys)"));
    EXPECT_TRUE(fs::exists(data() / "Trash"));
    EXPECT_EQ(readFile(data() / "Trash"), "");
    EXPECT_EQ(readFile(data() / "Preferences"), R"({"sites":{},"size":1.5})");
    EXPECT_EQ(std::distance(fs::directory_iterator(data()), {}), 2);
    EXPECT_EQ(outcome().filesOverwritten, 2U);
    runOnce();
    EXPECT_THAT(linesOf("Lynx"), ElementsAre("Lynx"));
}

TEST_F(TracesRunTest, AnApplicationThatRunsIsLeftAloneAndThatIsSaid) {
    addPlaces();
    writeFile(data() / "cache/a", "canary");
    choose({"history", "cache"});
    programs.start("/usr/bin/lynx");
    const auto before = everything();
    runOnce();
    EXPECT_EQ(everything(), before);
    EXPECT_THAT(linesOf("Lynx"),
                ElementsAre("Lynx", "Running - quit it to have its traces shredded."));
    EXPECT_EQ(reports.back().result, RunResult::nothingSelected);
    EXPECT_THAT(reports.back().skipped, Contains("Lynx"));
}

TEST_F(TracesRunTest, WhereProcessesCannotBeListedEveryApplicationMayRun) {
    writeFile(data() / "cache/a", "canary");
    choose({"cache"});
    programs.fails = true;
    runOnce();
    EXPECT_TRUE(fs::exists(data() / "cache/a"));
    EXPECT_THAT(reports.back().skipped, Contains("Lynx"));
}

TEST_F(TracesRunTest, AnApplicationThatStartsBeforeTheShreddingIsLeftAlone) {
    addPlaces();
    writeFile(data() / "cache/a", "canary");
    choose({"history", "cache"});
    const auto before = everything();
    // The first listing is the collecting's.
    programs.onList = [this] {
        if (programs.lists == 2) programs.start("/usr/bin/lynx");
    };
    runOnce();
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(outcome().notCleaned, 0U);
    EXPECT_EQ(outcome().allTroubles, 0U);
    EXPECT_THAT(reports.back().skipped, Contains("Lynx"));
    EXPECT_THAT(logLines(), Contains("Skip: Lynx (running)"));
}

TEST_F(TracesRunTest, AnApplicationThatStartsJustBeforeTheExchangeKeepsItsDatabase) {
    addPlaces();
    choose({"history"});
    const std::string before = readFile(data() / "places.db");
    programs.onList = [this] {
        if (programs.lists == 3) programs.start("/usr/bin/lynx");
    };
    runOnce();
    EXPECT_EQ(readFile(data() / "places.db"), before);
    EXPECT_EQ(std::distance(fs::directory_iterator(data()), {}), 1);
    EXPECT_EQ(outcome().notCleaned, 0U);
    EXPECT_THAT(logLines(), Contains("Skip: ~/.lynx/places.db (running)"));
}

TEST_F(TracesRunTest, ADamagedDatabaseStaysAsItIsAndIsNamed) {
    writeFile(data() / "places.db", "no database, though long enough to be looked at as one");
    writeFile(data() / "cache/a", "canary");
    choose({"history", "cache"});
    const std::string before = readFile(data() / "places.db");
    runOnce();
    EXPECT_EQ(readFile(data() / "places.db"), before);
    EXPECT_THAT(linesOf("Lynx"),
                ElementsAre("Lynx", "Shred: ~/.lynx/cache", "Skip: ~/.lynx/places.db (corrupt)"));
    EXPECT_EQ(outcome().notCleaned, 1U);
    ASSERT_EQ(outcome().troubles.size(), 1U);
    EXPECT_EQ(outcome().troubles[0].path, data() / "places.db");
    EXPECT_EQ(outcome().troubles[0].operation, "clean");
    EXPECT_FALSE(fs::exists(data() / "cache"));
}

TEST_F(TracesRunTest, NothingToTakeButSomethingToTellIsTold) {
    writeFile(data() / "places.db", "no database, though long enough to be looked at as one");
    choose({"history"});
    runOnce();
    EXPECT_EQ(reports.back().result, RunResult::completed);
    EXPECT_EQ(outcome().notCleaned, 1U);
}

TEST_F(TracesRunTest, AnApplicationThatNothingDescribesIsTold) {
    choose({"cache"}, "elinks");
    describe("broken", "name = 7\n");
    runOnce();
    EXPECT_THAT(linesOf("elinks"),
                ElementsAre("elinks", "Unknown - nothing describes where it keeps its traces."));
    EXPECT_EQ(outcome().notCleaned, 1U);
    EXPECT_THAT(reports.back().catalogueFaults, Contains(HasSubstr("broken.toml:1: ")));
}

TEST_F(TracesRunTest, TheConfirmationNamesWhatIsChosen) {
    preferences.set("ConfirmShredding", true);
    preferences.set("ShredCache", true);
    choose({"cache", "history"});
    choose({"cache"}, "elinks");
    alerts.answers["Dorvanel Confirmation"] = AlertButton::defaultButton;
    runOnce();
    EXPECT_THAT(calls.calls(), Contains(HasSubstr("shred these items: Browser Cache, elinks "
                                                  "(cache), Lynx (cache, history) ?")));
}

TEST_F(TracesRunTest, ARunThatIsCancelledTouchesNothing) {
    preferences.set("ConfirmShredding", true);
    addPlaces();
    choose({"history"});
    alerts.answers["Dorvanel Confirmation"] = AlertButton::defaultButton;
    const auto before = everything();
    runOnce();
    EXPECT_EQ(everything(), before);
}

TEST_F(TracesRunTest, AQuitRequestWhileItCollectsLeavesEverythingAsItWas) {
    addPlaces();
    writeFile(data() / "cache/a", "canary");
    choose({"cache", "history"});
    const auto before = everything();
    programs.onList = [this] { run.giveUp(); };
    runOnce();
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(reports.back().result, RunResult::givenUp);
}

TEST_F(TracesRunTest, AStopBeforeTheExchangeLeavesTheDatabase) {
    addPlaces();
    choose({"history"});
    const std::string before = readFile(data() / "places.db");
    fileAccess.requestStop();
    runOnce();
    EXPECT_EQ(readFile(data() / "places.db"), before);
    EXPECT_EQ(std::distance(fs::directory_iterator(data()), {}), 1);
    EXPECT_TRUE(outcome().stopped);
    EXPECT_EQ(outcome().notCleaned, 0U);
}

TEST_F(TracesRunTest, WhatAKilledRunLeftBesideADatabaseGoesWithTheNext) {
    addPlaces();
    writeFile(data() / "places.db.dorvanel-ab3de6", "canary of an old database");
    choose({"history"});
    runOnce();
    EXPECT_THAT(linesOf("Lynx"), Contains("Shred: ~/.lynx/places.db.dorvanel-ab3de6"));
    EXPECT_FALSE(fs::exists(data() / "places.db.dorvanel-ab3de6"));
}

TEST_F(TracesRunTest, TheJournalOfAppleMailsIndexIsShreddedAndNotInTheLog) {
    const std::string index = home / "Library/Mail/Envelope Index";
    {
        SampleIndex mail(index);
        mail.createTables();
        mail.addMailbox("local:///Trash", 500);
        mail.run("alter table messages add column text; update messages set text='canary'");
    }
    addSafariCache();
    preferences.set("ShredCache", true);
    clock.step = {};  // the index is given so much time, and no more
    runOnce();
    EXPECT_EQ(SampleIndex(index).messages(1), 0);
    EXPECT_EQ(std::distance(fs::directory_iterator(home / "Library/Mail"), {}), 1);
    EXPECT_THAT(logLines(), Not(Contains(HasSubstr("journal"))));
    EXPECT_EQ(outcome().filesOverwritten, 2U);
}

TEST_F(TracesRunTest, BeforeALogoutTheChosenApplicationsAreAskedToQuitAndWaitedFor) {
    writeFile(data() / "cache/a", "canary");
    choose({"cache"});
    programs.start("/usr/bin/lynx");
    programs.onQuit = [this](std::int32_t pid) { programs.end(pid); };
    run.shredAndLogout();
    run.waitForWorker();
    EXPECT_EQ(programs.asked.size(), 1U);
    EXPECT_FALSE(fs::exists(data() / "cache"));
    EXPECT_EQ(clock.sleeps.size(), 1U);
}

TEST_F(TracesRunTest, OneThatDoesNotQuitIsCountedInTheQuestion) {
    writeFile(data() / "cache/a", "canary");
    choose({"cache"});
    programs.start("/usr/bin/lynx");
    alerts.answers["Dorvanel Quit Browsers"] = AlertButton::alternateButton;
    run.shredAndLogout();
    run.waitForWorker();
    EXPECT_THAT(calls.calls(),
                Contains(HasSubstr("1 Email or Browser Applications did not quit.")));
    EXPECT_TRUE(fs::exists(data() / "cache/a"));
    EXPECT_EQ(clock.sleeps.size(), 51U);
}

}  // namespace
}  // namespace dorvanel::test

// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <regex>

#include "app/terminal/TestTerminal.h"
#include "log/ActivityLog.h"
#include "prefs/PropertyListDefaults.h"
#include "support/ChildProcess.h"
#include "support/FakeApplication.h"
#include "support/LogCapture.h"
#include "support/OwnProcesses.h"
#include "support/PrivateBus.h"
#include "support/SampleHome.h"
#include "support/TemporaryFolder.h"

// Whole runs over a home of the period, with the real process listing of the processes that a test
// starts.

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;

class FullRunTest : public ::testing::Test {
  protected:
    FullRunTest() {
        sample.addBystanders();
        sample.addBrowsers();
        sample.addMailboxes();
        sample.addMozillaProfile("default", 1, 0);
        sample.addFirefoxProfile("a1b2c3d4.default");
        sample.addOldProfiles(1, 1);
        sample.addMailAccount("POP-joe@mail.example.org");
        sample.addEnvelopeIndex({"pop://joe@mail.example.org/Deleted%20Messages", "local:///Notes"},
                                3);
        sample.addMailsmith(true);
        set("ActivityLog", "YES");
    }
    ~FullRunTest() override { kalvet_logger_close(); }

    void set(const std::string& key, const std::string& value) {
        ASSERT_EQ(shell.run({"prefs", "set", key, value}), 0) << shell.err.str();
    }

    /// The log with what differs from run to run left out: the dates, where the home is, and the
    /// random names, which are only counted.
    [[nodiscard]] std::string readableLog() const {
        const std::regex randomName("[A-Za-z0-9]{9,32}");
        const std::string homePath = home.path();
        std::string text;
        std::size_t names = 0;
        bool shredding = false;
        for (std::string line : LogCapture::linesNow()) {
            if (shredding && std::regex_match(line, randomName)) {
                ++names;
                continue;
            }
            for (std::size_t at = line.find(homePath); at != std::string::npos;
                 at = line.find(homePath)) {
                line.replace(at, homePath.size(), "HOME");
            }
            if (shredding && names > 0) text += "(" + std::to_string(names) + " random names)\n";
            names = 0;
            text += line + "\n";
            shredding = shredding || line == "Start Shredding Now";
        }
        return text;
    }

    /// Returns early where the run ends before.
    static void waitUntilShredding(const ChildProcess& run) {
        while (run.isRunning()) {
            const auto lines = LogCapture::linesNow();
            if (std::find(lines.begin(), lines.end(), "Start Shredding Now") != lines.end()) return;
        }
    }

    [[nodiscard]] std::size_t files() const {
        return static_cast<std::size_t>(std::count_if(
            fs::recursive_directory_iterator(home.path()), fs::recursive_directory_iterator(),
            [](const auto& entry) { return entry.is_regular_file(); }));
    }

    TemporaryHome home;
    SampleHome sample{home.path(), 20041109};
    TestTerminal shell;
};

TEST_F(FullRunTest, TheWholeLogIsAsAPersonCanReadIt) {
    for (const char* key : {"ShredHistory", "ShredIEDownloadCache", "ShredAppleMailJunk",
                            "ShredMailsmithSpam", "shredSafariFavicon", "ShredMailCache"}) {
        set(key, "YES");
    }
    EXPECT_EQ(shell.run({"run", "--yes"}), 0) << shell.err.str();
    EXPECT_EQ(readableLog(), readFile(DORVANEL_GOLDEN "/full-run.txt")) << readableLog();
    EXPECT_THAT(shell.out.str(), HasSubstr(" overwritten ("));
    EXPECT_THAT(shell.out.str(), HasSubstr("Activity Log: " + activityLogPath() + "\n"));
    for (const auto& entry : fs::recursive_directory_iterator(home.path())) {
        EXPECT_THAT(entry.path().filename(), Not(HasSubstr("Dorvanel X Items")));
    }
}

TEST_F(FullRunTest, WithEveryApplicationDisabledNothingIsSelected) {
    for (const char* name : {"Safari", "Internet Explorer", "Mozilla", "iCab", "Omniweb", "Opera",
                             "Camino", "Firefox", "Apple Mail", "Eudora", "Mailsmith"}) {
        ASSERT_EQ(shell.run({"apps", "disable", name}), 0) << name;
    }
    writeFile(activityLogPath());
    const std::size_t before = files();
    EXPECT_EQ(shell.run({"run", "--yes"}), 0);
    EXPECT_THAT(shell.out.str(), HasSubstr("nothing selected to shred\n"));
    EXPECT_EQ(LogCapture::linesNow().back(), "Nothing selected to shred");
    EXPECT_EQ(files(), before);
}

TEST_F(FullRunTest, AnAnswerOfNoCancelsAndTouchesNothing) {
    shell.in.str("no\n");
    EXPECT_EQ(shell.run({"run"}), 3);
    EXPECT_THAT(shell.err.str(), HasSubstr("Dorvanel Confirmation"));
    EXPECT_EQ(LogCapture::linesNow().back(),
              "User selected NO in Confirm dialog - Dorvanel Cancelled");
    EXPECT_TRUE(fs::exists(home / "Library/Caches/Safari"));
}

TEST_F(FullRunTest, AnAnswerOfYesShreds) {
    shell.in.str("y\n");
    EXPECT_EQ(shell.run({"run"}), 0);
    EXPECT_FALSE(fs::exists(home / "Library/Caches/Safari"));
}

TEST_F(FullRunTest, TheEndOfTheInputIsTheDefaultAnswerNo) {
    EXPECT_EQ(shell.run({"run"}), 3);
}

TEST_F(FullRunTest, ASafariThatRunsIsLeftAloneAndNamed) {
    const FakeApplication safari(home.path(), "Safari", "APPLsfri");
    EXPECT_EQ(shell.run({"run", "--yes"}), 0);
    EXPECT_THAT(shell.out.str(), HasSubstr("not touched, because running: Safari\n"));
    EXPECT_TRUE(fs::exists(home / "Library/Caches/Safari"));
    EXPECT_THAT(LogCapture::linesNow(), Not(Contains("Safari")));
    EXPECT_FALSE(fs::exists(home / "Library/Caches/MS Internet Cache"));
}

TEST_F(FullRunTest, WithTheLogOffTheLogOfTheRunBeforeIsEmptied) {
    writeFile(activityLogPath(), "the run before");
    set("ActivityLog", "NO");
    EXPECT_EQ(shell.run({"run", "--yes"}), 0);
    EXPECT_EQ(readFile(activityLogPath()), "");
    EXPECT_THAT(shell.out.str(), Not(HasSubstr("Activity Log")));
}

TEST_F(FullRunTest, ARunSavesThePreferencesAndKeepsWhatItDoesNotKnow) {
    const std::string file = userDefaultsPath();
    std::string stored = readFile(file);
    ASSERT_THAT(stored, HasSubstr("</dict>"));
    stored.insert(stored.rfind("</dict>"),
                  "<key>Another program's</key><string>kept</string>"
                  "<key>ShredHistory</key><false/>");  // the default, which a save leaves out
    writeFile(file, stored);
    EXPECT_EQ(shell.run({"run", "--yes"}), 0);
    stored = readFile(file);
    EXPECT_THAT(stored, HasSubstr("Another program's"));
    EXPECT_THAT(stored, HasSubstr("ActivityLog"));
    EXPECT_THAT(stored, Not(HasSubstr("ShredHistory")));
}

TEST_F(FullRunTest, BadWordsTouchNothing) {
    EXPECT_EQ(shell.run({"run", "--then", "sleep"}), 2);
    EXPECT_EQ(shell.run({"run", "everything"}), 2);
    EXPECT_TRUE(fs::exists(home / "Library/Caches/Safari"));
}

TEST_F(FullRunTest, AKilledRunLosesNothingUnlistedAndTheNextOneEndsClean) {
    // Large enough that the kill comes in the middle.
    writeFile(home / "Library/Caches/Safari/large", std::string(std::size_t{64} << 20, 'x'));
    const auto bystanders = [this] {
        std::vector<std::string> kept;
        for (const auto& entry : fs::recursive_directory_iterator(home / "Documents")) {
            const std::string path = entry.path();
            if (path.find("Eudora Folder") != std::string::npos) continue;  // its Trash is taken
            if (entry.is_regular_file()) kept.push_back(path + readFile(path));
        }
        std::sort(kept.begin(), kept.end());
        return kept;
    };
    const auto before = bystanders();
    set("NumberOfWrites", "16");
    ChildProcess run({DORVANEL_PROGRAM, "run", "--yes"});
    waitUntilShredding(run);
    run.signal(SIGKILL);
    EXPECT_EQ(run.waitForEnd(), 128 + SIGKILL);
    EXPECT_TRUE(bystanders() == before);
    set("NumberOfWrites", "2");  // the preferences are whole
    EXPECT_EQ(shell.run({"run", "--yes"}), 0) << shell.err.str();
    EXPECT_TRUE(bystanders() == before);
    EXPECT_EQ(LogCapture::linesNow().back(), "Dorvanel Completed Successfully");
}

TEST_F(FullRunTest, AnInterruptEndsARunAfterTheBlockAndSaysWhatIsLeft) {
    writeFile(home / "Library/Caches/Safari/large", std::string(std::size_t{64} << 20, 'x'));
    set("NumberOfWrites", "16");
    ChildProcess run({"sh", "-c", "exec \"$0\" run --yes 2>&1", DORVANEL_PROGRAM});
    waitUntilShredding(run);
    run.signal(SIGINT);
    std::string told;
    for (std::string line = run.readLine(); !line.empty(); line = run.readLine()) {
        told += line + "\n";
    }
    EXPECT_THAT(told, HasSubstr("; stopped\n"));
    EXPECT_THAT(told, HasSubstr("dorvanel: left: " + home.path().string() + "/Library/"));
    EXPECT_EQ(run.waitForEnd(), 130);
}

TEST_F(FullRunTest, AWatchedSafariThatQuitsIsCleanedUpAfterWithinAPeriod) {
    FakeApplication safari(home.path(), "Safari", "APPLsfri");
    ChildProcess watch({DORVANEL_PROGRAM, "watch", "--yes"});
    EXPECT_EQ(watch.readLine(), "Enabled and waiting for the first timer event to occur...");
    EXPECT_EQ(watch.readLine(), "A supported browser or email application is running...");
    EXPECT_TRUE(fs::exists(home / "Library/Caches/Safari"));
    safari.process().signal(SIGTERM);
    safari.process().waitForEnd();
    EXPECT_EQ(watch.readLine(), "All supported browser or email application have quit...");
    while (fs::exists(home / "Library/Caches/Safari") && watch.isRunning()) {
    }
    watch.signal(SIGTERM);  // waits for what is left of the run
    EXPECT_EQ(watch.waitForEnd(), 0);
}

TEST_F(FullRunTest, ALogoutRunAsksApplicationsToQuitAndSendsOneRequest) {
    if (!processesAreOwn()) GTEST_SKIP() << "it would ask this user's real applications to quit";
    PrivateBus bus;
    bus.startLoginManager();
    FakeApplication safari(home.path(), "Safari", "APPLsfri");
    FakeApplication omniWeb(home.path(), "OmniWeb", "APPLOWEB", "stay");
    EXPECT_EQ(shell.run({"run", "--then", "logout", "--yes"}), 0) << shell.err.str();
    EXPECT_THAT(shell.err.str(), HasSubstr("1 Email or Browser Applications did not quit."));
    EXPECT_EQ(bus.calls(), "TerminateSession \"auto\"\n");
    EXPECT_FALSE(safari.isRunning());
    EXPECT_TRUE(omniWeb.isRunning());
    EXPECT_FALSE(fs::exists(home / "Library/Caches/Safari"));
    EXPECT_TRUE(fs::exists(home / "Library/Caches/com.omnigroup.OmniWeb5/Cache.bundle"));
}

}  // namespace
}  // namespace dorvanel::test

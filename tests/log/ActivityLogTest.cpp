// SPDX-License-Identifier: MIT
#include "log/ActivityLog.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <ctime>
#include <filesystem>
#include <thread>
#include <utility>

#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

class ActivityLogTest : public ::testing::Test {
  protected:
    ~ActivityLogTest() override { kalvet_logger_close(); }

    [[nodiscard]] std::string text() const { return readFile(activityLogPath()); }

    TemporaryHome home;
};

TEST_F(ActivityLogTest, LiesInTheLogsFolderOfTheHome) {
    EXPECT_EQ(activityLogPath(), home / "Library/Logs/Dorvanel X Log.txt");
}

TEST_F(ActivityLogTest, WritingWhileClosedChangesNoFile) {
    kalvet_logger("lost");
    EXPECT_FALSE(std::filesystem::exists(activityLogPath()));
}

TEST_F(ActivityLogTest, InASilenceTheThreadWritesNothingAndAfterwardsAsEver) {
    kalvet_logger_open();
    {
        const LogSilence silence;
        {
            const LogSilence inner;
            kalvet_logger("lost");
        }
        kalvet_logger("lost");
        std::thread([] { kalvet_logger("kept"); }).join();
    }
    kalvet_logger("kept");
    EXPECT_EQ(text().find("lost"), std::string::npos);
    EXPECT_EQ(text().size(), 2 * 30U) << "another thread is not silent";
}

TEST_F(ActivityLogTest, ALineIsTheTimeAsCtimeHasItABlankAndTheMessage) {
    kalvet_logger_open();
    const std::time_t before = std::time(nullptr);
    kalvet_logger("Dorvanel Initiated");
    const std::time_t after = std::time(nullptr);
    auto line = [](std::time_t at) {
        std::string stamp = std::ctime(&at);
        stamp.back() = ' ';
        return stamp + "Dorvanel Initiated\n";
    };
    EXPECT_TRUE(text() == line(before) || text() == line(after)) << text();
}

TEST_F(ActivityLogTest, AnEmptyMessageMakesALineOfOnlyTheTimeStamp) {
    kalvet_logger_open();
    kalvet_logger("");
    EXPECT_EQ(text().size(), 26U);
    EXPECT_EQ(text().substr(24), " \n");
}

TEST_F(ActivityLogTest, EachLineIsInTheFileAsSoonAsItIsWritten) {
    kalvet_logger_open();
    kalvet_logger("a");
    EXPECT_EQ(text().size(), 27U);
    kalvet_logger("b");
    EXPECT_EQ(text().size(), 54U);
}

TEST_F(ActivityLogTest, AMessageWithANewlineIsWrittenAsItIs) {
    kalvet_logger_open();
    kalvet_logger("one\ntwo %s %n");
    EXPECT_EQ(text().substr(25), "one\ntwo %s %n\n");
}

TEST_F(ActivityLogTest, OpeningTwiceDoesNotEmptyTheFileAgain) {
    kalvet_logger_open();
    kalvet_logger("kept");
    kalvet_logger_open();
    kalvet_logger("added");
    EXPECT_EQ(text().substr(25, 5), "kept\n");
    EXPECT_EQ(text().size(), 2 * 25U + 5 + 6);
}

TEST_F(ActivityLogTest, OpeningAClosedLogEmptiesTheFile) {
    kalvet_logger_open();
    kalvet_logger("old");
    kalvet_logger_close();
    kalvet_logger_open();
    EXPECT_EQ(text(), "");
}

TEST_F(ActivityLogTest, ARunWithTheLogOffLeavesAnEmptyFileThatAnybodyMayWrite) {
    writeFile(activityLogPath(), "the run before");
    kalvet_logger_open();
    kalvet_logger_close();
    kalvet_logger("dropped");
    EXPECT_EQ(text(), "");
    struct stat status {};
    ASSERT_EQ(stat(activityLogPath().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0777U);
}

TEST_F(ActivityLogTest, StaysClosedWithoutAHome) {
    unsetenv("HOME");
    kalvet_logger_open();
    kalvet_logger("nowhere");
    setenv("HOME", home.path().c_str(), 1);
    EXPECT_FALSE(std::filesystem::exists(activityLogPath()));
}

TEST_F(ActivityLogTest, StaysClosedWhenTheFileCannotBeMade) {
    std::filesystem::remove_all(home / "Library/Logs");
    kalvet_logger_open();
    std::filesystem::create_directories(home / "Library/Logs");
    kalvet_logger("dropped");
    EXPECT_FALSE(std::filesystem::exists(activityLogPath()));
    kalvet_logger_close();
}

TEST_F(ActivityLogTest, TheDebugTraceWritesNothing) {
    kalvet_debugger_open();
    kalvet_debugger("trace");
    kalvet_debugger_close();
    EXPECT_TRUE(std::filesystem::is_empty(home / "Library/Logs"));
}

TEST_F(ActivityLogTest, SaysWhyItCouldNotBeOpenedUntilItCan) {
    std::filesystem::create_directory(activityLogPath());
    kalvet_logger_open();
    ASSERT_TRUE(activityLogTrouble());
    EXPECT_EQ(activityLogTrouble()->message(), activityLogPath() + ": open: not a regular file");
    std::filesystem::remove(activityLogPath());
    kalvet_logger_open();
    EXPECT_FALSE(activityLogTrouble());
}

TEST_F(ActivityLogTest, APipeInItsPlaceIsLeftAloneAndNotWaitedFor) {
    ASSERT_EQ(mkfifo(activityLogPath().c_str(), 0600), 0);
    for (const bool hasReader : {false, true}) {
        const int reader = hasReader ? open(activityLogPath().c_str(), O_RDONLY | O_NONBLOCK) : -1;
        kalvet_logger_open();
        kalvet_logger("not for this pipe");
        EXPECT_TRUE(activityLogTrouble());
        char byte = 0;
        if (hasReader) {
            EXPECT_LE(read(reader, &byte, 1), 0);
            close(reader);
        }
    }
    struct stat status {};
    ASSERT_EQ(stat(activityLogPath().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0600U);
}

TEST_F(ActivityLogTest, TheUsersOwnLinkLeadsToTheLogThatIsMeant) {
    writeFile(home / "elsewhere/log", "the run before");
    std::filesystem::create_symlink(home / "middle", activityLogPath());
    std::filesystem::create_symlink("elsewhere/log", home / "middle");
    kalvet_logger_open();
    EXPECT_FALSE(activityLogTrouble());
    EXPECT_EQ(readFile(home / "elsewhere/log"), "");
    kalvet_logger_close();
    std::filesystem::remove(home / "elsewhere/log");
    kalvet_logger_open();
    EXPECT_TRUE(std::filesystem::exists(home / "elsewhere/log")) << "made where the link leads";
}

TEST_F(ActivityLogTest, ALinkThatSomebodyElseMadeIsNotFollowed) {
    if (geteuid() != 0) {
        GTEST_LOG_(INFO) << "not run: only root makes links of other people";
        return;
    }
    writeFile(home / "important", "kept");
    std::filesystem::create_symlink(home / "important", activityLogPath());
    ASSERT_EQ(lchown(activityLogPath().c_str(), 65534, 65534), 0);
    kalvet_logger_open();
    EXPECT_TRUE(activityLogTrouble());
    EXPECT_EQ(readFile(home / "important"), "kept");
}

TEST_F(ActivityLogTest, AFileOfSomebodyElseThatHasOtherNamesIsNotEmptied) {
    if (geteuid() != 0) {
        GTEST_LOG_(INFO) << "not run: only root makes files of other people";
        return;
    }
    writeFile(home / "theirs", "kept");
    ASSERT_EQ(chown((home / "theirs").c_str(), 65534, 65534), 0);
    ASSERT_EQ(chmod((home / "theirs").c_str(), 0666), 0);
    std::filesystem::create_hard_link(home / "theirs", activityLogPath());
    kalvet_logger_open();
    EXPECT_TRUE(activityLogTrouble());
    EXPECT_EQ(readFile(home / "theirs"), "kept");
    struct stat status {};
    ASSERT_EQ(stat((home / "theirs").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0666U);
}

TEST_F(ActivityLogTest, TheUsersOwnFileMayHaveOtherNames) {
    writeFile(home / "mine", "the run before");
    std::filesystem::create_hard_link(home / "mine", activityLogPath());
    kalvet_logger_open();
    EXPECT_FALSE(activityLogTrouble());
    EXPECT_EQ(readFile(home / "mine"), "");
}

TEST_F(ActivityLogTest, TheTimeZoneIsReadAgainAtEachOpening) {
    const auto stampedAheadOfUtc = [](int minutes, std::time_t at) {
        const std::time_t shifted = at + std::time_t{60} * minutes;
        std::tm fields{};
        gmtime_r(&shifted, &fields);
        char stamp[26];
        return std::string(asctime_r(&fields, stamp)).substr(0, 24) + " x\n";
    };
    for (const auto& [zone, minutes] : {std::pair("AAA0", 0), std::pair("BBB-11:30", 690)}) {
        const EnvironmentVariable timeZone("TZ", zone);
        const std::time_t before = std::time(nullptr);
        kalvet_logger_open();
        kalvet_logger("x");
        kalvet_logger_close();
        bool isInTheZone = false;
        for (std::time_t at = before; at <= std::time(nullptr); ++at) {
            isInTheZone = isInTheZone || text() == stampedAheadOfUtc(minutes, at);
        }
        EXPECT_TRUE(isInTheZone) << zone << ": " << text();
    }
    tzset();
}

TEST_F(ActivityLogTest, ANameOnOneLineHasBlanksForItsLineBreaks) {
    EXPECT_EQ(onOneLine("a\nb\rc\r\nd"), "a b c  d");
    EXPECT_EQ(onOneLine("\xC4 plain"), "\xC4 plain");
}

}  // namespace
}  // namespace dorvanel::test

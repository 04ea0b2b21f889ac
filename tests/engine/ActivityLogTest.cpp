#include "engine/ActivityLog.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

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

}  // namespace
}  // namespace dorvanel::test

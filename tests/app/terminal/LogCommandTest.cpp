// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "app/terminal/TestTerminal.h"
#include "log/ActivityLog.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

class LogCommandTest : public ::testing::Test {
  protected:
    TemporaryHome home;
};

TEST_F(LogCommandTest, PrintsTheBytesOfTheLogIntoAPipe) {
    std::string bytes = "Sat Nov 21 04:10:11 2026 Shred: ~/Cache \xC4\n\x1b[31m\t\\\n";
    bytes += std::string("\0no newline at the end", 22);
    for (int i = 0; i < 5000; ++i) bytes += "another line that makes the log long\n";
    bytes += "end";
    writeFile(activityLogPath(), bytes);
    TestTerminal console;
    EXPECT_EQ(console.run({"log"}), 0);
    EXPECT_EQ(console.out.str(), bytes);
    EXPECT_EQ(console.err.str(), "");
}

TEST_F(LogCommandTest, MakesControlCharactersHarmlessOnATerminal) {
    writeFile(activityLogPath(), "one\n\x1b[31mtwo\r\xC4\n\nthree");
    TestTerminal console(80);
    EXPECT_EQ(console.run({"log"}), 0);
    EXPECT_EQ(console.out.str(), "one\n\\x1b[31mtwo\\r\\xc4\n\nthree\n");
}

TEST_F(LogCommandTest, AnEmptyLogPrintsNothing) {
    writeFile(activityLogPath());
    for (TestTerminal* console : {new TestTerminal, new TestTerminal(80)}) {
        EXPECT_EQ(console->run({"log"}), 0);
        EXPECT_EQ(console->out.str() + console->err.str(), "");
        delete console;
    }
}

TEST_F(LogCommandTest, AMissingLogIsToldOnStandardError) {
    TestTerminal console;
    EXPECT_EQ(console.run({"log"}), 0);
    EXPECT_EQ(console.out.str(), "");
    EXPECT_EQ(console.err.str(),
              "dorvanel: there is no Activity Log yet: " + activityLogPath() + "\n");
}

TEST_F(LogCommandTest, ALogThatCannotBeReadIsToldAndFails) {
    std::filesystem::create_directories(activityLogPath());
    TestTerminal console;
    EXPECT_EQ(console.run({"log"}), 1);
    EXPECT_EQ(console.err.str(), "dorvanel: " + activityLogPath() + ": Is a directory\n");
}

TEST_F(LogCommandTest, APipeInThePlaceOfTheLogIsNotWaitedFor) {
    TestTerminal console;
    ASSERT_EQ(mkfifo(activityLogPath().c_str(), 0600), 0);
    EXPECT_EQ(console.run({"log"}), 1);
    EXPECT_EQ(console.err.str(), "dorvanel: " + activityLogPath() + ": not a regular file\n");
}

}  // namespace
}  // namespace dorvanel::test

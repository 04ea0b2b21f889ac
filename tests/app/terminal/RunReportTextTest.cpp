// SPDX-License-Identifier: MIT
#include "app/terminal/RunReportText.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "app/terminal/TestTerminal.h"
#include "log/ActivityLog.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

/// What is said of the Activity Log after a run that found nothing.
class RunReportTextTest : public ::testing::Test {
  protected:
    void tell(bool wroteLog) {
        console.out.str({});
        console.err.str({});
        kalvet_logger_open();
        kalvet_logger_close();
        RunReport report;
        report.result = RunResult::nothingSelected;
        terminal::tellReport(report, wroteLog, console.terminal);
    }

    TemporaryHome home;
    TestTerminal console;
};

TEST_F(RunReportTextTest, TheLogIsNamedWhereItWasWritten) {
    tell(true);
    EXPECT_EQ(console.out.str(),
              "nothing selected to shred\nActivity Log: " + activityLogPath() + "\n");
    EXPECT_EQ(console.err.str(), "");
    tell(false);
    EXPECT_EQ(console.out.str(), "nothing selected to shred\n");
    EXPECT_EQ(console.err.str(), "");
}

TEST_F(RunReportTextTest, ALogThatCouldNotBeOpenedIsNotNamedButTold) {
    ASSERT_EQ(mkfifo(activityLogPath().c_str(), 0600), 0);
    for (const bool wroteLog : {true, false}) {
        tell(wroteLog);
        EXPECT_EQ(console.out.str(), "nothing selected to shred\n");
        EXPECT_EQ(console.err.str(), "dorvanel: no Activity Log: " + activityLogPath() +
                                         ": open: not a regular file\n");
    }
}

TEST_F(RunReportTextTest, WithoutAHomeThereIsNoLogToNameNorToMiss) {
    unsetenv("HOME");
    tell(false);
    EXPECT_EQ(console.err.str(), "");
    tell(true);
    EXPECT_EQ(console.out.str(), "nothing selected to shred\n");
    EXPECT_EQ(console.err.str(),
              "dorvanel: no Activity Log: open the Activity Log: HOME is not set\n");
    setenv("HOME", home.path().c_str(), 1);
}

}  // namespace
}  // namespace dorvanel::test

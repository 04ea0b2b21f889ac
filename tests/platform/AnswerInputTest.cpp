// SPDX-License-Identifier: MIT
#include "platform/AnswerInput.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include <string>
#include <string_view>
#include <thread>

namespace dorvanel::test {
namespace {

using platform::AnswerInput;
using Read = AnswerInput::Read;

/// Has the standard input be what a test writes to, and puts the former one back.
class AnswerInputTest : public ::testing::Test {
  protected:
    ~AnswerInputTest() override {
        dup2(former_, STDIN_FILENO);
        close(former_);
        if (writing_ >= 0) close(writing_);
    }

    void usePipe() {
        int ends[2];
        ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
        use(ends[0]);
        writing_ = ends[1];
    }
    /// A terminal that takes whole lines, as a person's does, and does not echo.
    void useTerminal() {
        int terminal = -1;
        ASSERT_EQ(openpty(&writing_, &terminal, nullptr, nullptr, nullptr), 0);
        termios settings{};
        tcgetattr(terminal, &settings);
        settings.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        tcsetattr(terminal, TCSANOW, &settings);
        use(terminal);
    }
    void type(std::string_view text) {
        ASSERT_EQ(write(writing_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    void hangUp() {
        close(writing_);
        writing_ = -1;
    }

    std::unique_ptr<AnswerInput> input = std::move(platform::makeAnswerInput().value());
    std::string line;

  private:
    static void use(int descriptor) {
        dup2(descriptor, STDIN_FILENO);
        close(descriptor);
    }

    int former_ = fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3);
    int writing_ = -1;
};

TEST_F(AnswerInputTest, APipeGivesItsLinesOneAfterAnotherAndThenItsEnd) {
    usePipe();
    type("one\n\ntwo");
    hangUp();
    for (const char* expected : {"one", "", "two"}) {
        EXPECT_EQ(input->readLine(line), Read::line);
        EXPECT_EQ(line, expected);
    }
    EXPECT_EQ(input->readLine(line), Read::end);
    EXPECT_EQ(line, "");
    EXPECT_EQ(input->readLine(line), Read::end);
}

TEST_F(AnswerInputTest, WhatAPipeHoldsIsNotDiscarded) {
    usePipe();
    type("yes\n");
    input->discardPending();
    EXPECT_EQ(input->readLine(line), Read::line);
    EXPECT_EQ(line, "yes");
}

TEST_F(AnswerInputTest, WhatWasTypedOnATerminalBeforeIsDiscarded) {
    useTerminal();
    type("yes\nyes\n");
    input->discardPending();
    type("no\n");
    EXPECT_EQ(input->readLine(line), Read::line);
    EXPECT_EQ(line, "no");
}

TEST_F(AnswerInputTest, OneEndOfFileOnATerminalIsOneEnd) {
    useTerminal();
    type("\x04");
    EXPECT_EQ(input->readLine(line), Read::end);
    type("yes\n");
    EXPECT_EQ(input->readLine(line), Read::line);
    EXPECT_EQ(line, "yes");
}

TEST_F(AnswerInputTest, AReadThatWaitsIsInterruptedAndSoIsEveryLaterOne) {
    usePipe();
    std::thread other([this] { input->interrupt(); });
    EXPECT_EQ(input->readLine(line), Read::interrupted);
    other.join();
    type("yes\n");
    EXPECT_EQ(input->readLine(line), Read::interrupted);
}

}  // namespace
}  // namespace dorvanel::test

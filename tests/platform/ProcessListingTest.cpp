// SPDX-License-Identifier: MIT
#include "platform/ProcessListing.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <vector>

#include "platform/linux/LoginName.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

using namespace std::chrono_literals;
using Lines = std::vector<std::string>;

Lines linesOf(platform::CommandOutput& output) {
    Lines lines;
    while (!output.atEnd()) lines.push_back(output.readLine());
    return lines;
}

Lines linesOf(const std::string& command) {
    return linesOf(*platform::makeProcessListing()->open(command));
}

/// A command that hangs until the test lets it go, on a FIFO.
class HangingCommand {
  public:
    HangingCommand() { mkfifo(fifo_.c_str(), 0600); }
    /// No call waits for the other end here: a command that is not hanging is let be.
    ~HangingCommand() { end(); }

    [[nodiscard]] std::string text() const { return "cat '" + fifo_ + "' >/dev/null"; }
    void end() { close(open(fifo_.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC)); }

  private:
    TemporaryFolder folder_;
    std::string fifo_ = folder_ / "fifo";
};

TEST(ProcessListingTest, LinesComeWithTheirNewlineAndTheEndShowsWhenItIsMet) {
    EXPECT_EQ(linesOf("echo COMMAND; echo one"), (Lines{"COMMAND\n", "one\n", ""}));
}

TEST(ProcessListingTest, ALastLineWithoutNewlineIsTheEnd) {
    EXPECT_EQ(linesOf("printf 'COMMAND\\none'"), (Lines{"COMMAND\n", "one"}));
}

TEST(ProcessListingTest, ALongLineComesInPiecesOf2047Bytes) {
    const Lines lines = linesOf("printf '%05000d\\nnext\\n' 7");
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(lines[0], std::string(2047, '0'));
    EXPECT_EQ(lines[1], std::string(2047, '0'));
    EXPECT_EQ(lines[2], std::string(905, '0') + "7\n");
    EXPECT_EQ(lines[3], "next\n");
}

TEST(ProcessListingTest, ALineIsBytesAndEndsAtANul) {
    EXPECT_EQ(linesOf("printf 'a\\377b\\000c\\nd\\n'"), (Lines{"a\377b", "d\n", ""}));
}

TEST(ProcessListingTest, ACommandThatIsMissingSaysNothing) {
    EXPECT_EQ(linesOf("dorvanel-no-such-command 2>/dev/null"), Lines{""});
}

TEST(ProcessListingTest, ACommandKilledHalfWayLeavesTheLinesThatItWrote) {
    EXPECT_EQ(linesOf("echo COMMAND; echo one; kill -9 $$; echo two"),
              (Lines{"COMMAND\n", "one\n", ""}));
}

TEST(ProcessListingTest, AListingThatTakesTooLongEndsWithWhatHasCome) {
    HangingCommand hanging;
    const auto listing = platform::makeProcessListing(200ms);
    const auto output = listing->open("echo COMMAND; echo one; " + hanging.text() + "; echo two");
    EXPECT_EQ(linesOf(*output), (Lines{"COMMAND\n", "one\n", ""}));
}

TEST(ProcessListingTest, ACommandThatStaysAfterItsOutputIsNotWaitedForEither) {
    HangingCommand hanging;
    const auto listing = platform::makeProcessListing(200ms);
    EXPECT_EQ(linesOf(*listing->open("echo COMMAND; exec >&-; " + hanging.text())),
              (Lines{"COMMAND\n", ""}));
}

/// Whether a listing is whole that is read to its end.
bool isWhole(const std::string& command,
             std::chrono::milliseconds limit = platform::kListingTimeLimit) {
    const auto listing = platform::makeProcessListing(limit);
    const auto output = listing->open(command);
    linesOf(*output);
    return output->close();
}

TEST(ProcessListingTest, AListingReadToItsEndOfACommandThatEndedWellIsWhole) {
    EXPECT_TRUE(isWhole("echo COMMAND; echo one"));
    EXPECT_TRUE(isWhole("printf 'COMMAND\\none'"));
}

TEST(ProcessListingTest, AListingThatFailedWasKilledOrTookTooLongIsNotWhole) {
    HangingCommand hanging;
    EXPECT_FALSE(isWhole("dorvanel-no-such-command 2>/dev/null"));
    EXPECT_FALSE(isWhole("echo COMMAND; exit 1"));
    EXPECT_FALSE(isWhole("echo COMMAND; echo one; kill -9 $$"));
    EXPECT_FALSE(isWhole("echo COMMAND; " + hanging.text(), 200ms));
    EXPECT_FALSE(isWhole("echo COMMAND; exec >&-; " + hanging.text(), 200ms));
}

TEST(ProcessListingTest, AListingThatIsNotReadToItsEndIsNotWhole) {
    const auto listing = platform::makeProcessListing();
    const auto output = listing->open("echo COMMAND; echo one");
    output->readLine();
    EXPECT_FALSE(output->close());
    EXPECT_FALSE(output->close()) << "closed already";
}

TEST(ProcessListingTest, NoMoreAreStartedWhileFourHangAndThenTheyAre) {
    HangingCommand hanging;
    const auto listing = platform::makeProcessListing(1ms);
    for (int i = 0; i < 4; ++i) {
        const auto output = listing->open(hanging.text());
        ASSERT_NE(output, nullptr);
        linesOf(*output);
    }
    EXPECT_EQ(listing->open("echo COMMAND"), nullptr);
    // Each has it end when it has come as far as opening the FIFO; the test's own limit ends this.
    while (listing->open("true") == nullptr) hanging.end();
}

TEST(ProcessListingTest, TheKeysThatEndTheProgramDoNotEndTheListing) {
    EXPECT_EQ(linesOf("echo COMMAND; kill -INT $$; kill -TERM $$; kill -HUP $$; echo alive"),
              (Lines{"COMMAND\n", "alive\n", ""}));
    sigset_t mask;
    pthread_sigmask(SIG_BLOCK, nullptr, &mask);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) EXPECT_EQ(sigismember(&mask, signal), 0);
}

TEST(ProcessListingTest, TheUserIsOneThatPsTakes) {
    const auto listing = platform::makeProcessListing();
    const std::string user = listing->userName();
    EXPECT_TRUE(platform::isPlainLoginName(user)) << user;
    const auto output = listing->open("ps -w -w -o command -U " + user);
    EXPECT_EQ(output->readLine(), "COMMAND\n");
    bool found = false;
    for (const std::string& line : linesOf(*output)) {
        found = found || line.find("platform_tests") != std::string::npos;
    }
    EXPECT_TRUE(found);
}

struct Name {
    const char* text;
    bool plain;
};

void PrintTo(const Name& name, std::ostream* stream) {
    *stream << ::testing::PrintToString(std::string_view(name.text));
}

class LoginNameTest : public ::testing::TestWithParam<Name> {};

TEST_P(LoginNameTest, IsPlainWhenAShellAndPsReadItAsOneName) {
    EXPECT_EQ(platform::isPlainLoginName(GetParam().text), GetParam().plain);
}

INSTANTIATE_TEST_SUITE_P(
    Names, LoginNameTest,
    ::testing::Values(Name{"alice", true}, Name{"Alice_2.b-c", true}, Name{"a@b.example", true},
                      Name{"1000", true}, Name{"", false}, Name{"-U", false}, Name{"a b", false},
                      Name{"a,b", false}, Name{"a;b", false}, Name{"a$b", false},
                      Name{"$(x)", false}, Name{"`x`", false}, Name{"a|b", false},
                      Name{"a&b", false}, Name{"a>b", false}, Name{"a'b", false},
                      Name{"a\"b", false}, Name{"a\\b", false}, Name{"a\nb", false},
                      Name{"*", false}, Name{"~a", false}, Name{"#a", false},
                      Name{"J\xc3\xb6rg", false}));

}  // namespace
}  // namespace dorvanel::test

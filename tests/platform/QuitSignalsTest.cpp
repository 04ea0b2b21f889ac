// SPDX-License-Identifier: MIT
#include "platform/QuitSignals.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <semaphore>
#include <thread>

namespace dorvanel::test {
namespace {

/// What a test did to the signals ends with it.
class QuitSignalsTest : public ::testing::Test {
  protected:
    ~QuitSignalsTest() override {
        std::signal(SIGINT, SIG_DFL);
        std::signal(SIGTERM, SIG_DFL);
    }
    static auto handlerOf(int number) {
        struct sigaction action {};
        sigaction(number, nullptr, &action);
        return action.sa_handler;
    }
};

TEST_F(QuitSignalsTest, EachSignalIsToldOfOnAThreadOfItsOwn) {
    std::counting_semaphore<> received(0);
    std::thread::id where;
    const auto signals = platform::catchQuitSignals([&] {
        where = std::this_thread::get_id();
        received.release();
    });
    kill(getpid(), SIGINT);
    received.acquire();
    kill(getpid(), SIGTERM);
    received.acquire();
    EXPECT_NE(where, std::this_thread::get_id());
}

TEST_F(QuitSignalsTest, AtTheEndTheSignalsDoWhatTheyDidBefore) {
    platform::catchQuitSignals([] {}).value().reset();
    for (const int number : {SIGINT, SIGTERM}) EXPECT_EQ(handlerOf(number), SIG_DFL);
}

TEST_F(QuitSignalsTest, AfterOneHasComeAnotherDoesNotCutTheEndOfTheProgramShort) {
    std::binary_semaphore received(0);
    auto signals = std::move(platform::catchQuitSignals([&] { received.release(); }).value());
    kill(getpid(), SIGTERM);
    received.acquire();
    signals.reset();
    for (const int number : {SIGINT, SIGTERM}) EXPECT_EQ(handlerOf(number), SIG_IGN);
}

TEST_F(QuitSignalsTest, TheyAreNotHeldBackFromProgramsThatAreStarted) {
    const auto signals = platform::catchQuitSignals([] {});
    sigset_t mask;
    pthread_sigmask(SIG_BLOCK, nullptr, &mask);
    EXPECT_EQ(sigismember(&mask, SIGINT), 0);
    EXPECT_EQ(sigismember(&mask, SIGTERM), 0);
}

}  // namespace
}  // namespace dorvanel::test

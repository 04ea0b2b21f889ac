#include "platform/QuitSignals.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <semaphore>
#include <thread>

namespace dorvanel::test {
namespace {

TEST(QuitSignalsTest, EachSignalIsToldOfOnAThreadOfItsOwn) {
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

TEST(QuitSignalsTest, AtTheEndTheSignalsDoWhatTheyDidBefore) {
    platform::catchQuitSignals([] {}).reset();
    for (const int number : {SIGINT, SIGTERM}) {
        struct sigaction action {};
        sigaction(number, nullptr, &action);
        EXPECT_EQ(action.sa_handler, SIG_DFL);
    }
}

TEST(QuitSignalsTest, TheyAreNotHeldBackFromProgramsThatAreStarted) {
    const auto signals = platform::catchQuitSignals([] {});
    sigset_t mask;
    pthread_sigmask(SIG_BLOCK, nullptr, &mask);
    EXPECT_EQ(sigismember(&mask, SIGINT), 0);
    EXPECT_EQ(sigismember(&mask, SIGTERM), 0);
}

}  // namespace
}  // namespace dorvanel::test

// SPDX-License-Identifier: MIT
#include "platform/PollLoop.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "support/FakeClock.h"

namespace dorvanel::test {
namespace {

using namespace std::chrono_literals;
using ui::Timer;

class PollLoopTest : public ::testing::Test {
  protected:
    PollLoopTest() { clock.step = 100us; }

    FakeClock clock;
    std::unique_ptr<ui::RunLoop> loop = std::move(platform::makeRunLoop(clock).value());
};

TEST_F(PollLoopTest, ATimerFiresAgainAndAgainAndNeverEarly) {
    int fired = 0;
    const auto start = clock.now();
    loop->scheduleRepeatingTimer(2ms, [&](Timer&) {
        EXPECT_GE(clock.now() - start, ++fired * 2ms);
        if (fired == 3) loop->stop();
    });
    loop->run();
    EXPECT_EQ(fired, 3);
}

TEST_F(PollLoopTest, TimersFireInTheOrderInWhichTheyFallDue) {
    std::string order;
    loop->scheduleRepeatingTimer(3ms, [&](Timer&) { order += 'b'; });
    loop->scheduleRepeatingTimer(1ms, [&](Timer&) { order += 'a'; });
    loop->scheduleRepeatingTimer(4ms, [&](Timer&) { loop->stop(); });
    clock.advance(5ms);  // all are due at once now
    loop->run();
    EXPECT_EQ(order, "ab");
}

TEST_F(PollLoopTest, MissedBeatsAreMadeUpForByOneAndTheBeatIsKept) {
    std::vector<std::chrono::steady_clock::duration> fired;
    const auto start = clock.now();
    loop->scheduleRepeatingTimer(10ms, [&](Timer&) {
        fired.push_back(clock.now() - start);
        if (fired.size() == 1) clock.advance(25ms);
        if (fired.size() == 3) loop->stop();
    });
    loop->run();
    // The one at 20 ms comes late, for itself and the one at 30 ms; the next one is that at 40 ms.
    EXPECT_GE(fired[1], 35ms);
    EXPECT_LT(fired[1], 40ms);
    EXPECT_GE(fired[2], 40ms);
    EXPECT_LT(fired[2], 50ms);
}

TEST_F(PollLoopTest, AnInvalidatedTimerDoesNotFireEvenWhenItIsDue) {
    int fired = 0;
    const auto second = loop->scheduleRepeatingTimer(2ms, [&](Timer&) { ++fired; });
    loop->scheduleRepeatingTimer(1ms, [&](Timer&) {
        second->invalidate();
        second->invalidate();
        loop->stop();
    });
    clock.advance(3ms);
    loop->run();
    loop->performOnMainThread([&] { loop->stop(); });
    loop->run();
    EXPECT_EQ(fired, 0);
}

TEST_F(PollLoopTest, ATimerMayInvalidateItselfAndScheduleAnother) {
    int fired = 0;
    loop->scheduleRepeatingTimer(1ms, [&](Timer& self) {
        ++fired;
        self.invalidate();
        loop->scheduleRepeatingTimer(5ms, [&](Timer&) { loop->stop(); });
    });
    loop->run();
    EXPECT_EQ(fired, 1);
}

TEST_F(PollLoopTest, LettingGoOfTheHandleDoesNotStopTheTimer) {
    loop->scheduleRepeatingTimer(1ms, [&](Timer&) { loop->stop(); }).reset();
    loop->run();
}

TEST_F(PollLoopTest, WorkFromAnotherThreadIsDoneOnTheMainThreadInItsOrder) {
    std::string order;
    std::thread::id where;
    std::thread other([&] {
        loop->performOnMainThread([&] { order += 'a'; });
        loop->performOnMainThread([&] { order += 'b'; });
        loop->performOnMainThread([&] {
            where = std::this_thread::get_id();
            loop->stop();
        });
    });
    loop->run();
    other.join();
    EXPECT_EQ(order, "ab");
    EXPECT_EQ(where, std::this_thread::get_id());
}

TEST_F(PollLoopTest, AnotherThreadStopsALoopThatSleeps) {
    std::thread other([&] { loop->stop(); });
    loop->run();
    other.join();
}

TEST_F(PollLoopTest, StoppedBeforeItRunsItReturnsAtOnceAndRunsTheNextTime) {
    int done = 0;
    loop->performOnMainThread([&] { ++done; });
    loop->stop();
    loop->run();
    EXPECT_EQ(done, 0);
    loop->performOnMainThread([&] { loop->stop(); });
    loop->run();
    EXPECT_EQ(done, 1);
}

TEST_F(PollLoopTest, WorkThatPostsItselfDoesNotStarveTheTimers) {
    std::function<void()> again = [&] { loop->performOnMainThread(again); };
    again();
    loop->scheduleRepeatingTimer(1ms, [&](Timer&) { loop->stop(); });
    loop->run();
}

TEST_F(PollLoopTest, NothingPostedAfterAStopIsDoneBeforeTheNextRun) {
    int done = 0;
    loop->performOnMainThread([&] { loop->stop(); });
    loop->performOnMainThread([&] { ++done; });
    loop->run();
    EXPECT_EQ(done, 0);
    loop->performOnMainThread([&] { loop->stop(); });
    loop->run();
    EXPECT_EQ(done, 1);
}

}  // namespace
}  // namespace dorvanel::test

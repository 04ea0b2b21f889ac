#include "platform/PollLoop.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace dorvanel::test {
namespace {

using namespace std::chrono_literals;
using ui::Timer;
using Steady = std::chrono::steady_clock;

class RunLoopTest : public ::testing::Test {
  protected:
    std::unique_ptr<ui::RunLoop> loop = std::move(platform::makeRunLoop().value());
};

TEST_F(RunLoopTest, ATimerFiresAgainAndAgainAndNeverEarly) {
    int fired = 0;
    const auto start = Steady::now();
    loop->scheduleRepeatingTimer(2ms, [&](Timer&) {
        if (++fired == 3) loop->stop();
    });
    loop->run();
    EXPECT_EQ(fired, 3);
    EXPECT_GE(Steady::now() - start, 6ms);
}

TEST_F(RunLoopTest, TimersFireInTheOrderInWhichTheyFallDue) {
    std::string order;
    loop->scheduleRepeatingTimer(3ms, [&](Timer&) { order += 'b'; });
    loop->scheduleRepeatingTimer(1ms, [&](Timer&) { order += 'a'; });
    loop->scheduleRepeatingTimer(4ms, [&](Timer&) { loop->stop(); });
    std::this_thread::sleep_for(5ms);  // all are due at once now
    loop->run();
    EXPECT_EQ(order, "ab");
}

TEST_F(RunLoopTest, MissedBeatsAreMadeUpForByOneAndTheBeatIsKept) {
    std::vector<Steady::time_point> fired;
    const auto start = Steady::now();
    loop->scheduleRepeatingTimer(10ms, [&](Timer&) {
        fired.push_back(Steady::now());
        if (fired.size() == 1) std::this_thread::sleep_until(start + 35ms);
        if (fired.size() == 3) loop->stop();
    });
    loop->run();
    // The one at 20 ms comes late, for itself and the one at 30 ms; the next one is that at 40 ms.
    EXPECT_GE(fired[1] - start, 35ms);
    EXPECT_GE(fired[2] - start, 40ms);
}

TEST_F(RunLoopTest, AnInvalidatedTimerDoesNotFireEvenWhenItIsDue) {
    int fired = 0;
    const auto second = loop->scheduleRepeatingTimer(2ms, [&](Timer&) { ++fired; });
    loop->scheduleRepeatingTimer(1ms, [&](Timer&) {
        second->invalidate();
        second->invalidate();
        loop->stop();
    });
    std::this_thread::sleep_for(3ms);
    loop->run();
    loop->performOnMainThread([&] { loop->stop(); });
    loop->run();
    EXPECT_EQ(fired, 0);
}

TEST_F(RunLoopTest, ATimerMayInvalidateItselfAndScheduleAnother) {
    int fired = 0;
    loop->scheduleRepeatingTimer(1ms, [&](Timer& self) {
        ++fired;
        self.invalidate();
        loop->scheduleRepeatingTimer(5ms, [&](Timer&) { loop->stop(); });
    });
    loop->run();
    EXPECT_EQ(fired, 1);
}

TEST_F(RunLoopTest, LettingGoOfTheHandleDoesNotStopTheTimer) {
    loop->scheduleRepeatingTimer(1ms, [&](Timer&) { loop->stop(); }).reset();
    loop->run();
}

TEST_F(RunLoopTest, WorkFromAnotherThreadIsDoneOnTheMainThreadInItsOrder) {
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

TEST_F(RunLoopTest, AnotherThreadStopsALoopThatSleeps) {
    std::thread other([&] { loop->stop(); });
    loop->run();
    other.join();
}

TEST_F(RunLoopTest, StoppedBeforeItRunsItReturnsAtOnceAndRunsTheNextTime) {
    int done = 0;
    loop->performOnMainThread([&] { ++done; });
    loop->stop();
    loop->run();
    EXPECT_EQ(done, 0);
    loop->performOnMainThread([&] { loop->stop(); });
    loop->run();
    EXPECT_EQ(done, 1);
}

TEST_F(RunLoopTest, WorkThatPostsItselfDoesNotStarveTheTimers) {
    std::function<void()> again = [&] { loop->performOnMainThread(again); };
    again();
    loop->scheduleRepeatingTimer(1ms, [&](Timer&) { loop->stop(); });
    loop->run();
}

TEST_F(RunLoopTest, NothingPostedAfterAStopIsDoneBeforeTheNextRun) {
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

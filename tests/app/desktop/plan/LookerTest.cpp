// SPDX-License-Identifier: MIT
#include "app/desktop/plan/Looker.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QThread>
#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace dorvanel::test {
namespace {

using desktop::Looker;

class LookerTest : public ::testing::Test {
  protected:
    static void waitUntil(const std::function<bool()>& condition) {
        while (!condition()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    /// Work that goes on until it is told to stop.
    static void workOn(const Looker::Stop& stop) {
        while (!stop()) std::this_thread::yield();
    }

    desktop::QtRunLoop loop;
};

TEST_F(LookerTest, TheWorkIsDoneOnAnotherThreadAndFollowedUpOnThisOne) {
    Looker looker(loop);
    std::thread::id worked, told;
    bool isWhole = false;
    looker.start([&](const Looker::Stop&) { worked = std::this_thread::get_id(); },
                 [&](bool whole) {
                     told = std::this_thread::get_id();
                     isWhole = whole;
                 });
    EXPECT_TRUE(looker.isAtWork());
    waitUntil([&] { return !looker.isAtWork(); });
    EXPECT_TRUE(isWhole);
    EXPECT_EQ(told, std::this_thread::get_id());
    EXPECT_NE(worked, told);
}

TEST_F(LookerTest, WorkThatIsStoppedIsNotWhole) {
    Looker looker(loop);
    int whole = 0, stopped = 0;
    looker.start(workOn, [&](bool isWhole) { ++(isWhole ? whole : stopped); });
    looker.stop();
    looker.stop();
    waitUntil([&] { return !looker.isAtWork(); });
    EXPECT_EQ(whole, 0);
    EXPECT_EQ(stopped, 1);
}

TEST_F(LookerTest, ANewLookTakesThePlaceOfAllBeforeIt) {
    Looker looker(loop);
    std::vector<std::string> told;
    const auto note = [&told](const char* name) {
        return [&told, name](bool isWhole) { told.push_back(name + std::to_string(isWhole)); };
    };
    bool isSecondBegun = false;
    looker.start(workOn, note("first"));
    looker.start([&](const Looker::Stop&) { isSecondBegun = true; }, note("second"));
    looker.start([](const Looker::Stop&) {}, note("third"));
    waitUntil([&] { return told.size() == 3; });
    EXPECT_EQ(told, (std::vector<std::string>{"second0", "first0", "third1"}));
    EXPECT_FALSE(isSecondBegun);
    EXPECT_FALSE(looker.isAtWork());
}

TEST_F(LookerTest, OneThatGoesStopsItsWorkAndTellsNobody) {
    bool isTold = false;
    const auto used = std::make_shared<int>(1);
    {
        Looker looker(loop);
        looker.start([used](const Looker::Stop& stop) { workOn(stop); },
                     [&](bool) { isTold = true; });
    }
    EXPECT_EQ(used.use_count(), 1) << "nothing of the work is left";
    for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
    EXPECT_FALSE(isTold);
}

class NoThread final : public platform::Worker {
    Result<Done> start(std::function<void()>) override {
        return Error{0, "start", "a thread", "none left"};
    }
    void wait() override {}
};

TEST_F(LookerTest, WithoutAThreadItSaysSoAndGoesOn) {
    Looker looker(loop, std::make_unique<NoThread>());
    int notWhole = 0;
    const auto count = [&](bool isWhole) { notWhole += isWhole ? 0 : 1; };
    looker.start([](const Looker::Stop&) { FAIL() << "there is no thread"; }, count);
    EXPECT_EQ(notWhole, 0) << "not from within the call";
    waitUntil([&] { return !looker.isAtWork(); });
    EXPECT_EQ(notWhole, 1);
}

}  // namespace
}  // namespace dorvanel::test

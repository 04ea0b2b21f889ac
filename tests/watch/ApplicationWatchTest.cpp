// SPDX-License-Identifier: MIT
#include "watch/ApplicationWatch.h"

#include <gmock/gmock.h>

#include <functional>
#include <optional>

#include "support/FakeClock.h"
#include "support/FakeProgramListing.h"
#include "support/FakeRunLoop.h"
#include "watch/DescribedApplications.h"

namespace dorvanel::test {
namespace {

using catalogue::Entry;
using platform::LockState;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;
using Quit = std::vector<std::string>;

struct RecordingOwner final : ApplicationWatchOwner {
    RunningApplications::Entries chosenApplications() override { return chosen; }
    void applicationHasQuit(const Quit& ids) override {
        calls.push_back(ids);
        if (onQuit) onQuit();
    }

    RunningApplications::Entries chosen;
    std::vector<Quit> calls;
    std::function<void()> onQuit;
};

class ApplicationWatchTest : public ::testing::Test {
  protected:
    ApplicationWatchTest() {
        firefox.locks = {"{profile}/lock"};
        owner.chosen = {&firefox, &chrome};
    }
    std::int32_t startFirefox() { return listing.start("/usr/lib/firefox/firefox").process.pid; }
    std::int32_t startChrome() { return listing.start("/opt/google/chrome/chrome").process.pid; }
    /// They end, and the system says so in one go.
    void end(const std::vector<std::int32_t>& pids) {
        for (const std::int32_t pid : pids) listing.end(pid);
        ends.end(pids);
    }
    void discover() { loop.advance(ApplicationWatch::kDiscoveryInterval); }

    FakeClock clock;
    FakeRunLoop loop{clock};
    FakeProgramListing listing;
    FakeProgramEnds ends;
    FakeLockProbe locks;
    Entry firefox = describedFirefox();
    Entry chrome = describedChrome();
    RecordingOwner owner;
    RunningApplications applications{
        listing, locks, [](const Entry&) { return std::vector<std::string>{"/lock"}; }};
    std::optional<ApplicationWatch> watch{
        std::in_place, ApplicationWatchServices{applications, ends, loop}, owner};
};

TEST_F(ApplicationWatchTest, TheEndOfWhatRanWhenTheWatchBeganIsTold) {
    const auto pid = startFirefox();
    watch->start();
    EXPECT_TRUE(ends.isFollowed(pid));
    EXPECT_THAT(owner.calls, IsEmpty());
    end({pid});
    EXPECT_THAT(owner.calls, ElementsAre(Quit{"firefox"}));
    discover();
    discover();
    EXPECT_EQ(owner.calls.size(), 1U);
}

TEST_F(ApplicationWatchTest, WhatIsStartedLaterIsFoundAtTheNextLook) {
    watch->start();
    const auto pid = startFirefox();
    EXPECT_FALSE(ends.isFollowed(pid));
    discover();
    EXPECT_TRUE(ends.isFollowed(pid));
    end({pid});
    EXPECT_EQ(owner.calls.size(), 1U);
}

TEST_F(ApplicationWatchTest, WhatNeverRanDoesNotQuit) {
    watch->start();
    discover();
    discover();
    EXPECT_THAT(owner.calls, IsEmpty());
}

TEST_F(ApplicationWatchTest, AnApplicationThatIsStartedAgainQuitsAgain) {
    const auto first = startFirefox();
    watch->start();
    end({first});
    const auto second = startFirefox();
    discover();
    end({second});
    EXPECT_EQ(owner.calls.size(), 2U);
}

TEST_F(ApplicationWatchTest, NothingIsToldWhileOneOfItsProcessesLives) {
    const auto first = startFirefox();
    const auto second = startFirefox();
    watch->start();
    const int lists = listing.lists;
    end({first});
    EXPECT_EQ(listing.lists, lists);  // one is left: there is no need to look
    discover();
    EXPECT_THAT(owner.calls, IsEmpty());
    end({second});
    EXPECT_EQ(owner.calls.size(), 1U);
}

TEST_F(ApplicationWatchTest, AProcessThatNobodyHasSeenYetKeepsItsApplicationRunning) {
    const auto first = startFirefox();
    watch->start();
    const auto second = startFirefox();
    end({first});
    EXPECT_THAT(owner.calls, IsEmpty());
    EXPECT_TRUE(ends.isFollowed(second));
    end({second});
    EXPECT_EQ(owner.calls.size(), 1U);
}

TEST_F(ApplicationWatchTest, SeveralThatEndAtOnceAreToldInOneCall) {
    const auto one = startFirefox();
    const auto other = startChrome();
    watch->start();
    end({one, other});
    EXPECT_THAT(owner.calls, ElementsAre(UnorderedElementsAre("firefox", "google-chrome")));
}

TEST_F(ApplicationWatchTest, OneThatIsFoundGoneAlongWithAnotherIsToldWithItAndNotAgain) {
    const auto one = startFirefox();
    const auto other = startChrome();
    watch->start();
    listing.end(other);  // the system has not said so yet
    end({one});
    EXPECT_THAT(owner.calls, ElementsAre(UnorderedElementsAre("firefox", "google-chrome")));
    ends.end({other});
    discover();
    EXPECT_EQ(owner.calls.size(), 1U);
}

TEST_F(ApplicationWatchTest, TheOthersGoOn) {
    const auto one = startFirefox();
    const auto other = startChrome();
    watch->start();
    end({one});
    EXPECT_THAT(owner.calls, ElementsAre(Quit{"firefox"}));
    EXPECT_TRUE(ends.isFollowed(other));
    end({other});
    EXPECT_THAT(owner.calls, ElementsAre(Quit{"firefox"}, Quit{"google-chrome"}));
}

TEST_F(ApplicationWatchTest, OneThatHoldsALockHasNotQuitUntilItLetsGo) {
    const auto pid = startFirefox();
    watch->start();
    locks.state = LockState::held;
    end({pid});
    discover();
    EXPECT_THAT(owner.calls, IsEmpty());
    locks.state = LockState::free;
    discover();
    EXPECT_EQ(owner.calls.size(), 1U);
}

TEST_F(ApplicationWatchTest, ALockAloneIsNothingThatEnds) {
    locks.state = LockState::held;
    watch->start();
    locks.state = LockState::free;
    discover();
    EXPECT_THAT(owner.calls, IsEmpty());
    EXPECT_THAT(locks.probed, IsEmpty());
}

TEST_F(ApplicationWatchTest, ALookThatFailsTellsNothingAndForgetsNothing) {
    const auto pid = startFirefox();
    watch->start();
    listing.fails = true;
    end({pid});
    discover();
    EXPECT_THAT(owner.calls, IsEmpty());
    listing.fails = false;
    discover();
    EXPECT_EQ(owner.calls.size(), 1U);
}

TEST_F(ApplicationWatchTest, AFirstLookThatFailsIsMadeUpForByTheNext) {
    const auto pid = startFirefox();
    listing.fails = true;
    watch->start();
    listing.fails = false;
    discover();
    end({pid});
    EXPECT_EQ(owner.calls.size(), 1U);
}

TEST_F(ApplicationWatchTest, WhatCannotBeFollowedIsLookedFor) {
    ends.answer = platform::ProgramEnds::Following::refused;
    const auto pid = startFirefox();
    watch->start();
    discover();
    EXPECT_THAT(owner.calls, IsEmpty());
    listing.end(pid);
    discover();
    EXPECT_EQ(owner.calls.size(), 1U);
}

TEST_F(ApplicationWatchTest, OneThatEndsWhileItIsLookedAtIsToldAtTheNextLook) {
    ends.answer = platform::ProgramEnds::Following::ended;
    const auto pid = startFirefox();
    watch->start();
    listing.end(pid);
    discover();
    EXPECT_EQ(owner.calls.size(), 1U);
}

TEST_F(ApplicationWatchTest, OneThatBecomesAnotherProgramHasQuitAndIsLetGo) {
    const auto pid = startFirefox();
    watch->start();
    listing.programs.front().executable = "/usr/bin/vim";
    discover();
    EXPECT_EQ(owner.calls.size(), 1U);
    EXPECT_FALSE(ends.isFollowed(pid));
}

TEST_F(ApplicationWatchTest, WhatIsNotChosenIsNotFollowedAndItsEndNotTold) {
    owner.chosen = {&chrome};
    const auto pid = startFirefox();
    watch->start();
    EXPECT_FALSE(ends.isFollowed(pid));
    end({pid});
    discover();
    EXPECT_THAT(owner.calls, IsEmpty());
}

TEST_F(ApplicationWatchTest, AChoiceCountsFromTheNextLookOn) {
    owner.chosen = {};
    const auto pid = startFirefox();
    watch->start();
    EXPECT_EQ(listing.lists, 0);
    owner.chosen = {&firefox};
    discover();
    EXPECT_TRUE(ends.isFollowed(pid));
    owner.chosen = {};
    end({pid});
    discover();
    EXPECT_THAT(owner.calls, IsEmpty());
    EXPECT_THAT(ends.followed, IsEmpty());
}

TEST_F(ApplicationWatchTest, WhatIsNoLongerChosenIsForgotten) {
    const auto pid = startFirefox();
    watch->start();
    owner.chosen = {&chrome};
    discover();
    EXPECT_FALSE(ends.isFollowed(pid));
    listing.end(pid);
    owner.chosen = {&firefox, &chrome};
    discover();
    EXPECT_THAT(owner.calls, IsEmpty());
}

TEST_F(ApplicationWatchTest, AProcessOfTwoApplicationsIsFollowedAsLongAsOneOfThemIsChosen) {
    const Entry twin = describedApplication("twin", {"firefox"});
    owner.chosen = {&firefox, &twin};
    const auto pid = startFirefox();
    watch->start();
    owner.chosen = {&twin};
    discover();
    EXPECT_TRUE(ends.isFollowed(pid));
    end({pid});
    EXPECT_THAT(owner.calls, ElementsAre(Quit{"twin"}));
}

TEST_F(ApplicationWatchTest, StoppedItLooksAtNothing) {
    const auto pid = startFirefox();
    EXPECT_FALSE(watch->isWatching());
    EXPECT_EQ(listing.lists, 0);
    watch->start();
    EXPECT_TRUE(watch->isWatching());
    watch->stop();
    watch->stop();
    EXPECT_FALSE(watch->isWatching());
    EXPECT_THAT(ends.followed, IsEmpty());
    EXPECT_EQ(loop.validTimers(), 0U);
    const int lists = listing.lists;
    end({pid});
    discover();
    EXPECT_EQ(listing.lists, lists);
    EXPECT_THAT(owner.calls, IsEmpty());
}

TEST_F(ApplicationWatchTest, StartedAgainItKnowsOnlyWhatRunsThen) {
    const auto one = startFirefox();
    const auto other = startChrome();
    watch->start();
    watch->stop();
    listing.end(one);
    watch->start();
    discover();
    EXPECT_THAT(owner.calls, IsEmpty());
    end({other});
    EXPECT_THAT(owner.calls, ElementsAre(Quit{"google-chrome"}));
}

TEST_F(ApplicationWatchTest, StartedTwiceItLooksOnce) {
    watch->start();
    watch->start();
    EXPECT_EQ(loop.validTimers(), 1U);
    EXPECT_EQ(listing.lists, 1);
}

TEST_F(ApplicationWatchTest, TheOneWhoIsToldMayStopTheWatch) {
    const auto pid = startFirefox();
    startChrome();
    owner.onQuit = [&] { watch->stop(); };
    watch->start();
    end({pid});
    EXPECT_FALSE(watch->isWatching());
    EXPECT_THAT(ends.followed, IsEmpty());
}

TEST_F(ApplicationWatchTest, TheOneWhoIsToldMayDestroyTheWatch) {
    const auto pid = startFirefox();
    owner.onQuit = [&] { watch.reset(); };
    watch->start();
    end({pid});
    EXPECT_EQ(owner.calls.size(), 1U);
    discover();
    EXPECT_EQ(loop.validTimers(), 0U);
}

TEST_F(ApplicationWatchTest, TheOneWhoIsToldByATimerMayDestroyTheWatch) {
    const auto pid = startFirefox();
    owner.onQuit = [&] { watch.reset(); };
    watch->start();
    listing.end(pid);
    discover();
    discover();
    EXPECT_EQ(owner.calls.size(), 1U);
}

TEST_F(ApplicationWatchTest, DestroyedItLeavesNothingBehind) {
    const auto pid = startFirefox();
    watch->start();
    watch.reset();
    end({pid});
    discover();
    EXPECT_EQ(loop.validTimers(), 0U);
    EXPECT_THAT(ends.followed, IsEmpty());
    EXPECT_THAT(owner.calls, IsEmpty());
}

}  // namespace
}  // namespace dorvanel::test

// SPDX-License-Identifier: MIT
#include "platform/ProgramEnds.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <deque>
#include <future>
#include <set>
#include <thread>

#include "platform/PollLoop.h"
#include "platform/linux/ProcessFolder.h"
#include "support/ChildProcess.h"
#include "support/FakeApplication.h"
#include "support/FakeClock.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

using namespace platform;
using Following = ProgramEnds::Following;

ProcessIdentity identityOf(pid_t pid) {
    return {pid, ProcessFolder(pid).startTime().value()};
}

/// The ends of real processes, told by a real loop, whose clock stands still.
class ProgramEndsTest : public ::testing::Test {
  protected:
    ProgramEndsTest() {
        ends->tell([this](const std::vector<ProcessIdentity>& ended) {
            EXPECT_EQ(std::this_thread::get_id(), mainThread);
            EXPECT_FALSE(ended.empty());
            for (const ProcessIdentity& process : ended) {
                EXPECT_TRUE(told.insert(process.pid).second);
            }
            if (told.size() >= enough) loop->stop();
        });
    }
    /// Runs the loop until so many ends have been told.
    void runUntil(std::size_t number) {
        enough = number;
        while (told.size() < enough) loop->run();
    }
    /// Has everything told that was known before.
    void runWhatIsPosted() {
        bool isDone = false;
        loop->performOnMainThread([&] {
            isDone = true;
            loop->stop();
        });
        while (!isDone) loop->run();
    }

    const std::thread::id mainThread = std::this_thread::get_id();
    FakeClock clock;
    std::unique_ptr<ui::RunLoop> loop = std::move(makeRunLoop(clock).value());
    std::unique_ptr<ProgramEnds> ends = makeProgramEnds(*loop);
    std::set<pid_t> told;
    std::size_t enough = 1;
};

TEST_F(ProgramEndsTest, AnEndIsTold) {
    const ChildProcess process({"sleep", "300"});
    EXPECT_EQ(ends->follow(identityOf(process.pid())), Following::yes);
    process.signal(SIGKILL);
    runUntil(1);
    EXPECT_EQ(told, std::set{process.pid()});
}

TEST_F(ProgramEndsTest, SeveralAreToldWhenTheyEndAndNotBefore) {
    const ChildProcess first({"sleep", "300"});
    const ChildProcess second({"sleep", "300"});
    const ChildProcess third({"sleep", "300"});
    for (const ChildProcess* process : {&first, &second, &third}) {
        EXPECT_EQ(ends->follow(identityOf(process->pid())), Following::yes);
    }
    second.signal(SIGKILL);
    runUntil(1);
    EXPECT_EQ(told, std::set{second.pid()});
    third.signal(SIGKILL);
    first.signal(SIGKILL);
    runUntil(3);
    EXPECT_EQ(told, (std::set{first.pid(), second.pid(), third.pid()}));
}

TEST_F(ProgramEndsTest, AProcessThatIsNoChildIsFollowedToo) {
    const TemporaryFolder folder;
    FakeApplication parent(folder.path(), "firefox", "", "parent");
    const pid_t child = std::stoi(parent.process().readLine());
    EXPECT_EQ(ends->follow(identityOf(child)), Following::yes);
    EXPECT_EQ(ends->follow(identityOf(parent.pid())), Following::yes);
    parent.process().signal(SIGKILL);
    runUntil(1);
    EXPECT_EQ(told, std::set{parent.pid()});
    kill(child, SIGKILL);
    runUntil(2);
    EXPECT_EQ(told, (std::set{parent.pid(), child}));
}

TEST_F(ProgramEndsTest, TheEndOfAFirstThreadIsNoEnd) {
    const TemporaryFolder folder;
    const FakeApplication firefox(folder.path(), "firefox", "", "thread");
    const ProcessIdentity identity = identityOf(firefox.pid());
    EXPECT_EQ(ends->follow(identity), Following::yes);
    while (!ProcessFolder(firefox.pid()).executablePath().empty()) {
    }
    ends->unfollow(identity);
    EXPECT_EQ(ends->follow(identity), Following::yes);
    kill(firefox.pid(), SIGKILL);
    runUntil(1);
}

TEST_F(ProgramEndsTest, BecomingAnotherProgramIsNoEnd) {
    const TemporaryFolder folder;
    const std::string other = makeBundle(folder / "other", "other", "");
    FakeApplication firefox(folder.path(), "firefox", "", other);
    const ProcessIdentity identity = identityOf(firefox.pid());
    EXPECT_EQ(ends->follow(identity), Following::yes);
    firefox.becomeOther();
    ends->unfollow(identity);
    EXPECT_EQ(ends->follow(identity), Following::yes);
    firefox.process().signal(SIGKILL);
    runUntil(1);
}

TEST_F(ProgramEndsTest, WhatHasEndedOrIsAnotherProcessIsNotFollowed) {
    ChildProcess process({"sleep", "300"});
    const ProcessIdentity identity = identityOf(process.pid());
    EXPECT_EQ(ends->follow({identity.pid, identity.started - 1}), Following::ended);
    process.killWithoutWaiting();
    EXPECT_EQ(ends->follow(identity), Following::ended);
    process.waitForEnd();
    EXPECT_EQ(ends->follow(identity), Following::ended);
    runWhatIsPosted();
    EXPECT_TRUE(told.empty());
}

TEST_F(ProgramEndsTest, FollowingTwiceTellsOnce) {
    const ChildProcess process({"sleep", "300"});
    EXPECT_EQ(ends->follow(identityOf(process.pid())), Following::yes);
    EXPECT_EQ(ends->follow(identityOf(process.pid())), Following::yes);
    process.signal(SIGKILL);
    runUntil(1);
    runWhatIsPosted();
    EXPECT_EQ(told.size(), 1U);
}

TEST_F(ProgramEndsTest, WhatIsNotFollowedAnyMoreIsNotTold) {
    const ChildProcess quiet({"sleep", "300"});
    const ChildProcess process({"sleep", "300"});
    ends->unfollow(identityOf(quiet.pid()));  // was not followed yet
    ends->follow(identityOf(quiet.pid()));
    ends->follow(identityOf(process.pid()));
    const ProcessIdentity identity = identityOf(quiet.pid());
    quiet.killWithoutWaiting();
    ends->unfollow(identity);  // perhaps its end is known by now
    process.signal(SIGKILL);
    runUntil(1);
    runWhatIsPosted();
    EXPECT_EQ(told, std::set{process.pid()});
}

TEST_F(ProgramEndsTest, WhoeverIsToldMayStopListeningAndFollowing) {
    const ChildProcess process({"sleep", "300"});
    int calls = 0;
    const std::string text(100, 'x');  // held by the function, gone if that were destroyed
    ends->tell([&, text](const std::vector<ProcessIdentity>& ended) {
        ends->tell({});
        ends->unfollow(ended.front());
        EXPECT_EQ(ends->follow(ended.front()), Following::ended);
        EXPECT_EQ(text, std::string(100, 'x'));
        ++calls;
        loop->stop();
    });
    ends->follow(identityOf(process.pid()));
    process.signal(SIGKILL);
    loop->run();
    EXPECT_EQ(calls, 1);
}

TEST_F(ProgramEndsTest, HundredsAreFollowedAndNoMoreThanAreBearable) {
    constexpr std::size_t more = 30;
    std::deque<ChildProcess> processes;
    std::set<pid_t> followed;
    for (std::size_t i = 0; i < kMostFollowedPrograms + more; ++i) {
        const pid_t pid = processes.emplace_back(std::vector<std::string>{"sleep", "300"}).pid();
        const Following answer = ends->follow(identityOf(pid));
        EXPECT_EQ(answer, i < kMostFollowedPrograms ? Following::yes : Following::refused);
        if (answer == Following::yes) followed.insert(pid);
    }
    for (const ChildProcess& process : processes) process.signal(SIGKILL);
    runUntil(kMostFollowedPrograms);
    EXPECT_EQ(told, followed);
    const ChildProcess late({"sleep", "300"});
    EXPECT_EQ(ends->follow(identityOf(late.pid())), Following::yes);
}

TEST_F(ProgramEndsTest, WithoutDescriptorsNothingIsFollowed) {
    const ChildProcess process({"sleep", "300"});
    const ProcessIdentity identity = identityOf(process.pid());
    rlimit former{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &former), 0);
    const rlimit none{0, former.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    const Following withoutAny = ends->follow(identity);
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &former), 0);
    EXPECT_EQ(withoutAny, Following::refused);
    EXPECT_EQ(ends->follow(identity), Following::yes);
    const ChildProcess other({"sleep", "300"});
    const ProcessIdentity otherIdentity = identityOf(other.pid());
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    const Following asOneMore = ends->follow(otherIdentity);
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &former), 0);
    EXPECT_EQ(asOneMore, Following::refused);
}

TEST_F(ProgramEndsTest, ProcessesMayEndWhileOthersAreFollowedAndLetGo) {
    std::deque<ChildProcess> processes;
    std::set<pid_t> wanted;
    std::set<pid_t> unwanted;
    for (int round = 0; round < 150; ++round) {
        const ChildProcess& process =
            processes.emplace_back(std::vector<std::string>{"sleep", "300"});
        const ProcessIdentity identity = identityOf(process.pid());
        ASSERT_EQ(ends->follow(identity), Following::yes);
        process.signal(SIGKILL);
        if (round % 3 == 0) {
            ends->unfollow(identity);
            unwanted.insert(process.pid());
        } else {
            wanted.insert(process.pid());
        }
        if (round % 10 == 0) runWhatIsPosted();
    }
    runUntil(wanted.size());
    runWhatIsPosted();
    EXPECT_EQ(told, wanted);
}

/// A loop that keeps what is posted until a test does it.
class KeepingLoop final : public ui::RunLoop {
  public:
    std::shared_ptr<ui::Timer> scheduleRepeatingTimer(std::chrono::milliseconds, Fire) override {
        return nullptr;
    }
    void run() override {}
    void stop() override {}
    void performOnMainThread(std::function<void()> work) override {
        posted.set_value(std::move(work));
    }

    std::promise<std::function<void()>> posted;
};

TEST(ProgramEndsAfterTheirTimeTest, WhatIsStillPostedTellsNobody) {
    const ChildProcess process({"sleep", "300"});
    KeepingLoop loop;
    auto ends = makeProgramEnds(loop);
    bool isTold = false;
    ends->tell([&](const std::vector<ProcessIdentity>&) { isTold = true; });
    ends->follow(identityOf(process.pid()));
    process.signal(SIGKILL);
    const std::function<void()> work = loop.posted.get_future().get();
    ends.reset();
    work();
    EXPECT_FALSE(isTold);
}

TEST(ProgramEndsAfterTheirTimeTest, NobodyIsToldWhenNobodyListensAnyMore) {
    const ChildProcess process({"sleep", "300"});
    KeepingLoop loop;
    const auto ends = makeProgramEnds(loop);
    bool isTold = false;
    ends->tell([&](const std::vector<ProcessIdentity>&) { isTold = true; });
    ends->follow(identityOf(process.pid()));
    process.signal(SIGKILL);
    const std::function<void()> work = loop.posted.get_future().get();
    ends->tell({});
    work();
    EXPECT_FALSE(isTold);
}

TEST(ProgramEndsAfterTheirTimeTest, AnEndThatIsPostedIsNotToldOnceItIsLetGo) {
    const ChildProcess process({"sleep", "300"});
    KeepingLoop loop;
    const auto ends = makeProgramEnds(loop);
    bool isTold = false;
    ends->tell([&](const std::vector<ProcessIdentity>&) { isTold = true; });
    const ProcessIdentity identity = identityOf(process.pid());
    ends->follow(identity);
    process.signal(SIGKILL);
    const std::function<void()> work = loop.posted.get_future().get();
    ends->unfollow(identity);
    work();
    EXPECT_FALSE(isTold);
}

}  // namespace
}  // namespace dorvanel::test

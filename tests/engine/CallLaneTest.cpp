// SPDX-License-Identifier: MIT
#include "engine/CallLane.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <thread>

#include "engine/LanedRun.h"
#include "support/Disk.h"

namespace dorvanel::test {
namespace {

using platform::EntryKind;
using State = LaneCall::State;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A lane that removes files of a folder.
class CallLaneTest : public ::testing::Test {
  protected:
    CallLaneTest() : place_(open(folder.path().c_str(), O_DIRECTORY | O_RDONLY | O_CLOEXEC)) {}
    ~CallLaneTest() override { close(place_); }

    /// Adds the removal of a file to the list that is being filled; returns it.
    LaneCall& add(const std::string& name) {
        LaneCalls& list = lane.filling();
        LaneCall call;
        call.kind = EntryKind::regular;
        call.folderDescriptor = place_;
        call.name = list.addText(name.c_str());
        list.calls.push_back(call);
        return list.calls.back();
    }
    /// Hands over the removal of these files, of which those whose name says so do not exist.
    void give(const std::vector<std::string>& names) {
        for (const std::string& name : names) {
            if (!name.starts_with("missing")) writeFile(folder / name, "x");
            add(name);
        }
        lane.give();
    }
    /// Waits until so many lists wait for the thread, and a moment for it to begin one of them.
    void waitForWaiting(std::uint64_t lists) {
        while (lane.waiting() != lists) std::this_thread::yield();
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    [[nodiscard]] std::vector<std::string> tried() const {
        std::vector<std::string> names;
        for (const auto& call : system.callsOf("removeFile")) names.push_back(call.key.name);
        return names;
    }

    TemporaryFolder folder{quickPlace()};
    std::unique_ptr<platform::SystemCalls> real = platform::makeSystemCalls();
    LanedSystemCalls system{*real};
    CallLane lane{system};

  private:
    int place_;
};

TEST_F(CallLaneTest, ListsAreMadeInTheOrderInWhichTheyWereHandedOver) {
    ASSERT_TRUE(lane.begin());
    std::vector<std::string> all;
    for (int list = 0; list < 20; ++list) {
        std::vector<std::string> names;
        for (int i = 0; i < 5; ++i) names.push_back(std::to_string(list * 5 + i));
        all.insert(all.end(), names.begin(), names.end());
        if (!lane.hasRoom()) {
            EXPECT_EQ(lane.take().done, 5U);
            lane.drop();
        }
        give(names);
    }
    for (; lane.hasGiven(); lane.drop()) {
        for (const LaneCall& call : lane.take().calls) EXPECT_EQ(call.state, State::made);
    }
    lane.end();
    EXPECT_EQ(tried(), all);
    EXPECT_TRUE(hadSecondThread(system));
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
}

TEST_F(CallLaneTest, ACallThatFailsHaltsTheThreadUntilItsListIsDropped) {
    ASSERT_TRUE(lane.begin());
    give({"a", "missing", "b"});
    give({"c"});
    waitForWaiting(1);
    LaneCalls& first = lane.take();
    EXPECT_EQ(first.done, 2U);
    EXPECT_EQ(first.calls[0].state, State::made);
    EXPECT_EQ(first.calls[1].state, State::notRemoved);
    EXPECT_EQ(first.calls[1].code, ENOENT);
    EXPECT_EQ(first.calls[2].state, State::waits);
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("b", "c"));
    first.make(system);
    EXPECT_EQ(first.done, 3U);
    lane.drop();
    EXPECT_EQ(lane.take().calls[0].state, State::made);
    lane.drop();
    lane.end();
    EXPECT_THAT(tried(), ElementsAre("a", "missing", "b", "c"));
}

TEST_F(CallLaneTest, ToDropAnEarlierListDoesNotLetTheThreadGoPastTheCallThatFailed) {
    ASSERT_TRUE(lane.begin());
    give({"a"});
    give({"missing", "b"});
    give({"c"});
    waitForWaiting(1);
    EXPECT_EQ(lane.take().calls[0].state, State::made);
    lane.drop();
    waitForWaiting(1);
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("b", "c"));
    lane.take().make(system);
    lane.drop();
    lane.take();
    lane.drop();
    lane.end();
    EXPECT_THAT(tried(), ElementsAre("a", "missing", "b", "c"));
}

TEST_F(CallLaneTest, ListsThatWereNotBegunAtTheEndStayToBeTaken) {
    ASSERT_TRUE(lane.begin());
    give({"missing"});
    give({"a", "b"});
    waitForWaiting(1);
    lane.end();
    EXPECT_FALSE(lane.isOpen());
    EXPECT_EQ(lane.take().done, 1U);
    lane.drop();
    ASSERT_TRUE(lane.hasGiven());
    const LaneCalls& second = lane.take();
    EXPECT_EQ(second.done, 0U);
    EXPECT_STREQ(second.text(second.calls[1].name), "b");
    lane.drop();
    EXPECT_FALSE(lane.hasGiven());
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("a", "b"));
}

TEST_F(CallLaneTest, ALaneThatHasEndedBeginsAnew) {
    ASSERT_TRUE(lane.begin());
    give({"missing"});
    give({"a"});
    waitForWaiting(1);
    lane.end();
    for (; lane.hasGiven(); lane.drop()) lane.take();
    ASSERT_TRUE(lane.begin());
    give({"b"});
    EXPECT_EQ(lane.take().calls[0].state, State::made);
    lane.drop();
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("a"));
}

TEST_F(CallLaneTest, AFileIsWrittenToAndClosedBeforeItsNameGoes) {
    writeFile(folder / "a", "secret");
    const int file = system.openFile(platform::SystemCalls::workingFolder, (folder / "a").c_str(),
                                     platform::SystemCalls::Links::stay);
    LaneCall& call = add("a");
    call.file = file;
    EXPECT_TRUE(lane.filling().hold(call.held, "first", 5, 0, false));
    EXPECT_TRUE(lane.filling().hold(call.held, "then", 4, 5, true));
    EXPECT_FALSE(lane.filling().hold(call.held, "too many", 8, 9, true));
    ASSERT_TRUE(lane.begin());
    lane.give();
    EXPECT_EQ(lane.take().calls[0].file, -1);
    lane.drop();
    std::vector<std::string> made;
    for (const auto& each : system.calls) made.push_back(each.key.what);
    EXPECT_THAT(made, ElementsAre("openFile", "writeAt", "writeAt", "close", "removeFile"));
    EXPECT_EQ(system.calls[2].offset, 5U);
}

TEST_F(CallLaneTest, AFileThatCannotBeWrittenStaysOpenAndKeepsItsName) {
    writeFile(folder / "a", "secret");
    const std::string path = folder / "a";
    const int file = system.openFile(platform::SystemCalls::workingFolder, path.c_str(),
                                     platform::SystemCalls::Links::stay);
    system.fail({"writeAt", path, 1}, EIO);
    LaneCall& call = add("a");
    call.file = file;
    EXPECT_TRUE(lane.filling().hold(call.held, "first", 5, 0, false));
    ASSERT_TRUE(lane.begin());
    lane.give();
    const LaneCall& made = lane.take().calls[0];
    EXPECT_EQ(made.state, State::notWritten);
    EXPECT_EQ(made.code, EIO);
    EXPECT_EQ(made.file, file);
    system.close(file);
    lane.drop();
    EXPECT_EQ(readFile(path), "secret");
    EXPECT_THAT(tried(), IsEmpty());
}

}  // namespace
}  // namespace dorvanel::test

// SPDX-License-Identifier: MIT
#include "app/desktop/applications/TraceSurvey.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <atomic>
#include <future>
#include <thread>

#include "SmallCatalogue.h"
#include "app/desktop/applications/ApplicationsModel.h"
#include "support/FakeProgramListing.h"
#include "support/FakeUserDefaults.h"
#include "support/OnlyLookingSystemCalls.h"
#include "support/SampleProfiles.h"

namespace dorvanel::test {
namespace {

using desktop::Runs;
using desktop::SurveyNews;
using desktop::TraceSurvey;
using ::testing::ElementsAre;
using ::testing::IsSupersetOf;

/// What passes calls on, says on which thread they come, and holds up those about one name.
class WatchedSystemCalls final : public ForwardingSystemCalls {
  public:
    using ForwardingSystemCalls::ForwardingSystemCalls;

    int statusAt(int folder, const char* name, Links links, platform::FileStatus& status) override {
        ++looks;
        if (std::this_thread::get_id() == mainThread) ++looksOfMainThread;
        if (!heldName.empty() && heldName == name && !wasHeld.exchange(true)) {
            reached.set_value();
            released.get_future().wait();
        }
        return inner_.statusAt(folder, name, links, status);
    }

    const std::thread::id mainThread = std::this_thread::get_id();
    std::atomic<int> looks = 0;
    std::atomic<int> looksOfMainThread = 0;
    std::string heldName;
    std::atomic<bool> wasHeld = false;
    std::promise<void> reached;
    std::promise<void> released;
};

class TraceSurveyTest : public ::testing::Test {
  protected:
    TraceSurveyTest() {
        services.loadCatalogue = [this] { return catalogue.load(); };
        services.listing = std::move(ownListing);
        services.locks = std::move(ownLocks);
        auto watched = std::make_unique<WatchedSystemCalls>(onlyLooking);
        system = watched.get();
        services.system = std::move(watched);
    }
    std::unique_ptr<TraceSurvey> make() {
        return std::make_unique<TraceSurvey>(std::move(services), [this](SurveyNews some) {
            ++tells;
            EXPECT_EQ(std::this_thread::get_id(), system->mainThread);
            if (some.catalogue != nullptr) {
                ++counts;
                found = some.found;
                latest = some.catalogue;
                order.clear();
            }
            for (auto& [id, sizes] : some.sizes) {
                order.push_back(id);
                all[id] = std::move(sizes);
            }
            for (const auto& [id, state] : some.runs) runs[id] = state;
            isOver = isOver || some.isOver;
        });
    }
    void waitFor(const std::function<bool()>& condition) {
        while (!condition()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
    }
    void waitUntilOver() {
        waitFor([this] { return isOver; });
        isOver = false;
    }

    TemporaryHome home;
    SmallCatalogue catalogue;
    std::unique_ptr<platform::SystemCalls> machines = platform::makeSystemCalls();
    OnlyLookingSystemCalls onlyLooking{*machines};
    std::unique_ptr<FakeProgramListing> ownListing = std::make_unique<FakeProgramListing>();
    FakeProgramListing* listing = ownListing.get();
    std::unique_ptr<FakeLockProbe> ownLocks = std::make_unique<FakeLockProbe>();
    FakeLockProbe* locks = ownLocks.get();
    WatchedSystemCalls* system = nullptr;
    desktop::SurveyServices services = desktop::machinesSurvey();

    int tells = 0;
    int counts = 0;
    std::set<std::string> found;
    SurveyNews::Catalogue latest;
    std::vector<std::string> order;
    std::map<std::string, TraceSizes> all;
    std::map<std::string, Runs> runs;
    bool isOver = false;
};

TEST_F(TraceSurveyTest, WhatTodaysProgramsLeftIsFoundAndCountedOneAfterAnother) {
    SampleProfiles profiles(home.path(), 1);
    profiles.addFirefox();
    profiles.addChromium();
    services.loadCatalogue = desktop::machinesSurvey().loadCatalogue;
    const auto survey = make();
    survey->count();
    waitUntilOver();
    EXPECT_THAT(found, IsSupersetOf({"chromium", "firefox"}));
    EXPECT_FALSE(found.contains("thunderbird"));
    EXPECT_EQ(order.size(), latest->entries().size());
    EXPECT_TRUE(std::ranges::is_sorted(order));
    const TraceSizes& firefox = all.at("firefox");
    EXPECT_EQ(firefox.traces.at(0).trace->kind, "cache");
    EXPECT_GE(firefox.traces.at(0).files, 150U);
    EXPECT_GT(firefox.traces.at(1).rows, 300U) << "a history in a database is counted by rows";
    EXPECT_THAT(firefox.unseen, ::testing::IsEmpty());
    EXPECT_EQ(runs.at("firefox"), Runs::no);
}

TEST_F(TraceSurveyTest, ManyFilesAreCountedOnAThreadOfTheirOwnAndToldInFewSignals) {
    constexpr int files = 20'000;
    for (int i = 0; i < files; ++i)
        writeFile(home / (".ibis/cache/tree/" + std::to_string(i)), "x");
    FakeUserDefaults defaults;
    desktop::ApplicationsModel model({.defaults = defaults, .tellFailure = {}});
    int signalsOfModel = 0;
    QObject::connect(&model, &QAbstractItemModel::dataChanged, [&] { ++signalsOfModel; });
    QObject::connect(&model, &desktop::ApplicationsModel::summaryChanged,
                     [&] { ++signalsOfModel; });
    TraceSurvey survey(std::move(services), [&](const SurveyNews& some) {
        ++tells;
        model.take(some);
    });
    model.setCounting(true);
    survey.count();
    waitFor([&] { return model.isCounted(); });
    EXPECT_GE(system->looks, files);
    EXPECT_EQ(system->looksOfMainThread, 0);
    EXPECT_EQ(model.index(0, 1).data(), "20000 files, 19.5 KiB");
    EXPECT_LE(tells, 5) << "the beginning, the processes, each application and the end";
    EXPECT_LE(signalsOfModel, 20);
}

TEST_F(TraceSurveyTest, TheMainLoopGoesRoundWhileAFileIsWaitedForAndStoppingDropsTheRest) {
    writeFile(home / ".ibis/cache/tree/slow", "x");
    writeFile(home / ".lynx/junk/mail", "x");
    system->heldName = "slow";
    std::future<void> reached = system->reached.get_future();
    const auto survey = make();
    survey->count();
    reached.wait();
    waitFor([this] { return counts == 1; });  // what was found has been told by now
    EXPECT_THAT(found, ElementsAre("ibis", "lynx"));
    for (int i = 0; i < 10; ++i) QCoreApplication::processEvents();
    EXPECT_TRUE(order.empty());

    survey->stop();
    system->released.set_value();
    survey->count();
    waitUntilOver();
    EXPECT_EQ(counts, 2);
    EXPECT_THAT(order, ElementsAre("ibis", "lynx"))
        << "nothing is told of the one that was stopped";
}

TEST_F(TraceSurveyTest, WhatWasToldOfACountThatWasStoppedStaysUntold) {
    writeFile(home / ".ibis/cache/tree/one", "x");
    system->heldName = "one";
    std::future<void> reached = system->reached.get_future();
    {
        const auto survey = make();
        survey->count();
        reached.wait();
        survey->stop();
        system->released.set_value();
    }
    for (int i = 0; i < 10; ++i) QCoreApplication::processEvents();
    EXPECT_TRUE(order.empty());
    EXPECT_FALSE(isOver);
}

TEST_F(TraceSurveyTest, StoppingInTheMiddleOfALargeTreeEndsTheCountAtTheNextFile) {
    constexpr int files = 2'000;
    for (int i = 0; i < files; ++i)
        writeFile(home / (".ibis/cache/tree/" + std::to_string(i)), "x");
    system->heldName = "0";
    std::future<void> reached = system->reached.get_future();
    const auto survey = make();
    survey->count();
    reached.wait();
    const int looks = system->looks;
    survey->stop();
    system->released.set_value();
    // The next request is taken up when the stopped one has ended.
    survey->lookAtProcesses();
    waitFor([this] { return !runs.empty(); });
    EXPECT_LT(system->looks, looks + 20);
    EXPECT_TRUE(order.empty());
}

TEST_F(TraceSurveyTest, WhatRunsIsToldByProcessesAndLocksAndDoubtIsNoNo) {
    writeFile(home / ".ibis/lock");
    const auto survey = make();
    survey->count();
    waitUntilOver();
    EXPECT_EQ(runs["ibis"], Runs::no);
    const auto look = [&] {
        runs.clear();
        survey->lookAtProcesses();
        waitFor([this] { return !runs.empty(); });
    };
    locks->state = platform::LockState::unknown;
    look();
    EXPECT_EQ(runs["ibis"], Runs::unknown);
    EXPECT_EQ(runs["lynx"], Runs::no);
    locks->state = platform::LockState::held;
    look();
    EXPECT_EQ(runs["ibis"], Runs::yes);
    locks->state = platform::LockState::free;
    listing->start("/usr/bin/lynx");
    look();
    EXPECT_EQ(runs["ibis"], Runs::no);
    EXPECT_EQ(runs["lynx"], Runs::yes);
    listing->fails = true;
    look();
    EXPECT_EQ(runs["ibis"], Runs::unknown);
    EXPECT_EQ(runs["lynx"], Runs::unknown);
}

}  // namespace
}  // namespace dorvanel::test

// SPDX-License-Identifier: MIT
#include "app/RunLook.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "app/TrashLook.h"
#include "log/ActivityLog.h"
#include "prefs/PropertyListDefaults.h"
#include "support/EnvironmentVariable.h"
#include "support/FakeProcessListing.h"
#include "support/SharedPreferences.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::SizeIs;

class RunLookTest : public ::testing::Test {
  protected:
    RunLookTest() {
        auto nothing = std::make_unique<FakeProcessListing>();
        listing = nothing.get();
        services.listing = std::move(nothing);
        services.mountPoints = [] { return std::vector<std::string>(); };
        writeFile(page, "secret");
    }
    ~RunLookTest() override { kalvet_logger_close(); }

    RunChoice choice(bool withQuicktime = false) {
        return RunChoice::now(*preferences, *defaults, withQuicktime);
    }
    LookedAtRun look(const RunChoice& chosen) {
        return lookAtRun(chosen, services, LookDepth::notes, [] { return false; });
    }

    TemporaryHome home;
    std::string page = home / "Library/Caches/Safari/page.cache";
    std::unique_ptr<platform::UserDefaults> defaults =
        openUserDefaults(userDefaultsPath(), [](const auto&) {});
    std::shared_ptr<Preferences> preferences = sharedPreferences(*defaults);
    LookServices services;
    FakeProcessListing* listing = nullptr;
};

TEST_F(RunLookTest, ItFindsWhatARunWouldTakeAndTouchesNothing) {
    kalvet_logger_open();
    const LookedAtRun looked = look(choice());
    ASSERT_THAT(looked.plan.items, SizeIs(1));
    EXPECT_EQ(looked.plan.items[0].path, home / "Library/Caches/Safari");
    EXPECT_THAT(looked.names, ElementsAre(Pair("Safari", "Safari")));
    EXPECT_EQ(readFile(page), "secret");
    EXPECT_EQ(readFile(activityLogPath()), "") << "nobody has done anything";
}

TEST_F(RunLookTest, WhatIsChosenAfterTheChoiceWasTakenDoesNotMatterToIt) {
    const RunChoice before = choice();
    ASSERT_TRUE(preferences->enableChanged("Safari"));
    preferences->displayedValues.insert_or_assign("ShredCache", Number::fromBool(false));
    ASSERT_TRUE(preferences->commitDisplayedValues());
    EXPECT_THAT(look(before).plan.items, SizeIs(1));
    EXPECT_THAT(look(choice()).plan.items, IsEmpty());
    EXPECT_NE(before, choice());
    EXPECT_EQ(choice(), choice());
}

TEST_F(RunLookTest, AnApplicationThatRunsIsPassedOver) {
    listing->show({"/Applications/Safari.app/Contents/MacOS/Safari"});
    const LookedAtRun looked = look(choice());
    EXPECT_THAT(looked.plan.items, IsEmpty());
    EXPECT_THAT(looked.plan.skipped, Contains(Field(&PlanSkip::application, "Safari")));
}

TEST_F(RunLookTest, AStopEndsItBeforeAnythingIsMeasured) {
    const LookedAtRun looked = lookAtRun(choice(), services, LookDepth::sizes, [] { return true; });
    EXPECT_THAT(looked.plan.items, IsEmpty());
}

TEST_F(RunLookTest, TheTrashIsFoundAndHeldAndTheHomeFolderIsNamedAsProtected) {
    const EnvironmentVariable data("XDG_DATA_HOME", home / "data");
    const std::string old = home / "data/Trash/files/old";
    writeFile(old, "secret");
    const auto looked = lookAtTrash(services, [] { return false; });
    ASSERT_TRUE(looked);
    EXPECT_THAT(looked.value().trash->plan().items, ElementsAre(Field(&PlanItem::path, old)));
    EXPECT_FALSE(looked.value().protectedFolders.empty());
    EXPECT_EQ(readFile(old), "secret");
}

TEST_F(RunLookTest, WhereNobodyCanTellWhatIsMountedThereIsNoLookAtTheTrash) {
    services.mountPoints = []() -> Result<std::vector<std::string>> {
        return Error{5, "read", "the table of mounts", {}};
    };
    EXPECT_FALSE(lookAtTrash(services, [] { return false; }));
}

}  // namespace
}  // namespace dorvanel::test

// SPDX-License-Identifier: MIT
#include "run/TraceSizes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "apps/catalogue/Catalogue.h"
#include "platform/CleaningCalls.h"
#include "platform/FileManager.h"
#include "support/EnvironmentVariable.h"
#include "support/SampleProfiles.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

class TraceSizesTest : public ::testing::Test {
  protected:
    TraceSizesTest() { SampleProfiles(home_.path(), 1).addChromium(); }

    TraceSizes chromium() {
        return countTraces(*catalogue_.find("chromium"), *system_, cleaner_, [] { return false; });
    }
    static const TraceSize& of(const TraceSizes& sizes, const std::string& kind) {
        return *std::ranges::find_if(
            sizes.traces, [&](const TraceSize& size) { return size.trace->kind == kind; });
    }

    TemporaryHome home_;
    EnvironmentVariable config_{"XDG_CONFIG_HOME", ""};
    EnvironmentVariable cache_{"XDG_CACHE_HOME", ""};
    const catalogue::Catalogue catalogue_ =
        catalogue::Catalogue::load({SHIPPED, {}}, platform::defaultFileManager());
    std::unique_ptr<platform::SystemCalls> system_ = platform::makeSystemCalls();
    std::unique_ptr<platform::CleaningCalls> calls_ = platform::makeCleaningCalls();
    cleaning::Cleaner cleaner_{*calls_, platform::systemClock()};
};

TEST_F(TraceSizesTest, AKindThatIsNothingButKeysOfSettingsIsThereToo) {
    const TraceSizes sizes = chromium();
    const TraceSize& permissions = of(sizes, "permissions");
    EXPECT_EQ(permissions.keys, 2);  // one in each profile
    EXPECT_EQ(permissions.files, 0);
    EXPECT_EQ(permissions.rows, 0);
    EXPECT_FALSE(permissions.isNothing());
    EXPECT_TRUE(of(sizes, "logs").isNothing());
    EXPECT_THAT(sizes.unseen, IsEmpty());
}

TEST_F(TraceSizesTest, FilesRowsAndKeysAreCountedApart) {
    const TraceSizes sizes = chromium();
    const TraceSize& history = of(sizes, "history");
    EXPECT_EQ(history.files, 4);  // two in each profile
    EXPECT_EQ(history.keys, 2);
    EXPECT_GT(history.rows, 800);
    EXPECT_EQ(of(sizes, "forms").rows, 50);
}

TEST_F(TraceSizesTest, ACountThatIsToldToStopStopsAlsoInTheMiddleOfAFolder) {
    for (int i = 0; i < 500; ++i) {
        writeFile(home_ / (".cache/chromium/Default/Cache/Cache_Data/more" + std::to_string(i)));
    }
    const auto files = [this](int asked) {
        const TraceSizes sizes = countTraces(*catalogue_.find("chromium"), *system_, cleaner_,
                                             [&asked] { return asked-- <= 0; });
        return of(sizes, "cache").files;
    };
    EXPECT_GT(files(100'000), 500U);
    EXPECT_EQ(files(0), 0U);
    EXPECT_LT(files(20), 20U);
}

TEST_F(TraceSizesTest, SettingsThatCannotBeReadAreTold) {
    writeFile(home_ / ".config/chromium/Default/Preferences", "{ no settings");
    const TraceSizes sizes = chromium();
    EXPECT_EQ(of(sizes, "permissions").keys, 1);
    EXPECT_FALSE(of(sizes, "permissions").isWhole);
    EXPECT_TRUE(of(sizes, "cache").isWhole);
    ASSERT_FALSE(sizes.unseen.empty());
    EXPECT_THAT(sizes.unseen.front(), HasSubstr("Default/Preferences"));
}

}  // namespace
}  // namespace dorvanel::test

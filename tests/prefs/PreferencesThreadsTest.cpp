// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "prefs/Preferences.h"
#include "support/FakeUserDefaults.h"
#include "support/SharedPreferences.h"

namespace dorvanel::test {
namespace {

TEST(PreferencesThreadsTest, AReaderSeesACommitAsAWholeOrNotAtAll) {
    FakeUserDefaults defaults;
    const auto preferences = sharedPreferences(defaults);
    constexpr int commits = 300;
    std::atomic<bool> isDone = false;
    std::atomic<int> halves = 0;
    std::atomic<int> stale = 0;
    std::thread worker([&] {
        while (!isDone) {
            const std::uint64_t count = preferences->changeCount();
            const auto values = preferences->preferences();
            if (values->at("NumberOfWrites") != values->at("OverwritePattern")) ++halves;
            // The first commit makes count 2; each stores one more.
            if (count > 1 &&
                values->at("NumberOfWrites").intValue() + 2 < static_cast<int>(count)) {
                ++stale;
            }
            (void)preferences->prefsDoDSanitize();
            (void)preferences->prefsNSA();
            (void)preferences->objectForKey("ShredCache");
        }
    });
    for (int i = 0; i < commits; ++i) {
        preferences->displayedValues.insert_or_assign("NumberOfWrites", Number::fromInt(i));
        preferences->displayedValues.insert_or_assign("OverwritePattern", Number::fromInt(i));
        EXPECT_TRUE(preferences->commitDisplayedValues());
    }
    isDone = true;
    worker.join();
    EXPECT_EQ(halves, 0);
    EXPECT_EQ(stale, 0) << "who sees the new count reads the new values";
    EXPECT_EQ(preferences->intForKey("NumberOfWrites"), commits - 1);
}

}  // namespace
}  // namespace dorvanel::test

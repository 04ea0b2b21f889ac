// SPDX-License-Identifier: MIT
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/FakeClock.h"
#include "support/FakePreferences.h"
#include "support/FakeUserDefaults.h"
#include "support/LogCapture.h"
#include "support/SampleHome.h"
#include "support/TemporaryFolder.h"
#include "targets/Collectors.h"

namespace dorvanel::test {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Lines = std::vector<std::string>;

inline const std::string notEnabled = "Not enabled - check preferences to enable.";
inline const std::string separator;
inline const std::string saltSkip = "Not exactly 1 Salt folder.  Profile Skipped.";

/// Collectors on a temporary home, with the real file manager and the real Activity Log.
class CollectorTest : public ::testing::Test {
  protected:
    /// The lines that one collector writes.
    Lines run(void (Collectors::*collector)()) {
        log.restart();
        (collectors.*collector)();
        return log.lines();
    }

    void tick(const Lines& profiles) { defaults.setArray(profiles, "ProfilesMenu"); }
    void turnOn(std::initializer_list<const char*> keys) {
        for (const char* key : keys) preferences.set(key, true);
    }

    TemporaryHome home;
    LogCapture log;
    SampleHome sample{home.path(), 1};
    FakePreferences preferences;
    FakeUserDefaults defaults;
    FakeClock clock;
    std::vector<std::string> shredList;
    Collectors collectors{shredList, preferences, platform::defaultFileManager(), defaults, clock};
};

}  // namespace dorvanel::test

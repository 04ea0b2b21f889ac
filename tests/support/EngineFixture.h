// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "engine/FileAccess.h"
#include "engine/random/FeedbackSequence.h"
#include "support/FakeClock.h"
#include "support/FakeOutlets.h"
#include "support/FakePreferences.h"
#include "support/FaultySystemCalls.h"
#include "support/LogCapture.h"
#include "support/RecordingSystemCalls.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {

/// An engine that stands on fakes but works on the real disk: its calls are recorded, then perhaps
/// made to fail, then made.
struct TestEngine {
    TestEngine() {
        clock.step = std::chrono::seconds(1);  // so that the outlets are told every value
        preferences.set("OverwritePattern", 0);
        preferences.set("NumberOfWrites", 2);
        faulty.inMemory = 1;  // the flushes have tests of their own
    }

    /// Shreds the items, and checks that the engine has emptied the list.
    const Outcome& shred(std::vector<std::string> paths) {
        access.shredDroppedFile(paths);
        EXPECT_TRUE(paths.empty());
        return access.outcome();
    }

    FakePreferences preferences;
    FakeClock clock;
    FakeProgressIndicator shreddingProgress;
    FakeTextField fileName;
    FeedbackSequence draws;
    std::unique_ptr<platform::SystemCalls> real = platform::makeSystemCalls();
    FaultySystemCalls faulty{*real};
    RecordingSystemCalls system{faulty};
    FileAccess access{{system, clock, draws}, preferences, shreddingProgress, fileName};
};

/// A test with an engine, a home with an open Activity Log, and a folder to shred in.
class EngineFixture : public ::testing::Test, public TestEngine {
  protected:
    TemporaryHome home;
    LogCapture log;
    TemporaryFolder folder;
};

}  // namespace dorvanel::test

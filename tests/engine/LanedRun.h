// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <vector>

#include "engine/FileAccess.h"
#include "engine/random/FeedbackSequence.h"
#include "support/FakeClock.h"
#include "support/FakeOutlets.h"
#include "support/FakePreferences.h"
#include "support/LanedSystemCalls.h"
#include "support/LogCapture.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {

/// Whether a second thread can have any part in a request here: there is a folder in memory, and
/// more than one processor.
bool hasLane();

/// An engine with or without a second thread, and a folder in memory with something to shred.
struct LanedRun {
    explicit LanedRun(bool hasTwoThreads);

    const Outcome& shred(const std::string& name);

    TemporaryHome home;
    LogCapture log;
    TemporaryFolder folder;
    FakePreferences preferences;
    FakeClock clock;
    FakeProgressIndicator bar;
    FakeTextField fileName;
    FeedbackSequence draws;
    std::unique_ptr<platform::SystemCalls> real = platform::makeSystemCalls();
    LanedSystemCalls system;
    FileAccess access{{system, clock, draws}, preferences, bar, fileName};
};

/// What `makeTree` makes below the tree, and the tree itself.
struct TreeCounts {
    std::uint64_t files = 0;  ///< and links and the like: all that is no folder
    std::uint64_t folders = 0;
};

/// Makes "tree" in the folder, with folders of `filesEach` small files, one in another and side by
/// side, and all kinds of other entries; and "outside" with what links in it lead to.
TreeCounts makeTree(const TemporaryFolder& folder, int filesEach);

/// All of an outcome, as text in which the folder is called "@".
std::string textOf(const Outcome& outcome, const TemporaryFolder& folder);

using Writes = std::vector<std::string>;
/// The writes to each file, by the file's name, in their order.
std::map<std::string, Writes> writesOf(const LanedSystemCalls& system);

/// Names in the order in which their removal was tried, with what came of it.
std::vector<std::string> removalsOf(const LanedSystemCalls& system);

/// Names that were removed, without those of holding folders.
std::uint64_t removedOf(const LanedSystemCalls& system);

/// Everything that the folder holds, at any depth, that is no folder; links are not followed.
std::uint64_t filesBelow(const std::string& path);

/// Whether a call was made by a second thread.
bool hadSecondThread(const LanedSystemCalls& system);

}  // namespace dorvanel::test

// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <vector>

#include "apps/catalogue/Entry.h"
#include "platform/SystemCalls.h"
#include "targets/traces/Obstacle.h"

namespace dorvanel::traces {

/// One thing that a kind of trace consists of, and that is there.
struct TraceItem {
    enum class Action {
        shred,  ///< goes whole
        empty,  ///< an empty file takes its place
        clean,  ///< a database that loses rows
        json,   ///< a JSON file that loses keys
    };
    Action action = Action::shred;
    std::string path;                                       ///< absolute, without links above it
    const catalogue::Trace* trace = nullptr;                ///< of the entry
    std::string profile;                                    ///< its name for people; may be empty
    const catalogue::DatabaseCleaning* database = nullptr;  ///< of `clean`
    std::map<std::string, std::string> attach{};            ///< other databases' paths by name
    const catalogue::JsonCleaning* json = nullptr;          ///< of `json`
};

/// What an application has left in this home folder.
struct FoundTraces {
    bool isInstalled = false;      ///< a root of it is there
    std::vector<TraceItem> items;  ///< kind by kind, each thing once in a kind
    std::vector<Obstacle> obstacles;
};

/// Looks for everything that the entry, which must outlive the result, describes. Touches nothing.
FoundTraces findTraces(const catalogue::Entry& entry, platform::SystemCalls& system);

/// Paths of the application's lock files and links that are there.
std::vector<std::string> findLocks(const catalogue::Entry& entry, platform::SystemCalls& system);

}  // namespace dorvanel::traces

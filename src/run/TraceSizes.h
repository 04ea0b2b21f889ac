// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "apps/catalogue/Entry.h"
#include "platform/SystemCalls.h"
#include "targets/cleaning/Cleaning.h"

namespace dorvanel {

/// What there is of one kind of trace.
struct TraceSize {
    const catalogue::Trace* trace = nullptr;  ///< of the entry
    std::uint64_t files = 0;                  ///< that would go; folders are not counted
    std::uint64_t bytes = 0;                  ///< in them
    std::uint64_t rows = 0;                   ///< that databases would lose
    std::uint64_t keys = 0;                   ///< that JSON files would lose
    bool isWhole = true;                      ///< nothing of it was out of sight
    [[nodiscard]] bool isNothing() const { return files == 0 && rows == 0 && keys == 0; }
};

/// What there is of an application.
struct TraceSizes {
    bool isFound = false;             ///< a root of it is there
    std::vector<TraceSize> traces;    ///< all kinds of the entry, in its order
    std::vector<std::string> unseen;  ///< what could not be looked into, each a line for people
};

/// Looks at what an application has left, as a run would find it. Touches nothing. `stop` is asked
/// now and then. The entry must outlive the result.
TraceSizes countTraces(const catalogue::Entry& entry, platform::SystemCalls& system,
                       cleaning::Cleaner& cleaner, const std::function<bool()>& stop);

}  // namespace dorvanel

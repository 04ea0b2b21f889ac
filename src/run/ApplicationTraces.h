// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "apps/TraceChoice.h"
#include "apps/catalogue/Entry.h"
#include "engine/Outcome.h"
#include "engine/Plan.h"
#include "platform/SystemCalls.h"
#include "run/RunItem.h"
#include "run/RunLimit.h"
#include "targets/cleaning/Cleaning.h"

namespace dorvanel {

/// What a collecting is for.
enum class CollectingPurpose {
    shredding,  ///< what is to be cleaned is prepared
    looking,    ///< nothing on the disk is touched
};

/// What was collected of the applications of today.
struct CollectedTraces {
    /// Something that will be shredded.
    struct Doomed {
        std::string path;
        const catalogue::Entry* entry;
    };
    /// A file that will be cleaned.
    struct Cleaning {
        cleaning::PreparedFile prepared;
        const catalogue::Entry* entry;
        bool countsRows;
        std::size_t item;   ///< its first one
        std::size_t items;  ///< how many it has: one for each kind that takes something of it
    };
    std::vector<Doomed> doomed{};
    std::vector<Cleaning> cleanings{};
    std::vector<RunItem> items{};  ///< all of it, in the order of the log
    std::vector<PlanSkip> skips{};
    std::vector<Outcome::Trouble> troubles{};  ///< with what was passed over
    std::uint64_t leftByLimit = 0;             ///< places that the limit knew nothing of
};

/// What is to be collected of one application. All of it outlives the collecting, and the entry
/// what was collected.
struct TracesRequest {
    const catalogue::Entry& entry;
    const TraceChoice::Kinds& kinds;
    CollectingPurpose purpose;
    cleaning::Cleaner& cleaner;
    const std::function<bool()>& stop;  ///< asked now and then
    const RunLimit* limit = nullptr;    ///< beyond which nothing is taken; null: none
};

/// Adds what there is of the chosen kinds, and writes a line of each to the Activity Log.
void collectTraces(const TracesRequest& request, platform::SystemCalls& system,
                   CollectedTraces& collected);

}  // namespace dorvanel

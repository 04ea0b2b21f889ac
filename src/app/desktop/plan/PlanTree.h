// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "app/desktop/plan/ShownPlan.h"

namespace dorvanel::desktop {

/// The rows of a plan in their order: applications, in them kinds of traces or folders, in those
/// the items, by number, and at the end what is passed over. Holds numbers of the plan's, no
/// copies.
class PlanTree {
  public:
    /// Items that belong together.
    struct Kind {
        std::string name;       ///< a kind of trace, or the path of a folder
        bool isFolder = false;  ///< which of the two
        std::vector<std::uint32_t> items{};
        std::uint64_t files = 0;
        std::uint64_t bytes = 0;
    };
    struct Group {
        enum class What { application, files, mentions, skipped };
        What what = What::files;
        std::string application{};
        std::vector<std::uint32_t> kinds{};    ///< by number
        std::vector<std::uint32_t> skipped{};  ///< numbers of the plan's skips, of the last group
        std::uint64_t files = 0;
        std::uint64_t bytes = 0;
    };
    /// Where an item stands: its kind, and its row in that. Only for items that are shown.
    struct Place {
        std::uint32_t kind = 0;
        std::uint32_t row = 0;
    };

    PlanTree() = default;
    /// Of the items and skips whose names or paths hold `filter`, whatever its case; of all where
    /// it is empty. Any thread.
    PlanTree(const ShownPlan& shown, const std::string& filter);

    std::vector<Group> groups;
    std::vector<Kind> kinds;
    std::vector<std::uint32_t> groupOfKind;
    std::vector<std::uint32_t> rowOfKind;  ///< in its group
    std::vector<Place> places;             ///< of the items
};

}  // namespace dorvanel::desktop

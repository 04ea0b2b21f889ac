// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "engine/FileAccess.h"
#include "engine/HeldItem.h"
#include "engine/Outcome.h"
#include "engine/Plan.h"
#include "engine/plan/ItemPlanner.h"
#include "run/MentionsOfItems.h"
#include "targets/trash/TrashFolders.h"

namespace dorvanel {

/// Shreds what is in the trash of the user: the items, and, of those that are gone then, what the
/// trash knows of them. One thread at a time.
class TrashShredding {
  public:
    /// All of them outlive this.
    explicit TrashShredding(const mentions::Mentions::Parts& parts);

    /// Looks what is in the trash of the home folder, whose data lie in `dataFolder` ("" for none),
    /// and in the user's trash folders on what is mounted at these points. Touches nothing. Items
    /// are held from here on.
    void find(const std::string& dataFolder, const std::vector<std::string>& mountPoints,
              const ItemPlanner::Parts& planning);

    /// Whether there is nothing to shred; there may be something to tell.
    [[nodiscard]] bool isEmpty() const { return items_.empty() && orphans_.empty(); }
    /// What would be shredded, a link in it staying a link, and what is left as it is.
    [[nodiscard]] const Plan& plan() const { return plan_; }
    /// Items in the trash that can go, and the bytes in them.
    [[nodiscard]] std::uint64_t itemCount() const { return itemCount_; }
    [[nodiscard]] std::uint64_t byteCount() const { return byteCount_; }

    /// Shreds it and tells all that came of it; what was found is forgotten. `engine` is at rest.
    Outcome shred(FileAccess& engine);

  private:
    /// What is known of an item that is not there.
    struct Orphan {
        std::string path;
        std::string item;  ///< "" where it is of no item at all
    };

    void lookInto(const trash::TrashFolder& folder, std::vector<std::string>& paths);
    void holdItems(const std::vector<trash::TrashFolder>& folders,
                   const std::vector<std::string>& paths, const std::function<bool()>& stop);
    void planItems(const ItemPlanner::Parts& planning);
    void skip(const std::string& path, PlanSkip::Reason reason, std::string detail);
    [[nodiscard]] std::vector<std::string> names(const std::string& folder);
    void shredOrphans(FileAccess& engine, Outcome& outcome);

    mentions::Mentions::Parts parts_;
    MentionsOfItems mentions_;
    std::vector<HeldItem> items_;
    std::vector<Orphan> orphans_;
    Plan plan_;
    std::size_t refused_ = 0;  ///< skips that the engine does not tell by itself: the first ones
    std::uint64_t itemCount_ = 0;
    std::uint64_t byteCount_ = 0;
};

}  // namespace dorvanel

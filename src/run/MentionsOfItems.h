// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "engine/FileAccess.h"
#include "engine/HeldItem.h"
#include "engine/Outcome.h"
#include "engine/Plan.h"
#include "targets/mentions/Mentions.h"

namespace dorvanel {

/// What the desktop remembers of items that are shredded: found beforehand, and shredded by the
/// engine once the items are gone. One thread at a time.
class MentionsOfItems {
  public:
    using Where = mentions::Mentions::Where;

    explicit MentionsOfItems(const mentions::Mentions::Parts& parts) : mentions_(parts) {}

    /// Looks for the mentions of items that are about to be shredded; touches nothing. Root in the
    /// home folder of somebody else does not look, and the obstacle says so: what lies there may
    /// lead root anywhere. `stop` is asked now and then.
    void find(
        const std::vector<HeldItem>& items, Where where,
        const std::function<bool()>& stop = [] { return false; });

    /// What would be taken, in the order in which it goes, behind the items.
    [[nodiscard]] std::vector<PlanItem> planItems() const;
    /// What is left as it is, and why.
    [[nodiscard]] std::vector<PlanSkip> planSkips() const;

    /// Shreds the mentions of what is gone now, takes the entries of it out of lists, and adds what
    /// came of it to `outcome`, which is that of the items' request: its numbers, its troubles, and
    /// at the end of `perItem` one entry for each of `planItems`, in their order. What is left of
    /// the items keeps its mentions; after a stop all stay. `engine` is at rest.
    void shred(FileAccess& engine, Outcome& outcome);

  private:
    void keep(std::size_t mention, std::string reason);
    void tellObstacles(Outcome& outcome) const;
    void takeLists(mentions::Departed& departed, FileAccess& engine,
                   std::map<std::string, std::size_t>& asides, std::vector<std::string>& doomed);

    mentions::Mentions mentions_;
    bool isRefused_ = false;  ///< root in another's home
    std::vector<std::string> items_;
    std::vector<ItemOutcome> outcomes_;  ///< of the mentions, by number
    Outcome cleaned_;                    ///< what came of the lists
};

/// Where that lay, before it was moved, which a request has left: where that is not known of
/// something, the whole item counts.
std::vector<std::string> formerPathsOfWhatIsLeft(const Outcome& outcome,
                                                 const std::vector<std::string>& items);

}  // namespace dorvanel

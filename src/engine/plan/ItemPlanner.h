// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "engine/HeldItem.h"
#include "engine/LinkTargets.h"
#include "engine/Plan.h"
#include "engine/TreeWalk.h"
#include "engine/plan/FileCount.h"
#include "engine/plan/MovedItems.h"
#include "engine/plan/PlanVisitor.h"
#include "platform/Medium.h"
#include "platform/OpenFiles.h"
#include "platform/SharedExtents.h"

namespace dorvanel {

/// Says what the engine would do with the items of a request, as they are now, without doing it:
/// nothing is written, made, renamed or made accessible. One thread at a time.
class ItemPlanner {
  public:
    /// What is null is not looked for. All of them must outlive the planner.
    struct Parts {
        platform::SystemCalls& system;
        platform::MediumInspector* medium = nullptr;
        platform::OpenFiles* openFiles = nullptr;
        platform::SharedExtents* sharedExtents = nullptr;
        std::vector<Identity> spared{};  ///< folders that are never shredded, as for the engine
        std::function<bool()> stop{};    ///< asked now and then: true gives up
    };
    explicit ItemPlanner(Parts parts);

    /// Whom an item belongs to.
    struct Origin {
        std::string application{};
        std::string trace{};
        std::string profile{};
    };
    using OriginOf = std::function<Origin(std::size_t item)>;

    /// Adds what would become of the items, all those of one request, in its order: an item that
    /// lies in an earlier one goes with that one, and a link leads nowhere once what it led to has
    /// gone. What does not exist is in no list. `originOf` is called with numbers of `items`. False
    /// where it was stopped: the plan then holds the items that were looked at wholly.
    bool add(const std::vector<HeldItem>& items, Plan& plan, const OriginOf& originOf = {});

  private:
    bool addItem(const HeldItem& item, const Origin& origin, Plan& plan);
    [[nodiscard]] bool isRefused(const HeldItem& item, const Origin& origin, Plan& plan) const;
    [[nodiscard]] bool walk(const HeldItem& item, PlanItem& planned, Plan& plan,
                            const Origin& origin);
    bool goesWithAnother(const HeldItem& item);
    bool liesInMoved(const HeldItem& item);
    void noteMedium(const HeldItem& item, PlanItem& planned);
    void settleStrays(Plan& plan);
    int openItem(const HeldItem& item, int parent);
    std::shared_ptr<const HeldDescriptor> parentOf(const HeldItem& item);

    Parts parts_;
    FileCount::Parts files_;
    LinkTargets targets_;
    MovedItems moved_;
    TreeWalk walk_;
    std::vector<StrayLink> strays_;
    std::map<std::uint64_t, std::string> media_;    ///< of each device, why not to rely on it
    std::shared_ptr<const HeldDescriptor> parent_;  ///< of the last item that did not hold its own
    std::string parentPath_;
    Identity outside_;           ///< a folder that lies in no moved one
    std::size_t outsideOf_ = 0;  ///< of how many
};

/// The plan for items of one request.
Plan planOf(const std::vector<HeldItem>& items, ItemPlanner::Parts parts);

}  // namespace dorvanel

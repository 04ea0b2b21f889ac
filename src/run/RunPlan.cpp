// SPDX-License-Identifier: MIT
#include "run/RunPlan.h"

#include <map>
#include <string>
#include <utility>

#include "engine/HeldItem.h"

namespace dorvanel {
namespace {

using Links = platform::SystemCalls::Links;

/// Those that go whole, held as the engine would hold them.
std::vector<HeldItem> hold(const std::vector<const RunItem*>& items,
                           platform::SystemCalls& system) {
    std::vector<HeldItem> held;
    for (const Links links : {Links::follow, Links::stay}) {
        std::vector<std::string> paths;
        for (const RunItem* item : items) {
            if (item->followsLinks == (links == Links::follow)) paths.push_back(item->place);
        }
        for (HeldItem& one : holdAll(system, paths, links)) held.push_back(std::move(one));
    }
    return held;
}

}  // namespace

Plan planOfRun(const std::vector<RunItem>& items, const ItemPlanner::Parts& parts) {
    std::vector<const RunItem*> whole;
    for (const bool follows : {true, false}) {
        for (const RunItem& item : items) {
            const bool goesWhole = item.item.action == PlanItem::Action::shred;
            if (goesWhole && item.followsLinks == follows) whole.push_back(&item);
        }
    }
    Plan measured;
    ItemPlanner planner(parts);
    planner.add(hold(whole, parts.system), measured, [&](std::size_t number) {
        const PlanItem& item = whole[number]->item;
        return ItemPlanner::Origin{item.application, item.trace, item.profile};
    });

    Plan plan;
    plan.skipped = std::move(measured.skipped);
    std::map<std::pair<std::string, std::string>, PlanItem*> byPlace;
    for (PlanItem& item : measured.items) byPlace.emplace(std::pair(item.path, item.trace), &item);
    for (const RunItem& item : items) {
        if (item.item.action != PlanItem::Action::shred) {
            plan.items.push_back(item.item);
            continue;
        }
        const auto found = byPlace.find({item.place, item.item.trace});
        if (found == byPlace.end()) continue;
        found->second->path = item.item.path;
        plan.items.push_back(std::move(*found->second));
        byPlace.erase(found);
    }
    return plan;
}

}  // namespace dorvanel

// SPDX-License-Identifier: MIT
#include "run/RunItem.h"

#include <map>
#include <unordered_map>
#include <utility>

namespace dorvanel {
namespace {

using Troubles = std::vector<ItemOutcome::Trouble>;

void append(Troubles& all, const Troubles& more) {
    all.insert(all.end(), more.begin(), more.end());
}

void add(ItemOutcome& sum, const ItemOutcome& one) {
    sum.overwritten += one.overwritten;
    sum.bytes += one.bytes;
    sum.removed += one.removed;
    sum.verified += one.verified;
    append(sum.left, one.left);
    append(sum.unwritten, one.unwritten);
    append(sum.unverified, one.unverified);
}

/// Several kinds of traces may take something of one file.
std::pair<std::string, std::string> keyOf(const PlanItem& item) {
    return {item.path, item.trace};
}

}  // namespace

void addOutcomes(Plan& plan, const std::vector<RunItem>& items, const Outcome& outcome) {
    std::unordered_map<std::string, const ItemOutcome*> ofEngine;
    for (const ItemOutcome& one : outcome.perItem) ofEngine.emplace(one.path, &one);
    std::map<std::pair<std::string, std::string>, const RunItem*> ofRun;
    for (const RunItem& item : items) ofRun.emplace(keyOf(item.item), &item);

    std::vector<PlanItem> carriedOut;
    for (PlanItem& planned : plan.items) {
        const auto found = ofRun.find(keyOf(planned));
        if (found == ofRun.end() || found->second->isLeftAlone) continue;
        ItemOutcome sum = found->second->item.outcome.value_or(ItemOutcome());
        for (const std::string& path : found->second->handedOver) {
            const auto one = ofEngine.find(path);
            if (one != ofEngine.end()) add(sum, *one->second);
        }
        planned.outcome = std::move(sum);
        carriedOut.push_back(std::move(planned));
    }
    plan.items = std::move(carriedOut);
}

}  // namespace dorvanel

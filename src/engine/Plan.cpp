// SPDX-License-Identifier: MIT
#include "engine/Plan.h"

#include <iterator>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace dorvanel {
namespace {

/// Whether nothing became of it: it went with another one.
bool isNothing(const ItemOutcome& outcome) {
    return outcome.removed == 0 && outcome.overwritten == 0 && outcome.rows == 0 &&
           outcome.left.empty() && outcome.unwritten.empty() && outcome.unverified.empty();
}

/// An item that was not planned, known by its outcome alone.
PlanItem unplanned(const ItemOutcome& outcome) {
    PlanItem item{.path = outcome.path};
    if (outcome.rows > 0) {
        item.action = PlanItem::Action::clean;
        item.rows = outcome.rows;
    } else {
        item.files = outcome.overwritten;
        item.bytes = outcome.bytes;
    }
    item.outcome = outcome;
    return item;
}

}  // namespace

Totals totalsOf(const Plan& plan) {
    Totals totals{.items = plan.items.size()};
    for (const PlanItem& item : plan.items) {
        if (item.isOfList()) {
            totals.entries += item.entries;
        } else if (item.action == PlanItem::Action::clean) {
            totals.rows += item.rows;
            totals.keys += item.keys;
        } else {
            totals.files += item.files;
            totals.bytes += item.bytes;
            if (item.action == PlanItem::Action::shred) totals.folders += item.folders;
        }
    }
    return totals;
}

void addOutcome(Plan& plan, const Outcome& outcome) {
    // The last item of a path first, so that the first one is the next to be taken.
    std::unordered_map<std::string_view, std::vector<PlanItem*>> waiting;
    waiting.reserve(plan.items.size());
    for (auto item = plan.items.rbegin(); item != plan.items.rend(); ++item) {
        if (!item->outcome) waiting[item->path].push_back(&*item);
    }
    std::vector<PlanItem> others;
    for (const ItemOutcome& one : outcome.perItem) {
        const auto found = waiting.find(one.path);
        if (found == waiting.end() || found->second.empty()) {
            if (!isNothing(one)) others.push_back(unplanned(one));
        } else {
            found->second.back()->outcome = one;
            found->second.pop_back();
        }
    }
    plan.items.insert(plan.items.end(), std::make_move_iterator(others.begin()),
                      std::make_move_iterator(others.end()));
}

}  // namespace dorvanel

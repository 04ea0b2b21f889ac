// SPDX-License-Identifier: MIT
#include "run/MentionsOfItems.h"

#include <cerrno>
#include <utility>

#include "platform/FileManager.h"
#include "platform/UserSwitch.h"
#include "run/OutcomeSum.h"
#include "run/TracePaths.h"

namespace dorvanel {
namespace {

using mentions::Mention;
using mentions::Obstacle;

constexpr const char* refusal = "root takes no mentions in the home folder of somebody else";

PlanSkip::Reason reasonOf(Obstacle::Reason reason) {
    switch (reason) {
        case Obstacle::Reason::locked:
            return PlanSkip::Reason::locked;
        case Obstacle::Reason::corrupt:
            return PlanSkip::Reason::corrupt;
        case Obstacle::Reason::insecure:
            return PlanSkip::Reason::insecure;
        default:
            return PlanSkip::Reason::unreadable;
    }
}

bool liesIn(const std::string& path, const std::string& item) {
    return path == item ||
           (path.size() > item.size() && path.starts_with(item) && path[item.size()] == '/');
}

void addItem(ItemOutcome& all, const ItemOutcome& more) {
    all.overwritten += more.overwritten;
    all.bytes += more.bytes;
    all.removed += more.removed;
    all.verified += more.verified;
    for (auto list : {&ItemOutcome::left, &ItemOutcome::unwritten, &ItemOutcome::unverified}) {
        (all.*list).insert((all.*list).end(), (more.*list).begin(), (more.*list).end());
    }
}

}  // namespace

std::vector<std::string> formerPathsOfWhatIsLeft(const Outcome& outcome,
                                                 const std::vector<std::string>& items) {
    std::vector<std::string> former;
    std::uint64_t told = 0;
    for (const ItemOutcome& item : outcome.perItem) {
        for (const ItemOutcome::Trouble& left : item.left) {
            ++told;
            const std::string& path = left.was.empty() ? left.path : left.was;
            former.push_back(liesIn(path, item.path) ? path : item.path);
        }
    }
    // What was not told word by word may be anywhere in them.
    const bool isAllTold = told > 0 || outcome.notRemoved == 0;
    if (!isAllTold || told >= Outcome::keptTroubles) return items;
    return former;
}

void MentionsOfItems::find(const std::vector<HeldItem>& items, Where where,
                           const std::function<bool()>& stop) {
    items_.clear();
    outcomes_.clear();
    cleaned_ = {};
    for (const HeldItem& item : items) {
        // As it is looked for: the way to it free of links, also where the item was given by one.
        if (item.isThere()) items_.push_back(item.path);
    }
    isRefused_ = platform::isRootInAnothersHome();
    mentions_.find(isRefused_ ? std::vector<std::string>() : items_, where, stop);
    for (const Mention& mention : mentions_.found()) {
        outcomes_.emplace_back().path = mention.path;
    }
}

std::vector<PlanItem> MentionsOfItems::planItems() const {
    std::vector<PlanItem> items;
    for (const Mention& mention : mentions_.found()) {
        PlanItem& item = items.emplace_back();
        item.path = mention.path;
        item.action = PlanItem::Action::mention;
        item.files = mention.isList() ? 0 : 1;
        item.bytes = mention.bytes;
        item.entries = mention.entries;
    }
    return items;
}

std::vector<PlanSkip> MentionsOfItems::planSkips() const {
    std::vector<PlanSkip> skips;
    if (isRefused_) {
        skips.push_back({platform::homeDirectory(), {}, PlanSkip::Reason::insecure, refusal});
    }
    for (const Obstacle& obstacle : mentions_.obstacles()) {
        skips.push_back({obstacle.path, {}, reasonOf(obstacle.reason), obstacle.detail});
    }
    return skips;
}

void MentionsOfItems::keep(std::size_t mention, std::string reason) {
    ItemOutcome& item = outcomes_[mention];
    item.left.push_back({item.path, "shred", 0, std::move(reason), {}});
}

void MentionsOfItems::tellObstacles(Outcome& outcome) const {
    for (PlanSkip& skip : planSkips()) {
        ++outcome.notCleaned;
        outcome.note(std::move(skip.path), "look for mentions", 0, std::move(skip.detail));
    }
}

/// Puts the lists without their entries in their places. `asides`: the old ones, and of which
/// mention; `doomed` gets them too.
void MentionsOfItems::takeLists(mentions::Departed& departed, FileAccess& engine,
                                std::map<std::string, std::size_t>& asides,
                                std::vector<std::string>& doomed) {
    for (mentions::Departed::List& list : departed.lists) {
        std::vector<std::string> aside;
        const auto trouble =
            list.prepared->commit([&engine] { return !engine.stopRequested(); }, aside);
        for (std::string& path : aside) {
            asides.emplace(path, list.mention);
            doomed.push_back(std::move(path));
        }
        if (trouble) {
            const std::string reason = textOf(*trouble);
            ++cleaned_.notCleaned;
            cleaned_.note(list.prepared->path(), "clean", trouble->error.code, reason);
            keep(list.mention, reason);
            continue;
        }
        const std::uint64_t entries = list.prepared->counts().front();
        outcomes_[list.mention].rows = entries;
        ++cleaned_.filesCleaned;
        cleaned_.rowsRemoved += entries;
    }
}

void MentionsOfItems::shred(FileAccess& engine, Outcome& outcome) {
    if (outcome.stopped || engine.stopRequested()) {
        for (std::size_t i = 0; i < outcomes_.size(); ++i) keep(i, "the request was ended");
        for (ItemOutcome& item : outcomes_) outcome.perItem.push_back(std::move(item));
        tellObstacles(outcome);
        outcomes_.clear();
        return;
    }
    mentions::Departed departed = mentions_.ofWhatIsGone(formerPathsOfWhatIsLeft(outcome, items_));
    for (const std::size_t i : departed.kept) keep(i, "what it mentions is still there");

    std::map<std::string, std::size_t> numbers;  // of mentions, by what is shredded for them
    FileAccess::Others others{.paths = std::move(departed.leftovers)};
    for (const std::size_t i : departed.files) {
        const std::string& path = mentions_.found()[i].path;
        numbers.emplace(path, i);
        others.paths.push_back(path);
    }
    takeLists(departed, engine, numbers, others.paths);
    departed.lists.clear();

    if (!others.paths.empty()) {
        std::vector<std::string> none;
        engine.shredDroppedFile(none, others);
        Outcome done = engine.outcome();
        for (ItemOutcome& item : done.perItem) {
            const auto number = numbers.find(item.path);
            if (number != numbers.end()) addItem(outcomes_[number->second], item);
        }
        done.perItem.clear();
        addOutcome(outcome, std::move(done));
    }
    cleaned_.perItem = std::move(outcomes_);
    addOutcome(outcome, std::move(cleaned_));
    tellObstacles(outcome);
    outcomes_.clear();
    cleaned_ = {};
}

}  // namespace dorvanel

// SPDX-License-Identifier: MIT
#include "engine/ItemOutcomes.h"

#include <algorithm>
#include <utility>

namespace dorvanel {

using platform::EntryKind;
using platform::FileStatus;
using Links = platform::SystemCalls::Links;

void ItemOutcomes::clear() {
    records_.clear();
    current_ = none;
    settled_ = left_ = unwritten_ = unverified_ = 0;
}

void ItemOutcomes::begin(const HeldItem& item, std::shared_ptr<Manifest> manifest) {
    records_.resize(outcome_.perItem.size());
    records_.push_back(
        {Identity::of(item.status), std::move(manifest), item.status.kind != EntryKind::folder});
    outcome_.perItem.push_back({.path = item.path});
    current_ = static_cast<std::uint32_t>(outcome_.perItem.size() - 1);
}

void ItemOutcomes::sharesItsFolder() {
    if (current_ != none) records_[current_].isAlone = false;
}

void ItemOutcomes::settle() {
    const std::size_t end = std::min<std::size_t>(current_, records_.size());
    for (; settled_ < end; ++settled_) records_[settled_].manifest.reset();
}

ItemOutcome* ItemOutcomes::find(std::uint32_t item) {
    return item < outcome_.perItem.size() ? &outcome_.perItem[item] : nullptr;
}

void ItemOutcomes::countOverwritten(std::uint64_t bytes) {
    if (ItemOutcome* found = find(current_)) {
        ++found->overwritten;
        found->bytes += bytes;
    }
}

void ItemOutcomes::countRemoved(std::uint32_t item) {
    if (ItemOutcome* found = find(item)) ++found->removed;
}

void ItemOutcomes::countVerified(std::uint32_t item) {
    ++outcome_.filesVerified;
    if (ItemOutcome* found = find(item)) ++found->verified;
}

void ItemOutcomes::addLeft(std::uint32_t item, Trouble trouble, const Whereabouts& place) {
    ItemOutcome* found = find(item);
    if (found == nullptr) return;
    const auto isSame = [&trouble](const Trouble& other) { return other.path == trouble.path; };
    unwritten_ -= std::erase_if(found->unwritten, isSame);
    if (std::ranges::any_of(found->left, isSame)) return;
    add(found->left, left_, item, std::move(trouble), place);
}

void ItemOutcomes::addUnwritten(std::uint32_t item, Trouble trouble, const Whereabouts& place) {
    ItemOutcome* found = find(item);
    if (found != nullptr) add(found->unwritten, unwritten_, item, std::move(trouble), place);
}

void ItemOutcomes::addUnverified(std::uint32_t item, Trouble trouble, const Whereabouts& place) {
    ItemOutcome* found = find(item);
    if (found != nullptr) add(found->unverified, unverified_, item, std::move(trouble), place);
}

void ItemOutcomes::keepLastUnwritten(std::uint32_t item, const std::string& path) {
    ItemOutcome* found = find(item);
    if (found == nullptr || found->unwritten.empty() || found->unwritten.back().path != path)
        return;
    addLeft(item, Trouble(found->unwritten.back()));
}

bool ItemOutcomes::tellsOfLeftIn(std::uint32_t item, const std::string& folder) const {
    const std::string inside = folder + "/";
    const auto tells = [&inside](const ItemOutcome& outcome) {
        return std::ranges::any_of(outcome.left, [&inside](const Trouble& trouble) {
            return trouble.path.starts_with(inside);
        });
    };
    if (item == none) return std::ranges::any_of(outcome_.perItem, tells);
    return item < outcome_.perItem.size() && tells(outcome_.perItem[item]);
}

void ItemOutcomes::add(std::vector<Trouble>& list, std::size_t& count, std::uint32_t item,
                       Trouble trouble, const Whereabouts& place) {
    if (count >= Outcome::keptTroubles) return;
    if (trouble.was.empty()) trouble.was = formerPath(item, place);
    if (trouble.was == trouble.path) trouble.was.clear();
    list.push_back(std::move(trouble));
    ++count;
}

std::string ItemOutcomes::formerPath(std::uint32_t item, const Whereabouts& place) {
    const std::string& path = outcome_.perItem[item].path;
    if (place.folder < 0) return {};
    const Record& record = records_[item];
    if (record.isAlone) return path;
    Identity identity = place.known;
    FileStatus status;
    if (identity.inode == 0 &&
        system_.statusAt(place.folder, place.name, Links::stay, status) >= 0) {
        identity = Identity::of(status);
    }
    if (identity == record.identity) return path;
    if (identity.inode == 0 || record.manifest == nullptr) return {};
    const std::optional<std::string> former = record.manifest->formerPath(identity);
    if (!former) return {};
    return former->empty() ? path : path + "/" + *former;
}

}  // namespace dorvanel

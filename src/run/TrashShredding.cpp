// SPDX-License-Identifier: MIT
#include "run/TrashShredding.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <unordered_set>
#include <utility>

#include "engine/ItemCount.h"
#include "run/OutcomeSum.h"

namespace dorvanel {
namespace {

using platform::EntryKind;
using platform::FileStatus;
using platform::SystemCalls;
using trash::TrashFolder;

bool isThere(SystemCalls& system, const std::string& path) {
    FileStatus status;
    const int looked =
        system.statusAt(SystemCalls::workingFolder, path.c_str(), SystemCalls::Links::stay, status);
    return looked != -ENOENT && looked != -ENOTDIR;
}

}  // namespace

TrashShredding::TrashShredding(const mentions::Mentions::Parts& parts)
    : parts_(parts), mentions_(parts) {}

void TrashShredding::find(const std::string& dataFolder,
                          const std::vector<std::string>& mountPoints,
                          const ItemPlanner::Parts& planning) {
    const auto stop = [&planning] { return planning.stop && planning.stop(); };
    items_.clear();
    orphans_.clear();
    plan_ = {};
    itemCount_ = 0;
    byteCount_ = 0;
    const trash::FoundTrash found = trash::findTrashFolders(parts_.system, dataFolder, mountPoints);
    for (const trash::Refusal& refusal : found.refused) {
        skip(refusal.path,
             refusal.isInsecure ? PlanSkip::Reason::insecure : PlanSkip::Reason::unreadable,
             refusal.reason);
    }
    std::vector<std::string> paths;
    for (const TrashFolder& folder : found.folders) lookInto(folder, paths);
    holdItems(found.folders, paths, stop);
    refused_ = plan_.skipped.size();
    planItems(planning);
    mentions_.find(items_, MentionsOfItems::Where::inTheTrash, stop);
    for (PlanItem& mention : mentions_.planItems()) plan_.items.push_back(std::move(mention));
    for (const Orphan& orphan : orphans_) {
        const ItemCount count = countItem(parts_.system, orphan.path);
        PlanItem& item = plan_.items.emplace_back();
        item.path = orphan.path;
        item.action = PlanItem::Action::mention;
        item.files = count.files;
        item.folders = count.folders;
        item.bytes = count.bytes;
    }
    for (PlanSkip& more : mentions_.planSkips()) plan_.skipped.push_back(std::move(more));
}

void TrashShredding::skip(const std::string& path, PlanSkip::Reason reason, std::string detail) {
    plan_.skipped.push_back({path, {}, reason, std::move(detail)});
}

std::vector<std::string> TrashShredding::names(const std::string& folder) {
    std::vector<std::string> all;
    platform::FolderListing listing;
    const int opened = parts_.system.openFolder(SystemCalls::workingFolder, folder.c_str());
    const int read = opened < 0 ? opened : parts_.system.readFolder(opened, listing);
    if (opened >= 0) parts_.system.close(opened);
    if (read < 0 && read != -ENOENT) {
        skip(folder, PlanSkip::Reason::unreadable, std::generic_category().message(-read));
    }
    for (std::size_t i = 0; i < listing.size(); ++i) all.emplace_back(listing.name(i));
    std::ranges::sort(all);
    return all;
}

/// Adds the items of a trash folder to the paths, and its orphans to those.
void TrashShredding::lookInto(const TrashFolder& folder, std::vector<std::string>& paths) {
    // What is known of an item is written before the item comes: looked at in this order, none that
    // is just coming is taken for an orphan.
    std::vector<std::string> known;
    if (folder.info.kind == EntryKind::folder) known = names(folder.infoPath());
    std::unordered_set<std::string> files;
    if (folder.files.kind == EntryKind::folder) {
        for (std::string& name : names(folder.filesPath())) {
            paths.push_back(folder.filesPath() + "/" + name);
            files.insert(std::move(name));
        }
    }
    if (folder.expunged.kind == EntryKind::folder) {
        for (const std::string& name : names(folder.expungedPath())) {
            paths.push_back(folder.expungedPath() + "/" + name);
        }
    }
    for (const std::string& name : known) {
        const bool isInfo = name.ends_with(TrashFolder::infoExtension);
        const std::string item =
            isInfo ? name.substr(0, name.size() - TrashFolder::infoExtension.size())
                   : std::string();
        if (files.contains(item)) continue;
        orphans_.push_back({folder.infoPath() + "/" + name,
                            item.empty() ? std::string() : folder.filesPath() + "/" + item});
    }
}

/// Holds the items; those whose folder is no longer the one that was looked at are left.
void TrashShredding::holdItems(const std::vector<TrashFolder>& folders,
                               const std::vector<std::string>& paths,
                               const std::function<bool()>& stop) {
    for (HeldItem& item : holdAll(parts_.system, paths, SystemCalls::Links::stay)) {
        if (stop()) return;
        const auto isItsFolder = [&item](const TrashFolder& folder) {
            return (item.folder == folder.filesPath() &&
                    item.parentStatus.isSameAs(folder.files)) ||
                   (item.folder == folder.expungedPath() &&
                    item.parentStatus.isSameAs(folder.expunged));
        };
        if (!item.isThere()) continue;  // it has just gone
        if (std::ranges::any_of(folders, isItsFolder)) {
            items_.push_back(std::move(item));
        } else {
            skip(item.path, PlanSkip::Reason::insecure, "its folder was exchanged");
        }
    }
}

void TrashShredding::planItems(const ItemPlanner::Parts& planning) {
    ItemPlanner(planning).add(items_, plan_);
    itemCount_ = plan_.items.size();
    for (const PlanItem& item : plan_.items) byteCount_ += item.bytes;
}

Outcome TrashShredding::shred(FileAccess& engine) {
    engine.shredItems(items_);
    Outcome outcome = engine.outcome();
    mentions_.shred(engine, outcome);
    if (!outcome.stopped) shredOrphans(engine, outcome);
    for (std::size_t i = 0; i < refused_; ++i) {
        const PlanSkip& skipped = plan_.skipped[i];
        ++outcome.notRemoved;
        outcome.note(skipped.path, "look into", 0, skipped.detail);
    }
    orphans_.clear();
    plan_ = {};
    refused_ = 0;
    return outcome;
}

void TrashShredding::shredOrphans(FileAccess& engine, Outcome& outcome) {
    FileAccess::Others others;
    for (const Orphan& orphan : orphans_) {
        // An item may have come meanwhile.
        if (orphan.item.empty() || !isThere(parts_.system, orphan.item)) {
            others.paths.push_back(orphan.path);
        }
    }
    if (others.paths.empty()) return;
    std::vector<std::string> none;
    engine.shredDroppedFile(none, others);
    addOutcome(outcome, engine.outcome());
}

}  // namespace dorvanel

// SPDX-License-Identifier: MIT
#include "engine/plan/ItemPlanner.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "engine/MediumNotice.h"

namespace dorvanel {

using platform::EntryKind;
using platform::FileStatus;
using platform::SystemCalls;
using Links = SystemCalls::Links;
using Reason = PlanSkip::Reason;

namespace {

bool leadsNowhere(int code) {
    return code == ENOENT || code == ENOTDIR || code == ELOOP;
}

PlanSkip skipOf(const HeldItem& item, const ItemPlanner::Origin& origin, Reason reason,
                std::string detail) {
    return {item.path, origin.application, reason, std::move(detail)};
}

}  // namespace

ItemPlanner::ItemPlanner(Parts parts)
    : parts_(std::move(parts)),
      files_{parts_.system, nullptr, parts_.sharedExtents, parts_.system.effectiveUser()},
      targets_(parts_.system),
      walk_(parts_.system) {}

bool ItemPlanner::add(const std::vector<HeldItem>& items, Plan& plan, const OriginOf& originOf) {
    moved_.clear();
    media_.clear();
    outsideOf_ = 0;
    if (parts_.medium != nullptr) parts_.medium->forgetDisks();
    if (parts_.openFiles != nullptr) {
        parts_.openFiles->look();
        files_.openFiles = parts_.openFiles->empty() ? nullptr : parts_.openFiles;
    }
    bool isWhole = true;
    for (std::size_t i = 0; i < items.size() && isWhole; ++i) {
        isWhole = addItem(items[i], originOf ? originOf(i) : Origin{}, plan);
    }
    settleStrays(plan);
    targets_.clear();
    parent_.reset();
    return isWhole;
}

/// False where it was stopped.
bool ItemPlanner::addItem(const HeldItem& item, const Origin& origin, Plan& plan) {
    if (parts_.stop && parts_.stop()) return false;
    if (item.code != 0) {
        if (!item.isThere() && (item.code == ENOENT || item.code == ENOTDIR)) return true;
        const bool isDangling = item.isThere() && leadsNowhere(item.code);
        const std::string detail = isDangling ? "is a symbolic link that leads nowhere"
                                              : std::generic_category().message(item.code);
        plan.skipped.push_back(skipOf(item, origin, Reason::unreadable, detail));
        return true;
    }
    if (goesWithAnother(item) || isRefused(item, origin, plan)) return true;
    PlanItem planned{.path = item.path,
                     .application = origin.application,
                     .trace = origin.trace,
                     .profile = origin.profile};
    return walk(item, planned, plan, origin);
}

bool ItemPlanner::isRefused(const HeldItem& item, const Origin& origin, Plan& plan) const {
    const FileStatus& status = item.status;
    if (std::ranges::find(parts_.spared, Identity::of(status)) != parts_.spared.end()) {
        plan.skipped.push_back(
            skipOf(item, origin, Reason::unreadable, "is the home folder or a folder above it"));
        return true;
    }
    if (status.kind != EntryKind::link && status.isBeyondMountOf(item.parentStatus)) {
        plan.skipped.push_back(skipOf(item, origin, Reason::mount, "is a mount point"));
        return true;
    }
    return false;
}

/// Looks at the item and all that is in it. False where it was stopped.
bool ItemPlanner::walk(const HeldItem& item, PlanItem& planned, Plan& plan, const Origin& origin) {
    const std::shared_ptr<const HeldDescriptor> parent = parentOf(item);
    const int folder = parent == nullptr ? -1 : parent->get();
    const PlanVisitor::Parts parts{files_, targets_, moved_, parts_.spared, parts_.stop, strays_};
    // Its own links, too, lead nowhere where they lead into it.
    moved_.add(item);
    PlanVisitor visitor(parts, walk_, item, folder, planned, plan.items.size());
    visitor.lookAtItem();
    if (item.status.kind == EntryKind::folder) {
        const int opened = openItem(item, folder);
        if (opened >= 0) walk_.walk(opened, TreeWalk::Order::forward, visitor);
        if (opened < 0) visitor.couldNotOpen(-opened);
    }
    const std::string inside = item.path + "/";
    std::string refusal;
    if (!visitor.sparedFolder.empty()) {
        refusal = "holds the home folder \"" + inside + visitor.sparedFolder + "\"";
    } else if (!visitor.mountPoint.empty()) {
        refusal = "holds the mount point \"" + inside + visitor.mountPoint + "\"";
    }
    if (visitor.isStopped || !refusal.empty()) {
        std::erase_if(strays_,
                      [&](const StrayLink& stray) { return stray.item == plan.items.size(); });
    }
    if (visitor.isStopped) return false;
    if (!refusal.empty()) {
        moved_.remove(item);
        const Reason reason = visitor.sparedFolder.empty() ? Reason::mount : Reason::unreadable;
        plan.skipped.push_back(skipOf(item, origin, reason, std::move(refusal)));
        return true;
    }
    noteMedium(item, planned);
    plan.items.push_back(std::move(planned));
    return true;
}

/// Whether an earlier item has taken it along.
bool ItemPlanner::goesWithAnother(const HeldItem& item) {
    if (moved_.empty()) return false;
    return moved_.holds(item.parentStatus, item.name) || liesInMoved(item);
}

/// Goes up from the item: the same folder may be named by several paths.
bool ItemPlanner::liesInMoved(const HeldItem& item) {
    const Identity parent = Identity::of(item.parentStatus);
    if (moved_.folders() == 0 || (outsideOf_ == moved_.folders() && outside_ == parent)) {
        return false;
    }
    FileStatus status = item.parentStatus;
    std::shared_ptr<const HeldDescriptor> folder = parentOf(item);
    while (folder != nullptr) {
        if (moved_.isFolder(status)) return true;
        const int above = parts_.system.openReference(folder->get(), "..", Links::stay);
        if (above < 0) break;
        folder = std::make_shared<const HeldDescriptor>(parts_.system, above);
        FileStatus found;
        if (parts_.system.status(above, found) < 0 || found.isSameAs(status)) break;
        status = found;
    }
    outside_ = parent;
    outsideOf_ = moved_.folders();
    return false;
}

void ItemPlanner::noteMedium(const HeldItem& item, PlanItem& planned) {
    const bool isLink = item.status.kind == EntryKind::link;
    if (parts_.medium == nullptr || (isLink && item.links == Links::stay)) return;
    std::string reason;
    if (isLink) {
        reason = mediumReason(parts_.medium->mediumAt(item.path));
    } else {
        const auto [known, isNew] = media_.try_emplace(item.status.device);
        if (isNew) known->second = mediumReason(parts_.medium->mediumAt(item.path));
        reason = known->second;
    }
    if (reason.empty()) return;
    // Before all others, so that it is never one that is only counted.
    planned.notes.insert(
        planned.notes.begin(),
        {.kind = PlanNote::Kind::medium, .path = item.path, .detail = std::move(reason)});
}

/// Counts what relative links reach by chance, where another link of the request led there too.
void ItemPlanner::settleStrays(Plan& plan) {
    for (const StrayLink& stray : strays_) {
        const LinkWay::Found& target = stray.target;
        if (!targets_.has(target.status)) continue;
        FileCount files(files_, plan.items[stray.item]);
        if (files.add(SystemCalls::workingFolder, target.path.c_str(), Links::follow, target.status,
                      [&] { return target.path; })) {
            files.notes().add(
                {.kind = PlanNote::Kind::link, .path = stray.link, .target = target.path});
        }
    }
    strays_.clear();
}

int ItemPlanner::openItem(const HeldItem& item, int parent) {
    if (item.item != nullptr) return parts_.system.openFolder(item.item->get(), ".");
    if (parent >= 0) return parts_.system.openFolder(parent, item.name.c_str());
    return -ENOENT;
}

std::shared_ptr<const HeldDescriptor> ItemPlanner::parentOf(const HeldItem& item) {
    if (item.parent != nullptr) return item.parent;
    if (parent_ == nullptr || parentPath_ != item.folder) {
        const int opened = parts_.system.openReference(SystemCalls::workingFolder,
                                                       item.folder.c_str(), Links::follow);
        parent_ =
            opened < 0 ? nullptr : std::make_shared<const HeldDescriptor>(parts_.system, opened);
        parentPath_ = item.folder;
    }
    return parent_;
}

Plan planOf(const std::vector<HeldItem>& items, ItemPlanner::Parts parts) {
    Plan plan;
    ItemPlanner(std::move(parts)).add(items, plan);
    return plan;
}

}  // namespace dorvanel

// SPDX-License-Identifier: MIT
#include "engine/ItemShredder.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace dorvanel {

using platform::EntryKind;
using platform::FileStatus;

ItemShredder::ItemShredder(Parts parts)
    : parts_(parts),
      system_(parts_.deletion.system),
      batch_(parts_.deletion.batch),
      outcome_(parts_.deletion.outcome),
      items_(parts_.deletion.items),
      walk_(system_),
      holdings_(system_, parts_.clock, batch_, parts_.unfinished),
      move_(system_, batch_, walk_) {}

MeasuredItem ItemShredder::measure(const HeldItem& item) {
    MeasuredItem measured;
    const FileStatus& status = item.status;
    if (std::ranges::find(parts_.spared, Identity::of(status)) != parts_.spared.end()) {
        measured.refusal = "is the home folder or a folder above it";
        return measured;
    }
    if (status.kind != EntryKind::link && status.isBeyondMountOf(item.parentStatus)) {
        measured.refusal = "is a mount point";
        return measured;
    }
    if (status.kind == EntryKind::link) {
        if (item.links == Links::follow) measured.bytes = rememberTarget(item);
        return measured;
    }
    if (status.kind != EntryKind::folder) {
        measured.bytes = status.size;
        return measured;
    }
    measured.manifest = std::make_shared<Manifest>();
    SizeVisitor visitor({system_, batch_, parts_.deletion.stop, parts_.targets, parts_.spared,
                         parts_.deletion.user, item.links},
                        walk_, *measured.manifest);
    const int folder = openItem(item);
    if (folder < 0) return measured;  // not readable
    walk_.walk(folder, TreeWalk::Order::forward, visitor);
    batch_.endPhase();
    measured.bytes = visitor.total;
    const std::string inside = item.path + "/";
    if (!visitor.sparedFolder.empty()) {
        measured.refusal = "holds the home folder \"" + inside + visitor.sparedFolder + "\"";
    } else if (!visitor.mountPoint.empty()) {
        measured.refusal = "holds the mount point \"" + inside + visitor.mountPoint + "\"";
    }
    return measured;
}

/// Remembers what an item that is a link leads to. Returns its size.
std::uint64_t ItemShredder::rememberTarget(const HeldItem& item) {
    const bool isHeld = item.parent != nullptr;
    const int folder = isHeld ? item.parent->get() : platform::SystemCalls::workingFolder;
    const char* name = isHeld ? item.name.c_str() : item.path.c_str();
    FileStatus target;
    if (system_.statusAt(folder, name, Links::follow, target) < 0) return 0;
    parts_.targets.add(folder, name, target);
    return target.kind == EntryKind::folder ? 0 : target.size;
}

int ItemShredder::openItem(const HeldItem& item) {
    return batch_.opened([&] {
        if (item.item != nullptr) return system_.openFolder(item.item->get(), ".");
        if (item.parent != nullptr) {
            return system_.openFolder(item.parent->get(), item.name.c_str());
        }
        const std::string path = item.folder + "/" + item.name;
        return system_.openFolder(platform::SystemCalls::workingFolder, path.c_str());
    });
}

bool ItemShredder::shred(HeldItem& item, MeasuredItem& measured, const TakenItems& taken) {
    if (!measured.refusal.empty()) {
        ++outcome_.notRemoved;
        outcome_.note(item.path, "move", EBUSY, measured.refusal);
        items_.addLeft(items_.current(), {item.path, "move", EBUSY, measured.refusal});
        return false;
    }
    isInWork_ = true;
    const bool isMoved = move(item);
    if (item.status.kind != EntryKind::regular) item.item.reset();
    // What a former run left in the folder goes in any case.
    if (isMoved || move_.isInParts() || (holdings_.hasCurrent() && holdings_.current().wasThere)) {
        renameContents(item, measured.manifest.get(), taken);
        if (!stops()) overwriteContents(item, measured.manifest.get());
    }
    item.item.reset();
    if (stops()) return isMoved;
    isInWork_ = false;
    if (holdings_.hasCurrent() && holdings_.current().wasThere) holdings_.retire();
    return isMoved;
}

std::string ItemShredder::moveAndRename(const HeldItem& item) {
    std::string path;
    if (move(item)) {
        path = holdings_.current().path();
        renameContents(item, nullptr, TakenItems(0));
    }
    holdings_.forget();
    return path;
}

/// Moves the item; false where it stays, which is told.
bool ItemShredder::move(const HeldItem& item) {
    move_.begin();
    isNamed_ = false;
    int moved = holdings_.enter(item);
    if (moved >= 0) {
        HoldingFolder& holding = holdings_.current();
        holding.item = items_.current();
        if (holding.wasThere) items_.sharesItsFolder();
        top_ = {holding.opened, item.name};
        topKind_ = item.status.kind;
        if (item.name == holding.name) {
            holding.isItem = true;
            return true;
        }
        moved = moveInto(holding, item);
    }
    if (moved < 0) {
        tellNotMoved(item, -moved);
        return false;
    }
    // A plain file is compared once it is open.
    const bool isComparedLater =
        item.status.kind == EntryKind::regular && !holdings_.current().wasThere;
    if (isComparedLater || move_.isInParts() || isTheItem(item)) return true;
    putBack(item);
    return false;
}

/// Moves the item, and a plain file to its random name at once: of many small ones a second
/// renaming is a large part of the work.
int ItemShredder::moveInto(const HoldingFolder& holding, const HeldItem& item) {
    if (item.status.kind == EntryKind::regular && !holding.wasThere) {
        RandomName& name = parts_.deletion.overwriter.randomName();
        name.randomizeName();
        const int moved = move_.into(holding, item, name.mName.data());
        isNamed_ = moved >= 0;
        if (isNamed_) top_.name = name.mName.data();
        if (!isNamed_) name.putBack();
        if (moved != -EEXIST) return moved;
    }
    return move_.into(holding, item, item.name.c_str());
}

void ItemShredder::tellNotMoved(const HeldItem& item, int code) {
    if (code == ENOENT) {
        ++outcome_.vanished;
        outcome_.note(item.path, "find", ENOENT);
        items_.addUnwritten(items_.current(), {item.path, "find", ENOENT});
    } else {
        ++outcome_.notRemoved;
        outcome_.note(item.path, "move", code, holdings_.reason());
        items_.addLeft(items_.current(), {item.path, "move", code, holdings_.reason()});
    }
}

/// Whether what was moved is what was looked at.
bool ItemShredder::isTheItem(const HeldItem& item) {
    FileStatus found;
    const int result = system_.statusAt(top_.folder, top_.name.c_str(), Links::stay, found);
    return result >= 0 && isHeldItem(system_, item, found);
}

void ItemShredder::putBack(const HeldItem& item) {
    const HoldingFolder& holding = holdings_.current();
    const bool isBack = move_.back(holding, item, top_.name.c_str()) >= 0;
    ++outcome_.notRemoved;
    const std::string path = isBack ? item.path : holding.path() + "/" + top_.name;
    const char* reason = "is not what was there before";
    outcome_.note(path, "move", ESTALE, reason);
    items_.addLeft(items_.current(), {path, "move", ESTALE, reason, isBack ? "" : item.path});
}

/// Walks the item, or all that a folder of a former run holds.
template <typename Visitor>
void ItemShredder::walkHolding(TreeWalk::Order order, Visitor& visitor) {
    const HoldingFolder& holding = holdings_.current();
    if (!holding.wasThere) {
        const std::string name = top_.name;  // it may change on the walk
        walk_.walkEntry({top_.folder, name.c_str(), topKind_, &holding.status}, order, visitor);
        return;
    }
    const int folder = batch_.opened([&] { return system_.openFolder(holding.opened, "."); });
    if (folder >= 0) {
        walk_.walk(folder, order, visitor);
    } else {
        visitor.missed({}, -folder);
    }
}

void ItemShredder::renameContents(const HeldItem& item, Manifest* manifest,
                                  const TakenItems& taken) {
    if (isNamed_) {
        renamed_ = 1;
        // Its turn among the folders, which are named after the files.
        if (!stops()) parts_.deletion.overwriter.randomName().randomizeName();
        return;
    }
    const Renamer renamer(system_, batch_, parts_.deletion.stop,
                          parts_.deletion.overwriter.randomName(), &top_);
    heldTaken_ = false;
    const auto vanished = [&](const std::string& name) {
        std::string path = item.folder + "/" + name;
        if (taken.holds(path)) {
            heldTaken_ = true;
            return;
        }
        ++outcome_.vanished;
        items_.addUnwritten(items_.current(), {path, "find", ENOENT});
        outcome_.note(std::move(path), "find", ENOENT);
    };
    PlainFolders plain;
    FileRenamer files(renamer, walk_, manifest, vanished, plain);
    walkHolding(TreeWalk::Order::forward, files);
    batch_.endPhase();
    renamed_ = files.entries;
    FolderRenamer folders(renamer, plain);
    walkHolding(TreeWalk::Order::backward, folders);
    batch_.endPhase();
}

void ItemShredder::overwriteContents(HeldItem& item, const Manifest* manifest) {
    const HoldingFolder& holding = holdings_.current();
    parts_.deletion.overwriter.setLogging(item.isLogged);
    DeletionHandler handler(parts_.deletion, walk_, holding.path(), item.links);
    const bool isPlain = topKind_ == EntryKind::regular && !holding.wasThere;
    if (isPlain) handler.expect(item);
    const std::size_t troubles = outcome_.allTroubles;
    walkHolding(TreeWalk::Order::forward, handler);
    batch_.endPhase();
    if (handler.foundAnother()) putBack(item);
    if (walk_.isLost()) {
        InWork lost = inWork();
        items_.addLeft(lost.item, {std::move(lost.path), "list", ESTALE, {}, std::move(lost.was)});
    }
    // What somebody took in between is told by the count of what is missing, where nothing else has
    // told of it.
    if (stops() || outcome_.allTroubles != troubles) return;
    if (handler.entries < renamed_) {
        const std::uint64_t missing = renamed_ - handler.entries;
        outcome_.vanished += missing;
        tellVanished(item,
                     fmt::format("{} of its entries vanished while it was shredded", missing));
    } else if (manifest != nullptr && !holding.wasThere && !heldTaken_ &&
               handler.sharedFiles != manifest->sharedFiles) {
        ++outcome_.vanished;
        tellVanished(item, "files in it were exchanged or added by others");
    }
}

void ItemShredder::tellVanished(const HeldItem& item, const std::string& reason) {
    outcome_.note(item.path, "find", ENOENT, reason);
    items_.addUnwritten(items_.current(), {item.path, "find", ENOENT, reason});
}

ItemShredder::InWork ItemShredder::inWork() {
    if (!isInWork_ || !holdings_.hasCurrent()) return {};
    const HoldingFolder& holding = holdings_.current();
    if (holding.item >= outcome_.perItem.size()) return {};
    if (holding.wasThere) return {holding.item, holding.path(), {}};
    return {holding.item, holding.path() + "/" + top_.name, outcome_.perItem[holding.item].path};
}

}  // namespace dorvanel

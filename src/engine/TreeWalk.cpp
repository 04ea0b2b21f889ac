// SPDX-License-Identifier: MIT
#include "engine/TreeWalk.h"

#include <algorithm>
#include <cerrno>

namespace dorvanel {

using platform::EntryKind;
using platform::FileStatus;
using platform::SystemCalls;

TreeWalk::TreeWalk(SystemCalls& system)
    : system_(system),
      openFolders_(
          static_cast<std::size_t>(std::clamp(system.descriptorLimit() / 4, 2, mostOpenFolders))) {}

void TreeWalk::walk(int folder, Order order, TreeVisitor& visitor) {
    depth_ = 0;
    isLost_ = false;
    if (descend(folder, visitor)) walkLevels(order, visitor);
}

void TreeWalk::walkEntry(const TreeEntry& entry, Order order, TreeVisitor& visitor) {
    depth_ = 0;
    isLost_ = false;
    Level& level = nextLevel();
    level.listing.clear();
    level.listing.add(entry.name, entry.kind);
    level.identity = *entry.in;
    level.done = 0;
    level.current = 0;
    level.folder = entry.folder;
    level.borrowed = true;
    depth_ = 1;
    walkLevels(order, visitor);
}

void TreeWalk::walkLevels(Order order, TreeVisitor& visitor) {
    try {
        while (depth_ > 0) {
            Level& level = levels_[depth_ - 1];
            if (level.done == level.listing.size()) {
                if (!ascend(visitor)) return closeAll(visitor);
                continue;
            }
            if (visitor.stops()) return closeAll(visitor);
            level.current =
                order == Order::forward ? level.done : level.listing.size() - 1 - level.done;
            if (level.listing.kind(level.current) == EntryKind::unknown) {
                FileStatus status;
                system_.statusAt(level.folder, level.listing.name(level.current),
                                 SystemCalls::Links::stay, status);
                level.listing.setKind(level.current, status.kind);
            }
            const int inner = visitor.enter(entryAt(level));
            if (inner >= 0 && descend(inner, visitor)) continue;
            if (visitor.stops()) return closeAll(visitor);
            walkedInto_ = false;
            visitor.leave(entryAt(levels_[depth_ - 1]));
            ++levels_[depth_ - 1].done;
        }
    } catch (...) {
        closeAll(visitor);
        throw;
    }
}

std::string TreeWalk::relativePath(const TreeEntry& entry) const {
    std::string path;
    for (std::size_t i = 0; i + 1 < depth_; ++i) {
        path += levels_[i].listing.name(levels_[i].current);
        path += '/';
    }
    return path + entry.name;
}

std::string TreeWalk::currentPath() const {
    return depth_ == 0 ? std::string() : relativePath(entryAt(levels_[depth_ - 1]));
}

std::string TreeWalk::folderSuffix() const {
    std::string path;
    if (depth_ > deepestPath) return path;
    for (std::size_t i = 0; i + 1 < depth_; ++i) {
        path += '/';
        path += levels_[i].listing.name(levels_[i].current);
    }
    return path;
}

TreeEntry TreeWalk::entryAt(const Level& level) const {
    return {level.folder, level.listing.name(level.current), level.listing.kind(level.current),
            &level.identity, level.listing.inodes()[level.current]};
}

TreeWalk::Level& TreeWalk::nextLevel() {
    if (depth_ == levels_.size()) levels_.emplace_back();
    return levels_[depth_];
}

bool TreeWalk::descend(int folder, TreeVisitor& visitor) {
    bool entered = false;
    try {
        entered = enterLevel(folder, nextLevel(), visitor);
    } catch (...) {
        system_.close(folder);
        throw;
    }
    if (!entered) {
        system_.close(folder);
        return false;
    }
    if (depth_ > openFolders_) closeFolder(levels_[depth_ - 1 - openFolders_], visitor);
    return true;
}

bool TreeWalk::enterLevel(int folder, Level& level, TreeVisitor& visitor) {
    int result = system_.status(folder, level.identity);
    if (result >= 0 && depth_ > 0 &&
        !visitor.walksInto(entryAt(levels_[depth_ - 1]), folder, level.identity)) {
        return false;
    }
    if (result >= 0) result = system_.readFolder(folder, level.listing);
    if (result < 0) {
        visitor.missed(currentPath(), -result);
        return false;
    }
    visitor.listed(level.identity, level.listing);
    level.done = 0;
    level.folder = folder;
    level.borrowed = false;
    ++depth_;
    return true;
}

bool TreeWalk::ascend(TreeVisitor& visitor) {
    Level& inner = levels_[depth_ - 1];
    --depth_;
    if (depth_ == 0) {
        closeFolder(inner, visitor);
        return true;
    }
    Level& level = levels_[depth_ - 1];
    int result = 0;
    if (level.folder < 0) {
        FileStatus status;
        result = system_.openFolder(inner.folder, "..");
        if (result >= 0) {
            level.folder = result;
            result = system_.status(level.folder, status);
            if (result >= 0 && !status.isSameAs(level.identity)) result = -ESTALE;
        }
    }
    closeFolder(inner, visitor);
    if (result < 0) {
        isLost_ = true;
        visitor.missed(currentPath(), -result);
        return false;
    }
    walkedInto_ = true;
    visitor.leave(entryAt(level));
    ++level.done;
    return true;
}

void TreeWalk::closeFolder(Level& level, TreeVisitor& visitor) {
    if (level.borrowed) return;
    if (level.folder >= 0 && !visitor.keeps(level.folder)) system_.close(level.folder);
    level.folder = -1;
}

void TreeWalk::closeAll(TreeVisitor& visitor) {
    for (; depth_ > 0; --depth_) closeFolder(levels_[depth_ - 1], visitor);
}

}  // namespace dorvanel

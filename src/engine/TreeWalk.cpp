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
    if (!descend(folder, visitor)) return;
    while (depth_ > 0) {
        Level& level = levels_[depth_ - 1];
        if (level.done == level.listing.size()) {
            if (!ascend(visitor)) return closeAll();
            continue;
        }
        if (visitor.stops()) return closeAll();
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
        if (visitor.stops()) return closeAll();
        walkedInto_ = false;
        visitor.leave(entryAt(levels_[depth_ - 1]));
        ++levels_[depth_ - 1].done;
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

TreeEntry TreeWalk::entryAt(const Level& level) const {
    return {level.folder, level.listing.name(level.current), level.listing.kind(level.current)};
}

bool TreeWalk::descend(int folder, TreeVisitor& visitor) {
    if (depth_ == levels_.size()) levels_.emplace_back();
    Level& level = levels_[depth_];
    int result = system_.status(folder, level.identity);
    if (result >= 0) result = system_.readFolder(folder, level.listing);
    if (result < 0) {
        system_.close(folder);
        visitor.missed(currentPath(), -result);
        return false;
    }
    level.done = 0;
    level.folder = folder;
    ++depth_;
    if (depth_ > openFolders_) {
        Level& upper = levels_[depth_ - 1 - openFolders_];
        system_.close(upper.folder);
        upper.folder = -1;
    }
    return true;
}

bool TreeWalk::ascend(TreeVisitor& visitor) {
    const int inner = levels_[depth_ - 1].folder;
    --depth_;
    if (depth_ == 0) {
        system_.close(inner);
        return true;
    }
    Level& level = levels_[depth_ - 1];
    int result = 0;
    if (level.folder < 0) {
        FileStatus status;
        result = system_.openFolder(inner, "..");
        if (result >= 0) {
            level.folder = result;
            result = system_.status(level.folder, status);
            if (result >= 0 && !status.isSameAs(level.identity)) result = -ESTALE;
        }
    }
    system_.close(inner);
    if (result < 0) {
        visitor.missed(currentPath(), -result);
        return false;
    }
    walkedInto_ = true;
    visitor.leave(entryAt(level));
    ++level.done;
    return true;
}

void TreeWalk::closeAll() {
    for (; depth_ > 0; --depth_) {
        int& folder = levels_[depth_ - 1].folder;
        if (folder >= 0) system_.close(folder);
        folder = -1;
    }
}

}  // namespace dorvanel

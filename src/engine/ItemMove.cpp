// SPDX-License-Identifier: MIT
#include "engine/ItemMove.h"

#include <cerrno>
#include <vector>

#include "engine/FolderRights.h"

namespace dorvanel {

using platform::EntryKind;
using platform::FileStatus;
using platform::SystemCalls;
using Links = platform::SystemCalls::Links;

namespace {

constexpr std::uint32_t ownerMayDoAll = 0700;

/// Moves what is in a folder into another one, which is its like: files as they are, folders that
/// cannot be moved by making their like in turn.
class PartsMover final : public TreeVisitor {
  public:
    PartsMover(SystemCalls& system, FlushBatch& batch, const TreeWalk& walk, int target)
        : system_(system), batch_(batch), walk_(walk), targets_{target} {}
    ~PartsMover() override {
        for (const int target : targets_) system_.close(target);
    }
    PartsMover(const PartsMover&) = delete;
    PartsMover& operator=(const PartsMover&) = delete;

    int enter(const TreeEntry& entry) override {
        const int moved = system_.rename(entry.folder, entry.name, targets_.back(), entry.name);
        if (moved >= 0) return -1;
        if (moved != -EXDEV || entry.kind != EntryKind::folder) return fail(moved);
        const int folder =
            batch_.opened([&] { return system_.openFolder(entry.folder, entry.name); });
        return folder < 0 ? fail(folder) : folder;
    }
    bool walksInto(const TreeEntry& entry, int /*folder*/, const FileStatus& found) override {
        if (found.isBeyondMountOf(*entry.in)) {
            fail(-EBUSY);
            return false;
        }
        const int target = makeLike(system_, batch_, targets_.back(), entry.name, found);
        if (target < 0) {
            fail(target);
            return false;
        }
        targets_.push_back(target);
        return true;
    }
    void leave(const TreeEntry& entry) override {
        if (!walk_.walkedInto()) return;
        system_.close(targets_.back());
        targets_.pop_back();
        fail(system_.removeFolder(entry.folder, entry.name));
    }
    void missed(const std::string& /*relativePath*/, int code) override { fail(-code); }
    bool stops() override { return false; }
    bool keeps(int folder) override { return batch_.takesOver(folder); }

    /// The folder of this name in `parent`, made with the bits of its like and its owner's; opened.
    static int makeLike(SystemCalls& system, FlushBatch& batch, int parent, const char* name,
                        const FileStatus& like) {
        const std::uint32_t permissions = like.permissions | ownerMayDoAll;
        const int made = system.makeFolder(parent, name, permissions);
        if (made < 0) return made;
        const int folder = batch.opened([&] { return system.openFolder(parent, name); });
        if (folder >= 0) system.changeMode(folder, permissions);
        return folder;
    }

    int failure = 0;  ///< the first one, a negated errno

  private:
    int fail(int result) {
        if (result < 0 && failure == 0) failure = result;
        return -1;
    }

    SystemCalls& system_;
    FlushBatch& batch_;
    const TreeWalk& walk_;
    std::vector<int> targets_;  ///< open folders, one for each level
};

}  // namespace

int ItemMove::into(const HoldingFolder& holding, const HeldItem& item, const char* name) {
    int moved = rename(holding, item, name);
    if (moved == -EEXIST && !holding.wasThere && !batch_.isEmpty()) {
        batch_.flush();  // a file that waits may bear the name
        moved = rename(holding, item, name);
    }
    const bool isFolder = item.status.kind == EntryKind::folder;
    // A folder that its owner may not write cannot change its parent.
    if (moved == -EACCES && isFolder && makeWritable(holding, item) >= 0) {
        moved = rename(holding, item, name);
    }
    // A folder of a lower layer of an overlay cannot be moved.
    return moved == -EXDEV && isFolder ? moveInParts(holding, item) : moved;
}

int ItemMove::back(const HoldingFolder& holding, const HeldItem& item, const char* name) {
    return system_.rename(holding.opened, name, holding.parent->get(), item.name.c_str());
}

int ItemMove::rename(const HoldingFolder& holding, const HeldItem& item, const char* name) {
    return system_.rename(holding.parent->get(), item.name.c_str(), holding.opened, name);
}

/// Adds the owner's bits to the very folder that was looked at.
int ItemMove::makeWritable(const HoldingFolder& holding, const HeldItem& item) {
    const int reference =
        system_.openReference(holding.parent->get(), item.name.c_str(), Links::stay);
    if (reference < 0) return reference;
    FileStatus found;
    int result = system_.status(reference, found);
    if (result >= 0 && !isHeldItem(system_, item, found)) result = -ESTALE;
    const std::uint32_t permissions = found.permissions | ownerMayDoAll;
    const bool isKnown = result >= 0;
    if (isKnown) result = system_.changeMode(reference, permissions);
    system_.close(reference);
    // Without /proc and on older kernels by name, where nobody else could have put a link.
    if (!isKnown || result >= 0 ||
        othersMayWriteIn(holding.parentStatus, system_.effectiveUser())) {
        return result;
    }
    return system_.changeModeAt(holding.parent->get(), item.name.c_str(), permissions);
}

int ItemMove::moveInParts(const HoldingFolder& holding, const HeldItem& item) {
    const int parent = holding.parent->get();
    const char* name = item.name.c_str();
    const int source = batch_.opened([&] { return system_.openFolder(parent, name); });
    if (source < 0) return source;
    FileStatus found;
    int target = system_.status(source, found);
    if (target >= 0 && !isHeldItem(system_, item, found)) target = -ESTALE;
    if (target >= 0 && found.isBeyondMountOf(holding.parentStatus)) target = -EXDEV;
    if (target >= 0) target = PartsMover::makeLike(system_, batch_, holding.opened, name, found);
    if (target < 0) {
        system_.close(source);
        return target;
    }
    isInParts_ = true;
    PartsMover mover(system_, batch_, walk_, target);
    walk_.walk(source, TreeWalk::Order::forward, mover);
    const int removed = system_.removeFolder(parent, name);
    return mover.failure != 0 ? mover.failure : removed;
}

}  // namespace dorvanel

// SPDX-License-Identifier: MIT
#include "engine/LeftFolders.h"

#include <cerrno>
#include <memory>
#include <system_error>
#include <utility>

#include "engine/FolderRights.h"
#include "engine/HoldingFolderName.h"
#include "engine/TreeWalk.h"

namespace dorvanel {
namespace {

using platform::EntryKind;
using platform::FileStatus;
using platform::SystemCalls;
using Links = platform::SystemCalls::Links;

/// What is found is held by descriptors, up to so many; the rest is known by inode and birth.
constexpr std::size_t mostHeld = 64;

class Finder final : public TreeVisitor {
  public:
    Finder(SystemCalls& system, const TreeWalk& walk, const HeldItem& top, LeftFolders& found)
        : system_(system), walk_(walk), top_(top), found_(found) {}

    int enter(const TreeEntry& entry) override {
        if (entry.kind != EntryKind::folder && entry.kind != EntryKind::unknown) return -1;
        if (isHoldingFolderName(entry.name)) {
            meet(entry.folder, entry.name, *entry.in, pathOf(entry));
            return -1;
        }
        const int folder = system_.openFolder(entry.folder, entry.name);
        const bool isNone = folder == -ENOTDIR || folder == -ELOOP || folder == -ENOENT;
        if (folder < 0 && !isNone) couldNotRead(pathOf(entry), -folder);
        return folder;
    }
    bool walksInto(const TreeEntry&, int, const FileStatus& found) override {
        return !found.isBeyondMountOf(top_.status);
    }
    void leave(const TreeEntry&) override {}
    void missed(const std::string& relativePath, int code) override {
        couldNotRead(relativePath.empty() ? top_.path : top_.path + "/" + relativePath, code);
    }
    bool stops() override { return false; }

    /// An entry with the name of a holding folder.
    void meet(int in, const char* name, const FileStatus& inStatus, std::string path) {
        HeldItem item;
        item.path = std::move(path);
        item.folder = item.path.substr(0, item.path.rfind('/'));
        if (item.folder.empty()) item.folder = "/";
        item.name = name;
        item.links = Links::stay;
        item.parentStatus = inStatus;
        const int result = system_.statusAt(in, name, Links::stay, item.status);
        if (result == -ENOENT || (result >= 0 && item.status.kind != EntryKind::folder)) return;
        if (result < 0) return couldNotRead(item.path, -result);
        if (auto fault = faultOfLeftFolder(system_, in, inStatus, item.status)) {
            found_.skipped.push_back({item.path, {}, PlanSkip::Reason::insecure, *fault});
            return;
        }
        if (found_.folders.size() < mostHeld && !held(in, item)) return;
        found_.folders.push_back({std::move(item), {}});
    }

  private:
    /// Holds the item by descriptors; false where it is another one by now.
    bool held(int in, HeldItem& item) {
        const int parent = system_.openReference(in, ".", Links::stay);
        if (parent < 0) return true;
        item.parent = std::make_shared<const HeldDescriptor>(system_, parent);
        const int folder = system_.openReference(in, item.name.c_str(), Links::stay);
        if (folder < 0) return true;
        item.item = std::make_shared<const HeldDescriptor>(system_, folder);
        FileStatus now;
        return system_.status(folder, now) >= 0 && now.isSameAs(item.status);
    }
    [[nodiscard]] std::string pathOf(const TreeEntry& entry) const {
        return (top_.path == "/" ? "" : top_.path) + "/" + walk_.relativePath(entry);
    }
    void couldNotRead(const std::string& path, int code) {
        found_.skipped.push_back(
            {path, {}, PlanSkip::Reason::unreadable, std::generic_category().message(code)});
    }

    SystemCalls& system_;
    const TreeWalk& walk_;
    const HeldItem& top_;
    LeftFolders& found_;
};

}  // namespace

std::optional<std::string> faultOfLeftFolder(SystemCalls& system, int parent,
                                             const FileStatus& parentStatus,
                                             const FileStatus& status) {
    if (status.kind != EntryKind::folder) return "it is no folder";
    if (status.isBeyondMountOf(parentStatus)) return "it is a mount point";
    const std::uint32_t user = system.effectiveUser();
    if (status.owner == user && !othersMayWriteIn(status, user)) return std::nullopt;
    // Where a mount gives all its files one owner and one set of bits, these say nothing.
    if (system.keepsNoOwners(parent) == 1) return std::nullopt;
    return status.owner != user ? "it is somebody else's" : "it can be written in by others";
}

bool findLeftFolders(SystemCalls& system, const std::string& top, LeftFolders& found) {
    const HeldItem item = hold(system, top, Links::stay);
    if (item.code != 0 || item.status.kind != EntryKind::folder) return false;
    TreeWalk walk(system);
    Finder finder(system, walk, item, found);
    if (isHoldingFolderName(item.name)) {
        finder.meet(item.parent->get(), item.name.c_str(), item.parentStatus, item.path);
        return true;
    }
    const int folder = item.item != nullptr
                           ? system.openFolder(item.item->get(), ".")
                           : system.openFolder(SystemCalls::workingFolder, top.c_str());
    if (folder < 0) {
        finder.missed({}, -folder);
    } else {
        walk.walk(folder, TreeWalk::Order::forward, finder);
    }
    return true;
}

}  // namespace dorvanel

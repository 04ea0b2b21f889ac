// SPDX-License-Identifier: MIT
#include "engine/plan/PlanVisitor.h"

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <utility>

#include "base/PathComponents.h"

namespace dorvanel {

using platform::EntryKind;
using platform::FileStatus;

namespace {

/// Entries between two questions whether to stop.
constexpr unsigned patience = 256;

bool leadsNowhere(int result) {
    return result == -ENOENT || result == -ENOTDIR || result == -ELOOP;
}

/// Leaves `levels` folders by the ".." that the text begins with, and takes them off. False where
/// the text ends before, or goes into one of them: nothing there bears its name any longer.
bool leavesFolders(std::string& text, std::size_t levels) {
    while (levels > 0) {
        const std::size_t slash = text.find('/');
        const std::string_view name = std::string_view(text).substr(0, slash);
        if (name == "..") {
            --levels;
        } else if (!name.empty() && name != ".") {
            return false;
        }
        if (slash == std::string::npos) return false;
        text.erase(0, slash + 1);
    }
    return true;
}

}  // namespace

PlanVisitor::PlanVisitor(const Parts& parts, const TreeWalk& walk, const HeldItem& item, int parent,
                         PlanItem& planned, std::size_t number)
    : parts_(parts),
      system_(parts.files.system),
      walk_(walk),
      item_(item),
      parent_(parent),
      planned_(planned),
      number_(number),
      files_(parts.files, planned),
      way_(system_, parts.moved),
      inside_(std::string(withoutTrailingSlashes(item.path)) + "/") {}

void PlanVisitor::lookAtItem() {
    const auto path = [this] { return item_.path; };
    const char* name = item_.name.c_str();
    switch (item_.status.kind) {
        case EntryKind::folder:
            ++planned_.folders;
            return;
        case EntryKind::link:
            ++planned_.files;
            // It lies in the holding folder by then.
            if (item_.links == Links::follow) follow(parent_, name, 1, path);
            return;
        case EntryKind::regular:
            ++planned_.files;
            files_.add(parent_, name, Links::stay, item_.status, path);
            return;
        default:
            ++planned_.files;
    }
}

void PlanVisitor::couldNotOpen(int code) {
    files_.addUnreadable(item_.path, "cannot be looked into", code);
}

int PlanVisitor::enter(const TreeEntry& entry) {
    if (parts_.moved.holds(*entry.in, entry.name)) return -1;  // it goes before
    if (entry.kind == EntryKind::folder) return enterFolder(entry);
    if (entry.kind == EntryKind::link) {
        lookAtLink(entry);
        return -1;
    }
    FileStatus status;
    const int found = system_.statusAt(entry.folder, entry.name, Links::stay, status);
    if (found == -ENOENT) return -1;  // it has gone meanwhile
    ++planned_.files;
    if (found < 0) {
        files_.addUnreadable(pathOf(entry), "cannot be looked at", -found);
        return -1;
    }
    if (status.isBeyondMountOf(*entry.in) && mountPoint.empty()) {
        mountPoint = walk_.relativePath(entry);
    }
    if (status.kind == EntryKind::regular) {
        files_.add(entry.folder, entry.name, Links::stay, status,
                   [this, &entry] { return pathOf(entry); });
    }
    return -1;
}

int PlanVisitor::enterFolder(const TreeEntry& entry) {
    const int folder = system_.openFolder(entry.folder, entry.name);
    if (folder == -ENOENT) return folder;
    ++planned_.folders;
    if (folder < 0) files_.addUnreadable(pathOf(entry), "cannot be looked into", -folder);
    return folder;
}

bool PlanVisitor::walksInto(const TreeEntry& entry, int /*folder*/, const FileStatus& found) {
    if (sparedFolder.empty() &&
        std::ranges::find(parts_.spared, Identity::of(found)) != parts_.spared.end()) {
        sparedFolder = walk_.relativePath(entry);
    }
    if (!found.isBeyondMountOf(*entry.in)) return true;
    if (mountPoint.empty()) mountPoint = walk_.relativePath(entry);
    return false;
}

void PlanVisitor::missed(const std::string& relativePath, int code) {
    files_.addUnreadable(relativePath.empty() ? item_.path : inside_ + relativePath,
                         "cannot be looked into", code);
}

bool PlanVisitor::stops() {
    if (!isStopped && parts_.stop && entries_++ % patience == 0) isStopped = parts_.stop();
    return isStopped;
}

void PlanVisitor::lookAtLink(const TreeEntry& entry) {
    ++planned_.files;
    if (item_.links == Links::stay) return;
    // The holding folder, the item in it, and the folders from there to the link.
    const std::string relative = walk_.relativePath(entry);
    const auto folders = static_cast<std::size_t>(std::ranges::count(relative, '/'));
    follow(entry.folder, entry.name, 2 + folders, [this, &entry] { return pathOf(entry); });
}

/// `depth`: how many levels below the folder that holds the item the link's folder will lie.
void PlanVisitor::follow(int folder, const char* name, std::size_t depth,
                         const FileCount::Path& path) {
    FileStatus target;
    const int found = system_.statusAt(folder, name, Links::follow, target);
    if (found >= 0) parts_.targets.add(folder, name, target);
    std::string text;
    if (system_.readLink(folder, name, text) < 0) return;
    if (!text.starts_with('/')) return followStray(text, depth, path);
    if (found < 0 && !leadsNowhere(found)) {
        files_.addUnreadable(path(), "cannot be followed", -found);
    }
    if (found < 0 || target.kind != EntryKind::regular || !parts_.targets.has(target)) return;
    const LinkWay::Found way = way_.fromRoot(text);
    if (way.end == LinkWay::End::moved) return;
    // Some links of the system's lead where no path does.
    const std::string& end = way.end == LinkWay::End::reached ? way.path : text;
    if (files_.add(folder, name, Links::follow, target, [&end] { return end; })) {
        files_.notes().add({.kind = PlanNote::Kind::link, .path = path(), .target = end});
    }
}

void PlanVisitor::followStray(const std::string& text, std::size_t depth,
                              const FileCount::Path& path) {
    std::string rest = text;
    if (!leavesFolders(rest, depth)) return;
    const LinkWay::Found folder = LinkWay(system_, MovedItems()).fromRoot(item_.folder);
    LinkWay::Found target = way_.from(parent_, folder.path, rest);
    if (target.end == LinkWay::End::reached && target.status.kind == EntryKind::regular) {
        parts_.strays.push_back({number_, path(), std::move(target)});
    }
}

std::string PlanVisitor::pathOf(const TreeEntry& entry) const {
    return inside_ + walk_.relativePath(entry);
}

}  // namespace dorvanel

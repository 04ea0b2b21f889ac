// SPDX-License-Identifier: MIT
#include "engine/TreeVisitors.h"

#include <algorithm>
#include <cerrno>

#include "engine/FolderRights.h"

namespace dorvanel {

using platform::EntryKind;
using platform::FileStatus;
using platform::FolderListing;
using Links = platform::SystemCalls::Links;

int PlainVisitor::enter(const TreeEntry& entry) {
    if (entry.kind != EntryKind::folder) return -1;
    return batch_.opened([&] { return system_.openFolder(entry.folder, entry.name); });
}

bool PlainVisitor::walksInto(const TreeEntry& entry, int /*folder*/, const FileStatus& found) {
    return !found.isBeyondMountOf(*entry.in);
}

bool PlainVisitor::leadsToFolder(const TreeEntry& entry) {
    if (entry.kind != EntryKind::link) return entry.kind == EntryKind::folder;
    batch_.catchUp();  // it may lead through what is about to be renamed
    FileStatus target;
    return system_.statusAt(entry.folder, entry.name, Links::follow, target) >= 0 &&
           target.kind == EntryKind::folder;
}

int SizeVisitor::enter(const TreeEntry& entry) {
    if (entry.kind == EntryKind::regular && !walk_.isDeep()) {
        if (NameLane* lane = batch_.lane()) {
            lane->look(
                entry.folder, entry.name, *entry.in, [this] { return walk_.folderSuffix(); },
                *this);
            return -1;
        }
    }
    if (entry.kind != EntryKind::folder) {
        FileStatus file;
        if (system_.statusAt(entry.folder, entry.name, links_, file) >= 0) {
            if (file.kind == EntryKind::link) return -1;  // it holds nothing that is overwritten
            if (entry.kind == EntryKind::link) {
                targets_.add(entry.folder, entry.name, file);
                if (file.kind != EntryKind::folder) total += file.size;
            } else {
                looked(*entry.in, file, [&] { return "/" + walk_.relativePath(entry); });
            }
        }
    }
    return PlainVisitor::enter(entry);
}

void SizeVisitor::looked(const FileStatus& in, const FileStatus& file, const NameLane::Path& path) {
    if (file.kind == EntryKind::link) return;
    if (file.isBeyondMountOf(in) && mountPoint.empty()) mountPoint = path().substr(1);
    if (file.kind == EntryKind::folder) return;
    total += file.size;
    const bool isShared = file.kind == EntryKind::regular && othersMayWriteIn(in, user_);
    if (isShared) manifest_.sharedFiles.add(file);
}

bool SizeVisitor::walksInto(const TreeEntry& entry, int folder, const FileStatus& found) {
    if (sparedFolder.empty() && std::ranges::find(spared_, Identity::of(found)) != spared_.end()) {
        sparedFolder = walk_.relativePath(entry);
    }
    if (PlainVisitor::walksInto(entry, folder, found)) return true;
    if (mountPoint.empty()) mountPoint = walk_.relativePath(entry);
    return false;
}

void SizeVisitor::listed(const FileStatus& folder, const FolderListing& listing) {
    manifest_.add(folder, listing);
}

void PlainFolders::add(const FileStatus& folder, const FolderListing& listing) {
    if (folders_.size() >= most) return;
    for (std::size_t i = 0; i < listing.size(); ++i) {
        if (listing.kind(i) != EntryKind::regular) return;
    }
    folders_.emplace(Identity::of(folder), listing.size());
}

std::optional<std::size_t> PlainFolders::entriesOf(const Identity& folder) const {
    const auto found = folders_.find(folder);
    if (found == folders_.end()) return std::nullopt;
    return found->second;
}

void Renamer::rename(const TreeEntry& entry) {
    const bool isTop = top_ != nullptr && entry.folder == top_->folder;
    if (NameLane* lane = isTop ? nullptr : batch_.lane()) {
        return lane->rename(entry.folder, entry.name, name_.mName.data());
    }
    const auto attempt = [&] {
        return system_.rename(entry.folder, entry.name, entry.folder, name_.mName.data());
    };
    int result = attempt();
    if (result == -EEXIST && !batch_.isEmpty()) {
        // The name may be that of a file that waits for its flush.
        batch_.flush();
        result = attempt();
    }
    // A failure, or a name that is taken, leaves the entry its name: it is removed all the same.
    if (result >= 0 && isTop) {
        top_->name = name_.mName.data();
    }
}

int FileRenamer::enter(const TreeEntry& entry) {
    ++entries;
    drawName();
    if (!leadsToFolder(entry)) rename(entry);
    return PlainVisitor::enter(entry);
}

void FileRenamer::listed(const FileStatus& folder, const FolderListing& listing) {
    plain_.add(folder, listing);
    if (manifest_ == nullptr) return;
    manifest_->compare(folder, listing, [this](std::string_view name) {
        vanished_(walk_.listedPath() + std::string(name));
    });
}

int FolderRenamer::enter(const TreeEntry& entry) {
    if (entry.kind == EntryKind::folder) {
        if (const auto count = plain_.entriesOf({entry.in->device, entry.inode})) {
            for (std::size_t i = 0; i < *count; ++i) drawName();
            return -1;
        }
    }
    return PlainVisitor::enter(entry);
}

void FolderRenamer::leave(const TreeEntry& entry) {
    drawName();
    if (leadsToFolder(entry)) rename(entry);
}

}  // namespace dorvanel

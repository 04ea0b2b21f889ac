// SPDX-License-Identifier: MIT
#include "engine/Manifest.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <unordered_set>

namespace dorvanel {

using platform::FileStatus;
using platform::FolderListing;

void Manifest::add(const FileStatus& folder, const FolderListing& listing) {
    const std::string_view names = listing.names();
    const bool hasNames = names_.size() + names.size() <= mostBytes;
    folders_.push_back({folder.inode, folder.device, names_.size(), names.size(), listing.size(),
                        inodes_.size(), hasNames});
    if (hasNames) names_.append(names);
    const std::vector<std::uint64_t>& inodes = listing.inodes();
    const std::size_t bytes =
        names_.size() + (inodes_.size() + inodes.size()) * sizeof(std::uint64_t);
    if (hasNames && bytes <= mostBytes) {
        inodes_.insert(inodes_.end(), inodes.begin(), inodes.end());
    }
}

void Manifest::compare(const FileStatus& folder, const FolderListing& listing,
                       const std::function<void(std::string_view)>& tell) {
    const Folder* known = find(folder);
    if (known == nullptr) return;  // made since
    if (!known->hasNames) {
        for (std::size_t n = listing.size(); n < known->entries; ++n) tell({});
        return;
    }
    std::string_view former(names_.data() + known->offset, known->length);
    if (former == listing.names()) return;
    std::unordered_set<std::string_view> present;
    for (std::size_t i = 0; i < listing.size(); ++i) present.insert(listing.name(i));
    while (!former.empty()) {
        const std::string_view name = former.substr(0, former.find('\0'));
        former.remove_prefix(name.size() + 1);
        if (!present.contains(name)) tell(name);
    }
}

std::optional<std::string> Manifest::formerPath(const Identity& what) {
    std::string path;
    Identity at = what;
    // No way up is longer than there are folders, were the numbers to lead round in a ring.
    for (std::size_t steps = 0; steps < folders_.size() + 1 && !folders_.empty(); ++steps) {
        if (at == folders_.front().identity()) return path;
        const std::optional<std::size_t> entry = entryOf(at);
        if (!entry) return std::nullopt;
        const Folder* folder = folderOf(*entry);
        const char* name = names_.data() + folder->offset;
        for (std::size_t i = folder->firstInode; i < *entry; ++i) name += std::strlen(name) + 1;
        if (!path.empty()) path.insert(0, 1, '/');
        path.insert(0, name);
        at = folder->identity();
    }
    return std::nullopt;
}

/// An entry of this number in a folder of the same device: beyond, numbers begin anew.
std::optional<std::size_t> Manifest::entryOf(const Identity& what) {
    constexpr std::uint64_t unknown = 0xFFFFFFFF;  // what FUSE gives out where it knows none
    if (what.inode == 0 || what.inode == unknown) return std::nullopt;
    const auto numberOf = [this](std::uint32_t entry) { return inodes_[entry]; };
    if (sorted_.size() != inodes_.size()) {
        sorted_.resize(inodes_.size());
        std::iota(sorted_.begin(), sorted_.end(), 0U);
        std::ranges::sort(sorted_, {}, numberOf);
    }
    for (auto entry = std::ranges::lower_bound(sorted_, what.inode, {}, numberOf);
         entry != sorted_.end() && numberOf(*entry) == what.inode; ++entry) {
        if (folderOf(*entry)->device == what.device) return *entry;
    }
    return std::nullopt;
}

const Manifest::Folder* Manifest::folderOf(std::size_t entry) const {
    // Folders whose numbers are not kept begin where the next one does.
    return &*std::prev(std::ranges::upper_bound(folders_, entry, {}, &Folder::firstInode));
}

void Manifest::FileSum::add(const FileStatus& file) {
    // A mixing that spreads each bit over all of the word, so that no two sets are likely to agree.
    std::uint64_t mixed = file.inode + 0x9E3779B97F4A7C15;
    mixed = (mixed ^ mixed >> 30) * 0xBF58476D1CE4E5B9;
    mixed = (mixed ^ mixed >> 27) * 0x94D049BB133111EB;
    sum_ += mixed ^ mixed >> 31;
}

const Manifest::Folder* Manifest::find(const FileStatus& folder) {
    if (next_ < folders_.size() && folders_[next_].inode == folder.inode) return &folders_[next_++];
    if (byInode_.empty()) {
        for (std::size_t i = 0; i < folders_.size(); ++i) byInode_.emplace(folders_[i].inode, i);
    }
    const auto found = byInode_.find(folder.inode);
    if (found == byInode_.end()) return nullptr;
    next_ = found->second + 1;
    return &folders_[found->second];
}

}  // namespace dorvanel

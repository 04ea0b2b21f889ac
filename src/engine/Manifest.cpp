// SPDX-License-Identifier: MIT
#include "engine/Manifest.h"

#include <cstring>
#include <unordered_set>

namespace dorvanel {

using platform::FileStatus;
using platform::FolderListing;

void Manifest::add(const FileStatus& folder, const FolderListing& listing) {
    const std::string_view names = listing.names();
    const bool hasNames = names_.size() + names.size() <= mostBytes;
    folders_.push_back({folder.inode, names_.size(), names.size(), listing.size(), hasNames});
    if (hasNames) names_.append(names);
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

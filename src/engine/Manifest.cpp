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
    ++met_;
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

// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace dorvanel::platform {

/// What an entry of a folder is; a link is a link, whatever it leads to.
enum class EntryKind : std::uint8_t { regular, folder, link, socket, fifo, device, unknown };

/// The entries of one folder, in order: all names in one block of memory, since a folder may hold
/// a hundred thousand of them. "." and ".." are left out.
class FolderListing {
  public:
    void clear() {
        names_.clear();
        entries_.clear();
        inodes_.clear();
    }
    /// `inode`: its number, 0 where it is not known.
    void add(std::string_view name, EntryKind kind, std::uint64_t inode = 0) {
        entries_.push_back({static_cast<std::uint32_t>(names_.size()), kind});
        inodes_.push_back(inode);
        names_.append(name);
        names_.push_back('\0');
    }

    [[nodiscard]] std::size_t size() const { return entries_.size(); }
    /// All names in order, each with its NUL.
    [[nodiscard]] std::string_view names() const { return names_; }
    /// NUL-terminated bytes, good until the listing changes.
    [[nodiscard]] const char* name(std::size_t index) const {
        return names_.data() + entries_[index].offset;
    }
    [[nodiscard]] EntryKind kind(std::size_t index) const { return entries_[index].kind; }
    void setKind(std::size_t index, EntryKind kind) { entries_[index].kind = kind; }
    /// The numbers of all entries, in order, as the folder tells them.
    [[nodiscard]] const std::vector<std::uint64_t>& inodes() const { return inodes_; }

  private:
    struct Entry {
        std::uint32_t offset;  ///< into `names_`
        EntryKind kind;
    };
    std::string names_;
    std::vector<Entry> entries_;
    std::vector<std::uint64_t> inodes_;
};

}  // namespace dorvanel::platform

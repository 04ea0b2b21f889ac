// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/HeldItem.h"
#include "platform/SystemCalls.h"

namespace dorvanel {

/// What was in the folders of an item when it was measured, so that what has gone by the time of
/// its turn can be told by name: a neighbour, or a program of the user's own, has taken it. And so
/// that what stays under a random name can be told by the one it had.
class Manifest {
  public:
    /// A folder as it was listed, in the order of the walk.
    void add(const platform::FileStatus& folder, const platform::FolderListing& listing);

    /// The folder is met again: calls `tell` with each name that is no longer there.
    void compare(const platform::FileStatus& folder, const platform::FolderListing& listing,
                 const std::function<void(std::string_view name)>& tell);

    /// The path that a file or folder had, relative to the item, whose own is empty; of a file with
    /// several, any of them. Nothing where it is not known: too much was in the item, or the file
    /// system gives its files other numbers once they are moved.
    std::optional<std::string> formerPath(const Identity& what);

    /// A sum of files by their inode numbers, in any order: of those in folders where others may
    /// put one file in another's place, so that its name alone proves nothing.
    class FileSum {
      public:
        void add(const platform::FileStatus& file);
        bool operator==(const FileSum&) const = default;

      private:
        std::uint64_t sum_ = 0;
    };
    FileSum sharedFiles;

  private:
    /// Memory that the names of one item may take; of folders beyond, only the number of names is
    /// kept. The numbers of the entries are kept as long as there is room in it.
    static constexpr std::size_t mostBytes = std::size_t{64} << 20;

    struct Folder {
        std::uint64_t inode;
        std::uint64_t device;
        std::size_t offset;  ///< into `names_`
        std::size_t length;  ///< bytes
        std::size_t entries;
        std::size_t firstInode;  ///< into `inodes_`
        bool hasNames;
        [[nodiscard]] Identity identity() const { return {device, inode}; }
    };

    [[nodiscard]] const Folder* find(const platform::FileStatus& folder);
    [[nodiscard]] const Folder* folderOf(std::size_t entry) const;
    [[nodiscard]] std::optional<std::size_t> entryOf(const Identity& what);

    std::string names_;
    std::vector<std::uint64_t> inodes_;
    std::vector<std::uint32_t> sorted_;  ///< indices of `inodes_` by number, once one is asked for
    std::vector<Folder> folders_;
    std::size_t next_ = 0;
    std::unordered_map<std::uint64_t, std::size_t> byInode_;  ///< once the order has changed
};

}  // namespace dorvanel

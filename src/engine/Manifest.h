// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/SystemCalls.h"

namespace dorvanel {

/// What was in the folders of an item when it was measured, so that what has gone by the time of
/// its turn can be told by name: a neighbour, or a program of the user's own, has taken it.
class Manifest {
  public:
    /// A folder as it was listed, in the order of the walk.
    void add(const platform::FileStatus& folder, const platform::FolderListing& listing);

    /// The folder is met again: calls `tell` with each name that is no longer there.
    void compare(const platform::FileStatus& folder, const platform::FolderListing& listing,
                 const std::function<void(std::string_view name)>& tell);

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
    /// kept.
    static constexpr std::size_t mostBytes = std::size_t{64} << 20;

    struct Folder {
        std::uint64_t inode;
        std::size_t offset;  ///< into `names_`
        std::size_t length;  ///< bytes
        std::size_t entries;
        bool hasNames;
    };

    [[nodiscard]] const Folder* find(const platform::FileStatus& folder);

    std::string names_;
    std::vector<Folder> folders_;
    std::size_t next_ = 0;
    std::unordered_map<std::uint64_t, std::size_t> byInode_;  ///< once the order has changed
};

}  // namespace dorvanel

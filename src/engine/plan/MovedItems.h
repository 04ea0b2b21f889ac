// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "engine/HeldItem.h"

namespace dorvanel {

/// The items of a request that will have left their places by some moment, known by the folder that
/// held them and their names: whatever path leads there leads nowhere then.
class MovedItems {
  public:
    void clear() {
        names_.clear();
        folders_.clear();
    }
    void add(const HeldItem& item) {
        names_[Identity::of(item.parentStatus)].insert(item.name);
        if (item.status.kind == platform::EntryKind::folder) {
            folders_.insert(Identity::of(item.status));
        }
    }
    /// The item stays after all.
    void remove(const HeldItem& item) {
        const auto found = names_.find(Identity::of(item.parentStatus));
        if (found != names_.end()) found->second.erase(item.name);
        folders_.erase(Identity::of(item.status));
    }

    [[nodiscard]] bool empty() const { return names_.empty(); }
    [[nodiscard]] std::size_t folders() const { return folders_.size(); }
    [[nodiscard]] bool holds(const platform::FileStatus& folder, std::string_view name) const {
        if (names_.empty()) return false;
        const auto found = names_.find(Identity::of(folder));
        return found != names_.end() && found->second.contains(std::string(name));
    }
    [[nodiscard]] bool isFolder(const platform::FileStatus& folder) const {
        return folders_.contains(Identity::of(folder));
    }

  private:
    struct Hash {
        std::size_t operator()(const Identity& file) const {
            return std::hash<std::uint64_t>()(file.inode ^ file.device << 32);
        }
    };
    std::unordered_map<Identity, std::unordered_set<std::string>, Hash> names_;
    std::unordered_set<Identity, Hash> folders_;
};

}  // namespace dorvanel

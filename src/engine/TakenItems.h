// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <unordered_set>

#include "engine/HeldItem.h"

namespace dorvanel {

/// The items of a request that were taken from their places, and folders that went with them: a
/// later item that is named twice, or lies in what was taken, went with it and is not missed, and
/// neither is what lay in a later item.
class TakenItems {
  public:
    /// For so many items.
    explicit TakenItems(std::size_t items) { items_.reserve(items); }

    void add(const HeldItem& item) {
        std::string path = pathOf(item);
        if (item.status.kind == platform::EntryKind::folder) folders_.insert(path);
        items_.insert(std::move(path));
    }
    void addFolder(const std::string& path) {
        folders_.insert(path);
        items_.insert(path);
    }
    [[nodiscard]] bool holds(const std::string& path) const { return items_.contains(path); }
    [[nodiscard]] bool holds(const HeldItem& item) const {
        if (items_.empty()) return false;
        if (items_.contains(pathOf(item))) return true;
        if (folders_.empty()) return false;
        std::string above = item.folder;
        for (std::size_t slash = 0; slash != std::string::npos; above.resize(slash)) {
            if (folders_.contains(above)) return true;
            slash = above.rfind('/');
            if (slash == std::string::npos) break;
        }
        return false;
    }

  private:
    static std::string pathOf(const HeldItem& item) { return item.folder + "/" + item.name; }

    std::unordered_set<std::string> items_;
    std::unordered_set<std::string> folders_;
};

}  // namespace dorvanel

// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>

#include "engine/HeldItem.h"
#include "engine/Plan.h"

namespace dorvanel {

/// Adds notes to one item, and only counts those beyond the most that a plan keeps: a tree of a
/// million links must not fill the memory.
class ItemNotes {
  public:
    /// `item` must outlive this, at its place.
    explicit ItemNotes(PlanItem& item) : item_(item) {}

    void add(PlanNote note);

    /// A name of a file that has several, in the item. The first makes the note, others join it.
    void addName(const platform::FileStatus& file, const std::function<std::string()>& path);

  private:
    /// Names that are kept of all files together; beyond, the notes tell only how many there are.
    static constexpr std::size_t mostNames = 100'000;
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    struct Hash {
        std::size_t operator()(const Identity& file) const {
            return std::hash<std::uint64_t>()(file.inode ^ file.device << 32);
        }
    };

    PlanItem& item_;
    std::unordered_map<Identity, std::size_t, Hash> notesOfFiles_;  ///< none: only counted
    std::size_t names_ = 0;
};

}  // namespace dorvanel

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <unordered_set>

#include "platform/SystemCalls.h"

namespace dorvanel {

/// What the links of a request led to when its items were measured. A link is followed there and
/// nowhere else: one that a neighbour puts into an item later on, or turns elsewhere by a folder on
/// its way, is no order to write.
class LinkTargets {
  public:
    void clear() { files_.clear(); }
    void add(const platform::FileStatus& target) { files_.insert({target.device, target.inode}); }
    [[nodiscard]] bool has(const platform::FileStatus& target) const {
        return files_.contains({target.device, target.inode});
    }

  private:
    struct File {
        std::uint64_t device;
        std::uint64_t inode;
        bool operator==(const File&) const = default;
    };
    struct Hash {
        std::size_t operator()(const File& file) const {
            return std::hash<std::uint64_t>()(file.inode ^ file.device << 32);
        }
    };
    std::unordered_set<File, Hash> files_;
};

}  // namespace dorvanel

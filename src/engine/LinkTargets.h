// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <unordered_map>

#include "engine/HeldItem.h"
#include "platform/SystemCalls.h"

namespace dorvanel {

/// What the links of a request led to when its items were measured. A link is followed there and
/// nowhere else: one that a neighbour puts into an item later on, or turns elsewhere by a folder on
/// its way, is no order to write. An inode number alone proves nothing, since it is given again
/// once its file is gone: the targets are held open, and beyond so many known by their birth.
class LinkTargets {
  public:
    explicit LinkTargets(platform::SystemCalls& system);

    void clear() { files_.clear(); }
    /// The link leads to `target`, which is now held if it is a plain file.
    void add(int folder, const char* link, const platform::FileStatus& target);
    /// Holds the file no longer, should it be one of them: on some file systems a file that is held
    /// keeps the folder of its removed name busy.
    void release(const platform::FileStatus& target);
    /// Whether a link led to this very file.
    [[nodiscard]] bool has(const platform::FileStatus& target) const;

  private:
    struct Target {
        platform::FileStatus status;
        std::shared_ptr<const HeldDescriptor> held;
    };
    [[nodiscard]] std::shared_ptr<const HeldDescriptor> hold(int folder, const char* link,
                                                             const platform::FileStatus& target);

    platform::SystemCalls& system_;
    std::size_t mostHeld_;
    std::unordered_map<Identity, Target, Identity::Hash> files_;
};

}  // namespace dorvanel

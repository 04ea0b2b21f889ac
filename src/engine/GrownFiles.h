// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>

#include "engine/HeldItem.h"
#include "platform/SystemCalls.h"

namespace dorvanel {

/// Sizes of files that a request meets more than once, by several names or links. To overwrite the
/// slack makes a file longer; what a person is told of it is the size that it had before.
class GrownFiles {
  public:
    void clear() { files_.clear(); }

    /// The file's size before the request overwrote it for the first time.
    [[nodiscard]] std::uint64_t sizeBefore(const platform::FileStatus& file) const;
    /// A file of this status, `before` long at first, was overwritten and may be met again. `now`
    /// is how long it is.
    void add(const platform::FileStatus& file, std::uint64_t before, std::uint64_t now);

  private:
    struct Sizes {
        std::uint64_t before;
        std::uint64_t now;
    };
    std::unordered_map<Identity, Sizes, Identity::Hash> files_;
};

}  // namespace dorvanel

// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>

#include "platform/SystemCalls.h"

namespace dorvanel::platform {

/// Tells whether a file shares blocks with another one, or with a snapshot: new contents then go
/// elsewhere, and the other keeps the old ones. One thread at a time.
class SharedExtents {
  public:
    virtual ~SharedExtents() = default;

    /// 1 where some of the plain file's blocks are shared, 0 where none is known to be, or a
    /// negated errno where the file cannot be opened for reading. `device` is the file's; where its
    /// file system shares no blocks, the file is not opened. Nothing is read of it, and what waits
    /// to be written goes on waiting.
    virtual int isShared(int folder, const char* name, SystemCalls::Links links,
                         std::uint64_t device) = 0;
};

/// The real one. What it finds out about a device it keeps.
std::unique_ptr<SharedExtents> makeSharedExtents();

}  // namespace dorvanel::platform

// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

#include "engine/BlockWrite.h"

namespace dorvanel {

/// Holds back the last writes to a file, for somebody to make them later.
class WriteHolder {
  public:
    virtual ~WriteHolder() = default;
    /// Keeps a copy of the bytes. False, with nothing done: no more can be held.
    virtual bool hold(const void* bytes, std::size_t size, std::uint64_t offset,
                      bool mayLackRoom) = 0;
    /// Makes the writes that are held, here and now, in their order; one that fails is passed over.
    virtual BlockWritten writeHeld(int file) = 0;
};

}  // namespace dorvanel

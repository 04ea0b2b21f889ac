// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "platform/SystemCalls.h"

namespace dorvanel {

/// Whether anybody but `user`, and the super-user, may put names into the folder or take them out.
inline bool othersMayWriteIn(const platform::FileStatus& folder, std::uint32_t user) {
    constexpr std::uint32_t superUser = 0;
    constexpr std::uint32_t writtenByOthers = 0022;  // an access list shows in the group's bits
    const bool isOthers = folder.owner != user && folder.owner != superUser;
    return isOthers || (folder.permissions & writtenByOthers) != 0;
}

}  // namespace dorvanel

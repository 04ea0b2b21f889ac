// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>

namespace dorvanel::platform {

/// Who holds a lock that is a symbolic link, by what it says.
struct LockLink {
    std::string host;  ///< "" where it names an address, which says nothing
    pid_t process = 0;
};

/// Reads "HOST-PID", in which the host's name may have dashes too, "ADDRESS:+PID" and
/// "ADDRESS:PID"; nothing for any other text.
std::optional<LockLink> readLockLink(std::string_view text);

}  // namespace dorvanel::platform

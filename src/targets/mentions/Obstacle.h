// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace dorvanel::mentions {

/// Something of the desktop's memory that is left as it is. It is told, never taken for nothing.
struct Obstacle {
    enum class Reason { unreadable, locked, corrupt, insecure };
    std::string path;  ///< absolute, in bytes
    Reason reason = Reason::unreadable;
    std::string detail;  ///< for people: "is a link"
};

}  // namespace dorvanel::mentions

// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace dorvanel::traces {

/// Something that kept us from seeing what is there. It is told, never taken for nothing.
struct Obstacle {
    std::string path;    ///< absolute, in bytes
    std::string reason;  ///< "Permission denied", "is a link"
};

}  // namespace dorvanel::traces

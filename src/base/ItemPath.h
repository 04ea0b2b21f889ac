// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace dorvanel {

/// An item's path taken apart: the folder that holds it and its own last component, doubled and
/// trailing slashes and "." components apart.
struct ItemPath {
    explicit ItemPath(std::string path);

    std::string folder;
    std::string name;
};

}  // namespace dorvanel

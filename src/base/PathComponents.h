// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace dorvanel {

/// Joins as the Mac joins path components: exactly one slash in between, none at the end; an empty
/// component adds nothing.
std::string appendingPathComponent(std::string_view path, std::string_view component);

/// The path without slashes at its end; "/" stays.
std::string_view withoutTrailingSlashes(std::string_view path);

/// "PATH.EXTENSION".
std::string appendingPathExtension(std::string_view path, std::string_view extension);

/// The text after the last full stop of a name; "" when it has none.
std::string pathExtension(std::string_view name);

/// An item's path taken apart: the folder that holds it and its own last component, doubled and
/// trailing slashes and "." components apart.
struct ItemPath {
    explicit ItemPath(std::string path);

    std::string folder;
    std::string name;
};

}  // namespace dorvanel

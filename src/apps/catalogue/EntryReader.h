// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "apps/catalogue/Entry.h"

namespace dorvanel::catalogue {

/// Larger files are not read: a description of an application has a few kibibytes.
inline constexpr std::size_t largestFile = std::size_t{256} * 1024;

/// Reads the file of the application `id`. Every fault is told, not only the first; what a family
/// would add is not known here, see `inherit` and `check`. Any bytes will do.
ReadEntry readEntry(const std::string& id, std::string_view bytes);

}  // namespace dorvanel::catalogue

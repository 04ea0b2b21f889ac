// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace dorvanel {

/// The name of a holding folder that is made at this time, in seconds since 1970.
std::string holdingFolderName(std::int64_t time);

/// Whether `holdingFolderName` may have made the name.
bool isHoldingFolderName(std::string_view name);

}  // namespace dorvanel

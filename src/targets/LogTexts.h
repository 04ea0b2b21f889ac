// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace dorvanel {

/// Lines of the Activity Log that many collectors write.
inline constexpr std::string_view notEnabledLine = "Not enabled - check preferences to enable.";
inline constexpr std::string_view separatorLine = "";

}  // namespace dorvanel

// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>
#include <vector>

#include "apps/Applications.h"

namespace dorvanel {

/// What lines of the process listing are searched for, in the order of the flags.
std::vector<std::string_view> testStrings();

/// The index of the application that a line of the listing speaks for: the first whose test string
/// it contains; `strings.size()` for none. A disk image being mounted speaks for nobody.
std::size_t applicationNamedIn(std::string_view line, const std::vector<std::string_view>& strings);

}  // namespace dorvanel

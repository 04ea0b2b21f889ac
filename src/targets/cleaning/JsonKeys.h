// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/Result.h"
#include "targets/cleaning/Cleaning.h"

namespace dorvanel::cleaning {

/// A JSON text without some keys.
struct JsonRest {
    std::string text;                   ///< UTF-8 without spaces, the rest in the order it had
    std::vector<std::uint64_t> counts;  ///< keys removed, by step
};

/// Removes the keys of all steps from a text, whose values stay what they are. An error, of no
/// path, where it is not JSON in UTF-8, or nested too deep to be that of a program.
Result<JsonRest> removeKeys(const std::string& text, const std::vector<JsonStep>& steps);

}  // namespace dorvanel::cleaning

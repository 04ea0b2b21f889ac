// SPDX-License-Identifier: MIT
#include "app/Texts.h"

#include <fmt/format.h>

namespace dorvanel {

std::string filledIn(const char* translation, const char* english, fmt::format_args arguments) {
    try {
        return fmt::vformat(translation, arguments);
    } catch (const fmt::format_error&) {
        return fmt::vformat(english, arguments);
    }
}

}  // namespace dorvanel

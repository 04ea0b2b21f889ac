// SPDX-License-Identifier: MIT
#include "engine/HoldingFolderName.h"

#include <fmt/format.h>

#include <charconv>
#include <system_error>

namespace dorvanel {
namespace {

constexpr std::string_view beginning = "Dorvanel X Items (";

}  // namespace

std::string holdingFolderName(std::int64_t time) {
    return fmt::format("{}{})", beginning, time);
}

bool isHoldingFolderName(std::string_view name) {
    if (!name.starts_with(beginning)) return false;
    const std::string_view rest = name.substr(beginning.size());
    std::int64_t time = 0;
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), time);
    // Only as it is written: no leading noughts, nothing behind.
    return error == std::errc() && name == holdingFolderName(time);
}

}  // namespace dorvanel

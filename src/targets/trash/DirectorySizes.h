// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace dorvanel::trash {

/// The names of the folders whose sizes a list "directorysizes" keeps, decoded, in order.
std::vector<std::string> namesInSizes(std::string_view list);

/// The list without the lines of those names for which `goes` says so; `count` is how many went.
/// All other lines stay byte for byte, also those that are none of such a list.
std::string withoutSizes(std::string_view list,
                         const std::function<bool(const std::string& name)>& goes,
                         std::uint64_t& count);

}  // namespace dorvanel::trash

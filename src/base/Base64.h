// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace dorvanel {

/// The bytes in base64 (RFC 4648, section 4), padded, in one line.
std::string base64Of(std::string_view bytes);

}  // namespace dorvanel

// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace dorvanel {

using Md5Digest = std::array<std::uint8_t, 16>;

/// MD5 of the bytes (RFC 1321). It names files of the desktop; it protects nothing.
Md5Digest md5(std::string_view bytes);

/// The digest as 32 lower case hexadecimal digits.
std::string hexOf(const Md5Digest& digest);

}  // namespace dorvanel

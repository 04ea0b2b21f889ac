// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

namespace dorvanel {

/// Four 8-bit characters as one number, the first one highest: how processes say their type and
/// creator, and events their kind.
using FourCharCode = std::uint32_t;

/// `text` must have four characters.
constexpr FourCharCode fourCharCode(std::string_view text) {
    FourCharCode code = 0;
    for (const char character : text) code = code << 8 | static_cast<unsigned char>(character);
    return code;
}

/// A signed code of the process and event services: `noErr`, or why a call did nothing.
using OSErr = std::int16_t;

constexpr OSErr noErr = 0;
constexpr OSErr procNotFound = -600;           ///< no such process, or none any more
constexpr OSErr connectionInvalid = -609;      ///< nobody there who could take the event
constexpr OSErr errAEEventNotHandled = -1708;  ///< the event was refused
constexpr OSErr errAETimeout = -1712;          ///< no answer in the time allowed

}  // namespace dorvanel

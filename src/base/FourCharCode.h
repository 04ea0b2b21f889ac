#pragma once

#include <cstdint>

namespace dorvanel::platform {

/// Four 8-bit characters as one number, the first one highest: how processes say their type and
/// creator, and events their kind.
using FourCharCode = std::uint32_t;

constexpr FourCharCode fourCharCode(const char (&text)[5]) {
    FourCharCode code = 0;
    for (int i = 0; i < 4; ++i) code = code << 8 | static_cast<unsigned char>(text[i]);
    return code;
}

/// A signed code of the process and event services: `noErr`, or why a call did nothing.
using OSErr = std::int16_t;

constexpr OSErr noErr = 0;
constexpr OSErr procNotFound = -600;           ///< no such process, or none any more
constexpr OSErr connectionInvalid = -609;      ///< nobody there who could take the event
constexpr OSErr errAEEventNotHandled = -1708;  ///< the event was refused
constexpr OSErr errAETimeout = -1712;          ///< no answer in the time allowed

}  // namespace dorvanel::platform

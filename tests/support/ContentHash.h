// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace dorvanel::test {

/// A 64-bit fingerprint of some bytes: FNV-1a, taken over eight bytes at a time. Shared by the
/// tests and the plain program that they are compared with, which shares nothing else.
inline std::uint64_t contentHash(const void* data, std::size_t size) {
    constexpr std::uint64_t prime = 0x100000001b3;
    std::uint64_t hash = 0xcbf29ce484222325 ^ size;
    const char* bytes = static_cast<const char*>(data);
    for (std::size_t at = 0; at < size; at += 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes + at, size - at < 8 ? size - at : 8);
        hash = (hash ^ word) * prime;
        hash ^= hash >> 29;
    }
    return hash;
}

}  // namespace dorvanel::test

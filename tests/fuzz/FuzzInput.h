// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

/// What a fuzzer calls with its inputs, and Replay.cpp with the kept ones. Defined once in each
/// program; any bytes are welcome, and what must not happen ends the process.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace dorvanel::test {

inline std::string bytesOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// Ends the process where something does not hold; also in release builds.
inline void insist(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

}  // namespace dorvanel::test

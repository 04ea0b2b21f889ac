// SPDX-License-Identifier: MIT
#include "base/Md5.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>

namespace dorvanel {
namespace {

constexpr std::size_t blockSize = 64;

/// The whole part of 2^32 times the sine of 1 to 64.
const std::array<std::uint32_t, 64>& sines() {
    static const auto table = [] {
        std::array<std::uint32_t, 64> values{};
        for (std::size_t i = 0; i < values.size(); ++i) {
            values[i] = static_cast<std::uint32_t>(
                std::floor(4294967296.0 * std::abs(std::sin(static_cast<double>(i + 1)))));
        }
        return values;
    }();
    return table;
}

constexpr int shifts[4][4] = {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}};

using State = std::array<std::uint32_t, 4>;

std::uint32_t wordAt(const char* bytes) {
    std::uint32_t word = 0;
    for (int i = 3; i >= 0; --i) word = word << 8 | static_cast<std::uint8_t>(bytes[i]);
    return word;
}

void mix(State& state, const char* block) {
    auto [a, b, c, d] = state;
    for (std::uint32_t i = 0; i < 64; ++i) {
        std::uint32_t mixed = 0;
        std::uint32_t word = 0;
        switch (i / 16) {
            case 0:
                mixed = (b & c) | (~b & d);
                word = i;
                break;
            case 1:
                mixed = (d & b) | (~d & c);
                word = 5 * i + 1;
                break;
            case 2:
                mixed = b ^ c ^ d;
                word = 3 * i + 5;
                break;
            default:
                mixed = c ^ (b | ~d);
                word = 7 * i;
                break;
        }
        const std::uint32_t sum =
            a + mixed + sines()[i] + wordAt(block + std::size_t{4} * (word % 16));
        a = d;
        d = c;
        c = b;
        b += std::rotl(sum, shifts[i / 16][i % 4]);
    }
    state = {state[0] + a, state[1] + b, state[2] + c, state[3] + d};
}

}  // namespace

Md5Digest md5(std::string_view bytes) {
    State state = {0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476};
    const std::uint64_t bits = std::uint64_t{8} * bytes.size();
    for (; bytes.size() >= blockSize; bytes.remove_prefix(blockSize)) mix(state, bytes.data());

    // The rest, one bit, zeros, and the length in bits at the end of a block.
    std::array<char, 2 * blockSize> end{};
    std::ranges::copy(bytes, end.begin());
    end[bytes.size()] = static_cast<char>(0x80);
    const std::size_t size = bytes.size() < blockSize - 8 ? blockSize : 2 * blockSize;
    for (std::size_t i = 0; i < 8; ++i) end[size - 8 + i] = static_cast<char>(bits >> 8 * i);
    for (std::size_t at = 0; at < size; at += blockSize) mix(state, end.data() + at);

    Md5Digest digest{};
    for (std::size_t i = 0; i < digest.size(); ++i) {
        digest[i] = static_cast<std::uint8_t>(state[i / 4] >> 8 * (i % 4));
    }
    return digest;
}

std::string hexOf(const Md5Digest& digest) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t byte : digest) {
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

}  // namespace dorvanel

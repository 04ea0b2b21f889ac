// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace dorvanel::additive {

/// Additive feedback over 31 words (Knuth's TAOCP vol. 2, 3.2.2; the C library's random() of
/// TYPE_3): each word is the sum, modulo 2^32, of the words 31 and 3 before it.
inline constexpr std::size_t degree = 31;
inline constexpr std::size_t tap = 28;  ///< degree - 3

/// 31 consecutive words; the next one is the sum of the first and of the one at `tap`.
using Window = std::array<std::uint32_t, degree>;

/// A jump by a fixed number of words. Every word is a linear function of the 31 words of the
/// window; since x^31 = x^28 + 1 describes the recurrence, the factors for the word n places on are
/// the coefficients of x^n modulo that equation.
struct Jump {
    std::array<std::uint32_t, degree> factors{};
};

/// x^a times x^b, that is x^(a + b).
constexpr Jump operator*(const Jump& a, const Jump& b) {
    std::array<std::uint32_t, 2 * degree - 1> product{};
    for (std::size_t i = 0; i < degree; ++i) {
        for (std::size_t j = 0; j < degree; ++j) product[i + j] += a.factors[i] * b.factors[j];
    }
    for (std::size_t power = product.size() - 1; power >= degree; --power) {
        product[power - degree] += product[power];
        product[power - degree + tap] += product[power];
    }
    Jump reduced{};
    for (std::size_t i = 0; i < degree; ++i) reduced.factors[i] = product[i];
    return reduced;
}

/// The jump by `words` words.
constexpr Jump jumpBy(std::uint64_t words) {
    Jump result{};
    result.factors[0] = 1;
    Jump square{};
    square.factors[1] = 1;
    for (; words != 0; words >>= 1) {
        if ((words & 1) != 0) result = result * square;
        square = square * square;
    }
    return result;
}

}  // namespace dorvanel::additive

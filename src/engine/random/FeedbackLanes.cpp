// SPDX-License-Identifier: MIT
#include "engine/random/FeedbackLanes.h"

#include <algorithm>

namespace dorvanel::additive {
namespace {

constexpr std::size_t laneCount = 8;
using Lanes = std::uint32_t __attribute__((vector_size(laneCount * sizeof(std::uint32_t))));
/// For each word of the window the factors of all lanes' jumps.
using LaneJump = Lanes[degree];

/// Lane k starts k stretches on; one table for each size of stretch, from 256 words to 8192.
constexpr std::size_t stretchSizes = 6;

struct LaneJumps {
    LaneJump bySize[stretchSizes];

    LaneJumps() {
        Jump stretch = jumpBy(bulkUnit / laneCount);
        for (LaneJump& jumps : bySize) {
            Jump jump = jumpBy(0);
            for (std::size_t lane = 0; lane < laneCount; ++lane) {
                for (std::size_t m = 0; m < degree; ++m) jumps[m][lane] = jump.factors[m];
                jump = jump * stretch;
            }
            stretch = stretch * stretch;
        }
    }
};

const LaneJumps& laneJumps() {
    static const LaneJumps jumps;
    return jumps;
}

namespace baseline {
#include "engine/random/FeedbackLanesKernel.h"
}  // namespace baseline

#if defined(__x86_64__)
#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx2"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx2")
#endif
namespace avx2 {
#include "engine/random/FeedbackLanesKernel.h"
}  // namespace avx2
#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif
#endif

struct Kernel {
    void (*jumpWindow)(const Extended&, const Jump&, Window&);
    void (*runLanes)(const Extended&, const LaneJump&, std::uint16_t*, std::size_t);
};

constexpr Kernel baselineKernel{baseline::jumpWindow, baseline::runLanes};

Kernel chooseKernel() {
#if defined(__x86_64__)
    if (__builtin_cpu_supports("avx2")) return {avx2::jumpWindow, avx2::runLanes};
#endif
    return baselineKernel;
}

const Kernel& kernel(Instructions use) {
    static const Kernel best = chooseKernel();
    return use == Instructions::best ? best : baselineKernel;
}

}  // namespace

Extended extend(const Window& window, std::size_t oldest) {
    Extended words;
    const auto first = window.begin() + static_cast<std::ptrdiff_t>(oldest);
    std::rotate_copy(window.begin(), first, window.end(), words.begin());
    for (std::size_t i = degree; i < words.size(); ++i) {
        words[i] = words[i - degree] + words[i - degree + tap];
    }
    return words;
}

Window jumped(const Extended& words, const Jump& jump, Instructions use) {
    Window result{};
    kernel(use).jumpWindow(words, jump, result);
    return result;
}

void makeWords(const Extended& start, std::uint16_t* words, std::size_t count, Instructions use) {
    std::size_t size = 0;
    while (bulkUnit << size < count) ++size;
    kernel(use).runLanes(start, laneJumps().bySize[size], words, count / laneCount);
}

}  // namespace dorvanel::additive

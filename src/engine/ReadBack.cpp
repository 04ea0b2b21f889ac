// SPDX-License-Identifier: MIT
#include "engine/ReadBack.h"

#include <algorithm>
#include <memory>

namespace dorvanel {

using platform::SystemCalls;

ReadBack::ReadBack(SystemCalls& system, const std::atomic<bool>& stop)
    : system_(system),
      stop_(stop),
      memory_(pieceSize + SystemCalls::readAlignment),
      piece_(memory_.data()) {
    void* begin = memory_.data();
    std::size_t space = memory_.size();
    piece_ = static_cast<char*>(std::align(SystemCalls::readAlignment, pieceSize, begin, space));
}

ReadBack::Answer ReadBack::compare(int file, std::uint64_t size, const Digest& written,
                                   bool hasMedium) {
    constexpr std::uint64_t alignment = SystemCalls::readAlignment;
    if (stop_.load(std::memory_order_relaxed)) return {Result::ended, 0};
    if (hasMedium) {
        const int result = system_.forgetCached(file);
        if (result < 0) return {Result::unreadable, -result};
    }
    digest_.clear();
    std::uint64_t offset = 0;
    while (offset < size) {
        const std::uint64_t left = (size - offset + alignment - 1) / alignment * alignment;
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(left, pieceSize));
        const std::ptrdiff_t got = system_.readAt(file, piece_, wanted, offset);
        if (got < 0) return {Result::unreadable, static_cast<int>(-got)};
        if (got == 0) return {Result::otherwise, 0};  // it has shrunk
        const std::uint64_t count = std::min(static_cast<std::uint64_t>(got), size - offset);
        digest_.add(piece_, static_cast<std::size_t>(count));
        offset += count;
        if (offset < size && stop_.load(std::memory_order_relaxed)) return {Result::ended, 0};
    }
    return {digest_.value() == written ? Result::same : Result::otherwise, 0};
}

}  // namespace dorvanel

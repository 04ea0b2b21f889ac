// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace dorvanel {

/// 128 bits that stand for the contents of a file. Two contents that differ by chance have the same
/// with a probability that nobody needs to reckon with; it is no proof against somebody's intent.
struct Digest {
    std::uint64_t low = 0;
    std::uint64_t high = 0;
    bool operator==(const Digest&) const = default;
};

/// Makes a digest of bytes that come one block after another.
class ContentDigest {
  public:
    /// Throws std::bad_alloc; later calls need no memory.
    ContentDigest();
    ~ContentDigest();
    ContentDigest(const ContentDigest&) = delete;
    ContentDigest& operator=(const ContentDigest&) = delete;

    /// Begins anew.
    void clear();
    void add(const void* bytes, std::size_t size);
    /// Of all bytes since the beginning.
    [[nodiscard]] Digest value() const;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace dorvanel

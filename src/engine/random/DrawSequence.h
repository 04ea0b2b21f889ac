// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace dorvanel {

class Fill;

/// The program's one source of chance: the C library's random() from its default state, draw for
/// draw, never seeded. Small draws are taken one by one; a fill takes 65536 draws at once and may
/// hand out their words later, and only those that somebody wants. One thread at a time.
class DrawSequence {
  public:
    /// Draws that one fill of the overwrite buffer takes.
    static constexpr std::size_t fillWords = 65536;

    virtual ~DrawSequence() = default;

    /// The next draw, 0 to 2^31 - 1, as random() returns it.
    virtual std::uint32_t next() = 0;

    /// Takes the next `fillWords` draws; they are what `produce` hands out until the next call.
    virtual void takeFill() = 0;

    /// Makes words of the last fill, the low 16 bits of each draw, from number `made` on and at
    /// least up to number `wanted`, each at its own place in `words` (room for `fillWords`).
    /// `made` is what the call before returned, 0 at first. Returns how many words are now made.
    virtual std::size_t produce(std::uint16_t* words, std::size_t made, std::size_t wanted) = 0;

    /// The last fill, for copies that other threads make, as long as nothing of it was produced.
    /// Null where only `produce` can make it.
    [[nodiscard]] virtual const Fill* fill() const { return nullptr; }
};

/// The sequence, by our own generator where the C library's random() is the additive feedback
/// generator that ours equals (compared when called), else by random() itself, one call a draw.
/// Call it once in a process: it looks at the first draws of random().
std::unique_ptr<DrawSequence> makeDrawSequence();

}  // namespace dorvanel

// SPDX-License-Identifier: MIT
#include "simulator/Simulation.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "simulator/World.h"

namespace dorvanel::simulator {

namespace {

/// Homes in memory, where the machine has a place for that: the disk would take most of the time.
void useMemory() {
    static const bool done = [] {
        if (std::filesystem::is_directory("/dev/shm")) ::setenv("TMPDIR", "/dev/shm", 1);
        return true;
    }();
    static_cast<void>(done);
}

}  // namespace

Findings simulate(const Sequence& sequence) {
    useMemory();
    return World(sequence).live();
}

Sequence shortened(Sequence sequence) {
    // Ever smaller pieces are left out, until no single event can be missed.
    for (std::size_t piece = sequence.events.size(); piece > 0; piece /= 2) {
        for (std::size_t at = 0; at < sequence.events.size();) {
            Sequence shorter = sequence;
            const std::size_t count = std::min(piece, shorter.events.size() - at);
            const auto first = shorter.events.begin() + static_cast<std::ptrdiff_t>(at);
            shorter.events.erase(first, first + static_cast<std::ptrdiff_t>(count));
            if (simulate(shorter).broken.empty()) {
                at += piece;
            } else {
                sequence = std::move(shorter);
            }
        }
    }
    return sequence;
}

}  // namespace dorvanel::simulator

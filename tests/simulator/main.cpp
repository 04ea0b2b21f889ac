// SPDX-License-Identifier: MIT
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "simulator/Simulation.h"

using namespace dorvanel::simulator;

namespace {

/// Tells what the sequence of this seed breaks, and how little of it is enough. False: nothing.
bool tellBroken(std::uint64_t seed) {
    const Sequence sequence = sequenceOf(seed);
    if (simulate(sequence).broken.empty()) return false;
    const Sequence shorter = shortened(sequence);
    std::printf("seed %llu breaks, shortened to %zu events:\n%s",
                static_cast<unsigned long long>(seed), shorter.events.size(),
                described(shorter).c_str());
    for (const std::string& broken : simulate(shorter).broken) {
        std::printf("  -> %s\n", broken.c_str());
    }
    return true;
}

}  // namespace

// simulate SECONDS [FIRST-SEED]    sequences from that seed on, for so long; ends at the first
// fault simulate --seed SEED             that one sequence, step by step
int main(int argc, char** argv) {
    const std::string first = argc > 1 ? argv[1] : "60";
    if (first == "--seed" && argc > 2) {
        const std::uint64_t seed = std::strtoull(argv[2], nullptr, 10);
        std::printf("%s", described(sequenceOf(seed)).c_str());
        const bool isBroken = tellBroken(seed);
        std::printf("%s\n", isBroken ? "broken" : "nothing is broken");
        return isBroken ? 1 : 0;
    }
    const auto end = std::chrono::steady_clock::now() +
                     std::chrono::seconds(std::strtol(argv[argc > 1 ? 1 : 0], nullptr, 10));
    const std::uint64_t from = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1;
    std::uint64_t seed = from;
    Findings sum;
    for (; std::chrono::steady_clock::now() < end; ++seed) {
        const Findings findings = simulate(sequenceOf(seed));
        if (!findings.broken.empty()) {
            tellBroken(seed);
            return 1;
        }
        sum.runsStarted += findings.runsStarted;
        sum.runsRefused += findings.runsRefused;
        sum.runsGivenUp += findings.runsGivenUp;
        sum.systemEvents += findings.systemEvents;
    }
    std::printf(
        "%llu sequences, seeds %llu to %llu: %d shreddings, %d refused, %d given up, %d "
        "sessions ended; no fault\n",
        static_cast<unsigned long long>(seed - from), static_cast<unsigned long long>(from),
        static_cast<unsigned long long>(seed - 1), sum.runsStarted, sum.runsRefused,
        sum.runsGivenUp, sum.systemEvents);
    return 0;
}

// SPDX-License-Identifier: MIT
#include "simulator/Event.h"

#include <random>

namespace dorvanel::simulator {
namespace {

constexpr std::array<const char*, kinds> names = {"shred",
                                                  "shred and log out",
                                                  "shred and shut down",
                                                  "shred and restart",
                                                  "files dropped",
                                                  "answer",
                                                  "quit",
                                                  "signal",
                                                  "worker steps",
                                                  "time passes",
                                                  "Safari starts",
                                                  "Safari ends",
                                                  "Safari refuses",
                                                  "listing becomes",
                                                  "preference",
                                                  "disk fails",
                                                  "no thread",
                                                  "cache comes back",
                                                  "preferences afresh"};

/// How often each kind comes up. Steps, answers and time are what carries a run on.
constexpr std::array<int, kinds> weights = {4, 3, 4, 2, 4, 12, 1, 2, 24, 8,
                                            4, 4, 1, 2, 2, 1,  1, 5, 1};

}  // namespace

Sequence sequenceOf(std::uint64_t seed) {
    std::mt19937_64 random(seed);
    const auto chance = [&](unsigned percent) { return random() % 100 < percent; };
    Sequence sequence;
    Scene& scene = sequence.scene;
    scene.face = chance(50) ? Scene::Face::window : Scene::Face::terminal;
    scene.watches = chance(70);
    scene.asks = chance(60);
    scene.logs = chance(80);
    scene.preferencesKnown = chance(90);
    scene.severalProfiles = chance(20);
    // The same number from the same seed on every machine: no distribution of the library's.
    int sum = 0;
    for (const int weight : weights) sum += weight;
    const std::size_t length = 10 + random() % 110;
    while (sequence.events.size() < length) {
        int left = static_cast<int>(random() % static_cast<unsigned>(sum));
        std::size_t kind = 0;
        while (left >= weights[kind]) left -= weights[kind++];
        sequence.events.push_back({static_cast<Kind>(kind), static_cast<std::uint8_t>(random())});
    }
    return sequence;
}

std::string described(const Sequence& sequence) {
    const Scene& scene = sequence.scene;
    std::string text = scene.face == Scene::Face::window ? "window" : "terminal";
    if (scene.watches) text += ", watching";
    if (scene.asks) text += ", asking";
    if (scene.logs) text += ", logging";
    if (!scene.preferencesKnown) text += ", preferences unreadable";
    if (scene.severalProfiles) text += ", several profiles";
    text += '\n';
    for (const Event& event : sequence.events) {
        text += "  ";
        text += names[static_cast<std::size_t>(event.kind)];
        text += ' ' + std::to_string(event.argument) + '\n';
    }
    return text;
}

}  // namespace dorvanel::simulator

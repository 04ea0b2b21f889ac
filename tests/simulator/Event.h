// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace dorvanel::simulator {

/// Something that can happen to the program. What a moment has no use for does nothing there.
enum class Kind : std::uint8_t {
    shredAndNothing,
    shredAndLogout,
    shredAndShutdown,
    shredAndRestart,
    shredFiles,   ///< files are dropped, or picked in the Open panel
    answer,       ///< a button of the open alert; even: the default one
    quit,         ///< a Quit command, or the session's quit request
    signal,       ///< SIGTERM, on a thread of its own
    workerSteps,  ///< the worker goes on for so many calls of the system
    time,         ///< so many seconds pass
    safariStarts,
    safariEnds,
    safariRefuses,   ///< it takes no notice of a request to quit; odd: from now on it does
    listing,         ///< from now on listings are whole, fail, or are cut off
    preference,      ///< one of the switches is turned
    diskFails,       ///< the next call of one kind fails
    noThread,        ///< the machine has no thread to give; odd: it has again
    cacheComesBack,  ///< there is something to shred again
    startAfresh,     ///< preferences that cannot be read are set aside
};
constexpr std::size_t kinds = static_cast<std::size_t>(Kind::startAfresh) + 1;

struct Event {
    Kind kind;
    std::uint8_t argument;
};

/// How a sequence begins, and in whose hands the program is.
struct Scene {
    enum class Face : std::uint8_t { window, terminal };
    Face face = Face::window;
    bool watches = true;           ///< Browser Watch is on
    bool asks = true;              ///< runs are confirmed
    bool logs = true;              ///< the Activity Log is on
    bool preferencesKnown = true;  ///< they can be read
    bool severalProfiles = false;  ///< the launch has something to ask
};

/// A whole life of the program: the scene, then what happens.
struct Sequence {
    Scene scene;
    std::vector<Event> events;
};

/// The sequence that a seed stands for, always the same.
Sequence sequenceOf(std::uint64_t seed);

/// The sequence in words, an event a line.
std::string described(const Sequence& sequence);

}  // namespace dorvanel::simulator

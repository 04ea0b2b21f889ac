// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace dorvanel::ui {

/// What a shredding request is at.
enum class WorkPhase {
    none,         ///< there is no request
    measuring,    ///< how much there is to do is found out
    overwriting,  ///< blocks are written
    flushing,     ///< what was written is brought to the medium, then names are removed
    readingBack,  ///< what was written is compared with what the medium holds
};

/// How far a request is.
struct WorkState {
    WorkPhase phase = WorkPhase::none;
    std::uint64_t done = 0;   ///< bytes taken in hand; files that grew lead beyond `total`
    std::uint64_t total = 0;  ///< bytes that were measured
    std::size_t item = 0;     ///< the item in work, counted from 1; 0 before the first
    std::size_t items = 0;    ///< items of the request
    std::string path{};       ///< of the item in work, as it was given, in bytes
};

/// Shows how far a request is, beside the bar. Told as often as the bar is; any thread may call,
/// and an implementation over a toolkit brings the call to its own.
class WorkProgress {
  public:
    virtual ~WorkProgress() = default;
    virtual void show(const WorkState& state) = 0;
};

}  // namespace dorvanel::ui

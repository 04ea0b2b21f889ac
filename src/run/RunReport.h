// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "engine/Outcome.h"
#include "engine/Plan.h"
#include "run/Activity.h"

namespace dorvanel {

/// How a request ended.
enum class RunResult {
    completed,        ///< the worker went through the list; after a stop, as far as it came
    nothingSelected,  ///< no collector found anything to take
    cancelled,        ///< the user said no in one of the two alerts
    givenUp,          ///< the program was asked to quit before anything was touched
    notInitiated,     ///< see `Refusal`
};

/// Why a request was not initiated.
enum class Refusal {
    none,
    atWork,              ///< another request is at work
    quitting,            ///< the program is about to quit
    preferencesUnknown,  ///< the stored preferences cannot be read
    noThread,            ///< the machine has no thread to give
};

/// What a request did, for the front ends to show.
struct RunReport {
    RunResult result = RunResult::completed;
    Outcome outcome;  ///< empty but for a completed request
    /// What was shredded, item by item with its outcome, where plans are kept; what was passed over
    /// in any case.
    Plan plan{};
    std::vector<std::string> skipped;  ///< applications passed over because they run
    /// Descriptions of applications that could not be used, each a line for people.
    std::vector<std::string> catalogueFaults{};
    Refusal refusal = Refusal::none;
    /// The files that somebody handed over, rather than a run over what the preferences select.
    bool handedOver = false;
    /// The logout, shutdown or restart that was to follow did not, as the program was asked to quit
    /// or to stop.
    bool endingStruck = false;
    /// Whether nobody could tell which applications run, so that all counted as running.
    bool listingUnknown = false;
};

/// Told of the beginning and the end of a request.
class RunObserver {
  public:
    virtual ~RunObserver() = default;
    /// What is going on has changed. By the thread that changed it.
    virtual void activityChanged(Activity /*now*/) {}
    /// The items are about to be shredded: the last moment to say something about them. Main
    /// thread, before the worker starts.
    virtual void runBegins(const std::vector<std::string>& /*items*/) {}
    /// By the thread on which the request ended: the worker for a completed one, the main thread
    /// otherwise.
    virtual void runEnded(const RunReport& report) = 0;
};

}  // namespace dorvanel

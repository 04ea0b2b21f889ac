// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "engine/Outcome.h"
#include "engine/Plan.h"
#include "run/Activity.h"
#include "run/EndingCountdown.h"

namespace dorvanel {

/// How a request ended.
enum class RunResult {
    completed,        ///< the worker went through the list; after a stop, as far as it came
    nothingSelected,  ///< no collector found anything to take
    cancelled,        ///< the user said no in one of the two alerts, or cancelled a step before
                      ///< anything was touched
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

/// Who asked for a request, by the door through which it came.
struct StartedBy {
    enum class Door {
        person,        ///< a command of the program
        browserWatch,  ///< an application has quit
        launch,        ///< the items that the program was started with
        launcher,      ///< an action of the desktop's launcher, or another program
        droppedFiles,  ///< on the window
        trash,         ///< the command for it
        again,         ///< for what an earlier request has left
    };
    Door door = Door::person;
    std::vector<std::string> applications{};  ///< of Browser Watch: those that have quit
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
    StartedBy startedBy{};
    /// The files that somebody handed over, rather than a run over what the preferences select.
    bool handedOver = false;
    /// What was to follow.
    Ending ending = Ending::none;
    /// The logout, shutdown or restart that was to follow did not, as the program was asked to quit
    /// or to stop, or its countdown was cancelled.
    bool endingStruck = false;
    /// What came after the plan had been shown that the run was limited to: left for the next run.
    std::uint64_t leftForNextRun = 0;
    /// Of a request that was stopped: its items, those of the request that it went on with
    /// included, and how many of them are left.
    std::uint64_t itemsInAll = 0;
    std::uint64_t itemsLeft = 0;
    /// It went on with what an earlier request had left.
    bool wentOn = false;
    /// Whether `ShreddingRun::goOn` has something to finish.
    bool canGoOn = false;
    /// Whether nobody could tell which applications run, so that all counted as running.
    bool listingUnknown = false;
};

/// Told of the beginning and the end of a request.
class RunObserver {
  public:
    virtual ~RunObserver() = default;
    /// What is going on has changed. By the thread that changed it.
    virtual void activityChanged(Activity /*now*/) {}
    /// Called now and then while things are collected, which keeps the main thread: the window may
    /// be looked after. Main thread.
    virtual void stillCollecting() {}
    /// The items are about to be shredded: the last moment to say something about them. Main
    /// thread, before the worker starts.
    virtual void runBegins(const std::vector<std::string>& /*items*/) {}
    /// By the thread on which the request ended: the worker for a completed one, the main thread
    /// otherwise.
    virtual void runEnded(const RunReport& report) = 0;
};

}  // namespace dorvanel

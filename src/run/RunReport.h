#pragma once

#include <string>
#include <vector>

#include "engine/Outcome.h"

namespace dorvanel {

/// How a request for a run ended.
enum class RunResult {
    completed,        ///< the worker went through the whole list
    nothingSelected,  ///< no collector found anything to take
    cancelled,        ///< the user said no in one of the two alerts
    notInitiated,     ///< a worker was still running, or the application is quitting
};

/// What a run did, for the front ends to show.
struct RunReport {
    RunResult result = RunResult::completed;
    Outcome outcome;                   ///< empty but for a completed run
    std::vector<std::string> skipped;  ///< applications passed over because they run
};

/// Told of the beginning and the end of a run.
class RunObserver {
  public:
    virtual ~RunObserver() = default;
    /// The items are about to be shredded: the last moment to say something about them. Main
    /// thread, before the worker starts.
    virtual void runBegins(const std::vector<std::string>& /*items*/) {}
    /// By the thread on which the run ended: the worker for a completed run, the main thread
    /// otherwise.
    virtual void runEnded(const RunReport& report) = 0;
};

}  // namespace dorvanel

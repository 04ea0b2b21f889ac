// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/SystemEvents.h"
#include "run/RunReport.h"
#include "run/ShreddingRun.h"
#include "simulator/Simulation.h"

namespace dorvanel::simulator {

/// Watches what the program does, and knows what it must never do.
class Judge {
  public:
    Findings findings;

    /// Where Safari keeps what a run takes of it.
    std::string safariTraces;

    // What happens to the program.

    void launched(bool preferencesKnown) { preferencesKnown_ = preferencesKnown; }
    /// Somebody asks for a run or, with no ending, for files to be shredded.
    void requested(std::optional<std::int16_t> ending);
    /// The main loop has come round: whatever has no worker is over.
    void mainLoopRests();
    void answered(bool agreed);
    void quitAsked() { quitting_ = true; }
    void stopAsked() { stopping_ = true; }
    void listed(bool isWhole, bool safariRuns);
    void preferencesStartedAfresh() { preferencesKnown_ = true; }

    // What the program does.

    void runBegins(const std::vector<std::string>& items);
    /// A thread is about to be started; `isWorking`: the one before has not ended.
    void workerStarts(bool isWorking, bool threadIsThere);
    void touchesDisk(const std::string& operation, bool byWorker);
    void sends(FourCharCode event, bool byWorker);
    /// `lastLogLine` is nothing where no log is kept.
    void workerEnded(bool stopped, const std::optional<std::string>& lastLogLine);
    void runEnded(const RunReport& report);
    /// An alert or a wait went on although the program was to quit.
    void goesOnWaiting(const std::string& what);

    /// At the very end, when nothing more can happen.
    void lifeOver(const ShreddingRun& run, bool hasEnded, bool keptIsThere);

    void isBroken(const std::string& invariant) { findings.broken.push_back(invariant); }

  private:
    /// The run or request at hand. What nobody asked for is a run of Browser Watch's, which ends
    /// with nothing.
    struct Request {
        bool hasBegun = false;
        bool isRun = true;
        std::int16_t ending = ShreddingRun::nothing;
        bool saidNo = false;
        bool worked = false;
        bool sent = false;
    };

    void insist(bool holds, const std::string& invariant) {
        if (!holds) isBroken(invariant);
    }

    Request request_;
    bool listingIsWhole_ = false;
    bool safariRuns_ = false;
    bool isWorking_ = false;
    bool preferencesKnown_ = true;
    bool quitting_ = false;
    bool stopping_ = false;
    int untold_ = 0;  ///< shreddings that were begun and have not been told of
};

}  // namespace dorvanel::simulator

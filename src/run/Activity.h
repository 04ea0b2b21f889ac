// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <functional>

namespace dorvanel {

/// What is going on with shredding, in the order in which a run goes through it.
enum class Activity {
    idle,
    asking,                  ///< a run is being prepared; an alert may wait for the person
    waitingForApplications,  ///< they were asked to quit and have not all gone
    collecting,              ///< the processes are listed, the collectors fill the shred list
    shredding,               ///< the worker is at work
    ending,   ///< the worker writes its closing lines and ends the session, if at all
    givenUp,  ///< given up before anything was touched: the run unwinds
};

/// The one place that knows what is going on. Whatever wants to start something asks it, by
/// `begin`, and every later step is taken by one of its operations. All of them are for any
/// thread; a step that a quit request forbids is refused, whichever of the two came first.
class ActivityState {
  public:
    /// `changed`, which may be empty, is told of every change, on the thread that made it.
    explicit ActivityState(std::function<void(Activity)> changed) : changed_(std::move(changed)) {}

    [[nodiscard]] Activity now() const { return now_; }
    /// Whether the program was asked to quit; from then on nothing new becomes of a run.
    [[nodiscard]] bool isQuitting() const { return quitting_; }

    /// From idle to `step`. False, and nothing changed, when something else is at work.
    bool begin(Activity step);
    /// To the next step of the run that has begun. False when it is given up, or is so now.
    bool goOn(Activity step);
    /// From shredding to ending.
    void finish() { change(Activity::shredding, Activity::ending); }
    /// Back to idle, from wherever the run is.
    void end();

    /// The program is asked to quit. A run that has not reached its worker is given up. The work of
    /// one that has goes on. Can be called from any thread at any moment; again does nothing.
    void giveUp();

    /// Gives up a run that waits for applications or collects; the program goes on. False, and
    /// nothing changed, at any other step. Any thread.
    bool cancel();

  private:
    bool change(Activity from, Activity to);

    std::function<void(Activity)> changed_;
    std::atomic<Activity> now_ = Activity::idle;
    std::atomic<bool> quitting_ = false;
};

}  // namespace dorvanel

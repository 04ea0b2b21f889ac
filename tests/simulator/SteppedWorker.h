// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

#include "platform/Worker.h"

namespace dorvanel::simulator {

/// A worker that only moves when it is told to: of it and the main thread one runs at a time, so
/// that a sequence of steps always comes out the same.
class SteppedWorker final : public platform::Worker {
  public:
    ~SteppedWorker() override { SteppedWorker::wait(); }

    Result<Done> start(std::function<void()> work) override;
    /// Has the work go on to its end.
    void wait() override;

    /// Has the work go on to its next pause. Without work, nothing.
    void step();
    /// Called by the work: a moment at which the others may go on.
    void pause();
    /// Whether the calling thread is the worker.
    [[nodiscard]] bool isCaller() const { return std::this_thread::get_id() == workerId_; }
    [[nodiscard]] bool isWorking() const { return thread_.has_value(); }

    /// Called when work is about to be started; false: there is no thread for it.
    std::function<bool()> onStart;
    /// Called, by the work's own thread, when the work has ended.
    std::function<void()> onEnd;

  private:
    enum class Turn { main, worker };

    void giveTurn(Turn turn);
    void awaitTurn(Turn turn);

    std::mutex mutex_;
    std::condition_variable changed_;
    Turn turn_ = Turn::main;
    bool finished_ = false;
    std::thread::id workerId_;
    std::optional<std::thread> thread_;
};

}  // namespace dorvanel::simulator

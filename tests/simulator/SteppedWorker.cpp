// SPDX-License-Identifier: MIT
#include "simulator/SteppedWorker.h"

#include <cerrno>
#include <utility>

namespace dorvanel::simulator {

Result<Done> SteppedWorker::start(std::function<void()> work) {
    const bool isFree = !onStart || onStart();
    wait();
    if (!isFree) return Error{EAGAIN, "start a thread", {}, {}};
    finished_ = false;
    thread_.emplace([this, work = std::move(work)] {
        awaitTurn(Turn::worker);
        work();
        if (onEnd) onEnd();
        finished_ = true;
        giveTurn(Turn::main);
    });
    workerId_ = thread_->get_id();
    return Done{};
}

void SteppedWorker::wait() {
    while (thread_) step();
}

void SteppedWorker::step() {
    if (!thread_) return;
    giveTurn(Turn::worker);
    awaitTurn(Turn::main);
    if (!finished_) return;
    thread_->join();
    thread_.reset();
    workerId_ = {};
}

void SteppedWorker::pause() {
    giveTurn(Turn::main);
    awaitTurn(Turn::worker);
}

void SteppedWorker::giveTurn(Turn turn) {
    {
        const std::lock_guard lock(mutex_);
        turn_ = turn;
    }
    changed_.notify_all();
}

void SteppedWorker::awaitTurn(Turn turn) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return turn_ == turn; });
}

}  // namespace dorvanel::simulator

// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

#include "base/Result.h"

namespace dorvanel::platform {

/// A second thread for one piece of work at a time. Main thread.
class Worker {
  public:
    virtual ~Worker() = default;
    /// Has a new thread call `work`, after the one before has ended. On failure nothing is called:
    /// the machine has no thread to give.
    virtual Result<Done> start(std::function<void()> work) = 0;
    /// Returns when no work is being done any more.
    virtual void wait() = 0;
};

/// Waits for its thread when it is destroyed.
std::unique_ptr<Worker> makeWorker();

}  // namespace dorvanel::platform

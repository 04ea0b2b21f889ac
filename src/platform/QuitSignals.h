// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

#include "base/Result.h"

namespace dorvanel::platform {

/// While it lives, SIGINT, SIGTERM and SIGHUP (unless that was ignored) do not end the process;
/// each is told of instead. Afterwards they do what they did before; but once one has been told of,
/// the program is on its way out, and a further one does nothing. At most one at a time.
class QuitSignals {
  public:
    virtual ~QuitSignals() = default;
};

/// `received` is called once for each signal, on a thread of its own, so also while the main
/// thread is busy. An error where the system has no descriptor or no thread for it: no signal is
/// caught.
Result<std::unique_ptr<QuitSignals>> catchQuitSignals(std::function<void()> received);

}  // namespace dorvanel::platform

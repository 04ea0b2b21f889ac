// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <thread>

#include "app/desktop/MainThreadWake.h"

namespace dorvanel::desktop {

/// Does something that may take a moment on a thread of its own: reading or writing one file. Main
/// thread.
class BackgroundTask final {
  public:
    BackgroundTask();
    /// Waits for the work; `done` is not called any more.
    ~BackgroundTask();
    BackgroundTask(const BackgroundTask&) = delete;
    BackgroundTask& operator=(const BackgroundTask&) = delete;

    /// Has another thread do the work, which touches no widget; `done` is called by the main loop
    /// when it has ended. False, and nothing happens, while a former work goes on or when there is
    /// no thread.
    bool start(std::function<void()> work, std::function<void()> done);
    [[nodiscard]] bool isAtWork() const { return thread_.joinable(); }

  private:
    void finish();

    MainThreadWake wake_;
    std::thread thread_;
    std::function<void()> done_;
};

}  // namespace dorvanel::desktop

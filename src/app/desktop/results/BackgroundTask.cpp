// SPDX-License-Identifier: MIT
#include "app/desktop/results/BackgroundTask.h"

#include <system_error>
#include <utility>

namespace dorvanel::desktop {

BackgroundTask::BackgroundTask() : wake_([this] { finish(); }) {}

BackgroundTask::~BackgroundTask() {
    if (thread_.joinable()) thread_.join();
}

bool BackgroundTask::start(std::function<void()> work, std::function<void()> done) {
    if (isAtWork()) return false;
    done_ = std::move(done);
    try {
        thread_ = std::thread([this, work = std::move(work)] {
            work();
            wake_.post();
        });
    } catch (const std::system_error&) {
        return false;
    }
    return true;
}

void BackgroundTask::finish() {
    if (!thread_.joinable()) return;
    thread_.join();
    std::exchange(done_, {})();
}

}  // namespace dorvanel::desktop

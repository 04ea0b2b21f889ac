// SPDX-License-Identifier: MIT
#pragma once

#include <mutex>

#include "ui/WorkProgress.h"

namespace dorvanel::desktop {

/// Keeps how far a request is, for who looks now and then. Any thread.
class QtWorkProgress final : public ui::WorkProgress {
  public:
    void show(const ui::WorkState& state) override {
        const std::lock_guard lock(mutex_);
        state_ = state;
    }
    [[nodiscard]] ui::WorkState latest() const {
        const std::lock_guard lock(mutex_);
        return state_;
    }

  private:
    mutable std::mutex mutex_;
    ui::WorkState state_;  ///< guarded by the mutex
};

}  // namespace dorvanel::desktop

// SPDX-License-Identifier: MIT
#pragma once

#include <mutex>

#include "ui/Outlets.h"

namespace dorvanel::terminal {

/// Outlets that two threads use while both write to one terminal: the worker of a run its progress,
/// the main thread the status of Browser Watch. One mutex for all that share the terminal.
class LockedTextField final : public ui::TextField {
  public:
    /// Both must outlive it.
    LockedTextField(ui::TextField& field, std::mutex& mutex) : field_(field), mutex_(mutex) {}

    void setStringValue(std::string_view text) override {
        const std::lock_guard lock(mutex_);
        field_.setStringValue(text);
    }
    void setTextColor(ui::Color color) override {
        const std::lock_guard lock(mutex_);
        field_.setTextColor(color);
    }
    void display() override {
        const std::lock_guard lock(mutex_);
        field_.display();
    }

  private:
    ui::TextField& field_;
    std::mutex& mutex_;
};

class LockedProgressIndicator final : public ui::ProgressIndicator {
  public:
    /// Both must outlive it.
    LockedProgressIndicator(ui::ProgressIndicator& indicator, std::mutex& mutex)
        : indicator_(indicator), mutex_(mutex) {}

    void setDoubleValue(double percent) override {
        const std::lock_guard lock(mutex_);
        indicator_.setDoubleValue(percent);
    }
    void display() override {
        const std::lock_guard lock(mutex_);
        indicator_.display();
    }

  private:
    ui::ProgressIndicator& indicator_;
    std::mutex& mutex_;
};

}  // namespace dorvanel::terminal

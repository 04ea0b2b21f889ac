// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include "app/terminal/Terminal.h"
#include "ui/Outlets.h"

namespace dorvanel::terminal {

/// The status line of Browser Watch: each text that differs from the one before is one line on
/// `out`, there at once. Colours say nothing here. When nobody reads `out` any more, that is told
/// once, and `out` swallows from then on what is written to it.
class StatusLine final : public ui::TextField {
  public:
    /// `terminal` must outlive it.
    explicit StatusLine(Terminal& terminal) : terminal_(terminal) {}

    void setStringValue(std::string_view text) override;
    void setTextColor(ui::Color) override {}
    void display() override {}

    /// Called when `out` has gone; may be empty.
    std::function<void()> onGone;

  private:
    Terminal& terminal_;
    std::string text_;
};

/// A label that nobody sees.
class UnseenLabel final : public ui::TextField {
  public:
    void setStringValue(std::string_view) override {}
    void setTextColor(ui::Color) override {}
    void display() override {}
};

}  // namespace dorvanel::terminal

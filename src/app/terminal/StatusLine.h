#pragma once

#include <string>

#include "app/terminal/Terminal.h"
#include "platform/Outlets.h"

namespace dorvanel::terminal {

/// The status line of Browser Watch: each text that differs from the one before is one line on
/// `out`, there at once. Colours say nothing here.
class StatusLine final : public platform::TextField {
  public:
    /// `terminal` must outlive it.
    explicit StatusLine(Terminal& terminal) : terminal_(terminal) {}

    void setStringValue(std::string_view text) override;
    void setTextColor(platform::Color) override {}
    void display() override {}

  private:
    Terminal& terminal_;
    std::string text_;
};

/// A label that nobody sees.
class UnseenLabel final : public platform::TextField {
  public:
    void setStringValue(std::string_view) override {}
    void setTextColor(platform::Color) override {}
    void display() override {}
};

}  // namespace dorvanel::terminal

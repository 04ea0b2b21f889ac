// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "app/terminal/Terminal.h"
#include "platform/Clock.h"
#include "ui/Outlets.h"

namespace dorvanel::terminal {

/// How far a request is.
struct ProgressBytes {
    std::uint64_t done = 0;   ///< taken in hand
    std::uint64_t total = 0;  ///< 0 while it is not known
};

/// The progress bar and the file-name field as one line on the terminal's `err`: bar, percentage,
/// rate, time left and the name of the file at hand. Drawn on `display`, no more often; nothing at
/// all is written where `err` is no terminal. Plain characters and carriage returns only, no
/// colours, never wider than the terminal. One thread at a time.
class ProgressBar final : public ui::ProgressIndicator {
  public:
    /// `terminal` and `clock` must outlive the bar. `bytes` is asked at each drawing.
    ProgressBar(Terminal& terminal, const platform::Clock& clock,
                std::function<ProgressBytes()> bytes);
    /// Clears the line.
    ~ProgressBar() override;

    void setDoubleValue(double percent) override;
    void display() override { draw(); }

    /// Shows its text in this bar's line.
    ui::TextField& fileName() { return fileName_; }

    /// Takes the line away, so that other text can be written; the next drawing brings it back.
    void clear();

    /// The line for a terminal of `columns`, without what clears it; for tests and `draw`.
    [[nodiscard]] std::string line(int columns) const;

  private:
    class FileName final : public ui::TextField {
      public:
        explicit FileName(ProgressBar& bar) : bar_(bar) {}
        void setStringValue(std::string_view text) override;
        void setTextColor(ui::Color) override {}  // a line without colours
        void display() override { bar_.draw(); }

      private:
        ProgressBar& bar_;
    };

    void draw();
    [[nodiscard]] std::string rate(std::chrono::duration<double> elapsed) const;
    [[nodiscard]] std::string timeLeft(std::chrono::duration<double> elapsed) const;

    Terminal& terminal_;
    const platform::Clock& clock_;
    std::function<ProgressBytes()> bytes_;
    FileName fileName_{*this};
    std::string name_;  ///< escaped
    double percent_ = 0;
    bool isUnderWay_ = false;  ///< more than 0 % was shown
    int drawn_ = 0;            ///< columns that the line on the terminal takes
    std::optional<std::chrono::steady_clock::time_point> started_;
};

}  // namespace dorvanel::terminal

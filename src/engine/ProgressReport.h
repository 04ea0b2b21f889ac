// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Clock.h"
#include "ui/Outlets.h"

namespace dorvanel {

/// Tells the two outlets how far a request is, before each block is written: at most sixty times a
/// second, since a block takes microseconds, but every time for a while after one has been slow,
/// and always of the last value before anything that takes time.
class ProgressReport {
  public:
    /// The outlets and the clock must outlive the report.
    ProgressReport(ui::ProgressIndicator& shreddingProgress, ui::TextField& fileName,
                   const platform::Clock& clock)
        : shreddingProgress_(shreddingProgress), fileName_(fileName), clock_(clock) {}

    /// Shows the values at once: at the beginning and the end of a request.
    void showNow(double percent);
    void showNow(std::string_view name);

    /// The file that is taken in hand; shown with its first percentage.
    void setName(std::string_view name);
    void setPercent(double percent);

    /// Shows what is not shown yet: something that is no block will take long.
    void flush();

  private:
    static constexpr std::chrono::nanoseconds interval{1'000'000'000 / 60};

    /// Values that are shown at once after a slow block: others may follow.
    static constexpr int afterSlowBlock = 200;

    void showIfDue();
    void show();

    ui::ProgressIndicator& shreddingProgress_;
    ui::TextField& fileName_;
    const platform::Clock& clock_;
    double percent_ = 0;
    std::string name_;
    bool percentPending_ = false;
    bool namePending_ = false;
    std::chrono::steady_clock::time_point due_{};
    std::optional<std::chrono::steady_clock::time_point> last_;  ///< value; none: after a pause
    int eager_ = 0;                                              ///< values to show at once
};

}  // namespace dorvanel

// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Clock.h"
#include "ui/Outlets.h"
#include "ui/WorkProgress.h"

namespace dorvanel {

/// Tells the outlets how far a request is, before each block is written: at most sixty times a
/// second, since a block takes microseconds, but every time for a while after one has been slow,
/// and always of the last value before anything that takes time.
class ProgressReport {
  public:
    /// The outlets and the clock must outlive the report; `work` may be null.
    ProgressReport(ui::ProgressIndicator& shreddingProgress, ui::TextField& fileName,
                   const platform::Clock& clock, ui::WorkProgress* work = nullptr)
        : shreddingProgress_(shreddingProgress), fileName_(fileName), clock_(clock), work_(work) {}

    /// Shows the values at once: at the beginning and the end of a request.
    void showNow(double percent);
    void showNow(std::string_view name);

    /// The file that is taken in hand; shown with its first percentage.
    void setName(std::string_view name);
    void setPercent(double percent);

    /// The item that has its turn, shown with its first percentage.
    void setItem(std::size_t number, std::size_t count, const std::string& path);
    /// Bytes, shown with the next percentage.
    void setBytes(std::uint64_t done, std::uint64_t total);
    /// Shows at once that the request is at something that may take long; with `none`, that it has
    /// ended. Percentages are of the overwriting.
    void enter(ui::WorkPhase phase);

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
    ui::WorkProgress* work_;
    ui::WorkState state_;
    double percent_ = 0;
    std::string name_;
    bool percentPending_ = false;
    bool namePending_ = false;
    bool statePending_ = false;
    std::chrono::steady_clock::time_point due_{};
    std::optional<std::chrono::steady_clock::time_point> last_;  ///< value; none: after a pause
    int eager_ = 0;                                              ///< values to show at once
};

}  // namespace dorvanel

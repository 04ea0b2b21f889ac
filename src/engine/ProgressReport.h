#pragma once

#include <chrono>
#include <string>

#include "platform/Clock.h"
#include "platform/Outlets.h"

namespace dorvanel {

/// Tells the two outlets how far a request is: at most sixty times a second, since a block takes
/// microseconds, and always of the last value before anything that takes time.
class ProgressReport {
  public:
    /// The outlets and the clock must outlive the report.
    ProgressReport(platform::ProgressIndicator& shreddingProgress, platform::TextField& fileName,
                   const platform::Clock& clock)
        : shreddingProgress_(shreddingProgress), fileName_(fileName), clock_(clock) {}

    /// Shows the values at once: at the beginning and the end of a request.
    void showNow(double percent);
    void showNow(std::string_view name);

    void setPercent(double percent);
    void setName(std::string_view name);

    /// Shows what is not shown yet.
    void flush();

  private:
    static constexpr std::chrono::nanoseconds interval{1'000'000'000 / 60};

    void showIfDue();

    platform::ProgressIndicator& shreddingProgress_;
    platform::TextField& fileName_;
    const platform::Clock& clock_;
    double percent_ = 0;
    std::string name_;
    bool percentPending_ = false;
    bool namePending_ = false;
    std::chrono::steady_clock::time_point due_{};
};

}  // namespace dorvanel

#pragma once

#include <QObject>
#include <memory>
#include <vector>

#include "platform/RunLoop.h"

namespace dorvanel::desktop {

class QtTimer;

/// The main loop over Qt's. Repeating timers do not fire while the program is in a modal alert or
/// in work that keeps the main thread: what they start must not come in between.
class QtRunLoop final : public platform::RunLoop {
  public:
    QtRunLoop() = default;
    ~QtRunLoop() override;

    std::shared_ptr<platform::Timer> scheduleRepeatingTimer(std::chrono::milliseconds interval,
                                                            Fire fire) override;
    void run() override;
    void stop() override;
    void performOnMainThread(std::function<void()> work) override;

    /// While one lives, no timer fires; a timer that was due meanwhile fires once afterwards.
    class Hold {
      public:
        explicit Hold(QtRunLoop& loop) : loop_(loop) { ++loop_.holds_; }
        ~Hold();
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;

      private:
        QtRunLoop& loop_;
    };
    [[nodiscard]] bool isHeld() const { return holds_ > 0; }

  private:
    friend class QtTimer;

    QObject context_;  ///< lives on the main thread; what is posted to it goes with it
    std::vector<std::shared_ptr<QtTimer>> timers_;
    int holds_ = 0;
};

}  // namespace dorvanel::desktop

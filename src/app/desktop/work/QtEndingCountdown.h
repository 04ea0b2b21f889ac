// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QLabel>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>

#include "app/desktop/MainThreadWake.h"
#include "platform/Clock.h"
#include "run/EndingCountdown.h"

namespace dorvanel::desktop {

/// Counts some seconds down over the main window before a run ends the session. Whoever does
/// nothing agrees. Main thread, but for what says otherwise.
class QtEndingCountdown final : public QObject, public EndingCountdown {
  public:
    /// All of them outlive the countdown.
    struct Parts {
        QWidget& window;
        const platform::Clock& clock;
        std::chrono::seconds time;  ///< 0: each ending may come at once
        /// Brings the window up, wherever it is.
        std::function<void()> bringUp;
        /// Told what the message says, each second, and "" when it has gone.
        std::function<void(const QString&)> tell;
    };
    explicit QtEndingCountdown(Parts parts);
    /// Nobody waits in `mayEnd` any more.
    ~QtEndingCountdown() override;

    bool mayEnd(Ending ending) override;
    void strike() override;
    /// Strikes the ending that is counted down to, if there is one.
    void cancel();

  private:
    void update();
    void begin();
    void makeMessage();
    void tick();
    void answer(bool mayEnd);
    void end();

    Parts parts_;
    QPointer<QDialog> message_;
    QLabel* text_ = nullptr;
    QTimer timer_;
    std::chrono::steady_clock::time_point end_;
    int shown_ = 0;  ///< seconds
    Ending shownEnding_ = Ending::none;

    std::mutex mutex_;  ///< guards what follows
    std::condition_variable answered_;
    Ending ending_ = Ending::none;  ///< that is asked about; none: the worker waits for nothing
    std::optional<bool> answer_;
    bool isStruck_ = false;

    MainThreadWake wake_{[this] { update(); }};
};

}  // namespace dorvanel::desktop

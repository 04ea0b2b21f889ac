// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <functional>

#include "run/Activity.h"

namespace dorvanel::desktop {

/// What the main window says about shredding, and whether its commands can be given: what goes on
/// now; a request that was refused, for some seconds; or, when nothing goes on, how the last one
/// ended. Main thread.
class ActivityView final : public QObject {
  public:
    struct Parts {
        std::function<void(const QString&)> showMessage;
        /// Lets the commands that shred something be given, or not.
        std::function<void(bool)> setCommandsEnabled;
    };
    explicit ActivityView(Parts parts);

    void show(Activity now);
    /// A question of the window's own waits for its answer, or does not any more.
    void setAsking(bool asking);
    /// How a request ended: until there is another, the person has gone on to something else, or
    /// a minute has passed.
    void showResult(const QString& result);
    void forgetResult();
    /// What to say when nothing goes on and there is no result; "" for not knowing more than that.
    void setIdleLine(const QString& line);
    void showRefusal(const QString& refusal);
    /// The program quits when the work at hand has ended.
    void setQuitDeferred();
    /// The shredding at work was asked to stop.
    void setStopping();
    /// What waits or collects was cancelled, if that is not too late.
    void setCancelled();
    /// How long it is until the session ends; "" when it does not count down.
    void showCountdown(const QString& countdown);

    /// Between the end of the work and the moment when commands can be given again. Keys and clicks
    /// that came in meanwhile find the commands dimmed and are gone by then.
    static constexpr std::chrono::milliseconds pause{250};

  private:
    [[nodiscard]] bool isBusy() const;
    [[nodiscard]] QString message() const;
    void update();

    Parts parts_;
    Activity activity_ = Activity::idle;
    bool asking_ = false;
    bool quitDeferred_ = false;
    bool isStopping_ = false;
    bool isCancelled_ = false;
    QString countdown_;
    QString result_;
    QString idleLine_;
    QString refusal_;
    QTimer refusalTimer_;
    QTimer resultTimer_;
    QTimer pauseTimer_;
};

}  // namespace dorvanel::desktop

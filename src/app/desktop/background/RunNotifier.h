// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <functional>

#include "run/RunReport.h"

namespace dorvanel::desktop {

/// Tells the end of a run that nobody watches by the desktop's notifications. They hold counts and
/// no name of a file: a locked screen shows them too. Where the session bus has no service for
/// them, nothing happens. Main thread.
class RunNotifier final : public QObject {
    Q_OBJECT

  public:
    /// `showDetails` is given the number of the run that somebody asks about.
    RunNotifier(const QDBusConnection& bus, std::function<void(quint64)> showDetails);

    /// Takes the place of the last notification. `failure` may be empty.
    void tell(quint64 run, const QString& message, const QString& failure);

  private slots:
    void actionInvoked(uint id, const QString& action);
    void notificationClosed(uint id, uint reason);
    void activationToken(uint id, const QString& token);

  private:
    QDBusConnection bus_;
    std::function<void(quint64)> showDetails_;
    uint id_ = 0;  ///< of the last notification; 0: there is none
    quint64 run_ = 0;
};

/// What a notification says of a run: counts only. Empty for what is not worth one.
QString quietMessageOf(const RunReport& report);

}  // namespace dorvanel::desktop

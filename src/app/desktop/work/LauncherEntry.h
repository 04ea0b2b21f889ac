// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QTimer>

namespace dorvanel::desktop {

/// What the program's place in docks and task bars shows.
struct LauncherState {
    int percent = -1;  ///< 0 to 100; -1: no progress
    bool urgent = false;

    bool operator==(const LauncherState&) const = default;
};

/// Tells docks and task bars that read the launcher interface of the session bus how far the
/// program is: at most four times a second, and of the last state in any case. Nobody need listen.
/// Main thread.
class LauncherEntry final : public QObject {
  public:
    explicit LauncherEntry(QDBusConnection bus = QDBusConnection::sessionBus());
    /// Takes away what is shown.
    ~LauncherEntry() override;

    void show(const LauncherState& state);

  private:
    void sendIfChanged();

    QDBusConnection bus_;
    LauncherState state_;
    LauncherState sent_;
    QTimer pause_;  ///< runs while nothing may be sent
};

}  // namespace dorvanel::desktop

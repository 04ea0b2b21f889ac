// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusServiceWatcher>
#include <QObject>
#include <QTimer>
#include <functional>

namespace dorvanel::desktop {

/// Whether the desktop has a place for tray icons: the status notifier host of the session bus, or
/// the tray of an X screen. The toolkit asks once and keeps the answer; trays come and go with the
/// panels that hold them, so this asks again. Main thread.
class StatusArea final : public QObject {
  public:
    StatusArea();

    /// Has `changed` called when there may be something new, every few seconds at least.
    void watch(const std::function<void()>& changed);

    /// Whether an icon made now, by the toolkit, would be shown.
    [[nodiscard]] bool isThere();

  private:
    enum class Kind { unknown, sessionBus, screen };

    QDBusServiceWatcher watcher_;
    QTimer timer_;
    Kind kind_ = Kind::unknown;  ///< the one that the toolkit has settled on
};

}  // namespace dorvanel::desktop

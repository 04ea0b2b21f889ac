// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include "support/ChildProcess.h"

namespace dorvanel::test {

/// The desktop's notifications, as far as programs use them.
class FakeNotifications final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

  public:
    struct Notification {
        uint replaced;
        QString summary, body;
        QStringList actions;
        QVariantMap hints;
    };
    QList<Notification> shown;

  public slots:
    uint Notify(const QString&, uint replaced, const QString&, const QString& summary,
                const QString& body, const QStringList& actions, const QVariantMap& hints, int) {
        shown << Notification{replaced, summary, body, actions, hints};
        return replaced != 0 ? replaced : ++last_;
    }

  signals:
    void ActionInvoked(uint id, const QString& action);
    void NotificationClosed(uint id, uint reason);

  private:
    uint last_ = 40;
};

/// The desktop's file manager, likewise.
class FakeFileManager final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

  public:
    QStringList shown;

  public slots:
    void ShowItems(const QStringList& uris, const QString&) { shown << uris; }
};

/// A session bus of the test's own, with a connection for the program and one for the desktop.
class SessionServices final {
  public:
    SessionServices() : daemon_({"dbus-daemon", "--session", "--nofork", "--print-address"}) {
        const QString address = QString::fromStdString(daemon_.readLine());
        program = QDBusConnection::connectToBus(address, "the program");
        desktop_ = QDBusConnection::connectToBus(address, "the desktop");
    }
    ~SessionServices() {
        QDBusConnection::disconnectFromBus("the program");
        QDBusConnection::disconnectFromBus("the desktop");
    }
    SessionServices(const SessionServices&) = delete;
    SessionServices& operator=(const SessionServices&) = delete;

    bool haveNotifications() {
        return desktop_.registerObject("/org/freedesktop/Notifications", &notifications, all) &&
               desktop_.registerService("org.freedesktop.Notifications");
    }
    bool haveFileManager() {
        return desktop_.registerObject("/org/freedesktop/FileManager1", &fileManager, all) &&
               desktop_.registerService("org.freedesktop.FileManager1");
    }

    QDBusConnection program{"none"};
    FakeNotifications notifications;
    FakeFileManager fileManager;

  private:
    static constexpr QDBusConnection::RegisterOptions all =
        QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals;

    ChildProcess daemon_;
    QDBusConnection desktop_{"none"};
};

}  // namespace dorvanel::test

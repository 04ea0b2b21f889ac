// SPDX-License-Identifier: MIT
#include "app/desktop/StatusArea.h"

#include <xcb/xcb.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QGuiApplication>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace dorvanel::desktop {
namespace {

constexpr const char* hostService = "org.kde.StatusNotifierWatcher";
constexpr std::chrono::seconds lookInterval{5};
constexpr int answerMilliseconds = 1000;

bool sessionBusHasHost() {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.interface()->isServiceRegistered(QLatin1String(hostService))) {
        return false;
    }
    QDBusMessage question = QDBusMessage::createMethodCall(
        QLatin1String(hostService), QStringLiteral("/StatusNotifierWatcher"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << QLatin1String(hostService) << QStringLiteral("IsStatusNotifierHostRegistered");
    const QDBusMessage answer = bus.call(question, QDBus::Block, answerMilliseconds);
    return answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty() &&
           answer.arguments().first().value<QDBusVariant>().variant().toBool();
}

template <typename Reply>
std::unique_ptr<Reply, decltype(&std::free)> owned(Reply* reply) {
    return {reply, &std::free};
}

bool screenHasTray() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr) return false;
    xcb_connection_t* screen = x11->connection();
    if (screen == nullptr) return false;  // drawn without one: nobody sees an icon
    constexpr std::string_view selection = "_NET_SYSTEM_TRAY_S0";
    const auto atom = owned(xcb_intern_atom_reply(
        screen, xcb_intern_atom(screen, 0, selection.size(), selection.data()), nullptr));
    if (!atom) return false;
    const auto owner = owned(xcb_get_selection_owner_reply(
        screen, xcb_get_selection_owner(screen, atom->atom), nullptr));
    return owner && owner->owner != XCB_NONE;
}

}  // namespace

StatusArea::StatusArea()
    : watcher_(QLatin1String(hostService), QDBusConnection::sessionBus(),
               QDBusServiceWatcher::WatchForOwnerChange) {}

void StatusArea::watch(const std::function<void()>& changed) {
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this, changed);
    connect(&timer_, &QTimer::timeout, this, changed);
    timer_.start(lookInterval);
}

bool StatusArea::isThere() {
    if (kind_ != Kind::screen && sessionBusHasHost()) {
        kind_ = Kind::sessionBus;
        return true;
    }
    if (kind_ != Kind::sessionBus && screenHasTray()) {
        kind_ = Kind::screen;
        return true;
    }
    return false;
}

}  // namespace dorvanel::desktop

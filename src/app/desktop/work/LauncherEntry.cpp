// SPDX-License-Identifier: MIT
#include "app/desktop/work/LauncherEntry.h"

#include <QDBusMessage>
#include <QVariantMap>
#include <algorithm>
#include <chrono>
#include <utility>

namespace dorvanel::desktop {
namespace {

constexpr std::chrono::milliseconds shortestPause{250};

}  // namespace

LauncherEntry::LauncherEntry(QDBusConnection bus) : bus_(std::move(bus)) {
    pause_.setSingleShot(true);
    pause_.setInterval(shortestPause);
    connect(&pause_, &QTimer::timeout, this, &LauncherEntry::sendIfChanged);
}

LauncherEntry::~LauncherEntry() {
    state_ = {};
    sendIfChanged();
}

void LauncherEntry::show(const LauncherState& state) {
    state_ = state;
    if (!pause_.isActive()) sendIfChanged();
}

void LauncherEntry::sendIfChanged() {
    if (state_ == sent_) return;
    sent_ = state_;
    pause_.start();
    if (!bus_.isConnected()) return;
    QDBusMessage update = QDBusMessage::createSignal(
        QStringLiteral("/com/dorvanel/DorvanelX/launcher"),
        QStringLiteral("com.canonical.Unity.LauncherEntry"), QStringLiteral("Update"));
    const QVariantMap values{
        {QStringLiteral("progress"), std::max(state_.percent, 0) / 100.0},
        {QStringLiteral("progress-visible"), state_.percent >= 0},
        {QStringLiteral("urgent"), state_.urgent},
    };
    update << QStringLiteral("application://dorvanel-x.desktop") << values;
    bus_.send(update);
}

}  // namespace dorvanel::desktop

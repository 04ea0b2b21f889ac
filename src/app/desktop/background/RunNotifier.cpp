// SPDX-License-Identifier: MIT
#include "app/desktop/background/RunNotifier.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>
#include <utility>

#include "app/desktop/OutcomeText.h"
#include "app/desktop/Words.h"

namespace dorvanel::desktop {
namespace {

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* objectPath = "/org/freedesktop/Notifications";
constexpr uchar normalUrgency = 1;
constexpr uchar criticalUrgency = 2;
constexpr int desktopsOwnTime = -1;
constexpr const char* detailsAction = "details";

}  // namespace

QString quietMessageOf(const RunReport& report) {
    if (report.result == RunResult::completed && report.outcome.items > 0) {
        RunReport countsOnly;
        countsOnly.outcome = report.outcome;
        return messageOf(countsOnly);
    }
    return {};
}

RunNotifier::RunNotifier(const QDBusConnection& bus, std::function<void(quint64)> showDetails)
    : bus_(bus), showDetails_(std::move(showDetails)) {
    const auto listen = [this](const char* signal, const char* slot) {
        bus_.connect(QLatin1String(service), QLatin1String(objectPath), QLatin1String(service),
                     QLatin1String(signal), this, slot);
    };
    listen("ActionInvoked", SLOT(actionInvoked(uint, QString)));
    listen("NotificationClosed", SLOT(notificationClosed(uint, uint)));
    listen("ActivationToken", SLOT(activationToken(uint, QString)));
}

void RunNotifier::tell(quint64 run, const QString& message, const QString& failure) {
    if (!bus_.isConnected()) return;
    const bool isFailure = !failure.isEmpty();
    QVariantMap hints{{QStringLiteral("desktop-entry"), QStringLiteral("dorvanel-x")},
                      {QStringLiteral("category"), isFailure ? QStringLiteral("transfer.error")
                                                             : QStringLiteral("transfer.complete")},
                      {QStringLiteral("urgency"),
                       QVariant::fromValue(isFailure ? criticalUrgency : normalUrgency)}};
    // A failure stays where people find it.
    if (isFailure) hints.insert(QStringLiteral("resident"), true);
    const QString summary =
        isFailure ? Words::tr("Shredding did not go as it should") : Words::tr("Shredding is done");
    const QStringList sentences = isFailure ? QStringList{failure, message} : QStringList{message};
    QDBusMessage call =
        QDBusMessage::createMethodCall(QLatin1String(service), QLatin1String(objectPath),
                                       QLatin1String(service), QStringLiteral("Notify"));
    call << QStringLiteral("Dorvanel X") << id_ << QStringLiteral("dorvanel-x") << summary
         << sentences.join(u' ').trimmed().toHtmlEscaped()
         << QStringList{QLatin1String(detailsAction), Words::tr("Details")} << hints
         << desktopsOwnTime;
    run_ = run;
    auto* answer = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<uint> reply = *answer;
        if (!reply.isError()) id_ = reply.value();
        answer->deleteLater();
    });
}

void RunNotifier::actionInvoked(uint id, const QString& action) {
    if (id == id_ && id != 0 && action == QLatin1String(detailsAction)) showDetails_(run_);
}

void RunNotifier::notificationClosed(uint id, uint) {
    if (id == id_) id_ = 0;
}

void RunNotifier::activationToken(uint id, const QString& token) {
    // Without it a compositor lets no window come to the front; the toolkit looks for it there.
    if (id == id_ && id != 0) qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
}

}  // namespace dorvanel::desktop

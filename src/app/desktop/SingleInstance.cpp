// SPDX-License-Identifier: MIT
#include "app/desktop/SingleInstance.h"

#include <QCryptographicHash>
#include <QDBusMessage>
#include <filesystem>
#include <system_error>

#include "app/desktop/ApplicationAdaptor.h"
#include "app/desktop/Bytes.h"

namespace dorvanel::desktop {

ApplicationAdaptor::ApplicationAdaptor(QObject* parent, InstanceHandlers handlers)
    : QDBusAbstractAdaptor(parent), handlers_(std::move(handlers)) {}

void ApplicationAdaptor::Activate(const QVariantMap&) {
    handlers_.activate();
}

void ApplicationAdaptor::Open(const QStringList& uris, const QVariantMap&) {
    std::vector<std::string> paths;
    for (const QString& uri : uris) {
        std::string path = pathOfUrl(QUrl(uri));
        if (!path.empty()) paths.push_back(std::move(path));
    }
    if (!paths.empty()) handlers_.open(std::move(paths));
}

void ApplicationAdaptor::ActivateAction(const QString& name, const QVariantList&,
                                        const QVariantMap&) {
    handlers_.activateAction(name.toStdString());
}

SingleInstance::SingleInstance(const std::string& home, const QDBusConnection& bus) : bus_(bus) {
    std::error_code error;
    const std::filesystem::path canonical = std::filesystem::weakly_canonical(home, error);
    const QByteArray bytes = QByteArray::fromStdString(error ? home : canonical.native());
    const QByteArray hash = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
    name_ = QStringLiteral("com.dorvanel.DorvanelX.home_") + QLatin1String(hash.left(16));
}

SingleInstance::~SingleInstance() {
    if (!claimed_) return;
    bus_.unregisterService(name_);
    bus_.unregisterObject(QLatin1String(objectPath));
}

SingleInstance::Role SingleInstance::claim(InstanceHandlers handlers) {
    if (!bus_.isConnected()) return Role::alone;
    new ApplicationAdaptor(this, std::move(handlers));
    // The object first: whoever sees the name finds somebody behind it.
    if (!bus_.registerObject(QLatin1String(objectPath), this)) return Role::alone;
    claimed_ = bus_.registerService(name_);
    if (!claimed_) bus_.unregisterObject(QLatin1String(objectPath));
    return claimed_ ? Role::first : Role::second;
}

bool SingleInstance::handOver(const std::vector<std::string>& files, const std::string& action) {
    const auto send = [this](const QString& method, QVariantList arguments) {
        QDBusMessage call = QDBusMessage::createMethodCall(name_, QLatin1String(objectPath),
                                                           QLatin1String(interfaceName), method);
        arguments << QVariantMap();  // platform data
        call.setArguments(arguments);
        const QDBusMessage reply = bus_.call(call);
        // A program at work answers late; the request waits for it.
        return reply.type() != QDBusMessage::ErrorMessage ||
               reply.errorName() == QLatin1String("org.freedesktop.DBus.Error.NoReply");
    };
    bool taken = true;
    if (!files.empty()) {
        QStringList uris;
        for (const std::string& file : files) uris << urlOfPath(file);
        taken = send(QStringLiteral("Open"), {uris});
    }
    if (!action.empty()) {
        taken = send(QStringLiteral("ActivateAction"),
                     {QString::fromStdString(action), QVariant(QVariantList())}) &&
                taken;
    }
    if (files.empty() && action.empty()) taken = send(QStringLiteral("Activate"), {});
    return taken;
}

}  // namespace dorvanel::desktop

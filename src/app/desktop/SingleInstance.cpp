// SPDX-License-Identifier: MIT
#include "app/desktop/SingleInstance.h"

#include <QCryptographicHash>
#include <QDBusMessage>
#include <filesystem>
#include <system_error>

#include "app/desktop/ApplicationAdaptor.h"
#include "app/desktop/Bytes.h"

namespace dorvanel::desktop {
namespace {

/// The action whose parameter is the URIs of files to ask about.
constexpr const char* askAction = "ask";

/// The paths behind the URIs of this machine's files.
std::vector<std::string> pathsOf(const QStringList& uris) {
    std::vector<std::string> paths;
    for (const QString& uri : uris) {
        std::string path = pathOfUrl(QUrl(uri));
        if (!path.empty()) paths.push_back(std::move(path));
    }
    return paths;
}

QStringList urisOf(const std::vector<std::string>& files) {
    QStringList uris;
    for (const std::string& file : files) uris << urlOfPath(file);
    return uris;
}

}  // namespace

ApplicationAdaptor::ApplicationAdaptor(QObject* parent, InstanceHandlers handlers)
    : QDBusAbstractAdaptor(parent), handlers_(std::move(handlers)) {}

void ApplicationAdaptor::Activate(const QVariantMap&) {
    handlers_.activate();
}

void ApplicationAdaptor::Open(const QStringList& uris, const QVariantMap&) {
    std::vector<std::string> paths = pathsOf(uris);
    if (!paths.empty()) handlers_.open(std::move(paths));
}

void ApplicationAdaptor::ActivateAction(const QString& name, const QVariantList& parameter,
                                        const QVariantMap&) {
    if (name != QLatin1String(askAction)) return handlers_.activateAction(name.toStdString());
    QStringList uris;
    for (const QVariant& value : parameter) uris << value.toStringList();
    handlers_.ask(pathsOf(uris));
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
    if (isTheDesktops_) bus_.unregisterService(QLatin1String(desktopName));
    bus_.unregisterService(name_);
    bus_.unregisterObject(QLatin1String(objectPath));
}

SingleInstance::Role SingleInstance::claim(InstanceHandlers handlers, Home home) {
    if (!bus_.isConnected()) return Role::alone;
    new ApplicationAdaptor(this, std::move(handlers));
    // The object first: whoever sees the name finds somebody behind it.
    if (!bus_.registerObject(QLatin1String(objectPath), this)) return Role::alone;
    claimed_ = bus_.registerService(name_);
    if (!claimed_) bus_.unregisterObject(QLatin1String(objectPath));
    isTheDesktops_ =
        claimed_ && home == Home::accounts && bus_.registerService(QLatin1String(desktopName));
    return claimed_ ? Role::first : Role::second;
}

bool SingleInstance::send(const QString& method, QVariantList arguments) {
    QDBusMessage call = QDBusMessage::createMethodCall(name_, QLatin1String(objectPath),
                                                       QLatin1String(interfaceName), method);
    arguments << QVariantMap();  // platform data
    call.setArguments(arguments);
    const QDBusMessage reply = bus_.call(call);
    // A program at work answers late; the request waits for it.
    return reply.type() != QDBusMessage::ErrorMessage ||
           reply.errorName() == QLatin1String("org.freedesktop.DBus.Error.NoReply");
}

bool SingleInstance::handOver(const std::vector<std::string>& files, const std::string& action) {
    bool taken = true;
    if (!files.empty()) taken = send(QStringLiteral("Open"), {urisOf(files)});
    if (!action.empty()) {
        taken = send(QStringLiteral("ActivateAction"),
                     {QString::fromStdString(action), QVariant(QVariantList())}) &&
                taken;
    }
    if (files.empty() && action.empty()) taken = send(QStringLiteral("Activate"), {});
    return taken;
}

bool SingleInstance::handOverToAsk(const std::vector<std::string>& files) {
    const QVariantList parameter = {urisOf(files)};
    return send(QStringLiteral("ActivateAction"), {QLatin1String(askAction), QVariant(parameter)});
}

}  // namespace dorvanel::desktop

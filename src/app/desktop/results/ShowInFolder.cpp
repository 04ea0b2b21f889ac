// SPDX-License-Identifier: MIT
#include "app/desktop/results/ShowInFolder.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QStringList>
#include <QUrl>
#include <filesystem>

#include "app/desktop/Bytes.h"

namespace dorvanel::desktop {
namespace {

/// A file manager opens a window for each folder: more than a few help nobody.
constexpr std::size_t mostShown = 20;

QUrl folderOf(const std::string& path) {
    return {urlOfPath(std::filesystem::path(path).parent_path().native())};
}

}  // namespace

void showInFolder(const std::vector<std::string>& paths, const QDBusConnection& bus) {
    const QUrl folder = folderOf(paths.front());
    // A call without a bus is never answered.
    if (!bus.isConnected()) {
        QDesktopServices::openUrl(folder);
        return;
    }
    QStringList urls;
    for (std::size_t i = 0; i < paths.size() && i < mostShown; ++i) urls << urlOfPath(paths[i]);
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    question << urls << QString();
    auto* answer =
        new QDBusPendingCallWatcher(bus.asyncCall(question), QCoreApplication::instance());
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, answer, [answer, folder] {
        answer->deleteLater();
        if (answer->isError()) QDesktopServices::openUrl(folder);
    });
}

}  // namespace dorvanel::desktop

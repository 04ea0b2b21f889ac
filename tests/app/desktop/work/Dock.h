// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QVariantMap>
#include <utility>
#include <vector>

namespace dorvanel::test {

/// A dock: hears what programs say of themselves.
class Dock final : public QObject {
    Q_OBJECT
  public:
    explicit Dock(QDBusConnection bus) : bus_(std::move(bus)) {
        isListening =
            bus_.connect({}, {}, QStringLiteral("com.canonical.Unity.LauncherEntry"),
                         QStringLiteral("Update"), this, SLOT(update(QString, QVariantMap)));
    }
    bool isListening = false;
    std::vector<std::pair<QString, QVariantMap>> updates;

  public slots:
    void update(const QString& uri, const QVariantMap& values) {
        updates.emplace_back(uri, values);
    }

  private:
    QDBusConnection bus_;
};

}  // namespace dorvanel::test

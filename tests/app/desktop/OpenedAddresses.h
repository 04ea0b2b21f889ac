// SPDX-License-Identifier: MIT
#pragma once

#include <QDesktopServices>
#include <QObject>
#include <QStringList>
#include <QUrl>
#include <array>

namespace dorvanel::test {

/// Takes the addresses that the program opens, in place of the desktop's own programs.
class OpenedAddresses final : public QObject {
    Q_OBJECT

  public:
    OpenedAddresses() {
        for (const char* scheme : schemes) {
            QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "open");
        }
    }
    ~OpenedAddresses() override {
        for (const char* scheme : schemes) {
            QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
        }
    }
    QStringList addresses;

  public slots:
    void open(const QUrl& url) { addresses << url.toString(QUrl::FullyEncoded); }

  private:
    static constexpr std::array<const char*, 3> schemes = {"mailto", "https", "file"};
};

}  // namespace dorvanel::test

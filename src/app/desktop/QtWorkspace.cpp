// SPDX-License-Identifier: MIT
#include "app/desktop/QtWorkspace.h"

#include <QApplication>
#include <QDesktopServices>
#include <QUrl>

namespace dorvanel::desktop {

void QtWorkspace::openURL(const std::string& url) {
    QDesktopServices::openUrl(QUrl(QString::fromStdString(url)));
}

void QtWorkspace::beep() {
    QApplication::beep();
}

}  // namespace dorvanel::desktop

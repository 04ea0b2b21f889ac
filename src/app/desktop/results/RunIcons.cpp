// SPDX-License-Identifier: MIT
#include "app/desktop/results/RunIcons.h"

#include <QApplication>
#include <QStyle>

namespace dorvanel::desktop {

QIcon successIcon() {
    return QIcon::fromTheme(
        QStringLiteral("emblem-success"),
        QIcon::fromTheme(QStringLiteral("emblem-ok-symbolic"),
                         QApplication::style()->standardIcon(QStyle::SP_DialogApplyButton)));
}

QIcon failureIcon() {
    return QIcon::fromTheme(QStringLiteral("dialog-warning"),
                            QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning));
}

QIcon quietIcon() {
    return QIcon::fromTheme(QStringLiteral("dialog-information"),
                            QApplication::style()->standardIcon(QStyle::SP_MessageBoxInformation));
}

}  // namespace dorvanel::desktop

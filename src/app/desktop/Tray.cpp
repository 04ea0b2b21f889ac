// SPDX-License-Identifier: MIT
#include "app/desktop/Tray.h"

#include <QApplication>

namespace dorvanel::desktop {

void Tray::check() {
    const bool available = parts_.isAvailable && parts_.isAvailable();
    if (available == isThere()) return;
    if (available) {
        if (menu_ == nullptr) makeMenu();
        makeIcon();
    } else {
        icon_.reset();
        parts_.gone();
    }
}

void Tray::makeMenu() {
    menu_ = std::make_unique<QMenu>();
    menu_->addAction(QStringLiteral("Show Dorvanel"), parts_.show);
    menu_->addSeparator();
    commands_ = std::make_unique<QMenu>();
    view_ = std::make_unique<MenuView>(*commands_, parts_.commands, MenuView::Items::commands);
    menu_->addActions(commands_->actions());
    menu_->addSeparator();
    menu_->addAction(QStringLiteral("Quit Dorvanel"), parts_.quit);
}

void Tray::makeIcon() {
    icon_ = std::make_unique<QSystemTrayIcon>(QApplication::windowIcon());
    icon_->setToolTip(QStringLiteral("Dorvanel X"));
    icon_->setContextMenu(menu_.get());
    QObject::connect(icon_.get(), &QSystemTrayIcon::activated, menu_.get(),
                     [this](QSystemTrayIcon::ActivationReason reason) {
                         if (reason == QSystemTrayIcon::Trigger) parts_.show();
                     });
    icon_->show();
}

void Tray::setCommandsEnabled(bool enabled) {
    for (int index = 0; index < parts_.commands.numberOfItems(); ++index) {
        parts_.commands.itemAtIndex(index).setEnabled(enabled);
    }
    if (view_ != nullptr) view_->sync();
}

}  // namespace dorvanel::desktop

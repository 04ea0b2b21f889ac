// SPDX-License-Identifier: MIT
#include "app/desktop/Tray.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>

#include "app/desktop/Words.h"

#include "app/desktop/Words.h"

namespace dorvanel::desktop {
namespace {

/// The names that the commands have in the window's menus.
QString commandText(const ui::MenuItem& item) {
    if (item.title() == "Shred") return Words::tr("Shred Traces");
    if (item.title() == "Shred and Log Out") return Words::tr("Shred Traces and Log Out");
    if (item.title() == "Shred and Shut Down") return Words::tr("Shred Traces and Shut Down");
    if (item.title() == "Shred and Restart") return Words::tr("Shred Traces and Restart");
    return {};
}

QIcon emblemFor(Tray::State state) {
    const QStyle& style = *QApplication::style();
    switch (state) {
        case Tray::State::working:
            return QIcon::fromTheme(QStringLiteral("emblem-synchronizing"),
                                    QIcon::fromTheme(QStringLiteral("view-refresh"),
                                                     style.standardIcon(QStyle::SP_BrowserReload)));
        case Tray::State::failure:
            return QIcon::fromTheme(
                QStringLiteral("emblem-important"),
                QIcon::fromTheme(QStringLiteral("dialog-warning"),
                                 style.standardIcon(QStyle::SP_MessageBoxWarning)));
        case Tray::State::idle:
            break;
    }
    return {};
}

}  // namespace

QIcon Tray::iconFor(State state) {
    QIcon program = QApplication::windowIcon();
    const QIcon emblem = emblemFor(state);
    if (emblem.isNull() || program.isNull()) return program;
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64}) {
        QPixmap picture = program.pixmap(QSize(size, size), 1.0);
        if (picture.isNull()) continue;
        // Large enough to be told apart in a panel.
        const int side = size * 5 / 8;
        const QPoint corner(picture.width() - side, picture.height() - side);
        QPainter painter(&picture);
        painter.drawPixmap(QRect(corner, QSize(side, side)), emblem.pixmap(QSize(side, side), 1.0));
        painter.end();
        icon.addPixmap(picture);
    }
    return icon;
}

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
    menu_->addAction(Words::tr("Show Dorvanel"), parts_.show);
    menu_->addSeparator();
    commands_ = std::make_unique<QMenu>();
    view_ = std::make_unique<MenuView>(*commands_, parts_.commands, MenuView::Items::commands,
                                       commandText);
    menu_->addActions(commands_->actions());
    menu_->addSeparator();
    watching_ = menu_->addAction(Words::tr("Browser Watch"));
    watching_->setCheckable(true);
    QObject::connect(watching_, &QAction::triggered, menu_.get(), [this](bool on) {
        parts_.setWatching(on);
        sync();
    });
    menu_->addAction(Words::tr("Last Runs…"), parts_.showLastRuns);
    menu_->addAction(Words::tr("Preferences…"), parts_.showPreferences);
    menu_->addSeparator();
    menu_->addAction(Words::tr("Quit Dorvanel"), parts_.quit);
    QObject::connect(menu_.get(), &QMenu::aboutToShow, menu_.get(), [this] { sync(); });
    sync();
}

void Tray::sync() {
    if (watching_ != nullptr) watching_->setChecked(parts_.isWatching && parts_.isWatching());
}

void Tray::makeIcon() {
    icon_ = std::make_unique<QSystemTrayIcon>(iconFor(state_));
    icon_->setToolTip(toolTip());
    icon_->setContextMenu(menu_.get());
    QObject::connect(icon_.get(), &QSystemTrayIcon::activated, menu_.get(),
                     [this](QSystemTrayIcon::ActivationReason reason) {
                         if (reason == QSystemTrayIcon::Trigger) parts_.show();
                     });
    icon_->show();
}

QString Tray::toolTip() const {
    //: The tip of the icon in the status area; %1: the name of the program, %2: its state
    return status_.isEmpty() ? Words::tr("Dorvanel X")
                             : Words::tr("%1: %2").arg(Words::tr("Dorvanel X"), status_);
}

void Tray::setStatus(State state, const QString& text) {
    if (state == state_ && text == status_) return;
    const bool isNewState = state != state_;
    state_ = state;
    status_ = text;
    if (icon_ == nullptr) return;
    if (isNewState) icon_->setIcon(iconFor(state_));
    icon_->setToolTip(toolTip());
}

void Tray::setCommandsEnabled(bool enabled) {
    for (int index = 0; index < parts_.commands.numberOfItems(); ++index) {
        parts_.commands.itemAtIndex(index).setEnabled(enabled);
    }
    if (view_ != nullptr) view_->sync();
}

}  // namespace dorvanel::desktop

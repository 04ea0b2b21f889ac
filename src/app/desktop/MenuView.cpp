// SPDX-License-Identifier: MIT
#include "app/desktop/MenuView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <utility>

#include "app/desktop/Bytes.h"
#include "app/desktop/Words.h"

namespace dorvanel::desktop {
namespace {

/// How much room an item has, in pixels.
constexpr int itemWidth = 420;

}  // namespace

MenuView::MenuView(QMenu& view, const ui::Menu& menu, Items items, Text text)
    : view_(view), menu_(menu), items_(items), text_(std::move(text)) {
    connect(&view_, &QMenu::aboutToShow, this, &MenuView::sync);
    if (items_ == Items::choices) view_.installEventFilter(this);
    sync();
}

void MenuView::sync() {
    // Items are only ever added at the end.
    for (int index = static_cast<int>(drawn_.size()); index < menu_.numberOfItems(); ++index) {
        addItem(menu_.itemAtIndex(index));
    }
    syncStates();
}

void MenuView::addItem(ui::MenuItem& item) {
    if (item.isSeparatorItem()) {
        drawn_ << view_.addSeparator();
        return;
    }
    QString text = text_ ? text_(item) : QString();
    if (text.isEmpty()) text = displayText(item.title());
    QString title = view_.fontMetrics().elidedText(text, Qt::ElideMiddle, itemWidth);
    // An ampersand in a profile's name is a letter, not a mnemonic.
    title.replace(u'&', QStringLiteral("&&"));
    QAction* action = view_.addAction(title);
    action->setCheckable(items_ == Items::choices && item.isEnabled());
    action->setToolTip(text);
    connect(action, &QAction::triggered, this, [this, &item] {
        item.performAction();
        syncStates();
    });
    drawn_ << action;
}

void MenuView::syncStates() {
    for (int index = 0; index < static_cast<int>(drawn_.size()); ++index) {
        const ui::MenuItem& item = menu_.itemAtIndex(index);
        if (item.isSeparatorItem()) continue;
        drawn_[index]->setEnabled(item.isEnabled());
        if (drawn_[index]->isCheckable()) drawn_[index]->setChecked(item.state());
    }
}

bool MenuView::tick(QAction* action) {
    if (action == nullptr || !action->isCheckable() || !action->isEnabled()) return false;
    action->trigger();
    return true;
}

bool MenuView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease) {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (tick(view_.actionAt(mouse->position().toPoint()))) return true;
    }
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Space && tick(view_.activeAction())) return true;
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace dorvanel::desktop

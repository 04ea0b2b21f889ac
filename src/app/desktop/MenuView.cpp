// SPDX-License-Identifier: MIT
#include "app/desktop/MenuView.h"

#include <utility>

#include "app/desktop/Bytes.h"

namespace dorvanel::desktop {

MenuView::MenuView(QMenu& view, const ui::Menu& menu, Items items, ToolTip toolTip)
    : view_(view), menu_(menu), items_(items), toolTip_(std::move(toolTip)) {
    connect(&view_, &QMenu::aboutToShow, this, &MenuView::sync);
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
    // An ampersand in a profile's name is a letter, not a mnemonic.
    QString title = displayText(item.title());
    title.replace(u'&', QStringLiteral("&&"));
    QAction* action = view_.addAction(title);
    action->setCheckable(items_ == Items::choices && item.isEnabled());
    if (toolTip_) action->setToolTip(toolTip_(item));
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

}  // namespace dorvanel::desktop

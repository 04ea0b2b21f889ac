// SPDX-License-Identifier: MIT
#include "ui/Menu.h"

#include <utility>

namespace dorvanel::ui {

bool MenuItem::isEnabled() const {
    if (menu_.autoenablesItems() && !action_ && !submenu_) return false;
    return enabled_;
}

Menu& MenuItem::makeSubmenu() {
    submenu_ = std::make_unique<Menu>();
    return *submenu_;
}

void MenuItem::performAction() {
    if (action_ && isEnabled()) action_(*this);
}

int Menu::indexOfItemWithTitle(std::string_view title) const {
    for (int index = 0; index < numberOfItems(); ++index) {
        const MenuItem& item = itemAtIndex(index);
        if (!item.isSeparatorItem() && item.title() == title) return index;
    }
    return -1;
}

MenuItem& Menu::itemAtIndex(int index) const {
    return *items_.at(static_cast<std::size_t>(index));
}

MenuItem& Menu::addItemWithTitle(const std::string& title, MenuItem::Action action,
                                 const std::string& keyEquivalent) {
    MenuItem& item = addItem();
    item.title_ = title;
    item.action_ = std::move(action);
    item.keyEquivalent_ = keyEquivalent;
    return item;
}

MenuItem& Menu::addSeparatorItem() {
    MenuItem& item = addItem();
    item.separator_ = true;
    return item;
}

MenuItem& Menu::addItem() {
    items_.push_back(std::unique_ptr<MenuItem>(new MenuItem(*this)));
    return *items_.back();
}

}  // namespace dorvanel::ui

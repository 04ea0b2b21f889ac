// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace dorvanel::ui {

class Menu;

/// One item of a menu, apart from any toolkit: what it says and how it stands. Made and owned by
/// its Menu; its address stays the same as long as the menu lives. Main thread only.
class MenuItem {
  public:
    /// What a click does; it is given the clicked item.
    using Action = std::function<void(MenuItem&)>;

    [[nodiscard]] const std::string& title() const { return title_; }  ///< bytes
    [[nodiscard]] const std::string& keyEquivalent() const { return keyEquivalent_; }
    [[nodiscard]] bool isSeparatorItem() const { return separator_; }

    /// How the item is shown. In a menu that enables its items automatically, one that can do
    /// nothing (no action, no submenu) is dimmed whatever setEnabled said.
    [[nodiscard]] bool isEnabled() const;
    void setEnabled(bool enabled) { enabled_ = enabled; }

    [[nodiscard]] int tag() const { return tag_; }
    void setTag(int tag) { tag_ = tag; }

    /// Whether the item is ticked.
    [[nodiscard]] bool state() const { return state_; }
    void setState(bool on) { state_ = on; }

    /// The menu that opens from this item; null when there is none.
    [[nodiscard]] Menu* submenu() const { return submenu_.get(); }
    /// Gives the item a new empty submenu in place of any it had.
    Menu& makeSubmenu();

    /// Clicks the item: sends its action, unless it is dimmed or has none.
    void performAction();

  private:
    friend class Menu;
    explicit MenuItem(const Menu& menu) : menu_(menu) {}

    const Menu& menu_;
    std::string title_;
    Action action_;
    std::string keyEquivalent_;
    std::unique_ptr<Menu> submenu_;
    int tag_ = 0;
    bool state_ = false;
    bool enabled_ = true;
    bool separator_ = false;
};

/// A menu, apart from any toolkit: a front end draws it, a test reads it. Main thread only.
class Menu {
  public:
    Menu() = default;
    Menu(const Menu&) = delete;
    Menu& operator=(const Menu&) = delete;

    [[nodiscard]] int numberOfItems() const { return static_cast<int>(items_.size()); }
    /// The index of the first item of this exact title; -1 when there is none.
    [[nodiscard]] int indexOfItemWithTitle(std::string_view title) const;
    /// `index` counts from 0 and must be that of an item.
    [[nodiscard]] MenuItem& itemAtIndex(int index) const;

    [[nodiscard]] bool autoenablesItems() const { return autoenablesItems_; }
    void setAutoenablesItems(bool automatic) { autoenablesItems_ = automatic; }

    /// Adds an item at the end. An empty action makes an item that cannot be clicked.
    MenuItem& addItemWithTitle(const std::string& title, MenuItem::Action action,
                               const std::string& keyEquivalent);
    MenuItem& addSeparatorItem();

  private:
    MenuItem& addItem();

    std::vector<std::unique_ptr<MenuItem>> items_;
    bool autoenablesItems_ = true;
};

}  // namespace dorvanel::ui

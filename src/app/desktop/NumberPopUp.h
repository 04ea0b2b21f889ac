// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>

#include "prefs/Keys.h"

namespace dorvanel::desktop {

/// A pop-up menu of the preferences panel and the number that is stored for it: the index of the
/// chosen item. A stored number that is no item's shows as an item of its own, which says what
/// shredding makes of it and which nobody can choose. Main thread.
class NumberPopUp {
  public:
    /// `box` has the items but for the separator and outlives the pop-up; `key` is the preference.
    NumberPopUp(QComboBox& box, IndexKey key);

    void show(int stored);
    /// What is to be stored: the index of the chosen item, or the number shown, whatever it is,
    /// while no other has been chosen.
    [[nodiscard]] int value() const;
    [[nodiscard]] IndexKey key() const { return key_; }

  private:
    QComboBox* box_;
    IndexKey key_;
    int items_;  ///< that can be shown, the separator too; the item of its own comes after them
    int stored_ = 0;
};

}  // namespace dorvanel::desktop

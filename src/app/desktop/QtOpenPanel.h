// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include "ui/OpenPanel.h"

namespace dorvanel::desktop {

/// The desktop's file dialog. It shows names as text, so a file whose name is not valid UTF-8
/// cannot be picked in it; such a file can be dropped on the window.
class QtOpenPanel final : public ui::OpenPanel {
  public:
    explicit QtOpenPanel(QWidget& parent) : parent_(parent) {}

    void setAllowsMultipleSelection(bool allows) override { multiple_ = allows; }
    std::optional<std::vector<std::string>> runModalForDirectory(
        const std::string& directory) override;

  private:
    QWidget& parent_;
    bool multiple_ = false;
};

}  // namespace dorvanel::desktop

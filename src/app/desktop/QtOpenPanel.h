#pragma once

#include <QWidget>
#include <functional>

#include "platform/OpenPanel.h"

namespace dorvanel::desktop {

/// The desktop's file dialog. It shows names as text, so a file whose name is not valid UTF-8
/// cannot be picked in it; such a file can be dropped on the window.
class QtOpenPanel final : public platform::OpenPanel {
  public:
    /// Called with what was picked, before the panel's caller gets it; absolute paths in bytes.
    using Picked = std::function<void(const std::vector<std::string>&)>;

    QtOpenPanel(QWidget& parent, Picked picked) : parent_(parent), picked_(std::move(picked)) {}

    void setAllowsMultipleSelection(bool allows) override { multiple_ = allows; }
    std::optional<std::vector<std::string>> runModalForDirectory(
        const std::string& directory) override;

  private:
    QWidget& parent_;
    Picked picked_;
    bool multiple_ = false;
};

}  // namespace dorvanel::desktop

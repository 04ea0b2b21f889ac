// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ui/AlertPanel.h"

namespace dorvanel::test {

/// Remembers every alert it was asked to show, and answers `answer`.
class FakeAlertPanel final : public ui::AlertPanel {
  public:
    struct Alert {
        std::string title, message, defaultButton, alternateButton, otherButton;
    };

    ui::AlertButton runAlertPanel(const std::string& title, const std::string& message,
                                  const std::string& defaultButton,
                                  const std::string& alternateButton,
                                  const std::string& otherButton) override {
        alerts.push_back({title, message, defaultButton, alternateButton, otherButton});
        if (onAlert) onAlert();
        return answer;
    }

    ui::AlertButton answer = ui::AlertButton::defaultButton;
    std::vector<Alert> alerts;
    std::function<void()> onAlert;  ///< while the alert is open
};

}  // namespace dorvanel::test

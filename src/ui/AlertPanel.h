// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace dorvanel::ui {

/// Which button of an alert was chosen.
enum class AlertButton { defaultButton, alternateButton, otherButton };

/// Modal alerts: one title, one message, one to three buttons. Main thread only; the call returns
/// when a button has been chosen.
class AlertPanel {
  public:
    virtual ~AlertPanel() = default;
    /// An empty alternate or other button is not shown and is never the answer. The message may
    /// hold line breaks.
    virtual AlertButton runAlertPanel(const std::string& title, const std::string& message,
                                      const std::string& defaultButton,
                                      const std::string& alternateButton,
                                      const std::string& otherButton) = 0;
};

}  // namespace dorvanel::ui

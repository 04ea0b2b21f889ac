// SPDX-License-Identifier: MIT
#pragma once

#include <iosfwd>

#include "platform/AnswerInput.h"
#include "ui/AlertPanel.h"

namespace dorvanel::terminal {

/// Alerts on a terminal: title, message and buttons on one stream, the answer from the input. An
/// answer is a button's title or its first letter, in any case; an empty line, the end of the input
/// and an interrupted one mean the default button; anything else is asked again. An alert with one
/// button takes any line. What was typed before the question was there is no answer to it.
class TerminalAlertPanel final : public ui::AlertPanel {
  public:
    enum class Answers {
        asked,    ///< by the person at the terminal
        assumed,  ///< "Yes" and "OK" where there is such a button, else the default one
        silent    ///< nothing is shown, and the answer is the default one
    };

    /// Both must outlive the panel.
    TerminalAlertPanel(platform::AnswerInput& in, std::ostream& err, Answers answers)
        : in_(in), err_(err), answers_(answers) {}

    ui::AlertButton runAlertPanel(const std::string& title, const std::string& message,
                                  const std::string& defaultButton,
                                  const std::string& alternateButton,
                                  const std::string& otherButton) override;

  private:
    platform::AnswerInput& in_;
    std::ostream& err_;
    Answers answers_;
};

}  // namespace dorvanel::terminal

#pragma once

#include <iosfwd>

#include "platform/AlertPanel.h"

namespace dorvanel::terminal {

/// Alerts on a terminal: title, message and buttons on one stream, the answer from another. An
/// answer is a button's title or its first letter, in any case; an empty line and the end of the
/// input mean the default button; anything else is asked again. An alert with one button takes any
/// line.
class TerminalAlertPanel final : public platform::AlertPanel {
  public:
    enum class Answers {
        asked,   ///< by the person at the terminal
        assumed  ///< "Yes" and "OK" where there is such a button, else the default one
    };

    /// The streams must outlive the panel.
    TerminalAlertPanel(std::istream& in, std::ostream& err, Answers answers)
        : in_(in), err_(err), answers_(answers) {}

    platform::AlertButton runAlertPanel(const std::string& title, const std::string& message,
                                        const std::string& defaultButton,
                                        const std::string& alternateButton,
                                        const std::string& otherButton) override;

  private:
    std::istream& in_;
    std::ostream& err_;
    Answers answers_;
};

}  // namespace dorvanel::terminal

// SPDX-License-Identifier: MIT
#include "app/terminal/TerminalAlertPanel.h"

#include <algorithm>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace dorvanel::terminal {
namespace {

using ui::AlertButton;

struct Button {
    AlertButton which;
    std::string title;
};

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool sameLetters(std::string_view one, std::string_view other) {
    return std::ranges::equal(one, other, {}, lower, lower);
}

std::string_view trimmed(std::string_view line) {
    constexpr std::string_view blanks = " \t\r";
    const std::size_t start = std::min(line.find_first_not_of(blanks), line.size());
    line.remove_prefix(start);
    return line.substr(0, line.find_last_not_of(blanks) + 1);
}

std::optional<AlertButton> meant(std::string_view answer, const std::vector<Button>& buttons) {
    for (const Button& button : buttons) {
        const std::string_view title = button.title;
        if (sameLetters(answer, title) || sameLetters(answer, title.substr(0, 1))) {
            return button.which;
        }
    }
    return std::nullopt;
}

}  // namespace

AlertButton TerminalAlertPanel::runAlertPanel(const std::string& title, const std::string& message,
                                              const std::string& defaultButton,
                                              const std::string& alternateButton,
                                              const std::string& otherButton) {
    if (answers_ == Answers::silent) return AlertButton::defaultButton;
    std::vector<Button> buttons = {{AlertButton::defaultButton, defaultButton}};
    if (!alternateButton.empty()) {
        buttons.push_back({AlertButton::alternateButton, alternateButton});
    }
    if (!otherButton.empty()) buttons.push_back({AlertButton::otherButton, otherButton});

    if (answers_ == Answers::asked) in_.discardPending();
    err_ << title << '\n' << message << '\n';
    if (answers_ == Answers::assumed) {
        err_ << std::flush;
        for (const char* yes : {"Yes", "OK"}) {
            for (const Button& button : buttons) {
                if (button.title == yes) return button.which;
            }
        }
        return AlertButton::defaultButton;
    }

    for (std::string line; true;) {
        for (const Button& button : buttons) {
            const bool isDefault = button.which == AlertButton::defaultButton;
            err_ << (isDefault ? "[" : " ") << button.title << (isDefault ? "]" : "");
        }
        err_ << ": " << std::flush;
        if (in_.readLine(line) != platform::AnswerInput::Read::line) {
            err_ << '\n' << std::flush;  // the person's own line end did not come
            return AlertButton::defaultButton;
        }
        const std::string_view answer = trimmed(line);
        if (answer.empty() || buttons.size() == 1) return AlertButton::defaultButton;
        if (const std::optional<AlertButton> which = meant(answer, buttons)) return *which;
    }
}

}  // namespace dorvanel::terminal

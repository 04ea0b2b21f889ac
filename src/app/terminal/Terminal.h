// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

#include "platform/AnswerInput.h"
#include "platform/Medium.h"

namespace dorvanel::terminal {

/// The streams that a command talks to, and what is at the other end of each.
struct Terminal {
    std::ostream& out;
    std::ostream& err;
    platform::AnswerInput& in;
    bool outIsTerminal = false;
    bool errIsTerminal = false;
    /// The width of the terminal behind `err` at this moment; 0 where it is not known.
    std::function<int()> columns;
    /// What is asked, before something is shredded, what it lies on; null: nothing is said of it.
    platform::MediumInspector* medium = nullptr;

    /// One line on `err` that begins with the program's name. The text may hold paths.
    void complain(std::string_view text) const;
    /// Bytes as they are shown on `err`: escaped, also where it is a pipe or a file, since what is
    /// said there is read by people, and sooner or later on a terminal.
    [[nodiscard]] static std::string forErr(std::string_view bytes);
    /// Bytes as they are shown on `out`: escaped for a person, as they are for a script in a pipe.
    [[nodiscard]] std::string forOut(std::string_view bytes) const;
};

}  // namespace dorvanel::terminal

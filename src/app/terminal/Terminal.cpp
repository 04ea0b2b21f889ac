// SPDX-License-Identifier: MIT
#include "app/terminal/Terminal.h"

#include <ostream>

#include "app/terminal/EscapedText.h"

namespace dorvanel::terminal {

void Terminal::complain(std::string_view text) const {
    err << "dorvanel: " << forErr(text) << '\n' << std::flush;
}

std::string Terminal::forErr(std::string_view bytes) {
    return escapedForTerminal(bytes);
}

std::string Terminal::forOut(std::string_view bytes) const {
    return outIsTerminal ? escapedForTerminal(bytes) : std::string(bytes);
}

}  // namespace dorvanel::terminal

#include "app/terminal/StatusLine.h"

#include <ostream>

namespace dorvanel::terminal {

void StatusLine::setStringValue(std::string_view text) {
    if (text == text_) return;
    text_ = text;
    terminal_.out << text_ << '\n' << std::flush;
}

}  // namespace dorvanel::terminal

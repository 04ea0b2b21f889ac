// SPDX-License-Identifier: MIT
#include "app/terminal/StatusLine.h"

#include <ostream>
#include <streambuf>

namespace dorvanel::terminal {
namespace {

/// Takes everything and keeps nothing.
struct Nowhere final : std::streambuf {
    int_type overflow(int_type c) override { return traits_type::not_eof(c); }
};

}  // namespace

void StatusLine::setStringValue(std::string_view text) {
    if (text == text_) return;
    text_ = text;
    if (terminal_.out << text_ << '\n' << std::flush) return;
    // Never destroyed: the standard streams are flushed once more after everything static has gone.
    static auto* const nowhere = new Nowhere;
    terminal_.out.rdbuf(nowhere);
    if (onGone) onGone();
}

}  // namespace dorvanel::terminal

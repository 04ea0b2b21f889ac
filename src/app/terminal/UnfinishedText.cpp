// SPDX-License-Identifier: MIT
#include "app/terminal/UnfinishedText.h"

#include <fmt/format.h>

#include "app/SizeText.h"

namespace dorvanel::terminal {

void tellUnfinished(std::size_t count, const Terminal& terminal) {
    if (count == 0) return;
    terminal.complain(fmt::format(
        "{} of an unfinished shredding {} left: \"dorvanel recover\" finishes {}",
        counted(count, "holding folder"), count == 1 ? "is" : "are", count == 1 ? "it" : "them"));
}

void tellNotWrittenDown(const Error& error, const Terminal& terminal) {
    terminal.complain(
        "\"dorvanel recover\" will not know of this shredding should it be cut off: " +
        error.message());
}

}  // namespace dorvanel::terminal

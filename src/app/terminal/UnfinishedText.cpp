// SPDX-License-Identifier: MIT
#include "app/terminal/UnfinishedText.h"

#include "app/Texts.h"

namespace dorvanel::terminal {

void tellUnfinished(std::size_t count, const Terminal& terminal) {
    if (count == 0) return;
    terminal.complain(trn(
        "{} holding folder of an unfinished shredding is left: \"dorvanel recover\" finishes it",
        "{} holding folders of an unfinished shredding are left: \"dorvanel recover\" finishes "
        "them",
        count));
}

void tellNotWrittenDown(const Error& error, const Terminal& terminal) {
    terminal.complain(
        tr("\"dorvanel recover\" will not know of this shredding should it be cut off: {}",
           error.message()));
}

}  // namespace dorvanel::terminal

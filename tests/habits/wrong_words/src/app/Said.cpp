// SPDX-License-Identifier: MIT
// Texts whose translations have one fault each.
#include "app/Texts.h"

void say() {
    tr("missing here");
    tr("one place {}", 1);
    tr("two places {} {}", 1, 2);
    tr("in another order {} {}", 1, 2);
    trn("{} plural", "{} plurals", 2);
}

// SPDX-License-Identifier: MIT
// Texts that are not translated, or badly.
#include "app/desktop/Words.h"

void show() {
    show(QStringLiteral("This is said in English"));  // "a comment is translated elsewhere"
    show(Words::tr("Lost here"));
    show(
        Words::tr("%1 of "
                  "%2"));
    show(Words::tr("%n file(s)", nullptr, 2));
    show(QT_TRANSLATE_NOOP("Words", "This is translated elsewhere"));
}

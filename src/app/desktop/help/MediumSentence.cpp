// SPDX-License-Identifier: MIT
#include "app/desktop/help/MediumSentence.h"

#include "app/desktop/Bytes.h"
#include "app/desktop/Words.h"

namespace dorvanel::desktop {

QString sentenceAboutHome(const platform::Medium& medium) {
    using Kind = platform::Medium::Kind;
    const QString fileSystem = displayText(medium.fileSystem);
    switch (medium.kind) {
        case Kind::solidState:
            return Words::tr(
                "Your home folder is on a solid-state drive, which writes to fresh cells by "
                "itself: "
                "overwriting cannot promise to reach the old contents.");
        case Kind::copyOnWrite:
            return Words::tr(
                       "Your home folder is on %1, which writes new contents to other places: "
                       "overwriting does not reach the old ones.")
                .arg(fileSystem);
        case Kind::overlay:
            return Words::tr(
                       "Your home folder lies on an %1 mount, whose lower files are never "
                       "written: overwriting may not reach the old contents.")
                .arg(fileSystem);
        case Kind::network:
            return Words::tr(
                       "Your home folder is on another machine (%1), which writes where it "
                       "likes: overwriting cannot promise to reach the old contents.")
                .arg(fileSystem);
        case Kind::userSpace:
            return Words::tr(
                       "Your home folder is kept by another program (%1), which writes where "
                       "it likes: overwriting cannot promise to reach the old contents.")
                .arg(fileSystem);
        case Kind::overwritable:
            break;
    }
    return Words::tr(
        "In your home folder, as far as can be seen, overwriting takes the place of the old "
        "contents; copies in snapshots, backups and journals are out of its reach.");
}

}  // namespace dorvanel::desktop

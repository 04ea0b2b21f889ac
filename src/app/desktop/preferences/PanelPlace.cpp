// SPDX-License-Identifier: MIT
#include "app/desktop/preferences/PanelPlace.h"

namespace dorvanel::desktop {

QPoint shiftToKeepVisible(const QRect& frame, const QRect& keep, const QRect& screen) {
    if (!frame.intersects(keep)) return {};
    const QPoint ways[] = {{0, keep.bottom() + 1 - frame.top()},
                           {0, keep.top() - 1 - frame.bottom()},
                           {keep.right() + 1 - frame.left(), 0},
                           {keep.left() - 1 - frame.right(), 0}};
    QPoint shortest;
    for (const QPoint& way : ways) {
        if (!screen.contains(frame.translated(way))) continue;
        if (shortest.isNull() || way.manhattanLength() < shortest.manhattanLength()) shortest = way;
    }
    return shortest;
}

}  // namespace dorvanel::desktop

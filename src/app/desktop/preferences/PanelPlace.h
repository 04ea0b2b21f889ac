// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QRect>

namespace dorvanel::desktop {

/// How far a window with this frame is to be moved, at least, so that it stays within `screen` and
/// covers nothing of `keep`; nowhere where it covers nothing, or the screen has no room for it.
QPoint shiftToKeepVisible(const QRect& frame, const QRect& keep, const QRect& screen);

}  // namespace dorvanel::desktop

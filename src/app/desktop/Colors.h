// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPalette>
#include <QPixmap>

#include "ui/Outlets.h"

namespace dorvanel::desktop {

/// A named colour as it can be read on this palette's background, light or dark.
QColor readableColor(ui::Color color, const QPalette& palette);

/// The mark beside an application's label, told apart by its shape alone: a full disc for red
/// (running), a ring with a tick for green (enabled), a dash for anything else (off).
QPixmap markFor(ui::Color color, const QPalette& palette, qreal pixelRatio);

/// The toolkit's own style outlines boxes and fields in something darker than the window. Where
/// that is black, as in themes of the highest contrast, one that outlines them in lighter colours
/// takes its place. Once the application is there.
void keepOutlinesVisible();

/// Side of the mark, in device-independent pixels.
constexpr int markSide = 16;

}  // namespace dorvanel::desktop

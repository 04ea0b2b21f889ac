// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

namespace dorvanel::desktop {

// The theme's icons for how a request ended, the style's own where the theme lacks one.

QIcon successIcon();
QIcon failureIcon();
/// Nothing was shredded, and nothing went wrong.
QIcon quietIcon();

}  // namespace dorvanel::desktop

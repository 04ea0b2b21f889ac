// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "platform/Medium.h"

namespace dorvanel::desktop {

/// What overwriting can and cannot promise for files in the home folder, which lies on this medium.
QString sentenceAboutHome(const platform::Medium& medium);

}  // namespace dorvanel::desktop

// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "engine/PassPlan.h"

namespace dorvanel::desktop {

/// What these settings will do to each file, in one or two sentences.
QString passText(const OverwriteSettings& settings);

}  // namespace dorvanel::desktop

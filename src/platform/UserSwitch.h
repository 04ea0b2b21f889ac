// SPDX-License-Identifier: MIT
#pragma once

#include "base/Result.h"

namespace dorvanel::platform {

/// Whether root works in a home folder that belongs to somebody else, or nobody can tell to whom.
[[nodiscard]] bool isRootInAnothersHome();

/// Where root works in the home folder of somebody else, makes this process that person's, for
/// good: user, groups, and the variables USER and LOGNAME; HOME stays. Whatever that person put in
/// the home folder, links among it, then leads no further than that person's own rights. Anywhere
/// else nothing is changed. Fails where `checkHomeDirectory` does. Before any thread is started.
/// After a failure the process may be left with part of its rights and must end.
Result<Done> becomeOwnerOfHome();

/// Whether `becomeOwnerOfHome` made this process another user's.
[[nodiscard]] bool hasBecomeOwnerOfHome();

}  // namespace dorvanel::platform

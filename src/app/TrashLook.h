// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/LookServices.h"
#include "base/Result.h"
#include "engine/HeldItem.h"
#include "run/TrashShredding.h"

namespace dorvanel {

/// What is in the user's trash, ready to be shredded.
struct LookedAtTrash {
    std::shared_ptr<TrashShredding> trash;
    /// The home folder and those above it: never to be touched.
    std::vector<Identity> protectedFolders;
};

/// Finds and holds it; touches nothing. `services` must outlive what is returned. Any thread;
/// `stop` is asked now and then. An error where nobody can tell what is mounted.
Result<LookedAtTrash> lookAtTrash(LookServices& services, const std::function<bool()>& stop);

}  // namespace dorvanel

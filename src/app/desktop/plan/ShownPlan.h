// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <memory>
#include <string>

#include "engine/Plan.h"

namespace dorvanel::desktop {

/// A plan that is shown; whoever shows it has a share in it.
struct ShownPlan {
    std::shared_ptr<const Plan> plan = std::make_shared<const Plan>();
    /// Of applications, by the names that the plan has for them, what people call them.
    std::map<std::string, std::string> names{};
    std::string home{};  ///< the home folder, for which "~" is shown
};

}  // namespace dorvanel::desktop

// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string_view>

namespace dorvanel {

/// What the preferences need to know of the applications that can be enabled.
struct ApplicationNames {
    std::span<const std::string_view> names;  ///< in the order of the default list
    /// The application that is enabled and disabled together with this one; "" for most.
    std::string_view (*companionOf)(std::string_view name);
};

}  // namespace dorvanel

// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "apps/catalogue/Entry.h"

namespace dorvanel::catalogue {

/// Why an ID is none; "" where it is one: small letters, digits and dashes.
std::string faultOfId(std::string_view id);

/// Why a root may not be one; "" where it may. It lies below the home folder: "~/..." or
/// "$XDG_CONFIG_HOME/..." and the like, without "..".
std::string faultOfRoot(std::string_view root);

/// Why a pattern leaves its root, or has none; "" where it is well formed.
std::string faultOfPattern(std::string_view pattern);

/// The name in braces that a well-formed pattern begins with: "config", "profile".
std::string_view rootOf(std::string_view pattern);

/// Why a statement may not be run; "" where it may. It removes or changes rows, and does nothing
/// else to the database.
std::string faultOfStatement(std::string_view sql);

/// Why a query cannot tell what must be kept; "" where it can.
std::string faultOfQuery(std::string_view sql);

/// Takes over from `family` each part that the entry lacks.
void inherit(Entry& entry, const Entry& family);

/// What is wrong with an entry that has all its parts: roots and profiles that nothing defines,
/// nothing to find it by, nothing to take.
std::vector<std::string> faultsOf(const Entry& entry);

}  // namespace dorvanel::catalogue

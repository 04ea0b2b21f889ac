// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "targets/cleaning/Cleaning.h"

namespace dorvanel {

/// A path below the home folder with "~" in its place, as lines of the Activity Log have it; any
/// other path as it is.
std::string pathFromHome(const std::string& path);

/// "locked", "corrupt" and so on, as logs and reports have it.
const char* wordFor(cleaning::Fault fault);

/// The reason for people.
std::string textOf(const cleaning::Trouble& trouble);

}  // namespace dorvanel

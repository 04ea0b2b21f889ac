// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "prefs/PreferenceReader.h"

namespace dorvanel {

/// The item groups that the preferences select, for the confirmation's text. Two of the groups do
/// not ask for a separator after them; that is how people know the text.
std::string itemSummary(const PreferenceReader& preferences);

}  // namespace dorvanel

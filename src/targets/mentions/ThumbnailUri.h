// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "platform/CleaningCalls.h"

namespace dorvanel::mentions {

/// The URI of the file that a thumbnail shows, as the image itself says it (its text "Thumb::URI").
/// Nothing where the entry of the open folder is no plain file, no PNG, or says none; a damaged one
/// is read as far as it can be.
std::optional<std::string> thumbnailUri(platform::CleaningCalls& calls, int folder,
                                        const char* name);

}  // namespace dorvanel::mentions

// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace dorvanel::desktop {

/// The message of a run's alert in the language of the person; any other message as it is. Main
/// thread.
std::string alertWords(const std::string& message);

/// The status line of Browser Watch in the language of the person; any other text as it is. Main
/// thread.
std::string statusWords(const std::string& text);

}  // namespace dorvanel::desktop

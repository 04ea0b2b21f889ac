// SPDX-License-Identifier: MIT
#pragma once

namespace dorvanel::platform {

enum class StandardStream { in = 0, out = 1, error = 2 };

/// Whether a person's terminal is at the other end.
[[nodiscard]] bool isTerminal(StandardStream stream);

/// The width of the terminal at this moment; 0 where it is not known.
[[nodiscard]] int columnsOfTerminal(StandardStream stream);

}  // namespace dorvanel::platform

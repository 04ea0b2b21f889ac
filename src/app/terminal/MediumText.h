// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "app/terminal/Terminal.h"
#include "engine/HeldItem.h"

namespace dorvanel::terminal {

/// Before a request is shredded: tells in one line on `err`, if it has to, which of its items lie
/// where overwriting in place does not surely reach their old contents.
void tellMedium(const std::vector<std::string>& items, const Terminal& terminal);
void tellMedium(const std::vector<HeldItem>& items, const Terminal& terminal);

}  // namespace dorvanel::terminal

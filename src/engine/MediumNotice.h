// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "engine/HeldItem.h"
#include "platform/Medium.h"

namespace dorvanel {

/// How a path, in bytes, is to be shown to a person.
using PathText = std::function<std::string(const std::string& path)>;

/// Why overwriting in place does not surely reach the old blocks there; "" where it does.
std::string mediumReason(const platform::Medium& medium);

/// One line, without a newline, that names the items which lie where overwriting in place does not
/// surely reach the old blocks, and why: of each reason the first item, and how many more there
/// are. "" when there is none. A front end says it once, before it shreds the items.
std::string mediumNotice(const std::vector<std::string>& items, platform::MediumInspector& medium,
                         const PathText& pathText);
/// The same for items that are held, where each device is asked about once.
std::string mediumNotice(const std::vector<HeldItem>& items, platform::MediumInspector& medium,
                         const PathText& pathText);

}  // namespace dorvanel

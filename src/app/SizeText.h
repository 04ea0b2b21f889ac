// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace dorvanel {

/// "1.2 GiB", "812 bytes": in units of 1024, with one decimal where there is a unit.
std::string sizeText(std::uint64_t bytes);

/// "1 file", "2 files": English in every language, for the questions that scripts answer.
std::string counted(std::uint64_t count, const char* noun);

}  // namespace dorvanel

// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace dorvanel::test {

/// Runs a Python 3 program with its working folder at `folder`; returns what it printed, without
/// the last newline. A failing program fails the test.
std::string python(const std::string& folder, const std::string& program);

}  // namespace dorvanel::test

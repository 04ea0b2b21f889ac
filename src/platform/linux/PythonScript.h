// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace dorvanel::platform {

/// What an interpreter was told to run. At most one of the two is not empty.
struct PythonScript {
    std::string path;    ///< as it was given, possibly relative
    std::string module;  ///< "package.module"

    friend bool operator==(const PythonScript&, const PythonScript&) = default;
};

/// Reads the arguments of a Python 3 interpreter, its own name first, each with a NUL behind it.
/// Both are empty where the program comes from the command line itself or standard input.
PythonScript pythonScript(std::string_view arguments);

}  // namespace dorvanel::platform

// SPDX-License-Identifier: MIT
#include "platform/linux/PythonScript.h"

#include <algorithm>

namespace dorvanel::platform {
namespace {

/// Takes the next argument off.
std::string_view take(std::string_view& arguments) {
    const std::string_view first = arguments.substr(0, arguments.find('\0'));
    arguments.remove_prefix(std::min(first.size() + 1, arguments.size()));
    return first;
}

}  // namespace

PythonScript pythonScript(std::string_view arguments) {
    take(arguments);
    while (!arguments.empty()) {
        const std::string_view argument = take(arguments);
        if (argument.empty() || argument == "-") return {};
        if (!argument.starts_with('-')) return {std::string(argument), {}};
        if (argument == "--") return {std::string(take(arguments)), {}};
        if (argument == "--check-hash-based-pycs") take(arguments);
        if (argument.starts_with("--")) continue;
        // Options of one letter may stand together; one that takes a value takes the rest.
        const std::size_t at = argument.find_first_of("cmWX", 1);
        if (at == std::string_view::npos) continue;
        std::string_view value = argument.substr(at + 1);
        if (value.empty()) value = take(arguments);
        if (argument[at] == 'c') return {};
        if (argument[at] == 'm') return {{}, std::string(value)};
    }
    return {};
}

}  // namespace dorvanel::platform

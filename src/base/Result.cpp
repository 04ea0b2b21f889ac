// SPDX-License-Identifier: MIT
#include "base/Result.h"

#include <cerrno>
#include <system_error>

namespace dorvanel {

std::string Error::message() const {
    std::string text = path;
    if (!operation.empty()) text += (text.empty() ? "" : ": ") + operation;
    if (code != 0) text += ": " + std::generic_category().message(code);
    if (!detail.empty()) text += ": " + detail;
    return text;
}

Error Error::fromErrno(std::string operation, std::string path) {
    return Error{errno, std::move(operation), std::move(path), {}};
}

}  // namespace dorvanel

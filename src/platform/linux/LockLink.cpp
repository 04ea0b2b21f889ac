// SPDX-License-Identifier: MIT
#include "platform/linux/LockLink.h"

#include <charconv>

namespace dorvanel::platform {
namespace {

std::optional<pid_t> processNumber(std::string_view text) {
    pid_t process = 0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, process);
    if (error != std::errc() || rest != end || process <= 0) return std::nullopt;
    return process;
}

}  // namespace

std::optional<LockLink> readLockLink(std::string_view text) {
    const std::size_t at = text.find_last_of("-:");
    if (at == std::string_view::npos || at == 0) return std::nullopt;
    const bool namesAddress = text[at] == ':';
    std::string_view number = text.substr(at + 1);
    if (namesAddress && number.starts_with('+')) number.remove_prefix(1);
    const auto process = processNumber(number);
    if (!process) return std::nullopt;
    return LockLink{namesAddress ? std::string() : std::string(text.substr(0, at)), *process};
}

}  // namespace dorvanel::platform

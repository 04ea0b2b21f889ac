// SPDX-License-Identifier: MIT
#pragma once

#include <fmt/core.h>

#include <cstdint>
#include <string>

#include "platform/Language.h"

namespace dorvanel {

/// `translation` with the arguments in its places. One that does not fit them is passed over for
/// `english`: a fault of a translation keeps nobody from being told.
std::string filledIn(const char* translation, const char* english, fmt::format_args arguments);

/// Marks a text that `tr` is given elsewhere, for the tool that collects them.
constexpr const char* marked(const char* text) {
    return text;
}

/// A text for people, in their language. With arguments it is a format of fmt, translated as a
/// whole. Any thread.
template <typename... Arguments>
std::string tr(const char* text, const Arguments&... arguments) {
    const char* translation = platform::translationOf(text);
    if constexpr (sizeof...(Arguments) == 0) {
        return translation;
    } else {
        return filledIn(translation, text, fmt::make_format_args(arguments...));
    }
}

/// A text that depends on a number, which is its first argument: `one` and `many` are its English.
template <typename... Arguments>
std::string trn(const char* one, const char* many, std::uint64_t count,
                const Arguments&... arguments) {
    return filledIn(platform::translationOf(one, many, count), count == 1 ? one : many,
                    fmt::make_format_args(count, arguments...));
}

}  // namespace dorvanel

// SPDX-License-Identifier: MIT
#include "app/SizeText.h"

#include <fmt/format.h>

#include <array>
#include <cstddef>

#include "app/Texts.h"

namespace dorvanel {

std::string counted(std::uint64_t count, const char* noun) {
    return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

std::string sizeText(std::uint64_t bytes) {
    constexpr std::array units = {"KiB", "MiB", "GiB", "TiB", "PiB", "EiB"};
    constexpr double step = 1024;
    constexpr double nextByRounding = 1023.95;
    if (bytes < 1024) return trn("{} byte", "{} bytes", bytes);
    double size = static_cast<double>(bytes) / step;
    std::size_t unit = 0;
    for (; size >= nextByRounding && unit + 1 < units.size(); ++unit) size /= step;
    return fmt::format("{:.1f} {}", size, units.at(unit));
}

}  // namespace dorvanel

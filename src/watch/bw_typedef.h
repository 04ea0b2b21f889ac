#pragma once

#include <cstdint>

namespace dorvanel {

/// One flag for each supported application, in the order in which a line of the process listing is
/// tried on them. A flag is set when it equals 1, and only then.
struct bw_typedef {
    std::uint32_t safari = 0;
    std::uint32_t ie = 0;
    std::uint32_t mozilla = 0;
    std::uint32_t netscape = 0;
    std::uint32_t icab = 0;
    std::uint32_t opera = 0;
    std::uint32_t omniweb = 0;
    std::uint32_t mail = 0;
    std::uint32_t eudora = 0;
    std::uint32_t mailsmith = 0;
    std::uint32_t camino = 0;
    std::uint32_t firefox = 0;

    friend bool operator==(const bw_typedef&, const bw_typedef&) = default;
};

}  // namespace dorvanel

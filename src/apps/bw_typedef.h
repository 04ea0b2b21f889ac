// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace dorvanel {

/// One flag for each supported application, in the order in which a line of the process listing is
/// tried on them. A flag is set when it equals 1, and only then.
struct bw_typedef {
#define APPLICATION(flag, label, ...) std::uint32_t flag = 0;
#include "apps/Applications.def"

    friend bool operator==(const bw_typedef&, const bw_typedef&) = default;
};

}  // namespace dorvanel

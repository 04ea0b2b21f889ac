// SPDX-License-Identifier: MIT
#pragma once

namespace dorvanel::test {

/// How many of as many random worlds a test lives through. A sanitizer takes ten times as long, and
/// finds in some of them what it finds in all; a second thread is in few of them.
constexpr unsigned seedsOf(unsigned all) {
#if defined(__SANITIZE_ADDRESS__)
    return (all + 5) / 6;
#elif defined(__SANITIZE_THREAD__)
    return (all + 15) / 16;
#else
    return all;
#endif
}

}  // namespace dorvanel::test

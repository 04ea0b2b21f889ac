// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QString>
#include <algorithm>
#include <cstdint>
#include <limits>

namespace dorvanel::desktop {

/// Every text of the desktop program goes through `Words::tr`, which answers in the language of the
/// person who reads. English numbers agree without a translation of their own: "%n file(s)" and
/// "%n (is|are) left" choose by the number; see Translations. Any thread.
class Words {
    Q_DECLARE_TR_FUNCTIONS(Words)
};

/// A count as texts with a number take it; the largest for all that are larger.
inline int asNumber(std::uint64_t count) {
    return static_cast<int>(std::min<std::uint64_t>(count, std::numeric_limits<int>::max()));
}

/// "1 byte", "120.57 KiB": in units of 1024, with so many decimals from the first of them on.
QString sizeWords(std::uint64_t bytes, int decimals = 2);

}  // namespace dorvanel::desktop

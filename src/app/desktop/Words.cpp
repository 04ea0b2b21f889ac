// SPDX-License-Identifier: MIT
#include "app/desktop/Words.h"

#include <QLocale>

namespace dorvanel::desktop {

QString sizeWords(std::uint64_t bytes, int decimals) {
    constexpr std::uint64_t most = std::numeric_limits<qint64>::max();
    if (bytes < 1024) return Words::tr("%n byte(s)", nullptr, asNumber(bytes));
    return QLocale().formattedDataSize(static_cast<qint64>(std::min(bytes, most)), decimals);
}

}  // namespace dorvanel::desktop

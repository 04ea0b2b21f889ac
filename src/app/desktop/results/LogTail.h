// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <cstddef>
#include <string>

namespace dorvanel::desktop {

/// The end of the Activity Log, for people.
struct LogTail {
    QString text{};
    QString trouble{};          ///< why there is none; "" where there is
    bool isMissing = false;     ///< there is no such file
    bool isOnlyTheEnd = false;  ///< the file is longer
};

/// Reads the last `limit` bytes of the file, whole lines but for very long ones, which are broken.
/// A file that is no regular one is not opened. Any thread.
LogTail readLogTail(const std::string& path, std::size_t limit);

}  // namespace dorvanel::desktop

// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>
#include <string>

#include "app/desktop/applications/TraceSurvey.h"

namespace dorvanel::desktop {

/// What there is of a kind of traces, or of several.
struct TraceAmount {
    std::uint64_t files = 0;
    std::uint64_t bytes = 0;
    std::uint64_t rows = 0;
    std::uint64_t keys = 0;
    bool isWhole = true;  ///< nothing was out of sight
    [[nodiscard]] bool isNothing() const { return files == 0 && rows == 0 && keys == 0; }
    void add(const TraceAmount& other);
};

/// The name of a kind of traces for people; the kind's own word where nobody named it yet.
QString nameOfKind(const std::string& kind);

/// "812 files, 1.2 GiB, 12 entries"; what was out of sight is never told as nothing.
QString textOfAmount(const TraceAmount& amount);

/// "running, watched"; `isWatching`: Browser Watch is on.
QString textOfState(bool isFound, Runs runs, bool isChosen, bool isWatching);

/// "Firefox and Chromium", "Firefox, Chromium and 3 others".
QString listOfNames(const QStringList& names);

}  // namespace dorvanel::desktop

// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <vector>

#include "app/desktop/results/RunEntry.h"

namespace dorvanel::desktop {

/// A line of a run's details, with those that belong to it.
struct DetailLine {
    QString what{};  ///< a heading, or a path
    QString fate{};  ///< what became of it; may be empty
    bool isTrouble = false;
    std::vector<DetailLine> lines{};
};

/// What became of the items of a run, what is left and why, and what was passed over and why. Under
/// each heading there is a line at least.
std::vector<DetailLine> detailLinesOf(const RunEntry& entry);

/// The same as text, a line each, what belongs to another moved in.
QString asText(const std::vector<DetailLine>& lines);

}  // namespace dorvanel::desktop

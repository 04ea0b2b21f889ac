// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>
#include <cstdint>
#include <string>
#include <vector>

#include "run/RunReport.h"

namespace dorvanel::desktop {

/// One request of this session of the program, as its history has it.
struct RunEntry {
    quint64 number = 0;  ///< from 1 on
    std::int64_t started = 0;
    std::int64_t ended = 0;            ///< likewise seconds since the epoch
    std::vector<std::string> given{};  ///< what was handed over, or the list of the run; bytes
    /// Its plan has what became of each item; `outcome.perItem` is empty.
    RunReport report{};
    QString message{};      ///< what was done
    QString failure{};      ///< what was not, a sentence or more; "" where all went well
    bool isMarked = false;  ///< whether the failure has not been dismissed
    /// Items that went as they should and are only counted: the history is not to fill the memory.
    std::uint64_t onlyCounted = 0;

    [[nodiscard]] QDateTime when() const { return QDateTime::fromSecsSinceEpoch(started); }
};

/// The report with what became of each item in its plan.
RunReport withOutcomesInPlan(RunReport report);

/// Whether something of the item did not go as it should.
bool hasTroubles(const PlanItem& item);

/// Who asked for the request: "You", "Browser Watch: Firefox quit".
QString starterOf(const RunEntry& entry);

/// What it was to take: "Chosen traces", "2 items".
QString subjectOf(const RunEntry& entry);

/// How long it took: "less than a second", "2 min 5 s".
QString durationOf(const RunEntry& entry);

/// What it left, in bytes: the outermost things, of what was to go as a whole, and holding folders
/// in the place of what is in them. Whether they are there now is not looked at.
std::vector<std::string> leftBy(const RunEntry& entry);

}  // namespace dorvanel::desktop

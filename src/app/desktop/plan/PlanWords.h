// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>

#include "app/desktop/Words.h"
#include "engine/Plan.h"

namespace dorvanel::desktop {

/// What the plans call a kind of trace, as people call it; a kind that is not known as it is.
QString traceWords(const std::string& trace);
/// A path for people: in the home folder with "~" for the way there.
QString pathWords(const std::string& path, const std::string& home);

/// "12 files" or "1 folder"; "" where the size says it all.
QString countWords(const PlanItem& item);
/// How much an item is: bytes, rows, keys or mentions.
QString amountWords(const PlanItem& item);
/// Why something is passed over.
QString reasonWords(const PlanSkip& skip);
/// What a note means for its file.
QString noteWords(const PlanNote& note, const std::string& home);
/// What the notes of a plan come to: a sentence for each kind of which there are some.
QStringList noticeWords(const Plan& plan);
/// What a plan comes to, in one line.
QString totalsWords(const Plan& plan);
/// The same of an idle program, short.
QString idleWords(const Plan& plan);

}  // namespace dorvanel::desktop

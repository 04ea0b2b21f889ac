#pragma once

#include <QString>

#include "engine/Outcome.h"
#include "run/RunReport.h"

namespace dorvanel::desktop {

/// What a run or a request did, as one line of the main window tells it.
QString messageOf(const RunReport& report);
QString messageOf(Refusal refusal);
QString messageOf(const Outcome& outcome);

/// What a request did not do that it should have, in a sentence or more; "" when all went well.
QString failureOf(const Outcome& outcome);

/// What could not be done, a line each, with path and reason; "" when all went well.
QString detailsOf(const Outcome& outcome);

/// "1 item", "3 items".
QString counted(quint64 count, const QString& noun);

}  // namespace dorvanel::desktop

// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "engine/Outcome.h"
#include "run/RunReport.h"

namespace dorvanel::desktop {

/// What a request that began did, as one line of the main window tells it.
QString messageOf(const RunReport& report);

/// What a request that began did not do that it should have, in a sentence or more; "" when all
/// went well.
QString failureOf(const RunReport& report);

/// Why a request did not begin.
QString messageOf(Refusal refusal);

/// What could not be done, a line each, with path and reason; "" when all went well.
QString detailsOf(const Outcome& outcome);

/// "1 item", "3 items".
QString counted(quint64 count, const QString& noun);

}  // namespace dorvanel::desktop

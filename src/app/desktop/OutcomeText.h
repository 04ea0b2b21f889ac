// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <cstdint>

#include "app/desktop/Words.h"
#include "engine/Outcome.h"
#include "run/RunReport.h"

namespace dorvanel::desktop {

/// What a request that began did, as one line of the main window tells it.
QString messageOf(const RunReport& report);

/// What a request that began did not do that it should have, in a sentence or more; "" when all
/// went well.
QString failureOf(const RunReport& report);

/// How many things are still there: files and the like that could not be removed; folders only
/// where nothing in them could not be.
std::uint64_t stillThere(const Outcome& outcome);

/// Why a request did not begin.
QString messageOf(Refusal refusal);

/// What could not be done, a line each, with path and reason; "" when all went well.
QString detailsOf(const Outcome& outcome);

/// Why something was not done: "could not remove: Operation not permitted".
QString reasonOf(const Outcome::Trouble& trouble);

}  // namespace dorvanel::desktop

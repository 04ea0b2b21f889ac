// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>

#include "engine/Plan.h"

namespace dorvanel {

/// What a report says beside its plan.
struct DocumentFrame {
    std::int64_t started = 0;             ///< seconds since the epoch
    std::optional<std::int64_t> ended{};  ///< likewise; none in a preview
    int status = 0;                       ///< what the program exits with
    bool isVerified = false;              ///< whether what was written has been read back
};

/// Writes a plan, with the outcomes that its items have, as one JSON document for other programs:
/// valid UTF-8 that ends in a newline, in the form that docs/report.schema.json describes. Item by
/// item, so that a large plan takes no more memory than it already does.
void writeReportDocument(const Plan& plan, const DocumentFrame& frame, std::ostream& out);

/// The status that shredding by this plan would begin with: 1 where something is passed over for
/// another reason than that its application runs, else 0.
int previewStatus(const Plan& plan);

}  // namespace dorvanel

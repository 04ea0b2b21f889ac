// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "app/desktop/results/RunEntry.h"
#include "base/Result.h"

namespace dorvanel::desktop {

/// The run as the JSON document that other programs read. Main thread.
std::string reportDocumentOf(const RunEntry& entry);

/// Writes it in the place of `path`, for its owner's eyes only: either the old or the new file is
/// there, whole. Any thread.
Result<Done> saveReport(const std::string& document, const std::string& path);

}  // namespace dorvanel::desktop

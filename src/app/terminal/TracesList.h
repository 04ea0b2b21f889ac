// SPDX-License-Identifier: MIT
#pragma once

#include "app/terminal/ExitStatus.h"
#include "app/terminal/Terminal.h"
#include "apps/catalogue/Catalogue.h"

namespace dorvanel::terminal {

/// The descriptions of this machine and its user; faults are told on `err`.
catalogue::Catalogue loadedCatalogue(Terminal& terminal);

struct TracesListOptions {
    bool all = false;   ///< also what is not there
    bool json = false;  ///< for programs
};

/// Prints what applications have left in this home, and what of it is chosen. Touches nothing.
ExitStatus listTraces(Terminal& terminal, const TracesListOptions& options);

}  // namespace dorvanel::terminal

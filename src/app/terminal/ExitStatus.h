// SPDX-License-Identifier: MIT
#pragma once

namespace dorvanel::terminal {

/// What the program tells the shell.
enum class ExitStatus {
    done = 0,          ///< done, or nothing was selected to shred
    incomplete = 1,    ///< something handed over is still there, or could not be saved or shown
    usage = 2,         ///< bad usage or argument; nothing was touched
    cancelled = 3,     ///< cancelled in an alert
    notInitiated = 4,  ///< a run was not initiated
    interrupted = 130  ///< ended by a signal after the current block
};

}  // namespace dorvanel::terminal

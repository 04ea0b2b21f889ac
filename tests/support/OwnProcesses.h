// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

namespace dorvanel::test {

/// Starts this program again, with the same arguments, where it sees no process but itself and
/// those that it starts: in a process namespace and with a /proc of its own. Waits for its end and
/// returns its exit status, 128 and the signal's number for one that a signal ended.
///
/// Nothing where the caller is that second start already, and where the machine allows no such
/// namespace. There `ps` is from then on one that lists only what runs from TMPDIR, which is a
/// new folder of this process; /proc shows all that runs.
///
/// To be called first in main(), before any thread starts. With `asRoot` whoever is not root is
/// that there, with root's rights over their own files and over mounts.
std::optional<int> runAmongOwnProcesses(char** arguments, bool asRoot = false);

/// Whether /proc shows only this program's own processes.
bool processesAreOwn();

}  // namespace dorvanel::test

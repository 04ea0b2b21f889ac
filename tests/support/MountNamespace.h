// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace dorvanel::test {

/// Runs `work` in a child process with mounts of its own, which end with it, and returns what it
/// returned, cut at 4095 bytes. Nothing where the machine allows no such process; then the caller
/// says that its case was not run. Other users' names are unknown to the child where the test is
/// not root's.
std::optional<std::string> inMountNamespace(const std::function<std::string()>& work);

/// In such a child: makes the folder and mounts on it. False where it is not allowed.
bool mountTmpfs(const std::string& folder);
/// `upper` and `work` beside `folder`, which shows what `lower` holds.
bool mountOverlay(const std::string& lower, const std::string& folder);
/// A new ext4 of 8 MiB in the file `image`; needs root and loop devices.
bool mountExt4(const std::string& image, const std::string& folder);

/// Tells on standard output that a case was not run, and why.
void sayNotRun(const std::string& why);

}  // namespace dorvanel::test

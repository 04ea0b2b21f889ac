// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <string>
#include <vector>

namespace dorvanel::desktop {

/// Has the desktop's file manager show the things, each in its folder; where there is none to ask
/// on the session bus, the folder of the first is opened. Returns at once. Absolute paths in
/// bytes, one at least.
void showInFolder(const std::vector<std::string>& paths, const QDBusConnection& bus);

}  // namespace dorvanel::desktop

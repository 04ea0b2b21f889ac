// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>
#include <memory>
#include <string>

namespace dorvanel::desktop {

/// The top widget of the interface file `name` ("MainMenu") in `folder`, with all that is in it;
/// null when the file is missing or damaged.
std::unique_ptr<QWidget> loadInterfaceFile(const std::string& folder, const std::string& name);

}  // namespace dorvanel::desktop

// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "base/Result.h"
#include "platform/UserDefaults.h"

namespace dorvanel {

/// "HOME/Library/Preferences/com.dorvanel.DorvanelX.plist"; empty when there is no home folder.
std::string userDefaultsPath();

/// The user defaults kept in the property list at `path`, XML or binary, written as XML. A missing
/// file is an empty list.
///
/// A file that cannot be read, or is no property list, stays as it is and where it is: the user
/// defaults are then not known. `report` is called, on the calling thread, with what the person
/// should know: here with the reason, and in `startAfresh` with the name that the file was set
/// aside under.
///
/// Root in the home folder of somebody else reads the file only where no symbolic link is on the
/// way to it below that home: its owner could have root read a file that he may not.
///
/// `synchronize` follows symbolic links at the end of `path`, makes the account's folders where
/// they are missing (only for the path above), and replaces the file as a whole (mode 0600) under a
/// lock, so that of two processes neither undoes what the other changed. A value set to what this
/// process already read or wrote is no change. Where nothing changed, nothing is written; nor is a
/// list that could not be read back, being too large for example.
///
/// With `Saving::never` no file is ever touched: changes are kept in memory, and `synchronize` does
/// nothing.
enum class Saving { allowed, never };
std::unique_ptr<platform::UserDefaults> openUserDefaults(std::string path,
                                                         std::function<void(const Error&)> report,
                                                         Saving saving = Saving::allowed);

}  // namespace dorvanel

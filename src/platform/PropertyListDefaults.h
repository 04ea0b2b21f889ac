#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Result.h"
#include "platform/UserDefaults.h"

namespace dorvanel::platform {

/// "HOME/Library/Preferences/com.dorvanel.DorvanelX.plist"; empty when there is no home folder.
std::string userDefaultsPath();

/// The user defaults kept in the property list at `path`, XML or binary, written as XML. A missing
/// file is an empty list.
///
/// `report` is called, on the calling thread, here and in later `synchronize` calls, with what the
/// person should know: the file could not be read (then nothing is known of it and saving fails,
/// so that it is never overwritten), or could not be parsed and was set aside under a new name
/// (the detail tells it; an empty list takes its place).
///
/// `synchronize` follows symbolic links at the end of `path`, makes the account's folders where
/// they are missing (only for the path above), and replaces the file as a whole (mode 0600) under a
/// lock, so that of two processes neither undoes what the other changed. A value set to what this
/// process already read or wrote is no change. Where nothing changed, nothing is written.
std::unique_ptr<UserDefaults> openUserDefaults(std::string path,
                                               std::function<void(const Error&)> report);

}  // namespace dorvanel::platform

// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/Result.h"
#include "engine/HeldItem.h"
#include "platform/SystemCalls.h"

namespace dorvanel {

/// What somebody asked to shred, checked before anything is touched.
struct ShredArguments {
    struct Complaint {
        std::string argument;  ///< as it was given, in bytes
        std::string reason;    ///< goes on from the argument: "does not exist"
    };

    /// What to shred, held since it was looked at: absolute paths in bytes, in the order given,
    /// each once. The folders on the way are free of links and dots; the last component is as it
    /// was given.
    std::vector<HeldItem> items;
    /// Every argument that must not be shredded; when there is one, nothing is to be shredded.
    std::vector<Complaint> complaints;
    /// The home folder and those above it, whatever they are called: never to be touched.
    std::vector<Identity> protectedFolders;

    [[nodiscard]] std::vector<std::string> paths() const;

    /// Whether what is inside the folders among the items is checked, too. Nothing may be shredded
    /// before it is; who only looks may leave it, where the look tells of the same.
    enum class Inside { checked, left };
};

/// Refuses what does not exist (a symbolic link that leads nowhere included), "/", "." and "..",
/// what is or holds the home folder or one above it, by whatever name and mount, and what is or
/// holds a mount point. An argument that is a symbolic link stands for the link, not for what it
/// leads to; with `Links::stay` what it leads to does not matter, and need not be there. Empty
/// `home`: none. `system` must outlive the items. `stop`, which may be empty, is asked now and
/// then; true ends the check, which then has neither items nor complaints. With `Inside::left`
/// folders are not walked, and what only the walk finds is no complaint.
ShredArguments checkShredArguments(
    const std::vector<std::string>& arguments, const std::string& home,
    const std::vector<std::string>& mountPoints, platform::SystemCalls& system,
    platform::SystemCalls::Links links = platform::SystemCalls::Links::follow,
    const std::function<bool()>& stop = {},
    ShredArguments::Inside inside = ShredArguments::Inside::checked);

/// The same with the home folder and the mount points of this moment; an error where nobody can
/// tell what is mounted.
Result<ShredArguments> checkShredArguments(
    const std::vector<std::string>& arguments, platform::SystemCalls& system,
    platform::SystemCalls::Links links = platform::SystemCalls::Links::follow,
    const std::function<bool()>& stop = {},
    ShredArguments::Inside inside = ShredArguments::Inside::checked);

}  // namespace dorvanel

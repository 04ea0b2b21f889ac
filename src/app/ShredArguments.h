#pragma once

#include <string>
#include <vector>

#include "platform/SystemCalls.h"

namespace dorvanel {

/// What somebody asked to shred, checked before anything is touched.
struct ShredArguments {
    struct Complaint {
        std::string argument;  ///< as it was given, in bytes
        std::string reason;    ///< goes on from the argument: "does not exist"
    };

    /// What to shred: absolute paths in bytes, in the order given, each once. The folders on the
    /// way are free of links and dots; the last component is as it was given.
    std::vector<std::string> paths;
    /// Every argument that must not be shredded; when there is one, nothing is to be shredded.
    std::vector<Complaint> complaints;
};

/// Refuses what does not exist (a symbolic link that leads nowhere included), "/", "." and "..",
/// the home folder and every folder above it, and what is or holds a mount point. An argument
/// that is a symbolic link stands for the link, not for what it leads to. Empty `home`: none.
ShredArguments checkShredArguments(const std::vector<std::string>& arguments,
                                   const std::string& home,
                                   const std::vector<std::string>& mountPoints,
                                   platform::SystemCalls& system);

}  // namespace dorvanel

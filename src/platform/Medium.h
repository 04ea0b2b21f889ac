// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

namespace dorvanel::platform {

/// What a file lies on, as far as overwriting it in place goes.
struct Medium {
    enum class Kind {
        overwritable,  ///< new contents take the place of the old ones; also where nothing is known
        copyOnWrite,   ///< new contents go to other blocks: copy-on-write and log-structured
        overlay,       ///< one file system over another, and the lower one is never written
        network,       ///< another machine writes where it likes
        userSpace,     ///< some other program writes where it likes
        solidState     ///< the disk does not rotate: it writes to fresh cells by itself
    };

    Kind kind = Kind::overwritable;
    std::string fileSystem;  ///< its name where the file system is what matters: "btrfs", "nfs"
};

/// Tells what items lie on, without opening them. One thread at a time.
class MediumInspector {
  public:
    virtual ~MediumInspector() = default;

    /// The medium of what `path` leads to, links followed; overwritable where it leads nowhere. Of
    /// a folder, the folder's own. Not told: files that share blocks with a copy on a file system
    /// that otherwise writes in place, snapshots below the file system, a journal with contents.
    virtual Medium mediumAt(const std::string& path) = 0;

    /// Forgets what it has found out about disks: another one may have got the number of a former.
    virtual void forgetDisks() {}
};

/// The real one. What it finds out about a disk it keeps until it is told to forget.
std::unique_ptr<MediumInspector> makeMediumInspector();

}  // namespace dorvanel::platform

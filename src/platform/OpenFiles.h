// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace dorvanel::platform {

/// Tells which plain files other processes have open, as it was when it looked. One thread at a
/// time.
class OpenFiles {
  public:
    virtual ~OpenFiles() = default;

    /// Looks at every process that this one may look at, itself left out, and forgets what it saw
    /// before. Opens none of their files.
    virtual void look() = 0;
    /// Whether it has seen no file at all.
    [[nodiscard]] virtual bool empty() const = 0;
    /// Who has the file open, as "NAME (PID)", several with commas between them; "" for nobody.
    [[nodiscard]] virtual std::string holdersOf(std::uint64_t device,
                                                std::uint64_t inode) const = 0;
};

/// The processes of this machine. Has seen nothing until it is told to look.
std::unique_ptr<OpenFiles> makeOpenFiles();

}  // namespace dorvanel::platform

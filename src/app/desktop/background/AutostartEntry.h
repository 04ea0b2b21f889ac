// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "base/Result.h"

namespace dorvanel::desktop {

/// The file that has the desktop start the program, hidden, when the person logs in:
/// "com.dorvanel.DorvanelX.desktop" among those of the person's configuration. Main thread.
class AutostartEntry final {
  public:
    enum class State {
        off,      ///< there is no file
        on,       ///< there is the program's own file
        foreign,  ///< there is another, or a changed one, which is left alone
    };

    /// `folder`: where such files lie.
    explicit AutostartEntry(const std::string& folder);

    [[nodiscard]] State state() const;
    /// Writes or removes the file. A foreign one stays, and that is the error.
    Result<Done> set(bool on);
    [[nodiscard]] const std::string& path() const { return path_; }

    /// The folder of this user: "autostart" in XDG_CONFIG_HOME, in "~/.config" where that is unset.
    static std::string usersFolder();

  private:
    std::string folder_;
    std::string path_;
};

}  // namespace dorvanel::desktop

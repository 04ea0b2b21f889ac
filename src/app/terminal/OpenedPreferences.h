// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "app/terminal/ExitStatus.h"
#include "app/terminal/Terminal.h"
#include "platform/UserDefaults.h"
#include "prefs/Preferences.h"

namespace dorvanel::terminal {

/// The user defaults and the preferences of a command, with the account's folders made first.
/// What is wrong with them is told on `err`, with the file and the reason.
class OpenedPreferences {
  public:
    /// What the command is about to do, where the stored preferences cannot be read.
    enum class Unreadable {
        stopsIt,   ///< nothing by them: the person is told the way out
        isMended,  ///< the command is that way out
    };

    /// What becomes of the account's folders.
    enum class Folders {
        made,       ///< where they are missing
        leftAlone,  ///< for a command that only looks
    };

    /// `terminal` must outlive the object.
    explicit OpenedPreferences(Terminal& terminal, Unreadable unreadable = Unreadable::stopsIt,
                               Folders folders = Folders::made);

    /// False where what is stored could not be read; this has been told. What the person chose
    /// cannot be told then: nothing may be shredded, listed or saved by these preferences.
    [[nodiscard]] bool areKnown() const { return preferences_->areKnown(); }

    platform::UserDefaults& defaults() { return *defaults_; }
    Preferences& preferences() { return *preferences_; }

    /// Tells on `err` that a change could not be saved, where it could not.
    [[nodiscard]] ExitStatus statusOf(const Result<Done>& saved) const;

  private:
    Terminal& terminal_;
    std::unique_ptr<platform::UserDefaults> defaults_;
    std::shared_ptr<Preferences> preferences_;
};

}  // namespace dorvanel::terminal

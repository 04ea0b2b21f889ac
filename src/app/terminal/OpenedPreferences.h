#pragma once

#include <memory>

#include "app/terminal/ExitStatus.h"
#include "app/terminal/Terminal.h"
#include "platform/UserDefaults.h"
#include "prefs/Preferences.h"

namespace dorvanel::terminal {

/// The user defaults and the preferences of a command, with the account's folders made first.
/// What is wrong with them is told on `err`; the factory values then stand in.
class OpenedPreferences {
  public:
    /// `terminal` must outlive the object.
    explicit OpenedPreferences(Terminal& terminal);

    platform::UserDefaults& defaults() { return *defaults_; }
    Preferences& preferences() { return *preferences_; }

    /// Tells on `err` that a change could not be saved, where it could not.
    [[nodiscard]] ExitStatus statusOf(const platform::Result<platform::Done>& saved) const;

  private:
    Terminal& terminal_;
    std::unique_ptr<platform::UserDefaults> defaults_;
    std::shared_ptr<Preferences> preferences_;
};

}  // namespace dorvanel::terminal

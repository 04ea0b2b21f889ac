// SPDX-License-Identifier: MIT
#include "app/terminal/OpenedPreferences.h"

#include "app/Texts.h"
#include "apps/Applications.h"
#include "platform/AccountFolders.h"
#include "platform/UserSwitch.h"

namespace dorvanel::terminal {

OpenedPreferences::OpenedPreferences(Terminal& terminal, Unreadable unreadable, Saving saving)
    : terminal_(terminal) {
    const auto report = [&terminal](const Error& error) { terminal.complain(error.message()); };
    const std::string path = userDefaultsPath();
    // Root, who stays root where a command must be able to shred anybody's files, makes no folders
    // in a home whose owner may have put links there.
    if (saving == Saving::allowed && !path.empty() && !platform::isRootInAnothersHome()) {
        const Result<Done> made = platform::makeAccountFolders();
        if (!made) report(made.error());
    }
    defaults_ = openUserDefaults(path, report, saving);
    PreferencesOwner owner{.defaults = *defaults_, .applications = supportedApplications};
    preferences_ = dorvanel::Preferences::sharedInstance(owner);
    if (!areKnown() && unreadable == Unreadable::stopsIt) {
        terminal.complain(tr(
            "without knowing the preferences nothing is shredded or changed; "
            "\"dorvanel prefs revert\" sets the file aside and goes back to the factory values"));
    }
}

ExitStatus OpenedPreferences::statusOf(const Result<Done>& saved) const {
    if (saved) return ExitStatus::done;
    terminal_.complain(tr("not saved: {}", saved.error().message()));
    return ExitStatus::incomplete;
}

}  // namespace dorvanel::terminal

#include "app/terminal/OpenedPreferences.h"

#include "platform/AccountFolders.h"
#include "platform/PropertyListDefaults.h"

namespace dorvanel::terminal {

OpenedPreferences::OpenedPreferences(Terminal& terminal) : terminal_(terminal) {
    const auto report = [&terminal](const platform::Error& error) {
        terminal.complain(error.message());
    };
    const std::string path = platform::userDefaultsPath();
    if (!path.empty()) {
        const platform::Result<platform::Done> made = platform::makeAccountFolders();
        if (!made) report(made.error());
    }
    defaults_ = platform::openUserDefaults(path, report);
    preferences_ = dorvanel::Preferences::sharedInstance(*defaults_);
}

ExitStatus OpenedPreferences::statusOf(const platform::Result<platform::Done>& saved) const {
    if (saved) return ExitStatus::done;
    terminal_.complain("not saved: " + saved.error().message());
    return ExitStatus::incomplete;
}

}  // namespace dorvanel::terminal

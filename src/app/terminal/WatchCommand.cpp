#include <CLI/CLI.hpp>
#include <memory>

#include "app/terminal/Commands.h"
#include "app/terminal/OpenedPreferences.h"
#include "app/terminal/WatchSession.h"
#include "platform/QuitSignals.h"

namespace dorvanel::terminal {
namespace {

/// Says what would happen now that an application has quit.
class AnnouncedRuns final : public BrowserWatchOwner {
  public:
    AnnouncedRuns(Terminal& terminal, bool asks) : terminal_(terminal), asks_(asks) {}

    void shredAndNothing() override {
        terminal_.complain(asks_ ? "an application has quit; a run would ask and shred now"
                                 : "an application has quit; a run would shred now");
    }

  private:
    Terminal& terminal_;
    bool asks_;
};

ExitStatus watch(Terminal& terminal, bool yes) {
    OpenedPreferences opened(terminal);
    const auto listing = platform::makeProcessListing();
    const auto loop = platform::makeRunLoop();
    AnnouncedRuns runs(terminal, !yes);
    if (loop == nullptr) {
        terminal.complain("no main loop: out of descriptors");
        return ExitStatus::incomplete;
    }
    WatchSession session({opened.preferences(), *listing, *loop, platform::terminalSound()}, runs,
                         terminal);
    {
        const auto signals = platform::catchQuitSignals([&session] { session.requestQuit(); });
        session.run();
    }
    return opened.statusOf(Preferences::saveDefaults());
}

}  // namespace

void addWatchCommand(CLI::App& program, Action& chosen) {
    auto yes = std::make_shared<bool>(false);
    CLI::App* command = program.add_subcommand(
        "watch", "Follow the supported applications and shred when one quits, until a signal");
    command->fallthrough()->add_flag("--yes", *yes, "Answer \"Yes\" and \"OK\" without asking");
    command->callback(
        [&chosen, yes] { chosen = [yes](Terminal& terminal) { return watch(terminal, *yes); }; });
}

}  // namespace dorvanel::terminal

// SPDX-License-Identifier: MIT
#include "app/terminal/TerminalEngine.h"

#include "app/terminal/UnfinishedText.h"
#include "platform/Clock.h"

namespace dorvanel::terminal {

TerminalEngine::TerminalEngine(Terminal& terminal, platform::SystemCalls& system,
                               const PreferenceReader& preferences, MachinesUnfinished& unfinished)
    : draws_(makeDrawSequence()), bar_(terminal, platform::systemClock(), [this] {
          return ProgressBytes{access_->deepShreddedSize(), access_->deepPathSize()};
      }) {
    unfinished.record().onTrouble = [this, &terminal](const Error& error) {
        clearProgress();
        tellNotWrittenDown(error, terminal);
    };
    access_ = std::make_unique<FileAccess>(
        EngineServices{system, platform::systemClock(), *draws_, &unfinished.record()}, preferences,
        bar_, bar_.fileName());
}

}  // namespace dorvanel::terminal

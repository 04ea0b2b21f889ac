// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "app/MachinesUnfinished.h"
#include "app/terminal/ProgressBar.h"
#include "app/terminal/Terminal.h"
#include "engine/FileAccess.h"
#include "engine/random/DrawSequence.h"
#include "platform/SystemCalls.h"
#include "prefs/PreferenceReader.h"

namespace dorvanel::terminal {

/// The shredding engine of a command, with its progress on the terminal. What it has in work is
/// written down.
class TerminalEngine {
  public:
    /// All of them must outlive the engine.
    TerminalEngine(Terminal& terminal, platform::SystemCalls& system,
                   const PreferenceReader& preferences, MachinesUnfinished& unfinished);

    FileAccess& access() { return *access_; }
    /// Takes the progress line away, so that other text can be written.
    void clearProgress() { bar_.clear(); }

  private:
    std::unique_ptr<DrawSequence> draws_;
    ProgressBar bar_;
    std::unique_ptr<FileAccess> access_;
};

}  // namespace dorvanel::terminal

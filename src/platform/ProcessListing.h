// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <memory>
#include <string>

namespace dorvanel::platform {

/// The output of a command that runs, read line by line. Destroying it closes it.
class CommandOutput {
  public:
    virtual ~CommandOutput() = default;

    /// Whether a read has met the end of the output, or an error.
    [[nodiscard]] virtual bool atEnd() const = 0;

    /// The next line with its newline, or the next 2047 bytes of one that is longer; cut at a NUL,
    /// as a C string is; "" at the end. Bytes.
    virtual std::string readLine() = 0;

    /// Closes it; never waits for a command that hangs. Whether the listing is whole: read to its
    /// end in time, and the command ended by itself and well. False when it was closed before.
    virtual bool close() = 0;
};

/// Runs the command that lists the processes. Main thread.
class ProcessListing {
  public:
    virtual ~ProcessListing() = default;

    /// Starts `command` in a shell; null when it cannot be started. A command that the shell does
    /// not find starts all right and says nothing.
    virtual std::unique_ptr<CommandOutput> open(const std::string& command) = 0;

    /// Who runs the program, as the listing command takes it: a login name of letters, digits and
    /// "._@-" only, else the number of that user. Holds nothing that a shell reads specially.
    [[nodiscard]] virtual std::string userName() const = 0;
};

/// How long one listing may keep the main loop; one that takes longer ends there. `ps` takes
/// hundredths of a second, and a machine that has it wait for seconds is in trouble.
constexpr std::chrono::milliseconds kListingTimeLimit = std::chrono::seconds(5);

/// Listings by popen().
std::unique_ptr<ProcessListing> makeProcessListing(
    std::chrono::milliseconds timeLimit = kListingTimeLimit);

}  // namespace dorvanel::platform

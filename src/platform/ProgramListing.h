// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace dorvanel::platform {

/// Tells one process from every other, also from a later one that got its number.
struct ProcessIdentity {
    std::int32_t pid = 0;
    std::uint64_t started = 0;  ///< clock ticks from the machine's start to the process's

    friend bool operator==(const ProcessIdentity&, const ProcessIdentity&) = default;
    friend bool operator<(const ProcessIdentity& one, const ProcessIdentity& other) {
        return one.pid != other.pid ? one.pid < other.pid : one.started < other.started;
    }
};

/// One process, by what the system says of it; nothing here is what the process says of itself,
/// but for `script`.
struct RunningProgram {
    ProcessIdentity process;
    std::int32_t parent = 0;  ///< a pid
    /// The path of the program, in bytes, as the process sees it; that it has been deleted since
    /// does not show. "" where the system keeps it to itself.
    std::string executable;
    std::string comm;     ///< the first 15 bytes of the program's name
    std::string script;   ///< what Python 3 runs: a script's last path component, or a module's
    std::string flatpak;  ///< ID of the application whose sandbox it is in; "" for none
    std::string snap;     ///< name of the snap that it is of; "" for none
};

/// What runs on behalf of the user. One thread at a time.
class ProgramListing {
  public:
    virtual ~ProgramListing() = default;

    /// The processes whose real user is this program's, in no order; this program, kernel threads,
    /// and what has ended but was not waited for, are not among them. Nothing where the list would
    /// not be whole: anything may be running then.
    virtual std::optional<std::vector<RunningProgram>> list() = 0;

    /// Asks a process to quit and does not wait for it. False, and nothing is sent, when it has
    /// gone, has become another program since it was listed, or is this one.
    virtual bool askToQuit(const RunningProgram& program) = 0;
};

/// The processes of this machine.
std::unique_ptr<ProgramListing> makeProgramListing(const std::string& processFolder = "/proc");

}  // namespace dorvanel::platform

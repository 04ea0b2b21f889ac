// SPDX-License-Identifier: MIT
#include "watch/RunningApplications.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string_view>
#include <utility>

namespace dorvanel {
namespace {

using catalogue::Entry;
using platform::RunningProgram;

constexpr std::size_t kMostOfComm = 15;  // of a program's name, the system keeps no more

std::string_view lastComponent(std::string_view path) {
    return path.substr(path.rfind('/') + 1);  // npos + 1 is 0
}

/// The component of `path` behind `prefix`; "" when there is none.
std::string_view componentBehind(std::string_view prefix, std::string_view path) {
    if (!path.starts_with(prefix)) return {};
    path.remove_prefix(prefix.size());
    return path.substr(0, path.find('/'));
}

/// Whether a way of installing the application by `kind` keeps its things in `name`'s folder there.
bool hasInstall(const Entry& entry, std::string_view kind, std::string_view prefix,
                std::string_view name) {
    if (name.empty()) return false;
    return std::ranges::any_of(entry.installs, [&](const catalogue::Install& install) {
        return install.name == kind && std::ranges::any_of(install.roots, [&](const auto& root) {
                   return componentBehind(prefix, root.second) == name;
               });
    });
}

bool isInSandboxOf(const Entry& entry, const RunningProgram& program) {
    return hasInstall(entry, "flatpak", "~/.var/app/", program.flatpak) ||
           hasInstall(entry, "snap", "~/snap/", program.snap);
}

/// Whether the program itself came with a sandbox. What only runs in one, started by a sandboxed
/// terminal for example, need not have.
bool isOfSandbox(const RunningProgram& program) {
    return (!program.flatpak.empty() && program.executable.starts_with("/app/")) ||
           (!program.snap.empty() && program.executable.starts_with("/snap/"));
}

bool isNamed(const Entry& entry, const RunningProgram& program) {
    const std::string_view name = lastComponent(program.executable);
    return std::ranges::any_of(entry.processes, [&](const std::string& process) {
        if (name.empty()) return process.substr(0, kMostOfComm) == program.comm;
        return process == name || (!program.script.empty() && process == program.script);
    });
}

bool isOf(const Entry& entry, const RunningProgram& program) {
    if (isInSandboxOf(entry, program)) return true;
    // One sandboxed application may bring a program along that has another one's name.
    return isNamed(entry, program) && !isOfSandbox(program);
}

/// Which of an application's processes are asked to quit: in a sandbox those with the
/// application's name, where there are any, else all; and of these none that another has started.
std::vector<RunningProgram> topmost(const Entry& entry,
                                    const std::vector<RunningProgram>& programs) {
    using Sandbox = std::pair<std::string, std::string>;
    std::set<Sandbox> withNames;
    for (const RunningProgram& program : programs) {
        if (isNamed(entry, program)) withNames.emplace(program.flatpak, program.snap);
    }
    std::vector<RunningProgram> candidates;
    std::set<std::int32_t> pids;
    for (const RunningProgram& program : programs) {
        if (!isNamed(entry, program) && withNames.contains({program.flatpak, program.snap}))
            continue;
        candidates.push_back(program);
        pids.insert(program.process.pid);
    }
    std::erase_if(candidates,
                  [&](const RunningProgram& program) { return pids.contains(program.parent); });
    return candidates;
}

}  // namespace

RunningApplications::RunningApplications(platform::ProgramListing& listing,
                                         const platform::LockProbe& locks, LockPaths lockPaths)
    : listing_(listing), locks_(locks), lockPaths_(std::move(lockPaths)) {}

std::optional<RunningApplications::Processes> RunningApplications::processes(
    const Entries& entries) const {
    const auto programs = listing_.list();
    if (!programs) return std::nullopt;
    Processes found;
    for (const Entry* entry : entries) {
        std::vector<RunningProgram> own;
        std::ranges::copy_if(*programs, std::back_inserter(own),
                             [&](const RunningProgram& program) { return isOf(*entry, program); });
        if (!own.empty()) found[entry->id] = std::move(own);
    }
    return found;
}

bool RunningApplications::holdsLock(const Entry& entry) const {
    if (entry.locks.empty()) return false;
    return std::ranges::any_of(lockPaths_(entry), [&](const std::string& path) {
        return locks_.stateOf(path) != platform::LockState::free;
    });
}

RunningApplications::Entries RunningApplications::running(const Entries& entries) const {
    const auto found = processes(entries);
    if (!found) return entries;
    Entries run;
    std::ranges::copy_if(entries, std::back_inserter(run), [&](const Entry* entry) {
        return found->contains(entry->id) || holdsLock(*entry);
    });
    return run;
}

std::optional<std::size_t> RunningApplications::askToQuit(const Entries& entries) const {
    const auto found = processes(entries);
    if (!found) return std::nullopt;
    std::set<platform::ProcessIdentity> asked;
    for (const Entry* entry : entries) {
        const auto own = found->find(entry->id);
        if (own == found->end()) continue;
        for (const RunningProgram& program : topmost(*entry, own->second)) {
            if (!asked.contains(program.process) && listing_.askToQuit(program))
                asked.insert(program.process);
        }
    }
    return asked.size();
}

}  // namespace dorvanel

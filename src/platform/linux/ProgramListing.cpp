// SPDX-License-Identifier: MIT
#include "platform/ProgramListing.h"

// Said outside, as the header of some C libraries does not say it for C++.
extern "C" {
#include <sys/pidfd.h>
}
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <csignal>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/Result.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/ProcessFolder.h"
#include "platform/linux/PythonScript.h"
#include "platform/linux/SandboxNames.h"

namespace dorvanel::platform {
namespace {

namespace fs = std::filesystem;

/// A program of the user's, nothing for what is none, an error where that cannot be told.
using Seen = Result<std::optional<RunningProgram>>;

bool isGone(const Error& error) {
    return error.code == ENOENT || error.code == ESRCH;
}

/// The machine may keep the processes of others to themselves, and a process its own affairs.
bool isRefused(const Error& error) {
    return error.code == EACCES || error.code == EPERM;
}

/// Not the process's fault, whatever was asked of it.
bool isShortage(const Error& error) {
    return error.code == EMFILE || error.code == ENFILE || error.code == ENOMEM;
}

std::string_view lastComponent(std::string_view path) {
    return path.substr(path.rfind('/') + 1);  // npos + 1 is 0
}

std::string withoutDeleted(std::string path) {
    constexpr std::string_view mark = " (deleted)";
    if (path.ends_with(mark)) path.resize(path.size() - mark.size());
    return path;
}

/// What a file of the folder says; "" where there is no such file, or not for us.
Result<std::string> textIfAny(const ProcessFolder& folder, const std::string& name) {
    Result<std::string> text = folder.text(name);
    if (text || isGone(text.error()) || isRefused(text.error()))
        return text ? std::move(text) : std::string();
    return text;
}

class LinuxProgramListing final : public ProgramListing {
  public:
    explicit LinuxProgramListing(std::string processFolder)
        : processFolder_(std::move(processFolder)) {}

    std::optional<std::vector<RunningProgram>> list() override {
        const pid_t self = ::getpid();
        const ProcessFolder own(self, processFolder_);
        const Result<std::string> ownMounts = textOfMounts(own);
        if (!own.facts() || !ownMounts) return std::nullopt;
        std::vector<RunningProgram> programs;
        bool sawSelf = false;
        std::error_code error;
        for (fs::directory_iterator entry(processFolder_, error), end; !error && entry != end;
             entry.increment(error)) {
            const std::string name = entry->path().filename().native();
            pid_t process = 0;
            const auto [rest, notNumber] =
                std::from_chars(name.data(), name.data() + name.size(), process);
            if (notNumber != std::errc() || rest != name.data() + name.size()) continue;
            if (process == self) {
                sawSelf = true;
                continue;
            }
            Seen seen = look(process, ownMounts.value());
            if (!seen) return std::nullopt;
            if (seen.value()) programs.push_back(std::move(*seen.value()));
        }
        // A list without whoever asks for it is another machine's, or not whole.
        if (error || !sawSelf) return std::nullopt;
        return programs;
    }

    bool askToQuit(const RunningProgram& program) override {
        const pid_t process = program.process.pid;
        if (process == ::getpid()) return false;
        const FileDescriptor pidfd(::pidfd_open(process, 0));
        if (!pidfd.isOpen()) return false;
        // Read last: that it started when the listed one did shows that the number had not been
        // given to another process when the pidfd was opened.
        const ProcessFolder folder(process, processFolder_);
        const auto facts = folder.facts();
        if (!facts || facts.value().hasEnded ||
            facts.value().startTime != program.process.started ||
            withoutDeleted(folder.executablePath()) != program.executable) {
            return false;
        }
        return ::pidfd_send_signal(pidfd.get(), SIGTERM, nullptr, 0) == 0;
    }

  private:
    /// Names the mounts that a process sees; "" where that is kept from us.
    static Result<std::string> textOfMounts(const ProcessFolder& folder) {
        Result<std::string> mounts = folder.link("ns/mnt");
        if (mounts || isGone(mounts.error()) || isRefused(mounts.error()))
            return mounts ? std::move(mounts) : std::string();
        return mounts;
    }

    Seen look(pid_t process, const std::string& ownMounts) const {
        const ProcessFolder folder(process, processFolder_);
        const Result<uid_t> user = folder.user();
        if (!user) return absent(user.error());
        if (user.value() != ::getuid()) return Seen(std::nullopt);
        Result<ProcessFolder::Facts> facts = folder.facts();
        if (!facts) return absent(facts.error());
        if (facts.value().hasEnded || facts.value().isKernels) return Seen(std::nullopt);
        RunningProgram program;
        program.process = {process, facts.value().startTime};
        program.parent = facts.value().parent;
        program.comm = std::move(facts.value().name);
        const Result<std::string> executable = folder.link("exe");
        if (executable) {
            program.executable = withoutDeleted(executable.value());
        } else if (executable.error().code == ENOENT && facts.value().hasThreads) {
            // Its first thread has ended, and with it went the name; the others go on.
        } else if (isGone(executable.error())) {
            return Seen(std::nullopt);
        } else if (!isRefused(executable.error()) && executable.error().code != ENAMETOOLONG) {
            return executable.error();
        }
        const Result<Done> sandbox = findSandbox(folder, ownMounts, program);
        if (!sandbox) return sandbox.error();
        if (lastComponent(program.executable).starts_with("python3")) {
            const Result<std::string> arguments = textIfAny(folder, "cmdline");
            if (!arguments) return arguments.error();
            program.script = scriptOf(folder, arguments.value());
        }
        return Seen(std::move(program));
    }

    static Seen absent(const Error& error) {
        if (isGone(error) || isRefused(error)) return Seen(std::nullopt);
        return error;
    }

    static Result<Done> findSandbox(const ProcessFolder& folder, const std::string& ownMounts,
                                    RunningProgram& program) {
        const Result<std::string> groups = textIfAny(folder, "cgroup");
        if (!groups) return groups.error();
        program.snap = snapOfExecutable(program.executable);
        if (program.snap.empty()) program.snap = snapOfControlGroups(groups.value());
        program.flatpak = flatpakOfControlGroups(groups.value());
        if (!program.flatpak.empty()) return Done{};
        // Whoever sees our mounts is in no sandbox. Their root is left alone: it costs, and may lie
        // on a disk that does not answer.
        const Result<std::string> mounts = textOfMounts(folder);
        if (!mounts) return mounts.error();
        if (mounts.value() == ownMounts) return Done{};
        const Result<std::string> info = folder.text("root/.flatpak-info");
        if (info) program.flatpak = flatpakOfInfo(info.value());
        if (!info && isShortage(info.error())) return info.error();
        return Done{};
    }

    static std::string scriptOf(const ProcessFolder& folder, std::string_view arguments) {
        const PythonScript script = pythonScript(arguments);
        if (!script.module.empty()) {
            return script.module.substr(script.module.rfind('.') + 1);
        }
        if (script.path.empty()) return {};
        const bool isAbsolute = script.path.front() == '/';
        if (!folder.hasFile(isAbsolute ? "root" + script.path : "cwd/" + script.path)) return {};
        return std::string(lastComponent(script.path));
    }

    const std::string processFolder_;
};

}  // namespace

std::unique_ptr<ProgramListing> makeProgramListing(const std::string& processFolder) {
    return std::make_unique<LinuxProgramListing>(processFolder);
}

}  // namespace dorvanel::platform

// SPDX-License-Identifier: MIT
#include "platform/ProcessManager.h"

// Said outside, as the header of some C libraries does not say it for C++.
extern "C" {
#include <sys/pidfd.h>
}
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

#include "platform/linux/ApplicationBundle.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/ProcessFolder.h"

namespace dorvanel::platform {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLongestName = 31;

/// An application as one walk met it. Two descriptors keep it apart from every other process: the
/// folder for looking, the pidfd for signalling.
struct Application {
    ProcessSerialNumber serial;
    ProcessFolder folder;
    FileDescriptor pidfd;
    ProcessFolder::Executable executable;
    std::string bundle;

    /// Still there, and not turned into another program by exec.
    [[nodiscard]] bool isUnchanged() const { return folder.executable() == executable; }
};

/// The process's number and its start: no number is given twice within one tick of the clock.
std::optional<ProcessSerialNumber> serialOf(const ProcessFolder& folder, pid_t process) {
    const std::optional<std::uint64_t> start = folder.startTime();
    if (!start) return std::nullopt;
    return ProcessSerialNumber{static_cast<std::uint32_t>(*start),
                               static_cast<std::uint32_t>(process)};
}

std::optional<Application> applicationOf(pid_t process) {
    ProcessFolder folder(process);
    const auto executable = folder.executable();
    if (!executable) return std::nullopt;
    const auto user = folder.user();
    if (!user || user.value() != ::getuid()) return std::nullopt;
    std::string bundle = applicationBundleOf(folder.executablePath());
    if (bundle.empty()) return std::nullopt;
    FileDescriptor pidfd(::pidfd_open(process, 0));
    // Read last: that the folder still answers shows that the number had not been given to
    // another process when the pidfd was opened.
    const auto serial = serialOf(folder, process);
    if (!pidfd.isOpen() || !serial) return std::nullopt;
    return Application{*serial, std::move(folder), std::move(pidfd), *executable,
                       std::move(bundle)};
}

class LinuxProcessManager final : public ProcessManager {
  public:
    ProcessSerialNumber GetCurrentProcess() const override {
        const pid_t self = ::getpid();
        return serialOf(ProcessFolder(self), self)
            .value_or(ProcessSerialNumber{0, static_cast<std::uint32_t>(self)});
    }

    OSErr GetNextProcess(ProcessSerialNumber& process) override {
        Applications::const_iterator next;
        if (process == kNoProcess) {
            look();
            next = applications_.begin();
        } else {
            next = find(process);
            if (next != applications_.end()) ++next;
        }
        if (next == applications_.end()) return procNotFound;
        process = next->serial;
        return noErr;
    }

    OSErr GetProcessInformation(const ProcessSerialNumber& process,
                                ProcessInfoRec& information) override {
        const auto application = find(process);
        if (application == applications_.end()) return procNotFound;
        const BundleKind kind = kindOfBundle(application->bundle);
        if (!application->isUnchanged()) return procNotFound;
        information.processName = bundleName(application->bundle).substr(0, kLongestName);
        information.processType = kind.type;
        information.processSignature = kind.creator;
        return noErr;
    }

    bool SameProcess(const ProcessSerialNumber& one,
                     const ProcessSerialNumber& other) const override {
        return one == other;
    }

    OSErr SendQuit(const ProcessSerialNumber& process) override {
        if (SameProcess(process, GetCurrentProcess())) return errAEEventNotHandled;
        const auto application = find(process);
        if (application == applications_.end() || !application->isUnchanged()) return procNotFound;
        if (::pidfd_send_signal(application->pidfd.get(), SIGTERM, nullptr, 0) == 0) return noErr;
        return errno == ESRCH ? procNotFound : errAEEventNotHandled;
    }

  private:
    using Applications = std::vector<Application>;

    void look() {
        applications_.clear();
        std::error_code error;
        for (fs::directory_iterator entry("/proc", error), end; !error && entry != end;
             entry.increment(error)) {
            const std::string name = entry->path().filename().native();
            pid_t process = 0;
            const auto [rest, notNumber] =
                std::from_chars(name.data(), name.data() + name.size(), process);
            if (notNumber != std::errc() || rest != name.data() + name.size()) continue;
            if (auto application = applicationOf(process)) {
                applications_.push_back(std::move(*application));
            }
        }
    }

    [[nodiscard]] Applications::const_iterator find(const ProcessSerialNumber& process) const {
        return std::find_if(
            applications_.begin(), applications_.end(),
            [&](const Application& application) { return application.serial == process; });
    }

    Applications applications_;
};

}  // namespace

std::unique_ptr<ProcessManager> makeProcessManager() {
    return std::make_unique<LinuxProcessManager>();
}

}  // namespace dorvanel::platform

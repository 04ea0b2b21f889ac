// SPDX-License-Identifier: MIT
#include "platform/linux/ProcessFolder.h"

#include <fcntl.h>
#include <limits.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <string_view>
#include <vector>

namespace dorvanel::platform {
namespace {

constexpr std::size_t kMostText = 65536;
constexpr unsigned long kKernelThread = 0x00200000;  // PF_KTHREAD

template <typename Number>
std::optional<Number> leadingNumber(std::string_view text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc()) return std::nullopt;
    return number;
}

std::vector<std::string_view> words(std::string_view text) {
    std::vector<std::string_view> found;
    while (true) {
        text.remove_prefix(std::min(text.find_first_not_of(" \n"), text.size()));
        if (text.empty()) return found;
        found.push_back(text.substr(0, text.find_first_of(" \n")));
        text.remove_prefix(found.back().size());
    }
}

}  // namespace

ProcessFolder::ProcessFolder(pid_t process, const std::string& processFolder)
    : folder_(::open((processFolder + "/" + std::to_string(process)).c_str(),
                     O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (!folder_.isOpen()) openError_ = errno;
}

Result<uid_t> ProcessFolder::user() const {
    constexpr std::string_view key = "\nUid:\t";
    const Result<std::string> status = text("status");
    if (!status) return status.error();
    const std::size_t at = status.value().find(key);
    if (at != std::string::npos) {
        const auto user = leadingNumber<uid_t>(status.value().substr(at + key.size()));
        if (user) return *user;
    }
    return Error{0, "read", "status", "no user in it"};
}

std::optional<std::uint64_t> ProcessFolder::startTime() const {
    const Result<Facts> all = facts();
    if (!all) return std::nullopt;
    return all.value().startTime;
}

Result<ProcessFolder::Facts> ProcessFolder::facts() const {
    const Result<std::string> stat = text("stat");
    if (!stat) return stat.error();
    const std::string_view line = stat.value();
    // The name may hold anything, brackets too; nothing after it does.
    const std::size_t begin = line.find('(');
    const std::size_t end = line.rfind(')');
    if (begin != std::string_view::npos && end != std::string_view::npos && begin < end) {
        // proc(5): the name is field 2.
        const auto fields = words(line.substr(end + 1));
        const auto field = [&](std::size_t number) {
            return number - 3 < fields.size() ? fields[number - 3] : std::string_view();
        };
        const auto parent = leadingNumber<pid_t>(field(4));
        const auto flags = leadingNumber<unsigned long>(field(9));
        const auto threads = leadingNumber<long>(field(20));
        const auto start = leadingNumber<std::uint64_t>(field(22));
        if (parent && flags && threads && start) {
            const char state = field(3).front();
            // A first thread that has ended lies there as the whole process does when it has.
            const bool hasThreads = *threads > 1;
            const bool hasEnded = (state == 'Z' && !hasThreads) || state == 'X' || state == 'x';
            return Facts{std::string(line.substr(begin + 1, end - begin - 1)),
                         *parent,
                         *start,
                         hasThreads,
                         (*flags & kKernelThread) != 0,
                         hasEnded};
        }
    }
    return Error{0, "read", "stat", "not understood"};
}

std::optional<ProcessFolder::Executable> ProcessFolder::executable() const {
    struct stat status {};
    if (!folder_.isOpen() || ::fstatat(folder_.get(), "exe", &status, 0) != 0) return std::nullopt;
    return Executable{status.st_dev, status.st_ino};
}

std::string ProcessFolder::executablePath() const {
    const Result<std::string> path = link("exe");
    return path ? path.value() : std::string();
}

Result<std::string> ProcessFolder::text(const std::string& name) const {
    if (!folder_.isOpen()) return Error{openError_, "open", name, {}};
    const FileDescriptor file(
        ::openat(folder_.get(), name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!file.isOpen()) return Error::fromErrno("open", name);
    std::string text;
    std::array<char, 4096> part{};
    while (text.size() < kMostText) {
        const ssize_t length = ::read(file.get(), part.data(), part.size());
        if (length < 0 && errno == EINTR) continue;
        if (length < 0) return Error::fromErrno("read", name);
        if (length == 0) break;
        text.append(part.data(), static_cast<std::size_t>(length));
    }
    return text;
}

Result<std::string> ProcessFolder::link(const std::string& name) const {
    if (!folder_.isOpen()) return Error{openError_, "open", name, {}};
    std::array<char, PATH_MAX> target{};
    const ssize_t length = ::readlinkat(folder_.get(), name.c_str(), target.data(), target.size());
    if (length < 0) return Error::fromErrno("read", name);
    return std::string(target.data(), static_cast<std::size_t>(length));
}

bool ProcessFolder::hasFile(const std::string& name) const {
    struct stat status {};
    if (!folder_.isOpen()) return false;
    if (::fstatat(folder_.get(), name.c_str(), &status, 0) == 0) return S_ISREG(status.st_mode);
    return errno != ENOENT && errno != ENOTDIR;
}

}  // namespace dorvanel::platform

// SPDX-License-Identifier: MIT
#include "platform/linux/ProcessFolder.h"

#include <fcntl.h>
#include <limits.h>
#include <sys/stat.h>

#include <array>
#include <charconv>
#include <string_view>

namespace dorvanel::platform {
namespace {

template <typename Number>
std::optional<Number> leadingNumber(std::string_view text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc()) return std::nullopt;
    return number;
}

}  // namespace

ProcessFolder::ProcessFolder(pid_t process)
    : folder_(::open(("/proc/" + std::to_string(process)).c_str(),
                     O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}

std::optional<uid_t> ProcessFolder::user() const {
    constexpr std::string_view key = "\nUid:\t";
    const std::string text = read("status");
    const std::size_t at = text.find(key);
    if (at == std::string::npos) return std::nullopt;
    return leadingNumber<uid_t>(std::string_view(text).substr(at + key.size()));
}

std::optional<std::uint64_t> ProcessFolder::startTime() const {
    constexpr int fieldsAfterName = 20;  // proc(5): the name is field 2, the start time field 22
    const std::string text = read("stat");
    // The name may hold anything, brackets too; nothing after it does.
    std::size_t at = text.rfind(')');
    for (int i = 0; i < fieldsAfterName && at != std::string::npos; ++i) {
        at = text.find(' ', at + 1);
    }
    if (at == std::string::npos) return std::nullopt;
    return leadingNumber<std::uint64_t>(std::string_view(text).substr(at + 1));
}

std::optional<ProcessFolder::Executable> ProcessFolder::executable() const {
    struct stat status {};
    if (!folder_.isOpen() || ::fstatat(folder_.get(), "exe", &status, 0) != 0) return std::nullopt;
    return Executable{status.st_dev, status.st_ino};
}

std::string ProcessFolder::executablePath() const {
    std::array<char, PATH_MAX> path{};
    if (!folder_.isOpen()) return {};
    const ssize_t length = ::readlinkat(folder_.get(), "exe", path.data(), path.size());
    return length > 0 ? std::string(path.data(), static_cast<std::size_t>(length)) : std::string();
}

std::string ProcessFolder::read(const char* name) const {
    if (!folder_.isOpen()) return {};
    const FileDescriptor file(::openat(folder_.get(), name, O_RDONLY | O_CLOEXEC));
    if (!file.isOpen()) return {};
    std::array<char, 4096> text{};  // what is asked for stands well within it
    const ssize_t length = ::read(file.get(), text.data(), text.size());
    return length > 0 ? std::string(text.data(), static_cast<std::size_t>(length)) : std::string();
}

}  // namespace dorvanel::platform

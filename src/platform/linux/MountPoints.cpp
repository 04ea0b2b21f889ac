// SPDX-License-Identifier: MIT
#include "platform/MountPoints.h"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <cerrno>

#include "platform/linux/FileDescriptor.h"

namespace dorvanel::platform {
namespace {

bool isOctal(char c) {
    return c >= '0' && c <= '7';
}

}  // namespace

std::string mountTableText(std::string_view text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text[i] == '\\' && i + 3 < text.size() && isOctal(text[i + 1]) &&
                              isOctal(text[i + 2]) && isOctal(text[i + 3]);
        if (!isEscape) {
            bytes += text[i];
            continue;
        }
        const int code = (text[i + 1] - '0') * 64 + (text[i + 2] - '0') * 8 + (text[i + 3] - '0');
        bytes += static_cast<char>(code);
        i += 3;
    }
    return bytes;
}

std::vector<std::string> parseMountTable(std::string_view table) {
    constexpr int fieldOfMountPoint = 4;  // after the two numbers, the device and the root
    std::vector<std::string> points;
    while (!table.empty()) {
        std::string_view line = table.substr(0, table.find('\n'));
        table.remove_prefix(std::min(table.size(), line.size() + 1));
        for (int field = 0; field < fieldOfMountPoint; ++field) {
            const std::size_t blank = line.find(' ');
            line.remove_prefix(blank == std::string_view::npos ? line.size() : blank + 1);
        }
        const std::string_view point = line.substr(0, line.find(' '));
        if (!point.empty()) points.push_back(mountTableText(point));
    }
    return points;
}

Result<std::vector<std::string>> mountPoints(const std::string& table) {
    const auto failed = [&](int code) { return Error{code, "read the mount points", table, {}}; };
    const FileDescriptor file(::open(table.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.isOpen()) return failed(errno);
    std::string text;
    std::array<char, 8192> buffer;
    ssize_t length = 0;
    while ((length = ::read(file.get(), buffer.data(), buffer.size())) != 0) {
        if (length > 0) text.append(buffer.data(), static_cast<std::size_t>(length));
        if (length < 0 && errno != EINTR) return failed(errno);
    }
    std::vector<std::string> points = parseMountTable(text);
    if (points.empty()) return failed(ENODATA);
    return points;
}

}  // namespace dorvanel::platform

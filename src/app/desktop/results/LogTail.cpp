// SPDX-License-Identifier: MIT
#include "app/desktop/results/LogTail.h"

#include <QStringList>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include "app/desktop/Bytes.h"
#include "app/desktop/Words.h"

namespace dorvanel::desktop {
namespace {

/// A line of a megabyte would keep the view busy for seconds.
constexpr std::size_t longestLine = 4096;

QString linesOf(std::string_view bytes) {
    QStringList lines;
    while (!bytes.empty()) {
        const std::size_t end = bytes.find('\n');
        std::string_view line = bytes.substr(0, end);
        bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
        for (; line.size() > longestLine; line.remove_prefix(longestLine)) {
            lines << displayText(line.substr(0, longestLine));
        }
        lines << displayText(line);
    }
    return lines.join(u'\n');
}

LogTail troubleOf(int code) {
    if (code == ENOENT)
        return {.trouble = Words::tr("There is no activity log yet."), .isMissing = true};
    return {.trouble = Words::tr("The activity log cannot be read: %1")
                           .arg(displayText(std::generic_category().message(code)))};
}

}  // namespace

LogTail readLogTail(const std::string& path, std::size_t limit) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::not_found) return troubleOf(ENOENT);
    if (error) return troubleOf(error.value());
    // A pipe, say, which nobody might ever write to.
    if (!std::filesystem::is_regular_file(status)) {
        return {.trouble = Words::tr("The activity log cannot be read: it is no regular file.")};
    }
    errno = 0;
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    if (!file) return troubleOf(errno == 0 ? EIO : errno);
    const auto size = static_cast<std::size_t>(std::max<std::streamoff>(file.tellg(), 0));
    const std::size_t start = size > limit ? size - limit : 0;
    file.seekg(static_cast<std::streamoff>(start));
    std::string bytes(size - start, '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (file.bad()) return troubleOf(errno == 0 ? EIO : errno);
    bytes.resize(static_cast<std::size_t>(file.gcount()));  // a run may have begun it afresh
    if (start > 0) {
        const std::size_t end = bytes.find('\n');
        if (end != std::string::npos) bytes.erase(0, end + 1);
    }
    return {.text = linesOf(bytes), .isOnlyTheEnd = start > 0};
}

}  // namespace dorvanel::desktop

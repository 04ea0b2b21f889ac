// SPDX-License-Identifier: MIT
#include "engine/UnfinishedEntry.h"

#include <fmt/format.h>

#include <charconv>
#include <system_error>

#include "engine/HoldingFolderName.h"

namespace dorvanel {
namespace {

constexpr std::string_view firstLine = "Dorvanel X unfinished 1\n";
constexpr std::string_view lastLine = "end\n";

bool isPlain(unsigned char byte) {
    return byte > 0x1f && byte < 0x7f && byte != '%';
}

std::string encoded(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += isPlain(byte) ? std::string(1, c) : fmt::format("%{:02X}", byte);
    }
    return text;
}

std::optional<std::string> decoded(std::string_view text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            bytes += text[i];
            continue;
        }
        unsigned byte = 0;
        const std::string_view digits = text.substr(i + 1, 2);
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
        if (error != std::errc() || end != digits.data() + 2) return std::nullopt;
        bytes += static_cast<char>(byte);
        i += 2;
    }
    return bytes;
}

/// The absolute path of a folder in its one way of writing.
bool isPlainPath(std::string_view path) {
    if (path == "/") return true;
    if (path.find('\0') != std::string_view::npos) return false;
    while (!path.empty()) {
        if (!path.starts_with('/')) return false;
        path.remove_prefix(1);
        const std::string_view component = path.substr(0, path.find('/'));
        if (component.empty() || component == "." || component == "..") return false;
        path.remove_prefix(component.size());
    }
    return true;
}

/// Takes the lines of a text one by one.
class Lines {
  public:
    explicit Lines(std::string_view text) : rest_(text) {}

    /// What stands behind "KEY=" on the next line; nothing where the line is another.
    std::optional<std::string_view> next(std::string_view key) {
        const std::size_t end = rest_.find('\n');
        if (end == std::string_view::npos || !rest_.starts_with(key)) return std::nullopt;
        const std::string_view line = rest_.substr(0, end);
        rest_.remove_prefix(end + 1);
        if (line.size() <= key.size() || line[key.size()] != '=') return std::nullopt;
        return line.substr(key.size() + 1);
    }
    template <typename Number>
    bool nextNumber(std::string_view key, Number& number) {
        const std::optional<std::string_view> text = next(key);
        if (!text) return false;
        const char* end = text->data() + text->size();
        const auto [stopped, error] = std::from_chars(text->data(), end, number);
        return error == std::errc() && stopped == end;
    }
    [[nodiscard]] std::string_view rest() const { return rest_; }

  private:
    std::string_view rest_;
};

}  // namespace

std::string textOf(const UnfinishedEntry& entry) {
    return fmt::format("{}folder={}\nname={}\ndevice={}\ninode={}\nborn={}\n{}", firstLine,
                       encoded(entry.folder), encoded(entry.name), entry.device, entry.inode,
                       entry.born, lastLine);
}

std::optional<UnfinishedEntry> unfinishedEntryOf(std::string_view text) {
    if (!text.starts_with(firstLine)) return std::nullopt;
    Lines lines(text.substr(firstLine.size()));
    const std::optional<std::string_view> folder = lines.next("folder");
    const std::optional<std::string_view> name = lines.next("name");
    UnfinishedEntry entry;
    if (!folder || !name || !lines.nextNumber("device", entry.device) ||
        !lines.nextNumber("inode", entry.inode) || !lines.nextNumber("born", entry.born)) {
        return std::nullopt;
    }
    std::optional<std::string> path = decoded(*folder);
    if (!path || !isPlainPath(*path) || path->empty()) return std::nullopt;
    if (!isHoldingFolderName(*name)) return std::nullopt;
    entry.folder = std::move(*path);
    entry.name = *name;
    // Anything that is not as it is written was not written by us.
    if (textOf(entry) != text) return std::nullopt;
    return entry;
}

}  // namespace dorvanel

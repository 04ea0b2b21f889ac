// SPDX-License-Identifier: MIT
#include "targets/mentions/ThumbnailUri.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace dorvanel::mentions {
namespace {

constexpr std::string_view signature = "\x89PNG\r\n\x1a\n";
constexpr std::string_view keyword = "Thumb::URI";
/// A path of the longest kind, each byte encoded, and more.
constexpr std::uint32_t longestText = 16 * 1024;
/// More parts has no thumbnail.
constexpr int mostChunks = 4096;

/// A file of which parts are read; what lies together is read at once.
class Parts {
  public:
    Parts(platform::CleaningCalls& calls, int file) : calls_(calls), file_(file) {}

    /// The bytes at `offset`, good until the next call; fewer where the file ends.
    std::string_view at(std::uint64_t offset, std::size_t size) {
        const bool isThere =
            offset >= start_ && offset - start_ + size <= std::uint64_t{buffer_.size()};
        if (!isThere) read(offset, std::max(size, std::size_t{4096}));
        return std::string_view(buffer_).substr(static_cast<std::size_t>(offset - start_), size);
    }

  private:
    void read(std::uint64_t offset, std::size_t size) {
        start_ = offset;
        buffer_.resize(size);
        const std::ptrdiff_t got = calls_.readAt(file_, buffer_.data(), size, offset);
        buffer_.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    }

    platform::CleaningCalls& calls_;
    int file_;
    std::uint64_t start_ = 0;
    std::string buffer_;
};

std::uint32_t lengthIn(std::string_view bytes) {
    std::uint32_t length = 0;
    for (const char byte : bytes.substr(0, 4)) {
        length = length << 8 | static_cast<std::uint8_t>(byte);
    }
    return length;
}

std::optional<std::string> uriIn(Parts parts) {
    if (parts.at(0, signature.size()) != signature) return std::nullopt;
    std::uint64_t offset = signature.size();
    for (int i = 0; i < mostChunks; ++i) {
        const std::string head(parts.at(offset, 8));  // length and kind
        if (head.size() < 8) return std::nullopt;
        const std::uint32_t length = lengthIn(head);
        const std::string_view kind = std::string_view(head).substr(4);
        if (kind == "IEND") return std::nullopt;
        if (kind == "tEXt" && length > keyword.size() && length <= longestText) {
            const std::string_view text = parts.at(offset + 8, length);
            const bool isUri =
                text.size() == length && text.starts_with(keyword) && text[keyword.size()] == '\0';
            if (isUri) return std::string(text.substr(keyword.size() + 1));
        }
        offset += std::uint64_t{12} + length;  // with a checksum behind
    }
    return std::nullopt;
}

}  // namespace

std::optional<std::string> thumbnailUri(platform::CleaningCalls& calls, int folder,
                                        const char* name) {
    const int file = calls.openForReading(folder, name);
    if (file < 0) return std::nullopt;
    platform::CleaningStatus status;
    std::optional<std::string> uri;
    if (calls.status(file, status) >= 0 && status.kind == platform::EntryKind::regular) {
        uri = uriIn(Parts(calls, file));
    }
    calls.close(file);
    return uri;
}

}  // namespace dorvanel::mentions

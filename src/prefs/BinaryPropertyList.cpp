// SPDX-License-Identifier: MIT
#include "prefs/BinaryPropertyList.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace dorvanel {
namespace {

/// The objects of a list, by number; every read is checked against the bytes that there are.
class BinaryList {
  public:
    BinaryList(std::string_view bytes, std::size_t limit) : bytes_(bytes), limit_(limit) {
        constexpr std::size_t trailerSize = 32;
        if (bytes.size() < trailerSize) return;
        const std::size_t trailer = bytes.size() - trailerSize;
        offsetSize_ = static_cast<std::size_t>(number(trailer + 6, 1).value());
        referenceSize_ = static_cast<std::size_t>(number(trailer + 7, 1).value());
        const std::uint64_t count = number(trailer + 8, 8).value();
        top_ = number(trailer + 16, 8).value();
        offsets_ = number(trailer + 24, 8).value();
        if (count <= bytes.size()) sizes_.resize(count);  // an object takes a byte at least
    }

    [[nodiscard]] bool isWithin(int levels) {
        const std::optional<std::uint64_t> size = expandedSize(top_, levels);
        return size && *size <= limit_;
    }

  private:
    /// What an element takes at least once it is written as XML.
    static constexpr std::uint64_t elementBytes = 16;

    enum State : std::uint64_t { notSeen = 0, atWork = UINT64_MAX };

    struct Header {
        unsigned kind;        ///< the upper half of the first byte
        std::uint64_t count;  ///< the lower half, or the number that takes its place
        std::uint64_t end;    ///< where what it counts begins
    };

    /// A number of so many bytes, the most significant one first.
    [[nodiscard]] std::optional<std::uint64_t> number(std::uint64_t at, std::size_t size) const {
        if (size == 0 || size > 8 || at > bytes_.size() || size > bytes_.size() - at) return {};
        std::uint64_t value = 0;
        for (const char byte : bytes_.substr(at, size)) {
            value = value << 8 | static_cast<unsigned char>(byte);
        }
        return value;
    }

    [[nodiscard]] std::optional<Header> headerOf(std::uint64_t object) const {
        // Both factors are small where the object exists.
        if (object >= sizes_.size() || offsets_ > bytes_.size()) return {};
        const auto at = number(offsets_ + object * offsetSize_, offsetSize_);
        const auto marker = at ? number(*at, 1) : std::nullopt;
        if (!marker) return {};
        Header header{static_cast<unsigned>(*marker >> 4), *marker & 0xF, *at + 1};
        constexpr unsigned firstCounted = 0x4;
        if (header.count != 0xF || header.kind < firstCounted) return header;
        const auto length = number(header.end, 1);
        const std::size_t size = length ? std::size_t{1} << (*length & 0x3) : 0;
        const auto count = number(header.end + 1, size);
        if (!count) return {};
        return Header{header.kind, *count, header.end + 1 + size};
    }

    /// Bytes of the object with everything in it; nothing where that cannot be told, for an object
    /// that holds itself, and beyond the limit.
    std::optional<std::uint64_t> expandedSize(std::uint64_t object, int levels) {
        const auto header = levels > 0 ? headerOf(object) : std::nullopt;
        if (!header || sizes_[object] == atWork) return {};
        if (sizes_[object] != notSeen) return sizes_[object];
        sizes_[object] = atWork;
        const auto size = header->kind < 0xA ? plainSize(*header) : containerSize(*header, levels);
        if (!size || *size > limit_) return {};
        sizes_[object] = *size;
        return size;
    }

    /// Whether a text has a NUL among its characters of so many bytes.
    [[nodiscard]] bool holdsNul(const Header& header, std::size_t width) const {
        for (std::uint64_t i = 0; i < header.count; ++i) {
            if (number(header.end + i * width, width).value_or(0) == 0) return true;
        }
        return false;
    }

    [[nodiscard]] std::optional<std::uint64_t> plainSize(const Header& header) const {
        switch (header.kind) {
            case 0x1:
            case 0x2:
            case 0x3:
                return elementBytes + (std::uint64_t{1} << header.count);
            case 0x5:
            case 0x6: {
                const std::size_t width = header.kind == 0x6 ? 2 : 1;
                if (header.count > bytes_.size() || holdsNul(header, width)) return {};
                return elementBytes + header.count * width;
            }
            case 0x4:
                if (header.count > bytes_.size()) return {};
                return elementBytes + header.count;
            default:
                return elementBytes + header.count;
        }
    }

    std::optional<std::uint64_t> containerSize(const Header& header, int levels) {
        constexpr unsigned dictionary = 0xD;
        if (header.count > bytes_.size()) return {};
        const std::uint64_t references = header.count * (header.kind == dictionary ? 2 : 1);
        std::uint64_t total = elementBytes;
        for (std::uint64_t i = 0; i < references; ++i) {
            const auto object = number(header.end + i * referenceSize_, referenceSize_);
            const auto size = object ? expandedSize(*object, levels - 1) : std::nullopt;
            if (!size) return {};
            total += *size;
            if (total > limit_) return {};
        }
        return total;
    }

    std::string_view bytes_;
    std::uint64_t limit_;
    std::size_t offsetSize_ = 0;
    std::size_t referenceSize_ = 0;
    std::uint64_t top_ = 0;
    std::uint64_t offsets_ = 0;
    std::vector<std::uint64_t> sizes_;  ///< by object; or its State
};

}  // namespace

bool binaryPropertyListIsWithin(std::string_view bytes, std::size_t limit, int levels) {
    return BinaryList(bytes, limit).isWithin(levels);
}

}  // namespace dorvanel

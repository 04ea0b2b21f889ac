// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include "base/Md5.h"

namespace dorvanel::test {

inline const std::string pngSignature = "\x89PNG\r\n\x1a\n";

/// A part of a PNG file; its checksum is not that of its bytes.
inline std::string pngChunk(const std::string& kind, const std::string& bytes) {
    std::string chunk;
    const auto size = static_cast<std::uint32_t>(bytes.size());
    for (int shift = 24; shift >= 0; shift -= 8) chunk += static_cast<char>(size >> shift);
    return chunk + kind + bytes + "0000";
}

/// What a reader for the URI sees of a thumbnail.
inline std::string pngOf(const std::string& uri) {
    return pngSignature + pngChunk("IHDR", std::string(13, '\1')) +
           pngChunk("tEXt", std::string("Thumb::URI") + '\0' + uri) +
           pngChunk("IDAT", std::string(64, 'x')) + pngChunk("IEND", "");
}

/// The name of a thumbnail of what this URI leads to.
inline std::string thumbnailName(const std::string& uri) {
    return hexOf(md5(uri)) + ".png";
}

}  // namespace dorvanel::test

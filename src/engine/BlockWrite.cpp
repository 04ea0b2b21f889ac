// SPDX-License-Identifier: MIT
#include "engine/BlockWrite.h"

#include <cerrno>

namespace dorvanel {
namespace {

bool hasNoRoom(int code) {
    return code == ENOSPC || code == EFBIG || code == EDQUOT;
}

}  // namespace

BlockWritten writeBlock(platform::SystemCalls& system, int file, const void* bytes,
                        std::size_t size, std::uint64_t offset, bool mayLackRoom) {
    BlockWritten done;
    const char* from = static_cast<const char*>(bytes);
    while (size > 0) {
        const std::ptrdiff_t written = system.writeAt(file, from, size, offset);
        if (written <= 0) {
            const int code = written == 0 ? EIO : static_cast<int>(-written);
            if (!mayLackRoom || !hasNoRoom(code)) done.code = code;
            return done;
        }
        const auto count = static_cast<std::size_t>(written);
        done.bytes += count;
        from += count;
        offset += count;
        size -= count;
    }
    return done;
}

}  // namespace dorvanel

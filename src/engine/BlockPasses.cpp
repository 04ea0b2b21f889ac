// SPDX-License-Identifier: MIT
#include "engine/BlockPasses.h"

#include <algorithm>

namespace dorvanel {

BlockWritten BlockPasses::write(platform::SystemCalls& system, int file, Memory& memory) {
    BlockWritten all;
    const std::size_t words = (length + 1) / 2;
    for (BlockContent& content : contents) {
        if (content.fill) {
            content.fill->produce(memory.data(), 0, words);
        } else {
            std::fill_n(memory.begin(), words, content.word);
        }
        const BlockWritten written = writeBlock(system, file, memory.data(), length, offset, false);
        all.bytes += written.bytes;
        if (all.code == 0) all.code = written.code;
    }
    return all;
}

}  // namespace dorvanel

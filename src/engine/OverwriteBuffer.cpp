// SPDX-License-Identifier: MIT
#include "engine/OverwriteBuffer.h"

#include <algorithm>

namespace dorvanel {

void OverwriteBuffer::randomize() {
    switch (mOverwritePattern) {
        case pattern::random:
        case pattern::randomToo:
            draws_.takeFill();
            random_ = true;
            made_ = 0;
            break;
        case pattern::zeros:
            fillWith(0x0000);
            break;
        case pattern::ones:
            fillWith(0xFFFF);
            break;
        case pattern::fives:
            fillWith(0x5555);
            break;
        case pattern::tens:
            fillWith(0xAAAA);
            break;
        default:
            break;
    }
}

void OverwriteBuffer::fillWith(std::uint16_t word) {
    if (!random_ && word_ == word) return;  // it is what the buffer holds
    random_ = false;
    word_ = word;
    made_ = 0;
}

std::optional<BlockContent> OverwriteBuffer::content() const {
    if (!random_) return BlockContent{std::nullopt, word_};
    const Fill* fill = draws_.fill();
    if (fill == nullptr || made_ != 0) return std::nullopt;
    return BlockContent{*fill, 0};
}

const void* OverwriteBuffer::bytes(std::size_t size) {
    const std::size_t wanted = (size + 1) / 2;
    if (made_ < wanted) {
        if (random_) {
            made_ = draws_.produce(mBuffer.data(), made_, wanted);
        } else {
            std::fill(mBuffer.begin() + static_cast<std::ptrdiff_t>(made_),
                      mBuffer.begin() + static_cast<std::ptrdiff_t>(wanted), word_);
            made_ = wanted;
        }
    }
    return mBuffer.data();
}

}  // namespace dorvanel

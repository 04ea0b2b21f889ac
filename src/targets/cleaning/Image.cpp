// SPDX-License-Identifier: MIT
#include "targets/cleaning/Image.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <vector>

namespace dorvanel::cleaning {
namespace {

Image::Outcome failed(ImageMemory& memory, int code, const char* operation) {
    if (memory.fault.operation.empty()) memory.fault = {code, operation, false};
    return Image::Outcome::failed;
}

}  // namespace

int writeWhole(platform::CleaningCalls& calls, int file, const void* data, std::size_t size,
               std::uint64_t offset) {
    const auto* from = static_cast<const unsigned char*>(data);
    while (size > 0) {
        const std::ptrdiff_t written = calls.writeAt(file, from, size, offset);
        if (written <= 0) return written < 0 ? static_cast<int>(written) : -EIO;
        const auto count = static_cast<std::size_t>(written);
        from += count;
        offset += count;
        size -= count;
    }
    return 0;
}

int overwriteWithZeros(platform::CleaningCalls& calls, int file, std::uint64_t from,
                       std::uint64_t to) {
    const std::vector<unsigned char> zeros(
        static_cast<std::size_t>(std::min<std::uint64_t>(to > from ? to - from : 0, 1 << 20)));
    while (from < to) {
        const auto size =
            static_cast<std::size_t>(std::min<std::uint64_t>(to - from, zeros.size()));
        const int written = writeWhole(calls, file, zeros.data(), size, from);
        if (written < 0) return written;
        from += size;
    }
    return calls.flush(file);
}

std::ptrdiff_t readWhole(platform::CleaningCalls& calls, int file, void* data, std::size_t size,
                         std::uint64_t offset) {
    auto* to = static_cast<unsigned char*>(data);
    std::size_t count = 0;
    while (count < size) {
        const std::ptrdiff_t got = calls.readAt(file, to + count, size - count, offset + count);
        if (got < 0) return got;
        if (got == 0) break;
        count += static_cast<std::size_t>(got);
    }
    return static_cast<std::ptrdiff_t>(count);
}

MemoryImage::~MemoryImage() {
    memory_.left += blocks_.size() * blockSize;
}

Image::Outcome MemoryImage::readBelow(unsigned char* data, std::size_t size, std::uint64_t offset) {
    const std::uint64_t there =
        offset < below_ ? std::min<std::uint64_t>(size, below_ - offset) : 0;
    const auto wanted = static_cast<std::size_t>(there);
    std::memset(data + wanted, 0, size - wanted);
    if (wanted == 0) return Outcome::done;
    const std::ptrdiff_t got = readWhole(*calls_, file_, data, wanted, offset);
    if (got < 0) return failed(memory_, static_cast<int>(-got), "read");
    // It was longer when it was opened: somebody shortened it.
    if (static_cast<std::size_t>(got) < wanted) return failed(memory_, EIO, "read");
    return Outcome::done;
}

Image::Outcome MemoryImage::read(void* data, std::size_t size, std::uint64_t offset) {
    auto* to = static_cast<unsigned char*>(data);
    const std::uint64_t there = offset < size_ ? std::min<std::uint64_t>(size, size_ - offset) : 0;
    const std::uint64_t end = offset + there;
    std::memset(to + there, 0, size - static_cast<std::size_t>(there));
    // What lies between changed blocks is read below in one go.
    std::uint64_t unchanged = offset;
    const auto readUnchanged = [&](std::uint64_t limit) {
        const auto count = static_cast<std::size_t>(limit - unchanged);
        return count == 0 ? Outcome::done : readBelow(to + (unchanged - offset), count, unchanged);
    };
    for (std::uint64_t at = offset; at < end;) {
        const auto within = static_cast<std::size_t>(at % blockSize);
        const auto count =
            static_cast<std::size_t>(std::min<std::uint64_t>(blockSize - within, end - at));
        const auto found = blocks_.find(at / blockSize);
        if (found != blocks_.end()) {
            if (readUnchanged(at) == Outcome::failed) return Outcome::failed;
            std::memcpy(to + (at - offset), found->second->data() + within, count);
            unchanged = at + count;
        }
        at += count;
    }
    if (readUnchanged(end) == Outcome::failed) return Outcome::failed;
    return there < size ? Outcome::shortRead : Outcome::done;
}

MemoryImage::Block* MemoryImage::blockAt(std::uint64_t index, bool isWhole) {
    const auto found = blocks_.find(index);
    if (found != blocks_.end()) return found->second.get();
    if (memory_.left < blockSize) {
        if (memory_.fault.operation.empty()) memory_.fault = {0, "change", true};
        return nullptr;
    }
    auto block = std::make_unique<Block>();
    if (!isWhole && readBelow(block->data(), blockSize, index * blockSize) == Outcome::failed) {
        return nullptr;
    }
    memory_.left -= blockSize;
    return blocks_.emplace(index, std::move(block)).first->second.get();
}

Image::Outcome MemoryImage::write(const void* data, std::size_t size, std::uint64_t offset) {
    const auto* from = static_cast<const unsigned char*>(data);
    const std::uint64_t end = offset + size;
    for (std::uint64_t at = offset; at < end;) {
        const auto within = static_cast<std::size_t>(at % blockSize);
        const auto count =
            static_cast<std::size_t>(std::min<std::uint64_t>(blockSize - within, end - at));
        Block* block = blockAt(at / blockSize, count == blockSize);
        if (block == nullptr) return Outcome::failed;
        std::memcpy(block->data() + within, from + (at - offset), count);
        at += count;
    }
    size_ = std::max(size_, end);
    return Outcome::done;
}

Image::Outcome MemoryImage::truncate(std::uint64_t size) {
    // What lies beyond must be zeros should the file grow again.
    if (size < size_) {
        const std::uint64_t firstGone = (size + blockSize - 1) / blockSize;
        memory_.left += blockSize * std::erase_if(blocks_, [&](const auto& entry) {
                            return entry.first >= firstGone;
                        });
        const auto last = blocks_.find(size / blockSize);
        if (last != blocks_.end()) {
            const auto within = static_cast<std::size_t>(size % blockSize);
            std::memset(last->second->data() + within, 0, blockSize - within);
        }
        below_ = std::min(below_, size);
    }
    size_ = size;
    return Outcome::done;
}

Image::Outcome DirectImage::read(void* data, std::size_t size, std::uint64_t offset) {
    const std::ptrdiff_t got = readWhole(calls_, file_, data, size, offset);
    if (got < 0) return failed(memory_, static_cast<int>(-got), "read");
    const auto count = static_cast<std::size_t>(got);
    std::memset(static_cast<unsigned char*>(data) + count, 0, size - count);
    return count < size ? Outcome::shortRead : Outcome::done;
}

Image::Outcome DirectImage::write(const void* data, std::size_t size, std::uint64_t offset) {
    const int written = writeWhole(calls_, file_, data, size, offset);
    if (written < 0) return failed(memory_, -written, "write");
    size_ = std::max(size_, offset + size);
    return Outcome::done;
}

Image::Outcome DirectImage::truncate(std::uint64_t size) {
    if (size < size_) {
        const int overwritten = overwriteWithZeros(calls_, file_, size, size_);
        if (overwritten < 0) return failed(memory_, -overwritten, "overwrite");
    }
    const int truncated = calls_.truncate(file_, size);
    if (truncated < 0) return failed(memory_, -truncated, "truncate");
    size_ = size;
    return Outcome::done;
}

Image::Outcome DirectImage::flush() {
    const int flushed = calls_.flush(file_);
    return flushed < 0 ? failed(memory_, -flushed, "fsync") : Outcome::done;
}

}  // namespace dorvanel::cleaning

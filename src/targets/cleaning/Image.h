// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

#include "platform/CleaningCalls.h"

namespace dorvanel::cleaning {

/// What went wrong when an image was read or written: the first of it, since the rest follows.
struct ImageFault {
    int code = 0;           ///< an errno value
    std::string operation;  ///< "" where nothing went wrong
    bool tooLarge = false;  ///< the changes did not fit into memory
};

/// A file as the database library is shown it. One thread at a time.
class Image {
  public:
    enum class Outcome { done, shortRead, failed };

    virtual ~Image() = default;
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    /// Where the image ends before, the rest of `data` becomes zeros and the read is short.
    virtual Outcome read(void* data, std::size_t size, std::uint64_t offset) = 0;
    virtual Outcome write(const void* data, std::size_t size, std::uint64_t offset) = 0;
    virtual Outcome truncate(std::uint64_t size) = 0;
    virtual Outcome flush() = 0;
    [[nodiscard]] virtual std::uint64_t size() const = 0;

  protected:
    Image() = default;
};

/// Memory that the images of one cleaning may take together.
struct ImageMemory {
    std::uint64_t left = std::uint64_t{1024} * 1024 * 1024;  ///< bytes
    ImageFault fault;
};

/// A file whose changes stay in memory. Below them lie the bytes of an open file, which is only
/// read and must stay open, or nothing.
class MemoryImage final : public Image {
  public:
    explicit MemoryImage(ImageMemory& memory) : memory_(memory) {}
    MemoryImage(ImageMemory& memory, platform::CleaningCalls& calls, int file, std::uint64_t size)
        : memory_(memory), calls_(&calls), file_(file), below_(size), size_(size) {}
    ~MemoryImage() override;

    Outcome read(void* data, std::size_t size, std::uint64_t offset) override;
    Outcome write(const void* data, std::size_t size, std::uint64_t offset) override;
    Outcome truncate(std::uint64_t size) override;
    Outcome flush() override { return Outcome::done; }
    [[nodiscard]] std::uint64_t size() const override { return size_; }

  private:
    static constexpr std::size_t blockSize = 4096;
    using Block = std::array<unsigned char, blockSize>;

    /// The bytes as they lie below; zeros where nothing does.
    Outcome readBelow(unsigned char* data, std::size_t size, std::uint64_t offset);
    /// The block to be written; null where there is no memory for it, or it cannot be read.
    Block* blockAt(std::uint64_t index, bool isWhole);

    ImageMemory& memory_;
    platform::CleaningCalls* calls_ = nullptr;
    int file_ = -1;
    std::uint64_t below_ = 0;  ///< how many bytes of the file below are still seen
    std::uint64_t size_ = 0;
    std::unordered_map<std::uint64_t, std::unique_ptr<Block>> blocks_;
};

/// A file that is written itself. It is never made shorter before what it loses has been
/// overwritten: the blocks that are given back hold zeros.
class DirectImage final : public Image {
  public:
    DirectImage(ImageMemory& memory, platform::CleaningCalls& calls, int file, std::uint64_t size)
        : memory_(memory), calls_(calls), file_(file), size_(size) {}

    Outcome read(void* data, std::size_t size, std::uint64_t offset) override;
    Outcome write(const void* data, std::size_t size, std::uint64_t offset) override;
    Outcome truncate(std::uint64_t size) override;
    Outcome flush() override;
    [[nodiscard]] std::uint64_t size() const override { return size_; }

  private:
    ImageMemory& memory_;
    platform::CleaningCalls& calls_;
    int file_;
    std::uint64_t size_;
};

/// Writes all of it; 0, or a negated errno.
int writeWhole(platform::CleaningCalls& calls, int file, const void* data, std::size_t size,
               std::uint64_t offset);
/// Overwrites the bytes from `from` to `to` with zeros and brings them to the medium; 0, or a
/// negated errno.
int overwriteWithZeros(platform::CleaningCalls& calls, int file, std::uint64_t from,
                       std::uint64_t to);
/// Reads until `size` bytes or the end; their number, or a negated errno.
std::ptrdiff_t readWhole(platform::CleaningCalls& calls, int file, void* data, std::size_t size,
                         std::uint64_t offset);

}  // namespace dorvanel::cleaning

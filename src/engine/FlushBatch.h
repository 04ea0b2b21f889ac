#pragma once

#include <cerrno>
#include <cstdint>
#include <functional>
#include <vector>

#include "platform/SystemCalls.h"

namespace dorvanel {

/// Files that were overwritten and whose contents may still be in memory alone. A file's blocks are
/// given back when it is removed and closed, and what was not written by then never is: so each
/// stays open until one flush for the whole batch has brought all contents to the medium.
class FlushBatch {
  public:
    /// Bounds of a batch: descriptors that stay open, well below the 1024 that a process is given,
    /// and bytes that wait in memory.
    static constexpr std::size_t maxFiles = 512;
    static constexpr std::uint64_t maxBytes = std::uint64_t{256} << 20;
    /// Descriptors that a batch leaves to the rest of the engine, above all to the walk of a tree,
    /// where the process is given fewer.
    static constexpr int sparedDescriptors = 96;

    /// `beforeWaiting` is called before a flush that may take long.
    FlushBatch(platform::SystemCalls& system, std::function<void()> beforeWaiting)
        : system_(system),
          beforeWaiting_(std::move(beforeWaiting)),
          highestDescriptor_(system.descriptorLimit() - sparedDescriptors) {}
    /// Flushes.
    ~FlushBatch() { flush(); }
    FlushBatch(const FlushBatch&) = delete;
    FlushBatch& operator=(const FlushBatch&) = delete;

    /// Takes over an open file into which `bytes` were written; flushes when a bound is reached. On
    /// a file system without a medium the file is closed at once.
    void add(int file, std::uint64_t device, std::uint64_t bytes);

    /// Brings all contents to the medium and closes the files.
    void flush();

    /// What `open` returns. Where descriptors have run out, the batch gives its own back first, and
    /// it is called once more.
    template <typename Open>
    int opened(Open open) {
        const int result = open();
        if ((result != -EMFILE && result != -ENFILE) || files_.empty()) return result;
        flush();
        return open();
    }

    /// Files whose flush failed, since the batch was made.
    [[nodiscard]] std::uint64_t failures() const { return failures_; }
    /// The reason of the last failure, an errno value.
    [[nodiscard]] int failureCode() const { return failureCode_; }

  private:
    struct File {
        int descriptor;
        std::uint64_t device;
    };

    bool livesInMemory(int file, std::uint64_t device);
    void flushDevice(std::uint64_t device);
    void flushEach(std::uint64_t device);

    platform::SystemCalls& system_;
    std::function<void()> beforeWaiting_;
    int highestDescriptor_;  ///< a file with this number or more ends the batch
    std::vector<File> files_;
    std::uint64_t bytes_ = 0;
    std::uint64_t failures_ = 0;
    int failureCode_ = 0;

    std::uint64_t knownDevice_ = 0;  ///< the device that `knownInMemory_` speaks of
    bool known_ = false;
    bool knownInMemory_ = false;
};

}  // namespace dorvanel

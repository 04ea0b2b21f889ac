#include "engine/FlushBatch.h"

#include <algorithm>

namespace dorvanel {
namespace {

/// Up to here each file is flushed by itself: a flush of the whole file system would also wait for
/// what other programs have written.
constexpr std::ptrdiff_t fewFiles = 4;

}  // namespace

void FlushBatch::add(int file, std::uint64_t device, std::uint64_t bytes) {
    if (livesInMemory(file, device)) {
        system_.close(file);
        return;
    }
    files_.push_back({file, device});
    bytes_ += bytes;
    if (files_.size() >= maxFiles || bytes_ >= maxBytes || file >= highestDescriptor_) flush();
}

void FlushBatch::flush() {
    if (files_.empty()) return;
    beforeWaiting_();
    std::vector<std::uint64_t> devices;
    for (const File& file : files_) {
        if (std::find(devices.begin(), devices.end(), file.device) == devices.end()) {
            devices.push_back(file.device);
        }
    }
    for (const std::uint64_t device : devices) flushDevice(device);
    for (const File& file : files_) system_.close(file.descriptor);
    files_.clear();
    bytes_ = 0;
}

bool FlushBatch::livesInMemory(int file, std::uint64_t device) {
    if (!known_ || knownDevice_ != device) {
        knownInMemory_ = system_.livesInMemory(file) == 1;
        knownDevice_ = device;
        known_ = true;
    }
    return knownInMemory_;
}

void FlushBatch::flushDevice(std::uint64_t device) {
    const auto isOnDevice = [device](const File& file) { return file.device == device; };
    if (std::count_if(files_.begin(), files_.end(), isOnDevice) > fewFiles) {
        const auto any = std::find_if(files_.begin(), files_.end(), isOnDevice);
        if (system_.flushFileSystem(any->descriptor) >= 0) return;
    }
    flushEach(device);
}

void FlushBatch::flushEach(std::uint64_t device) {
    for (const File& file : files_) {
        if (file.device != device) continue;
        const int result = system_.flushFile(file.descriptor);
        if (result < 0) {
            ++failures_;
            failureCode_ = -result;
        }
    }
}

}  // namespace dorvanel

// SPDX-License-Identifier: MIT
#pragma once

#include <unistd.h>

#include <utility>

namespace dorvanel::platform {

/// An open descriptor, or -1; closed with its owner.
class FileDescriptor {
  public:
    explicit FileDescriptor(int descriptor = -1) : descriptor_(descriptor) {}
    ~FileDescriptor() {
        if (descriptor_ >= 0) ::close(descriptor_);
    }
    FileDescriptor(FileDescriptor&& other) noexcept
        : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }

    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }
    [[nodiscard]] int get() const { return descriptor_; }
    /// Leaves the closing to somebody else.
    int release() { return std::exchange(descriptor_, -1); }
    /// Closes now, for callers who must know whether the last bytes got through; errno tells.
    [[nodiscard]] bool close() { return ::close(std::exchange(descriptor_, -1)) == 0; }

  private:
    int descriptor_;
};

}  // namespace dorvanel::platform

// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

#include "platform/CleaningCalls.h"

namespace dorvanel::cleaning {

/// An open file or folder, or none; closed with its owner.
class OpenFile {
  public:
    OpenFile() = default;
    /// `descriptor` may be a negated errno: none is open then.
    OpenFile(platform::CleaningCalls& calls, int descriptor)
        : calls_(&calls), descriptor_(descriptor) {}
    ~OpenFile() { close(); }
    OpenFile(OpenFile&& other) noexcept
        : calls_(other.calls_), descriptor_(std::exchange(other.descriptor_, -1)) {}
    OpenFile& operator=(OpenFile&& other) noexcept {
        if (this != &other) {
            close();
            calls_ = other.calls_;
            descriptor_ = std::exchange(other.descriptor_, -1);
        }
        return *this;
    }

    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }
    [[nodiscard]] int get() const { return descriptor_; }

  private:
    void close() {
        if (isOpen()) calls_->close(descriptor_);
        descriptor_ = -1;
    }

    platform::CleaningCalls* calls_ = nullptr;
    int descriptor_ = -1;
};

}  // namespace dorvanel::cleaning

// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/CleaningCalls.h"

namespace dorvanel::test {

/// The real calls, counted: one of them can be made to fail, and each be heard of before it is
/// made. Closing is neither counted nor fails.
class FaultyCleaningCalls final : public platform::CleaningCalls {
  public:
    int made = 0;
    int failing = 0;                         ///< the number of the call that fails, from 1; 0: none
    int code = 0;                            ///< its errno value
    std::string operation;                   ///< the one that failed
    std::string always;                      ///< an operation that always fails with `code`
    std::uint64_t room = ~std::uint64_t{0};  ///< bytes that can still be written
    std::function<void(const std::string& operation)> before;

    int openFolder(const char* path) override {
        return fails("openFolder") ? -code : real_->openFolder(path);
    }
    int openForReading(int folder, const char* name) override {
        return fails("openForReading") ? -code : real_->openForReading(folder, name);
    }
    int openForChanging(int folder, const char* name) override {
        return fails("openForChanging") ? -code : real_->openForChanging(folder, name);
    }
    int createFile(int folder, const char* name) override {
        return fails("createFile") ? -code : real_->createFile(folder, name);
    }
    int close(int descriptor) override { return real_->close(descriptor); }
    int status(int descriptor, platform::CleaningStatus& status) override {
        return fails("status") ? -code : real_->status(descriptor, status);
    }
    int statusAt(int folder, const char* name, platform::CleaningStatus& status) override {
        return fails("statusAt") ? -code : real_->statusAt(folder, name, status);
    }
    int changeGroup(int file, std::uint32_t group) override {
        return fails("changeGroup") ? -code : real_->changeGroup(file, group);
    }
    int changeMode(int file, std::uint32_t permissions) override {
        return fails("changeMode") ? -code : real_->changeMode(file, permissions);
    }
    int readFolder(int folder, std::vector<std::string>& names) override {
        return fails("readFolder") ? -code : real_->readFolder(folder, names);
    }
    std::ptrdiff_t readAt(int file, void* data, std::size_t size, std::uint64_t offset) override {
        return fails("readAt") ? -code : real_->readAt(file, data, size, offset);
    }
    std::ptrdiff_t writeAt(int file, const void* data, std::size_t size,
                           std::uint64_t offset) override {
        if (fails("writeAt")) return -code;
        if (size > room) return -28;  // ENOSPC
        room -= size;
        return real_->writeAt(file, data, size, offset);
    }
    int truncate(int file, std::uint64_t size) override {
        return fails("truncate") ? -code : real_->truncate(file, size);
    }
    int flush(int descriptor) override { return fails("flush") ? -code : real_->flush(descriptor); }
    int lock(int file, std::uint64_t offset, std::uint64_t size) override {
        return fails("lock") ? -code : real_->lock(file, offset, size);
    }
    int rename(int folder, const char* from, const char* to) override {
        return fails("rename") ? -code : real_->rename(folder, from, to);
    }
    int exchange(int folder, const char* one, const char* other) override {
        return fails("exchange") ? -code : real_->exchange(folder, one, other);
    }
    int removeFile(int folder, const char* name) override {
        return fails("removeFile") ? -code : real_->removeFile(folder, name);
    }
    int randomBytes(void* data, std::size_t size) override {
        return fails("randomBytes") ? -code : real_->randomBytes(data, size);
    }
    std::uint32_t effectiveUser() override { return real_->effectiveUser(); }

  private:
    /// Whether this call fails.
    bool fails(const std::string& name) {
        ++made;
        if (before) before(name);
        if (made == failing) operation = name;
        return made == failing || (!always.empty() && always == name);
    }

    std::unique_ptr<platform::CleaningCalls> real_ = platform::makeCleaningCalls();
};

}  // namespace dorvanel::test

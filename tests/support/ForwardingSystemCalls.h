// SPDX-License-Identifier: MIT
#pragma once

#include "platform/SystemCalls.h"

namespace dorvanel::test {

/// Passes every call through; what a test wants otherwise it overrides.
class ForwardingSystemCalls : public platform::SystemCalls {
  public:
    /// `inner` must outlive this.
    explicit ForwardingSystemCalls(platform::SystemCalls& inner) : inner_(inner) {}

    int openFile(int folder, const char* name, Links links) override {
        return inner_.openFile(folder, name, links);
    }
    int openFolder(int folder, const char* name) override {
        return inner_.openFolder(folder, name);
    }
    int openReference(int folder, const char* name, Links links) override {
        return inner_.openReference(folder, name, links);
    }
    int close(int descriptor) override { return inner_.close(descriptor); }
    int status(int descriptor, platform::FileStatus& status) override {
        return inner_.status(descriptor, status);
    }
    int statusAt(int folder, const char* name, Links links, platform::FileStatus& status) override {
        return inner_.statusAt(folder, name, links, status);
    }
    int canReadAndWrite(int folder, const char* name) override {
        return inner_.canReadAndWrite(folder, name);
    }
    int changeMode(int descriptor, std::uint32_t permissions) override {
        return inner_.changeMode(descriptor, permissions);
    }
    int changeModeAt(int folder, const char* name, std::uint32_t permissions) override {
        return inner_.changeModeAt(folder, name, permissions);
    }
    int readLink(int folder, const char* name, std::string& text) override {
        return inner_.readLink(folder, name, text);
    }
    int allowsDevices(int descriptor) override { return inner_.allowsDevices(descriptor); }
    int readFolder(int folder, platform::FolderListing& listing) override {
        return inner_.readFolder(folder, listing);
    }
    int makeFolder(int folder, const char* name, std::uint32_t permissions) override {
        return inner_.makeFolder(folder, name, permissions);
    }
    int rename(int fromFolder, const char* from, int toFolder, const char* to) override {
        return inner_.rename(fromFolder, from, toFolder, to);
    }
    int removeFile(int folder, const char* name) override {
        return inner_.removeFile(folder, name);
    }
    int removeFolder(int folder, const char* name) override {
        return inner_.removeFolder(folder, name);
    }
    std::ptrdiff_t writeAt(int file, const void* data, std::size_t size,
                           std::uint64_t offset) override {
        return inner_.writeAt(file, data, size, offset);
    }
    std::ptrdiff_t readAt(int file, void* data, std::size_t size, std::uint64_t offset) override {
        return inner_.readAt(file, data, size, offset);
    }
    int forgetCached(int file) override { return inner_.forgetCached(file); }
    void startWriteBack(int file, std::uint64_t offset, std::uint64_t size) override {
        inner_.startWriteBack(file, offset, size);
    }
    int flushFile(int file) override { return inner_.flushFile(file); }
    int flushFileSystem(int file) override { return inner_.flushFileSystem(file); }
    int livesInMemory(int file) override { return inner_.livesInMemory(file); }
    int keepsNoOwners(int descriptor) override { return inner_.keepsNoOwners(descriptor); }
    int descriptorLimit() override { return inner_.descriptorLimit(); }
    std::uint32_t effectiveUser() override { return inner_.effectiveUser(); }
    int leaseBreakTime() override { return inner_.leaseBreakTime(); }
    void pause(int milliseconds) override { inner_.pause(milliseconds); }

  protected:
    platform::SystemCalls& inner_;
};

}  // namespace dorvanel::test

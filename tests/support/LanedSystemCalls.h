// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "support/ContentHash.h"
#include "support/ForwardingSystemCalls.h"

namespace dorvanel::test {

/// Calls that two threads may make at a time, if the test wants them to. They are made one after
/// another and remembered in that order, each with the name that it works on, or that its
/// descriptor was opened by; one of them can be made to fail.
class LanedSystemCalls final : public ForwardingSystemCalls {
  public:
    explicit LanedSystemCalls(platform::SystemCalls& inner, bool isForTwo = true)
        : ForwardingSystemCalls(inner), isForTwo_(isForTwo) {}

    /// What a call is told from others by, however the threads take turns.
    struct Key {
        std::string what;  ///< the operation's name
        std::string name;
        int nth;  ///< of this operation on this name, from 1

        friend auto operator<=>(const Key&, const Key&) = default;
    };
    struct Call {
        Key key{};
        int descriptor = -1;  ///< that it works on, or that an opening returned
        int result = 0;       ///< of a writing only whether it failed
        std::uint64_t offset = 0;
        std::uint64_t length = 0;
        std::uint64_t hash = 0;
        bool isOfSecond = false;  ///< made by another thread than the one that made this
    };

    /// This call fails, without being made, with this errno.
    void fail(Key key, int code) {
        failing_ = std::move(key);
        failure_ = code;
    }
    /// Called before each call, which is neither made nor remembered if it throws.
    std::function<void(const Call&)> before;
    std::chrono::microseconds secondIsSlowBy{0};  ///< at each call
    std::optional<int> inMemory;  ///< the answer of `livesInMemory`; none: the system's own

    // To be looked at while no second thread is at work.
    std::vector<Call> calls;
    int failed = 0;  ///< calls that were made to fail

    /// Calls of one operation, in order.
    [[nodiscard]] std::vector<Call> callsOf(const std::string& what) const {
        std::vector<Call> found;
        for (const Call& call : calls) {
            if (call.key.what == what) found.push_back(call);
        }
        return found;
    }

    [[nodiscard]] bool isForTwoThreads() const override { return isForTwo_; }

    int openFile(int folder, const char* name, Links links) override {
        return opened("openFile", name, [&] { return inner_.openFile(folder, name, links); });
    }
    int openFolder(int folder, const char* name) override {
        return opened("openFolder", name, [&] { return inner_.openFolder(folder, name); });
    }
    int openReference(int folder, const char* name, Links links) override {
        return opened("openReference", name,
                      [&] { return inner_.openReference(folder, name, links); });
    }
    int close(int descriptor) override {
        return byDescriptor("close", descriptor, [&] { return inner_.close(descriptor); });
    }
    int status(int descriptor, platform::FileStatus& status) override {
        return byDescriptor("status", descriptor,
                            [&] { return inner_.status(descriptor, status); });
    }
    int statusAt(int folder, const char* name, Links links, platform::FileStatus& status) override {
        return byName("statusAt", folder, name,
                      [&] { return inner_.statusAt(folder, name, links, status); });
    }
    int changeMode(int descriptor, std::uint32_t permissions) override {
        return byDescriptor("changeMode", descriptor,
                            [&] { return inner_.changeMode(descriptor, permissions); });
    }
    int readFolder(int folder, platform::FolderListing& listing) override {
        return byDescriptor("readFolder", folder,
                            [&] { return inner_.readFolder(folder, listing); });
    }
    int makeFolder(int folder, const char* name, std::uint32_t permissions) override {
        return byName("makeFolder", folder, name,
                      [&] { return inner_.makeFolder(folder, name, permissions); });
    }
    int rename(int fromFolder, const char* from, int toFolder, const char* to) override {
        return byName("rename", fromFolder, from,
                      [&] { return inner_.rename(fromFolder, from, toFolder, to); });
    }
    int removeFile(int folder, const char* name) override {
        return byName("removeFile", folder, name, [&] { return inner_.removeFile(folder, name); });
    }
    int removeFolder(int folder, const char* name) override {
        return byName("removeFolder", folder, name,
                      [&] { return inner_.removeFolder(folder, name); });
    }
    std::ptrdiff_t writeAt(int file, const void* data, std::size_t size,
                           std::uint64_t offset) override {
        waitIfSecond();
        const std::lock_guard lock(mutex_);
        Call call;
        call.key = {"writeAt", names_[file], 0};
        call.descriptor = file;
        call.offset = offset;
        call.length = size;
        call.hash = contentHash(data, size);
        std::ptrdiff_t written = 0;
        const int result = made(call, [&] {
            written = inner_.writeAt(file, data, size, offset);
            return written < 0 ? static_cast<int>(written) : 0;
        });
        return result < 0 ? result : written;
    }
    void startWriteBack(int file, std::uint64_t offset, std::uint64_t size) override {
        const std::lock_guard lock(mutex_);
        Call call;
        call.key = {"startWriteBack", names_[file], 0};
        call.descriptor = file;
        call.offset = offset;
        call.length = size;
        made(call, [&] {
            inner_.startWriteBack(file, offset, size);
            return 0;
        });
    }
    int flushFile(int file) override {
        return byDescriptor("flushFile", file, [&] { return inner_.flushFile(file); });
    }
    int flushFileSystem(int file) override {
        return byDescriptor("flushFileSystem", file, [&] { return inner_.flushFileSystem(file); });
    }
    int livesInMemory(int file) override {
        return inMemory ? *inMemory : ForwardingSystemCalls::livesInMemory(file);
    }

  private:
    [[nodiscard]] bool isSecond() const { return std::this_thread::get_id() != first_; }
    void waitIfSecond() const {
        if (secondIsSlowBy.count() > 0 && isSecond()) std::this_thread::sleep_for(secondIsSlowBy);
    }

    template <typename Make>
    int opened(const char* what, const char* name, Make make) {
        waitIfSecond();
        const std::lock_guard lock(mutex_);
        Call call;
        call.key = {what, name, 0};
        const int result = made(call, make);
        if (result >= 0) names_[result] = name;
        return result;
    }
    template <typename Make>
    int byName(const char* what, int folder, const char* name, Make make) {
        waitIfSecond();
        const std::lock_guard lock(mutex_);
        Call call;
        call.key = {what, name, 0};
        call.descriptor = folder;
        return made(call, make);
    }
    template <typename Make>
    int byDescriptor(const char* what, int descriptor, Make make) {
        waitIfSecond();
        const std::lock_guard lock(mutex_);
        Call call;
        call.key = {what, names_[descriptor], 0};
        call.descriptor = descriptor;
        return made(call, make);
    }
    template <typename Make>
    int made(Call& call, Make make) {
        call.isOfSecond = isSecond();
        call.key.nth = made_[{call.key.what, call.key.name}] + 1;
        if (before) before(call);
        ++made_[{call.key.what, call.key.name}];
        if (failure_ != 0 && call.key == failing_) {
            ++failed;
            call.result = -failure_;
        } else {
            call.result = make();
        }
        if (call.descriptor < 0) call.descriptor = call.result;
        calls.push_back(call);
        return call.result;
    }

    const std::thread::id first_ = std::this_thread::get_id();
    bool isForTwo_;
    Key failing_{};
    int failure_ = 0;
    std::mutex mutex_;
    std::map<int, std::string> names_;  ///< that descriptors were opened by
    std::map<std::pair<std::string, std::string>, int> made_;
};

}  // namespace dorvanel::test

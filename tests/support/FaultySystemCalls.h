// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "support/ForwardingSystemCalls.h"

namespace dorvanel::test {

/// Lets chosen calls fail, without making them, with an error of the test's choice. Also answers
/// for the machine: what lives in memory, and what a folder listing tells of its entries.
class FaultySystemCalls final : public ForwardingSystemCalls {
  public:
    using ForwardingSystemCalls::ForwardingSystemCalls;

    /// The operations that can fail. A failed `close` closes all the same, as the system's does.
    static const std::vector<std::string>& operations() {
        static const std::vector<std::string> all{
            "openFile",      "openFolder", "openReference",   "close",     "status",
            "statusAt",      "changeMode", "changeModeAt",    "readLink",  "canReadAndWrite",
            "allowsDevices", "readFolder", "makeFolder",      "rename",    "removeFile",
            "removeFolder",  "writeAt",    "flushFileSystem", "flushFile", "livesInMemory"};
        return all;
    }

    /// The `nth` call of the operation, from 1, fails with this errno; later ones do not.
    void failOnce(const std::string& operation, int nth, int code) {
        once_ = {operation, made[operation] + nth, code};
    }
    /// Every call of the operation fails, on an entry of this name or, where it is empty, on any.
    void failAlways(const std::string& operation, int code, const std::string& name = {}) {
        always_[operation] = {name, code};
    }
    /// Nothing fails any more; counts and answers are as in the beginning.
    void reset() {
        once_ = {};
        always_.clear();
        made.clear();
        failed = 0;
        longestWrite = 0;
        longestRead = 0;
        lie = {};
    }

    std::map<std::string, int> made;  ///< calls so far, by operation
    int failed = 0;                   ///< calls that were made to fail

    std::size_t longestWrite = 0;      ///< no write takes more bytes at once; 0: no bound
    std::size_t longestRead = 0;       ///< likewise
    std::optional<int> inMemory;       ///< the answer of `livesInMemory`; none: the system's own
    std::optional<int> devices;        ///< the answer of `allowsDevices`; none: the system's own
    int pauses = 0;                    ///< of which none takes any time
    bool listingTellsNoKinds = false;  ///< as on file systems that leave them out
    /// Called before each call that is made.
    std::function<void(const std::string& operation, const std::string& name)> before;

    /// Called with the bytes that a read has brought, which it may change; returns their number.
    std::function<std::ptrdiff_t(int file, char* bytes, std::size_t size, std::uint64_t offset)>
        lie;

    int openFile(int folder, const char* name, Links links) override {
        if (const int code = fault("openFile", name)) return -code;
        return ForwardingSystemCalls::openFile(folder, name, links);
    }
    int openFolder(int folder, const char* name) override {
        if (const int code = fault("openFolder", name)) return -code;
        return ForwardingSystemCalls::openFolder(folder, name);
    }
    int openReference(int folder, const char* name, Links links) override {
        if (const int code = fault("openReference", name)) return -code;
        return ForwardingSystemCalls::openReference(folder, name, links);
    }
    int close(int descriptor) override {
        const int code = fault("close");
        const int result = ForwardingSystemCalls::close(descriptor);
        return code != 0 ? -code : result;
    }
    int status(int descriptor, platform::FileStatus& status) override {
        if (const int code = fault("status")) return -code;
        return ForwardingSystemCalls::status(descriptor, status);
    }
    int statusAt(int folder, const char* name, Links links, platform::FileStatus& status) override {
        if (const int code = fault("statusAt", name)) return -code;
        return ForwardingSystemCalls::statusAt(folder, name, links, status);
    }
    int canReadAndWrite(int folder, const char* name) override {
        if (const int code = fault("canReadAndWrite", name)) return -code;
        return ForwardingSystemCalls::canReadAndWrite(folder, name);
    }
    int changeMode(int descriptor, std::uint32_t permissions) override {
        if (const int code = fault("changeMode")) return -code;
        return ForwardingSystemCalls::changeMode(descriptor, permissions);
    }
    int changeModeAt(int folder, const char* name, std::uint32_t permissions) override {
        if (const int code = fault("changeModeAt", name)) return -code;
        return ForwardingSystemCalls::changeModeAt(folder, name, permissions);
    }
    int readLink(int folder, const char* name, std::string& text) override {
        if (const int code = fault("readLink", name)) return -code;
        return ForwardingSystemCalls::readLink(folder, name, text);
    }
    int allowsDevices(int descriptor) override {
        if (const int code = fault("allowsDevices")) return -code;
        return devices ? *devices : ForwardingSystemCalls::allowsDevices(descriptor);
    }
    int readFolder(int folder, platform::FolderListing& listing) override {
        if (const int code = fault("readFolder")) return -code;
        const int result = ForwardingSystemCalls::readFolder(folder, listing);
        for (std::size_t i = 0; listingTellsNoKinds && i < listing.size(); ++i) {
            listing.setKind(i, platform::EntryKind::unknown);
        }
        return result;
    }
    int makeFolder(int folder, const char* name, std::uint32_t permissions) override {
        if (const int code = fault("makeFolder", name)) return -code;
        return ForwardingSystemCalls::makeFolder(folder, name, permissions);
    }
    int rename(int fromFolder, const char* from, int toFolder, const char* to) override {
        if (const int code = fault("rename", from)) return -code;
        return ForwardingSystemCalls::rename(fromFolder, from, toFolder, to);
    }
    int removeFile(int folder, const char* name) override {
        if (const int code = fault("removeFile", name)) return -code;
        return ForwardingSystemCalls::removeFile(folder, name);
    }
    int removeFolder(int folder, const char* name) override {
        if (const int code = fault("removeFolder", name)) return -code;
        return ForwardingSystemCalls::removeFolder(folder, name);
    }
    std::ptrdiff_t writeAt(int file, const void* data, std::size_t size,
                           std::uint64_t offset) override {
        if (const int code = fault("writeAt")) return -code;
        if (longestWrite != 0) size = std::min(size, longestWrite);
        return ForwardingSystemCalls::writeAt(file, data, size, offset);
    }
    std::ptrdiff_t readAt(int file, void* data, std::size_t size, std::uint64_t offset) override {
        if (const int code = fault("readAt")) return -code;
        if (longestRead != 0) size = std::min(size, longestRead);
        const std::ptrdiff_t got = ForwardingSystemCalls::readAt(file, data, size, offset);
        if (!lie || got < 0) return got;
        return lie(file, static_cast<char*>(data), static_cast<std::size_t>(got), offset);
    }
    int forgetCached(int file) override {
        if (const int code = fault("forgetCached")) return -code;
        return ForwardingSystemCalls::forgetCached(file);
    }
    int flushFile(int file) override {
        if (const int code = fault("flushFile")) return -code;
        return ForwardingSystemCalls::flushFile(file);
    }
    int flushFileSystem(int file) override {
        if (const int code = fault("flushFileSystem")) return -code;
        return ForwardingSystemCalls::flushFileSystem(file);
    }
    int livesInMemory(int file) override {
        if (const int code = fault("livesInMemory")) return -code;
        return inMemory ? *inMemory : ForwardingSystemCalls::livesInMemory(file);
    }
    void pause(int) override {
        ++pauses;
        if (before) before("pause", {});
    }

  private:
    struct Once {
        std::string operation;
        int number = 0;
        int code = 0;
    };
    struct Always {
        std::string name;
        int code = 0;
    };

    /// The errno with which this call fails, or 0.
    int fault(const std::string& operation, const std::string& name = {}) {
        if (before) before(operation, name);
        const int number = ++made[operation];
        const auto always = always_.find(operation);
        const bool isOnce = once_.operation == operation && once_.number == number;
        const bool isAlways =
            always != always_.end() && (always->second.name.empty() || always->second.name == name);
        if (!isOnce && !isAlways) return 0;
        ++failed;
        return isOnce ? once_.code : always->second.code;
    }

    Once once_;
    std::map<std::string, Always> always_;
};

}  // namespace dorvanel::test

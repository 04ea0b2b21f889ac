// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "support/ContentHash.h"
#include "support/ForwardingSystemCalls.h"

namespace dorvanel::test {

/// Remembers the calls that change something, or that open, close or flush, in their order.
class RecordingSystemCalls final : public ForwardingSystemCalls {
  public:
    using ForwardingSystemCalls::ForwardingSystemCalls;

    struct Call {
        std::string what;  ///< the operation's name
        int descriptor;    ///< that it works on, or that an opening returned
        std::string name;  ///< of the entry, where there is one
        std::string to;    ///< the new name of a renaming
        std::uint64_t offset = 0;
        std::uint64_t length = 0;
        std::uint64_t hash = 0;

        friend bool operator==(const Call&, const Call&) = default;
        /// As in "writeAt 7 0+4096 #12ab".
        [[nodiscard]] std::string line() const;
    };
    std::vector<Call> calls;

    /// Calls of one operation, in order.
    [[nodiscard]] std::vector<Call> callsOf(const std::string& what) const;
    /// All calls as lines, for a failed test to show.
    [[nodiscard]] std::string lines() const;

    int openFile(int folder, const char* name, Links links) override;
    int openReference(int folder, const char* name, Links links) override;
    int openFolder(int folder, const char* name) override;
    int close(int descriptor) override;
    int changeMode(int descriptor, std::uint32_t permissions) override;
    int makeFolder(int folder, const char* name, std::uint32_t permissions) override;
    int rename(int fromFolder, const char* from, int toFolder, const char* to) override;
    int removeFile(int folder, const char* name) override;
    int removeFolder(int folder, const char* name) override;
    std::ptrdiff_t writeAt(int file, const void* data, std::size_t size,
                           std::uint64_t offset) override;
    std::ptrdiff_t readAt(int file, void* data, std::size_t size, std::uint64_t offset) override;
    int forgetCached(int file) override;
    int flushFile(int file) override;
    int flushFileSystem(int file) override;

  private:
    int remember(const char* what, int descriptor, const char* name, int result);
};

}  // namespace dorvanel::test

// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "engine/BlockWrite.h"
#include "platform/SystemCalls.h"

namespace dorvanel {

/// The last writes to a file, held back with their bytes: that of the last block and that of the
/// slack behind it.
struct HeldWrites {
    static constexpr std::size_t most = 2;

    struct Write {
        std::size_t start = 0;  ///< of its bytes, in the list
        std::size_t size = 0;
        std::uint64_t offset = 0;
        bool mayLackRoom = false;  ///< see `writeBlock`
    };
    std::array<Write, most> writes{};
    std::size_t count = 0;
};

/// A name that is to be looked at, to be changed, or to go with the file behind it.
struct LaneCall {
    enum class What : std::uint8_t { look, rename, remove };
    /// How far it came: what failed, if anything did.
    enum class State : std::uint8_t { waits, made, notWritten, notRemoved };

    What what = What::remove;
    State state = State::waits;
    platform::EntryKind kind = platform::EntryKind::unknown;
    bool isCounted = true;
    bool isHeld = false;  ///< its writes were held back: what became of them is to be told too
    std::uint32_t item = 0;
    std::uint32_t folder = 0;    ///< its number with the owner of the list
    int folderDescriptor = -1;   ///< that holds the name
    int file = -1;               ///< closed before its name goes; -1: none is open
    std::size_t name = 0;        ///< in the list's text
    std::size_t newName = 0;     ///< likewise
    std::uint64_t fileSize = 0;  ///< bytes that the file had
    HeldWrites held{};
    platform::FileStatus status{};  ///< of what was looked at
    int code = 0;  ///< errno of what failed; of the writes also before the call is made
};

/// Calls that one thread prepares and another makes. Who has the list alone touches it.
class LaneCalls {
  public:
    /// A list is full from here on. Handing over costs about as much as a call, and what waits is
    /// finished by a stop.
    static constexpr std::size_t manyCalls = 32;
    /// The same for names of one folder that either thread may take: at work in one folder they
    /// hold each other up.
    static constexpr std::size_t manyOfOne = 256;
    static constexpr std::size_t manyBytes = std::size_t{256} << 10;

    std::vector<LaneCall> calls;
    std::size_t done = 0;  ///< calls that have had their turn, up to the first that failed
    std::size_t told = 0;  ///< of these, those that the owner has looked at

    [[nodiscard]] bool isFull() const {
        return calls.size() >= manyCalls || bytes_.size() >= manyBytes;
    }
    [[nodiscard]] const char* text(std::size_t start) const { return text_.data() + start; }

    /// Keeps a copy of the name. Returns where.
    std::size_t addText(const char* name);
    /// Keeps a copy of the bytes and adds the write. False, with nothing done, where as many are
    /// held as can be.
    bool hold(HeldWrites& held, const void* bytes, std::size_t size, std::uint64_t offset,
              bool mayLackRoom);
    /// Makes the writes, in their order; one that fails is passed over.
    BlockWritten write(platform::SystemCalls& system, int file, const HeldWrites& held) const;

    /// Makes the calls from number `done` on, up to the first one that fails: its file is open yet
    /// where it could not be written. Of looks and renamings none fails.
    void make(platform::SystemCalls& system);
    void clear();

  private:
    void make(platform::SystemCalls& system, LaneCall& call) const;

    std::string text_;  ///< names, each with its NUL
    std::vector<char> bytes_;
};

}  // namespace dorvanel

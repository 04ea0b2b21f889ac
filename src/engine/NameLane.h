// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "engine/CallLane.h"
#include "engine/NameRemover.h"
#include "engine/WriteHolder.h"
#include "platform/SystemCalls.h"

namespace dorvanel {

/// Names of large trees that are looked at, changed or removed on a second thread, while the first
/// one is at the next files. Names go in the order in which they were handed over, each after its
/// file was written to and closed; what became of them is counted and told in that order too, on
/// the caller's thread. For files that live in memory: nothing is flushed.
class NameLane final : public WriteHolder {
  public:
    using Path = NameRemover::Path;

    /// Names of a request from which on a thread is worth its start.
    static constexpr std::size_t worthwhile = 100;

    /// Both must outlive the lane. A file or folder with this number or more is not left to wait:
    /// there are few descriptors more.
    NameLane(platform::SystemCalls& system, NameRemover& remover, int highestDescriptor);
    /// Nothing is left to be made, or memory ran out in `settle`: what was not made by then is not
    /// made any more, and its files are closed.
    ~NameLane() override;
    NameLane(const NameLane&) = delete;
    NameLane& operator=(const NameLane&) = delete;

    /// A name of the request is about to go or to be changed. Whether the lane may have it: the
    /// thread runs, and is started where there are many.
    bool isFor(std::size_t names = 1);
    /// The request has ended: the thread ends when nothing waits. The next one has to be large too.
    void end();

    /// Who holds the last writes of this file back until its name is handed over; null where the
    /// lane has enough to do.
    WriteHolder* holderFor(int file);
    bool hold(const void* bytes, std::size_t size, std::uint64_t offset, bool mayLackRoom) override;
    BlockWritten writeHeld(int file) override;

    /// Told of files that were looked at, in any order.
    class Looks {
      public:
        virtual ~Looks() = default;
        /// `in`: the folder's status.
        virtual void looked(const platform::FileStatus& in, const platform::FileStatus& file,
                            const Path& path) = 0;
    };
    /// Has `looks` told of the file, if it can be looked at, before `settle` returns. `folderPath`
    /// is asked for the path of the folder before this returns.
    void look(int folder, const char* name, const platform::FileStatus& in, const Path& folderPath,
              Looks& looks);
    /// What is still to be looked at is told to nobody.
    void forgetLooks() { looks_ = nullptr; }
    /// Has the entry's name changed, unless the new one is taken.
    void rename(int folder, const char* name, const char* newName);

    /// A file behind a name that goes.
    struct File {
        int descriptor = -1;  ///< taken over; -1: none
        std::uint64_t size = 0;
        bool isHeld = false;  ///< its writes are held, and it is counted once they are made
    };
    /// Has the writes that are held made, the file closed and its name removed. `folderPath` is
    /// asked for the path of the folder before this returns.
    void remove(const DoomedName& doomed, const File& file, const Path& folderPath);

    /// Whether a name that waits lies in this open folder: then the lane closes it. Never throws.
    bool takesOver(int folder);
    [[nodiscard]] bool isEmpty() const {
        return !lane_.hasGiven() && lane_.filling().calls.empty();
    }
    /// As `settle`; what comes next is to be as large for a thread.
    void endPhase();
    /// Returns when nothing waits any more and all has been told. Should memory run out in it, a
    /// second call goes on where the first one ended.
    void settle();

  private:
    struct Folder {
        int descriptor = -1;  ///< -1: the place is free
        bool isOwned = false;
        std::size_t waiting = 0;
        std::size_t filled = 0;  ///< of these, those in the list that is being filled
        std::string path;
        platform::FileStatus status;  ///< where something in it is looked at
    };

    std::uint32_t folderOf(int descriptor, const Path& path);
    void add(LaneCall& call, const char* name);
    void beginOneOf(int folder);
    void share();
    [[nodiscard]] bool isFollowUp() const;
    void startList();
    void handOver();
    void takeOne();
    void make(LaneCalls& list);
    void finish(const LaneCalls& list, LaneCall& call);
    void tellRemoval(const LaneCalls& list, LaneCall& call, const std::string& folder);
    void letGo(std::uint32_t folder);
    void forgetFolders();

    platform::SystemCalls& system_;
    NameRemover& remover_;
    CallLane lane_;
    int highestDescriptor_;
    bool hasNone_;             ///< no second thread is to be had
    std::size_t names_ = 0;    ///< of the request, so far
    Looks* looks_ = nullptr;   ///< of this phase
    HeldWrites held_;          ///< of the file at hand
    int heldFile_ = -1;        ///< that one
    BlockWritten madeOfHeld_;  ///< what became of those that were made already
    std::vector<Folder> folders_;
    std::vector<std::uint32_t> folderOfDescriptor_;  ///< index into `folders_`, or `none`
    std::vector<std::uint32_t> free_;                ///< places in `folders_`
};

}  // namespace dorvanel

// SPDX-License-Identifier: MIT
#pragma once

#include <cerrno>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engine/ContentDigest.h"
#include "engine/HeldItem.h"
#include "engine/NameLane.h"
#include "engine/NameRemover.h"
#include "engine/ReadBack.h"
#include "platform/SystemCalls.h"
#include "ui/WorkProgress.h"

namespace dorvanel {

/// A file that was overwritten and is still open.
struct WrittenFile {
    int descriptor = -1;  ///< -1: there is none
    platform::FileStatus status;
    std::uint64_t bytes = 0;         ///< that were written and may still be in memory alone
    bool opensToAll = false;         ///< gets the permission bits 0777 once its contents are safe
    std::optional<Digest> digest{};  ///< of what it must hold when it is read back; none: it is not
    bool isHeld = false;  ///< its last writes are held back; it is counted when they are made
};

/// Names that go once the contents of their files are on the medium. Were a name to go first, a
/// kill or a power cut would leave the old contents in blocks without a name, where no second run
/// reaches them. So files that were overwritten stay open, and their names wait, until one flush
/// for the whole batch; then the files are closed, and only then the names go, in their order: on
/// some file systems an open file keeps the folder of its removed name busy.
///
/// Names of files whose flush failed stay, and so do those of files that are to be read back and do
/// not hold what was written: the blocks of both may hold old contents.
class FlushBatch {
  public:
    using Path = NameRemover::Path;

    /// Bounds of a batch: files that stay open, well below the 1024 descriptors that a process is
    /// given, bytes that wait in memory, and names that wait.
    static constexpr std::size_t maxFiles = 512;
    static constexpr std::uint64_t maxBytes = std::uint64_t{256} << 20;
    static constexpr std::size_t maxNames = 8192;
    /// Descriptors that a batch leaves to the rest of the engine, above all to the walk of a tree,
    /// where the process is given fewer.
    static constexpr int sparedDescriptors = 96;

    /// `beforeWaiting` is called before something that may take long: a flush, or reading back.
    FlushBatch(platform::SystemCalls& system, NameRemover& remover,
               std::function<void(ui::WorkPhase)> beforeWaiting);
    /// Flushes.
    ~FlushBatch();
    FlushBatch(const FlushBatch&) = delete;
    FlushBatch& operator=(const FlushBatch&) = delete;

    /// Files that have a digest are read back from now on, after their flush. `readBack` may be
    /// null, and must outlive the batch, or the next call.
    void setReadBack(ReadBack* readBack) { readBack_ = readBack; }

    /// Who holds back the last writes of this file until its name is handed to `remove`, to be made
    /// with that on a second thread; null where they are to be made at once.
    WriteHolder* holderFor(const WrittenFile& file);
    /// Has what the second thread was given counted and told, before something else is told.
    void catchUp() { lane_.settle(); }
    /// The lane for looks and renamings in a large tree, to be followed by `endPhase`; null where
    /// there is none.
    NameLane* lane() { return lane_.isFor() ? &lane_ : nullptr; }
    /// Who is told of what the lane looks at is gone.
    void forgetLooks() { lane_.forgetLooks(); }
    /// A walk through a tree has ended.
    void endPhase() { lane_.endPhase(); }
    /// The request has ended.
    void endLane() { lane_.end(); }

    /// Takes over a file that keeps its name. `path` is asked for its path like `folderPath` below,
    /// and may be null where it is not to be read back.
    void keep(const WrittenFile& file, const Path& path = {});

    /// Takes over `file`, or none, and removes the name when that is safe: at once where nothing
    /// waits and nothing needs a flush. `folderPath` is asked for the path of the folder, if at
    /// all, before the call returns or in a later one.
    void remove(const DoomedName& doomed, const WrittenFile& file, const Path& folderPath);
    /// The same for a name in a folder that somebody holds.
    void remove(const DoomedName& doomed, std::shared_ptr<const HeldDescriptor> folder,
                const Path& folderPath);

    /// Whether a name that waits lies in this open folder: then the batch closes it. Never throws.
    bool takesOver(int folder);

    /// Brings all contents to the medium, closes the files and removes the names. Should memory run
    /// out in it, a second call goes on where the first one ended.
    void flush();

    /// Whether names or files wait.
    [[nodiscard]] bool isEmpty() const { return hasNoBatch() && lane_.isEmpty(); }

    /// What `open` returns. Where descriptors have run out, the batch gives its own back first, and
    /// it is called once more.
    template <typename Open>
    int opened(Open open) {
        const int result = open();
        if ((result != -EMFILE && result != -ENFILE) || isEmpty()) return result;
        flush();
        return open();
    }

    /// What is known of devices may no longer hold: their numbers are used again.
    void forgetDevices() { known_ = false; }

    /// Files whose flush failed, since the batch was made.
    [[nodiscard]] std::uint64_t failures() const { return failures_; }
    /// Files whose names stay since a stop kept them from being read back, likewise.
    [[nodiscard]] std::uint64_t unread() const { return unread_; }

  private:
    enum class State { clean, dirty, failed };
    struct File {
        int descriptor;  ///< -1 once it is closed
        Identity identity;
        State state;
        bool opensToAll;
        std::uint64_t size;                       ///< bytes that are read back
        std::optional<Digest> digest{};           ///< none: it is not read back
        std::optional<ReadBack::Answer> found{};  ///< once it was
        std::string path{};                       ///< of a file that keeps its name
    };
    struct Folder {
        int descriptor;
        bool isOwned;
        std::shared_ptr<const HeldDescriptor> held;
        std::string path;
    };
    static constexpr std::uint32_t none = ~std::uint32_t{0};
    struct Name {
        std::size_t offset;  ///< into `text_`
        std::uint32_t folder;
        std::uint32_t file;  ///< index, or `none`
        std::uint32_t item;
        platform::EntryKind kind;
        bool isCounted;
        bool mayBeSwapped;
        bool isSwapped;
    };

    [[nodiscard]] bool hasNoBatch() const { return files_.empty() && names_.empty(); }
    [[nodiscard]] File fileOf(const WrittenFile& file);
    std::uint32_t add(const WrittenFile& file);
    std::uint32_t folderOf(int descriptor, const Path& path);
    void queue(const DoomedName& doomed, std::uint32_t folder, std::uint32_t file);
    void removeNow(const DoomedName& doomed, const WrittenFile& file, const Path& folderPath);
    void flushIfFull(int highest);
    [[nodiscard]] DoomedName doomedName(const Name& name) const;
    [[nodiscard]] bool isForLane(const DoomedName& doomed, const WrittenFile& file);
    [[nodiscard]] bool needsFlush(const WrittenFile& file);
    [[nodiscard]] bool livesInMemory(const WrittenFile& file);
    [[nodiscard]] bool isSwapped(const DoomedName& doomed, int file, const Identity& identity);
    void readBack(File& file);
    void readAllBack();
    [[nodiscard]] const File* laterWritten(const File& file) const;
    [[nodiscard]] static bool isInDoubt(const File& file);
    void leaveInDoubt(const DoomedName& doomed, const File& file, const Path& path);
    void tellKept(const File& file, std::string path);
    void findSwapped();
    void closeFiles();
    void removeNames();
    void clear();
    void flushContents();
    void flushDevice(std::uint64_t device);
    void flushEach(std::uint64_t device);

    platform::SystemCalls& system_;
    NameRemover& remover_;
    NameLane lane_;
    std::function<void(ui::WorkPhase)> beforeWaiting_;
    ReadBack* readBack_ = nullptr;
    int highestDescriptor_;  ///< a file with this number or more ends the batch
    std::vector<File> files_;
    std::vector<Folder> folders_;
    std::vector<std::uint32_t> folderOfDescriptor_;  ///< index into `folders_`, or `none`
    std::vector<Name> names_;
    std::string text_;         ///< of all names, each with its NUL
    std::size_t removed_ = 0;  ///< names of the batch that had their turn
    std::uint64_t bytes_ = 0;
    std::uint64_t failures_ = 0;
    std::uint64_t unread_ = 0;
    int failureCode_ = 0;  ///< of the last failure, an errno value

    std::uint64_t knownDevice_ = 0;  ///< the device that `knownInMemory_` speaks of
    bool known_ = false;
    bool knownInMemory_ = false;
};

}  // namespace dorvanel

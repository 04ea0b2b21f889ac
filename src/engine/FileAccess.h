// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "engine/DeletionHandler.h"
#include "engine/FileOverwriter.h"
#include "engine/FlushBatch.h"
#include "engine/GrownFiles.h"
#include "engine/HeldItem.h"
#include "engine/ItemOutcomes.h"
#include "engine/ItemShredder.h"
#include "engine/LinkTargets.h"
#include "engine/NameRemover.h"
#include "engine/Outcome.h"
#include "engine/ProgressReport.h"
#include "engine/ReadBack.h"
#include "engine/UnfinishedRecord.h"
#include "engine/random/DrawSequence.h"
#include "platform/Clock.h"
#include "platform/SystemCalls.h"
#include "prefs/PreferenceReader.h"
#include "ui/OpenPanel.h"
#include "ui/Outlets.h"
#include "ui/WorkProgress.h"

namespace dorvanel {

/// What the engine stands on; all of it must outlive the engine.
struct EngineServices {
    platform::SystemCalls& system;
    const platform::Clock& clock;
    DrawSequence& draws;
    /// Where holding folders are written down while they are there; null: nowhere.
    UnfinishedRecord* unfinished = nullptr;
    /// Shown how far a request is, on its thread; null: nobody.
    ui::WorkProgress* work = nullptr;
};

/// The shredding engine: overwrites, renames and deletes files and folder trees. One request at a
/// time, on whatever thread calls; `requestStop` alone may be called from any thread and from a
/// signal handler.
class FileAccess {
  public:
    FileAccess(EngineServices services, const PreferenceReader& preferencesInstance,
               ui::ProgressIndicator& shreddingProgress, ui::TextField& fileName);
    FileAccess(const FileAccess&) = delete;
    FileAccess& operator=(const FileAccess&) = delete;

    /// Shreds every item of the list, absolute paths in bytes, one after another, and empties the
    /// list. Items that do not exist are passed over. Nothing is reported and nothing thrown; see
    /// `outcome`.
    void shredDroppedFile(std::vector<std::string>& paths);

    /// What goes with a list, after it: links in it go, and what they lead to stays as it is.
    struct Others {
        std::vector<std::string> paths{};
        std::vector<std::string> unlogged{};  ///< without lines in the Activity Log
    };
    /// The same with others. Empties both.
    void shredDroppedFile(std::vector<std::string>& paths, Others& others);

    /// The same for items that somebody has looked at and holds since: these very items are
    /// shredded, or told to have gone. Empties the list.
    void shredItems(std::vector<HeldItem>& items);

    /// Folders that no later request may touch, under whatever name and by whatever mount: the home
    /// folder and those above it. An item that is or holds one is left whole, and told.
    void protect(std::vector<Identity> folders) { protected_ = std::move(folders); }

    /// Whether later calls read back what they overwrite. Each plain file that was overwritten
    /// wholly is then, once it is flushed and before its name goes, read up to its old end and
    /// compared with what the last pass wrote. It comes from the medium as far as the system can
    /// tell (see `SystemCalls::forgetCached`); where there is no medium, from memory. A file that
    /// holds something else, or cannot be read, keeps its name and is told; so does one that is not
    /// read back since the request was stopped. Throws std::bad_alloc.
    void setVerifies(bool verifies);

    /// Lets the user pick files, and has `shred` shred what was picked. Main thread.
    static void openDoc(ui::OpenPanel& panel,
                        const std::function<void(std::vector<std::string>)>& shred);

    /// Overwrites one file, a link's target in place of the link; does not remove it. Nothing
    /// happens where the path leads nowhere or cannot be opened. The contents are on the medium
    /// when the call returns.
    void shredOneFile(const std::string& path);

    /// Bytes of a file, a link's target, or of all files below a folder.
    std::uint64_t sizeInBytes(const std::string& path);

    /// Moves the item into a new holding folder beside it and gives everything inside a random
    /// name. Returns the holding folder's path.
    std::string moveAndRename(const std::string& path);

    /// Two predicates of the interface that always answer no.
    [[nodiscard]] int safePlaceInPath(const std::string& path) const;
    [[nodiscard]] int safePlaceBelowPath(const std::string& path) const;

    /// What the last request did; complete when `shredDroppedFile` has returned.
    [[nodiscard]] const Outcome& outcome() const { return outcome_; }

    /// Ends the request at hand after the current block, and every later one before its first:
    /// nothing more is overwritten, what was overwritten wholly is brought to the medium and
    /// removed, and the outcome says what is left and where.
    void requestStop() {
        stopsForGood_ = true;
        stop_ = true;
    }
    [[nodiscard]] bool stopRequested() const { return stop_.load(std::memory_order_relaxed); }

    /// The same for the request at hand and those up to the next `clearStop`. Any thread.
    void requestPause() { stop_ = true; }
    /// Lets later requests begin after a `requestPause`; a `requestStop`, also one that comes in
    /// this moment, stays. While no request is at hand.
    void clearStop() {
        stop_ = false;
        if (stopsForGood_) stop_ = true;
    }
    /// What the last request was stopped before: the holding folders that are left, as they are
    /// now, and behind them the items that were not begun, as they were given. None is held by
    /// descriptors, so that it may be kept for long. The next `shredItems` can finish them; see
    /// `clearStop`. Only the first call answers.
    std::vector<HeldItem> takeLeft();

    /// Bytes of the request and bytes taken in hand, for the outlets while they are told of the
    /// progress: the request's thread.
    [[nodiscard]] std::uint64_t deepPathSize() const { return overwriter_.mDeepPathSize; }
    [[nodiscard]] std::uint64_t deepShreddedSize() const { return overwriter_.mDeepShreddedSize; }

  private:
    void begin();
    template <typename Work>
    bool guarded(const std::string& what, Work work);
    void shredInTurn(std::vector<HeldItem>& items, std::size_t& next);
    void passOver(const HeldItem& item);
    void leaveFrom(const std::vector<HeldItem>& items, std::size_t next);
    void leave(const std::string& path);
    void leaveInWork(const ItemShredder::InWork& item);
    void end();
    [[nodiscard]] DeletionHandler::Parts deletionParts();

    EngineServices services_;
    ProgressReport progress_;
    std::atomic<bool> stop_ = false;
    std::atomic<bool> stopsForGood_ = false;  ///< no request is let begin any more
    FileOverwriter overwriter_;
    Outcome outcome_;
    ItemOutcomes items_;
    NameRemover remover_;
    std::unique_ptr<ReadBack> readBack_;  ///< null: nothing is read back
    FlushBatch batch_;
    LinkTargets targets_;  ///< of the request
    GrownFiles grown_;     ///< likewise
    std::vector<Identity> protected_;
    std::vector<HeldItem> notBegun_;  ///< when the last request was stopped
    ItemShredder shredder_;
    std::uint64_t formerFailures_ = 0;
    std::uint64_t formerUnread_ = 0;
    bool failed_ = false;  ///< memory or the like ran out in this request
    int failure_ = 0;      ///< the errno of that
};

}  // namespace dorvanel

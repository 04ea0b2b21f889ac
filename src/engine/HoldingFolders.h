// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <ctime>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engine/FlushBatch.h"
#include "engine/HeldItem.h"
#include "engine/ItemOutcomes.h"
#include "engine/UnfinishedRecord.h"
#include "platform/Clock.h"
#include "platform/SystemCalls.h"

namespace dorvanel {

/// A folder beside an item, into which the item is moved.
struct HoldingFolder {
    std::shared_ptr<const HeldDescriptor> parent;  ///< the folder that holds both
    platform::FileStatus parentStatus;
    std::string folder;  ///< that folder's path
    std::string name;
    int opened = -1;  ///< the holding folder itself, whatever bears its name by now
    platform::FileStatus status;
    /// It was there before: a run of the same second has left it, and all that it holds is shredded
    /// with the item.
    bool wasThere = false;
    bool isItem = false;                      ///< it is itself what is to be shredded
    std::uint32_t item = ItemOutcomes::none;  ///< the last one that was moved into it
    [[nodiscard]] std::string path() const { return folder + "/" + name; }
};

/// The holding folders of a request. Items of one folder that come in the same second share one:
/// what is in it waits for the batch, and the next item is no concern of it.
class HoldingFolders {
  public:
    /// All of them must outlive this. `record` may be null: then nothing is written down.
    HoldingFolders(platform::SystemCalls& system, const platform::Clock& clock, FlushBatch& batch,
                   UnfinishedRecord* record = nullptr);
    ~HoldingFolders() { forget(); }
    HoldingFolders(const HoldingFolders&) = delete;
    HoldingFolders& operator=(const HoldingFolders&) = delete;

    /// The folder for an item, made if need be; 0, or a negated errno and `reason` may say more. A
    /// folder of its name that is somebody else's, or that others may write in, is not used.
    int enter(const HeldItem& item);
    /// What `enter` has made, until the next call.
    [[nodiscard]] HoldingFolder& current() { return *current_; }
    [[nodiscard]] bool hasCurrent() const { return current_.has_value(); }
    [[nodiscard]] const std::string& reason() const { return reason_; }
    /// Path of the folder that a former run had left and that the last item uses; "" for none.
    [[nodiscard]] const std::string& former() const { return former_; }

    /// Hands the current folder to the batch: it goes when what it holds has gone.
    void retire();
    /// Closes the current folder, which stays.
    void forget();

    /// Paths of folders that are still there.
    [[nodiscard]] std::vector<std::string> left();
    /// A request has ended.
    void clear();

  private:
    static constexpr std::size_t mostUsed = 1024;

    int openParent(const HeldItem& item, HoldingFolder& holding);
    int make(const std::string& item, HoldingFolder& holding);
    int open(HoldingFolder& holding);
    int makePrivate(int reference, const HoldingFolder& holding);
    [[nodiscard]] bool isOurs(int folder, const HoldingFolder& holding);
    [[nodiscard]] bool mayHoldOurs(const HeldItem& item) const;
    [[nodiscard]] bool serves(const HeldItem& item, const std::string& name) const;
    void close(int descriptor);
    void dropGone();
    void begin(const HoldingFolder& holding);
    void giveUp();

    platform::SystemCalls& system_;
    const platform::Clock& clock_;
    FlushBatch& batch_;
    UnfinishedRecord* record_;
    std::uint32_t user_;
    std::optional<HoldingFolder> current_;
    std::string reason_;
    std::string former_;
    struct Used {
        std::string folder;
        std::string name;
        [[nodiscard]] std::string path() const { return folder + "/" + name; }
        bool operator==(const Used&) const = default;
    };
    std::vector<Used> used_;  ///< some of them gone by now
};

}  // namespace dorvanel

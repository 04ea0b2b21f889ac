// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "engine/ContentDigest.h"
#include "engine/OverwriteBuffer.h"
#include "engine/PassPlan.h"
#include "engine/ProgressReport.h"
#include "engine/RandomName.h"
#include "engine/WriteHolder.h"
#include "engine/WriteLane.h"
#include "engine/random/DrawSequence.h"
#include "platform/SystemCalls.h"
#include "prefs/PreferenceReader.h"

namespace dorvanel {

/// Overwrites one open file in place, block by block, pass by pass, then the slack behind its end.
class FileOverwriter {
  public:
    /// All of them must outlive the overwriter. `stop` is looked at after each block.
    FileOverwriter(platform::SystemCalls& system, DrawSequence& draws,
                   const PreferenceReader& preferencesInstance, ProgressReport& progress,
                   const std::atomic<bool>& stop);

    struct Written {
        std::uint64_t bytes = 0;  ///< written altogether, all passes and the slack
        /// errno of the first write that failed, 0 when none did. Behind the old end a full disk, a
        /// quota or a size limit is no failure: nothing old is left for it.
        int code = 0;
        /// Of what the file holds up to its old end, where all of that was written and digests are
        /// made.
        std::optional<Digest> digest{};
        bool isHeld = false;  ///< the last writes were handed to the holder, and are not in `bytes`
    };

    /// Overwrites `size` bytes of `file`, a descriptor open for writing, and as many bytes beyond
    /// as the last block holds. With size 0 nothing is written and `file` may be -1; the draws are
    /// made all the same. A failed write is passed over and the next one tried. Shows `name` and
    /// logs it. `holder` may be null; a request that ends in this file has it hold nothing.
    Written overwrite(int file, std::uint64_t size, std::string_view name,
                      WriteHolder* holder = nullptr);

    std::uint64_t mDeepPathSize = 0;      ///< bytes of the whole request
    std::uint64_t mDeepShreddedSize = 0;  ///< bytes of the request taken in hand so far

    /// Has the holder make the writes that it holds of the file that was overwritten last. Returns
    /// what became of all of them.
    Written writeHeld();

    /// Brings to the outlets what they were not told yet: something will take long.
    void showProgressNow() { progress_.flush(); }

    /// Whether digests are made of what is written. Throws std::bad_alloc.
    void setDigests(bool areMade);

    RandomName& randomName() { return randomName_; }

    /// Whether the files from now on have their lines in the Activity Log.
    void setLogging(bool isLogging) { isLogging_ = isLogging; }

  private:
    enum class Stage { block, slack };

    const OverwriteSettings& settings();
    void showProgress();
    void writePasses(Stage stage, std::uint64_t offset, std::size_t length);
    void choosePattern(std::uint16_t counter);
    void randomizeWith(unsigned pattern);
    void write(Stage stage, std::uint64_t offset, std::size_t length, bool isLast);
    void beginBlock(std::uint64_t offset, std::size_t length);
    bool gather();
    void endBlock();
    void writeGathered();
    void beginFile(int file, std::uint64_t size);
    void add(const BlockWritten& written, std::uint64_t offset);
    void addWaiting();
    void addHeld();
    void startWriteBack(std::uint64_t written);

    platform::SystemCalls& system_;
    DrawSequence& draws_;
    const PreferenceReader& preferencesInstance_;
    ProgressReport& progress_;
    const std::atomic<bool>& stop_;

    OverwriteBuffer buffer_;
    RandomName randomName_;

    OverwriteSettings settings_;
    std::uint64_t settingsRead_ = 0;  ///< the preferences' change count when `settings_` was read
    bool settingsKnown_ = false;
    bool isLogging_ = true;
    std::unique_ptr<ContentDigest> digest_;  ///< of the last passes; null: none is made
    WriteLane lane_;
    BlockPasses block_;           ///< the passes over the block at hand, where `gathers_`
    BlockPasses::Memory memory_;  ///< for those that the lane does not take

    // The file at hand.
    int file_ = -1;
    unsigned entryPattern_ = 0;
    int entryNumberOfWrites_ = 0;
    Written written_;
    std::uint64_t failedAt_ = 0;     ///< offset of the write whose failure is in `written_`
    bool gathers_ = false;           ///< passes are gathered, and not made yet
    WriteHolder* holder_ = nullptr;  ///< of the writes so far; null: they were made
    std::uint64_t writtenBack_ = 0;  ///< bytes that the system was told to bring to the medium
};

}  // namespace dorvanel

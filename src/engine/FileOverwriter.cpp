// SPDX-License-Identifier: MIT
#include "engine/FileOverwriter.h"

#include <algorithm>
#include <optional>
#include <thread>
#include <utility>

#include "engine/BlockWrite.h"
#include "log/ActivityLog.h"

namespace dorvanel {
namespace {

/// Bytes that are written before the system is told to bring them to the medium, and those behind
/// them that may still be written to, above all by the lane.
constexpr std::uint64_t writeBackUnit = std::uint64_t{8} << 20;
constexpr std::uint64_t writeBackLag = std::uint64_t{1} << 20;

}  // namespace

FileOverwriter::FileOverwriter(platform::SystemCalls& system, DrawSequence& draws,
                               const PreferenceReader& preferencesInstance,
                               ProgressReport& progress, const std::atomic<bool>& stop)
    : system_(system),
      draws_(draws),
      preferencesInstance_(preferencesInstance),
      progress_(progress),
      stop_(stop),
      buffer_(draws),
      randomName_(draws),
      lane_(system) {}

void FileOverwriter::setDigests(bool areMade) {
    digest_ = areMade ? std::make_unique<ContentDigest>() : nullptr;
}

FileOverwriter::Written FileOverwriter::overwrite(int file, std::uint64_t size,
                                                  std::string_view name, WriteHolder* holder) {
    beginFile(file, size);
    holder_ = size == 0 ? nullptr : holder;
    if (digest_ != nullptr) digest_->clear();
    entryPattern_ = settings().pattern;
    entryNumberOfWrites_ = settings().numberOfWrites;

    progress_.setName(name);
    if (isLogging_) kalvet_logger(onOneLine(name));
    randomizeWith(settings().pattern);

    std::uint64_t offset = 0;
    std::size_t length = 0;
    do {
        randomName_.randomizeName();  // not used here, but part of the random sequence
        length = static_cast<std::size_t>(
            std::min<std::uint64_t>(size - offset, OverwriteBuffer::blockSize));
        mDeepShreddedSize += length;
        showProgress();
        beginBlock(offset, length);
        writePasses(Stage::block, offset, length);
        endBlock();
        offset += length;
        startWriteBack(offset);
        if (stop_.load(std::memory_order_relaxed)) {
            addWaiting();
            addHeld();
            return written_;
        }
    } while (offset < size);
    addWaiting();
    if (digest_ != nullptr && written_.code == 0) written_.digest = digest_->value();
    writePasses(Stage::slack, offset, length);
    written_.isHeld = holder_ != nullptr;
    return written_;
}

const OverwriteSettings& FileOverwriter::settings() {
    const std::uint64_t changes = preferencesInstance_.changeCount();
    if (!settingsKnown_ || settingsRead_ != changes) {
        settings_.pattern =
            static_cast<unsigned>(preferencesInstance_.intForKey("OverwritePattern"));
        settings_.numberOfWrites = preferencesInstance_.intForKey("NumberOfWrites");
        settings_.doDSanitize = preferencesInstance_.boolForKey("DoDSanitize");
        settings_.nsa = preferencesInstance_.boolForKey("NSA");
        settingsRead_ = changes;
        settingsKnown_ = true;
    }
    return settings_;
}

void FileOverwriter::showProgress() {
    // Nothing but empty files: 0 rather than a division by zero.
    const std::uint64_t percent = mDeepPathSize == 0 ? 0 : mDeepShreddedSize * 100 / mDeepPathSize;
    progress_.setBytes(mDeepShreddedSize, mDeepPathSize);
    progress_.setPercent(static_cast<double>(percent));
}

void FileOverwriter::writePasses(Stage stage, std::uint64_t offset, std::size_t length) {
    OverwriteSettings plan = settings();
    plan.numberOfWrites = entryNumberOfWrites_;
    std::uint16_t counter = passCount(plan, draws_.next());
    do {
        if (stage == Stage::slack) randomizeWith(settings().pattern);
        choosePattern(counter);
        write(stage, offset, length, counter == 1);
        --counter;
        if (stage == Stage::block && pattern::isRandom(entryPattern_)) {
            randomizeWith(settings().pattern);  // every random pass writes new data
        }
    } while (counter != 0);
}

void FileOverwriter::choosePattern(std::uint16_t counter) {
    // With both on, what NSA fills replaces what DoD filled: the draws of both are made.
    if (settings().doDSanitize) {
        randomizeWith(doDPattern(counter).value_or(buffer_.mOverwritePattern));
        buffer_.mOverwritePattern = entryPattern_;
    }
    if (settings().nsa) {
        randomizeWith(nsaPattern(counter).value_or(buffer_.mOverwritePattern));
        buffer_.mOverwritePattern = entryPattern_;
    }
}

void FileOverwriter::randomizeWith(unsigned pattern) {
    buffer_.mOverwritePattern = pattern;
    buffer_.randomize();
}

void FileOverwriter::write(Stage stage, std::uint64_t offset, std::size_t length, bool isLast) {
    if (length == 0 || gather()) return;
    const void* bytes = buffer_.bytes(length);
    // The blocks come in their order, each with all its passes.
    if (digest_ != nullptr && stage == Stage::block && isLast) digest_->add(bytes, length);
    const bool isSlack = stage == Stage::slack;
    if (holder_ != nullptr && holder_->hold(bytes, length, offset, isSlack)) return;
    addHeld();
    const BlockWritten written = writeBlock(system_, file_, bytes, length, offset, isSlack);
    add(written, offset);
}

/// Where there are two processors, blocks of a large file are made and written on both.
void FileOverwriter::beginFile(int file, std::uint64_t size) {
    file_ = file;
    written_ = {};
    writtenBack_ = 0;
    gathers_ = false;
    if (size < WriteLane::worthwhile || digest_ != nullptr || !system_.isForTwoThreads() ||
        std::thread::hardware_concurrency() < 2) {
        return;
    }
    memory_ = BlockPasses::memory();
    block_.contents.reserve(BlockPasses::most);
    lane_.begin(file);
}

void FileOverwriter::beginBlock(std::uint64_t offset, std::size_t length) {
    gathers_ = lane_.isOpen();
    block_.offset = offset;
    block_.length = length;
    block_.contents.clear();
}

/// Keeps what the buffer holds as a pass over the block at hand. False where it is to be written
/// now: all that was gathered has been.
bool FileOverwriter::gather() {
    if (!gathers_) return false;
    const auto content = buffer_.content();
    if (content && block_.contents.size() < BlockPasses::most) {
        block_.contents.push_back(*content);
        return true;
    }
    writeGathered();
    return false;
}

void FileOverwriter::endBlock() {
    if (gathers_ && !lane_.take(block_)) writeGathered();
    gathers_ = false;
}

void FileOverwriter::writeGathered() {
    add(block_.write(system_, file_, memory_), block_.offset);
    gathers_ = false;
}

void FileOverwriter::add(const BlockWritten& written, std::uint64_t offset) {
    written_.bytes += written.bytes;
    if (written.code == 0 || (written_.code != 0 && failedAt_ <= offset)) return;
    written_.code = written.code;
    failedAt_ = offset;
}

/// What the lane has still to write; the slack is written without it.
void FileOverwriter::addWaiting() {
    const WriteLane::Result result = lane_.end();
    add({result.bytes, result.code}, result.offset);
}

FileOverwriter::Written FileOverwriter::writeHeld() {
    addHeld();
    return written_;
}

void FileOverwriter::addHeld() {
    if (holder_ == nullptr) return;
    const BlockWritten written = std::exchange(holder_, nullptr)->writeHeld(file_);
    add(written, 0);
}

/// What lies so far behind is written to no more: the flush then finds little left to do.
void FileOverwriter::startWriteBack(std::uint64_t written) {
    if (written < writtenBack_ + writeBackUnit + writeBackLag) return;
    const std::uint64_t end = written - writeBackLag;
    system_.startWriteBack(file_, writtenBack_, end - writtenBack_);
    writtenBack_ = end;
}

}  // namespace dorvanel

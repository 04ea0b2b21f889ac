// SPDX-License-Identifier: MIT
#include "engine/FileOverwriter.h"

#include <algorithm>
#include <cerrno>
#include <optional>

#include "log/ActivityLog.h"

namespace dorvanel {
namespace {

bool hasNoRoom(int code) {
    return code == ENOSPC || code == EFBIG || code == EDQUOT;
}

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
      randomName_(draws) {}

void FileOverwriter::setDigests(bool areMade) {
    digest_ = areMade ? std::make_unique<ContentDigest>() : nullptr;
}

FileOverwriter::Written FileOverwriter::overwrite(int file, std::uint64_t size,
                                                  std::string_view name) {
    file_ = file;
    written_ = {};
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
        writePasses(Stage::block, offset, length);
        offset += length;
        if (stop_.load(std::memory_order_relaxed)) return written_;
    } while (offset < size);
    if (digest_ != nullptr && written_.code == 0) written_.digest = digest_->value();
    writePasses(Stage::slack, offset, length);
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
    if (length == 0) return;
    const char* bytes = static_cast<const char*>(buffer_.bytes(length));
    // The blocks come in their order, each with all its passes.
    if (digest_ != nullptr && stage == Stage::block && isLast) digest_->add(bytes, length);
    while (length > 0) {
        const std::ptrdiff_t written = system_.writeAt(file_, bytes, length, offset);
        if (written <= 0) {
            const int code = written == 0 ? EIO : static_cast<int>(-written);
            const bool isHarmless = stage == Stage::slack && hasNoRoom(code);
            if (written_.code == 0 && !isHarmless) written_.code = code;
            return;
        }
        const auto count = static_cast<std::size_t>(written);
        written_.bytes += count;
        bytes += count;
        offset += count;
        length -= count;
    }
}

}  // namespace dorvanel

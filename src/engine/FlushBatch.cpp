// SPDX-License-Identifier: MIT
#include "engine/FlushBatch.h"

#include <algorithm>
#include <utility>

namespace dorvanel {

using platform::EntryKind;
using platform::FileStatus;
using Links = platform::SystemCalls::Links;

namespace {

/// Up to here each file is flushed by itself: a flush of the whole file system would also wait for
/// what other programs have written.
constexpr std::ptrdiff_t fewFiles = 4;

constexpr std::uint32_t everybody = 0777;

}  // namespace

FlushBatch::FlushBatch(platform::SystemCalls& system, NameRemover& remover,
                       std::function<void(ui::WorkPhase)> beforeWaiting)
    : system_(system),
      remover_(remover),
      lane_(system, remover, system.descriptorLimit() - sparedDescriptors),
      beforeWaiting_(std::move(beforeWaiting)),
      highestDescriptor_(system.descriptorLimit() - sparedDescriptors) {}

FlushBatch::~FlushBatch() {
    try {
        flush();
    } catch (...) {
        closeFiles();  // no memory to tell of it; the names stay
    }
}

WriteHolder* FlushBatch::holderFor(const WrittenFile& file) {
    // Nothing of it is written yet, so whether it will need a flush goes by where it lies.
    const bool isFree = hasNoBatch() && readBack_ == nullptr && livesInMemory(file);
    return isFree ? lane_.holderFor(file.descriptor) : nullptr;
}

void FlushBatch::keep(const WrittenFile& file, const Path& path) {
    if (needsFlush(file)) {
        const std::uint32_t index = add(file);
        if (files_[index].digest) files_[index].path = path();
        return flushIfFull(file.descriptor);
    }
    File written = fileOf(file);
    readBack(written);
    if (written.found) tellKept(written, path());
    if (file.opensToAll && !isInDoubt(written)) system_.changeMode(file.descriptor, everybody);
    system_.close(file.descriptor);
}

void FlushBatch::remove(const DoomedName& doomed, const WrittenFile& file, const Path& folderPath) {
    if (isForLane(doomed, file)) {
        return lane_.remove(doomed, {file.descriptor, file.status.size, file.isHeld}, folderPath);
    }
    lane_.settle();
    if (isEmpty() && !needsFlush(file)) return removeNow(doomed, file, folderPath);
    const std::uint32_t index = file.descriptor < 0 ? none : add(file);
    queue(doomed, folderOf(doomed.folder, folderPath), index);
}

void FlushBatch::remove(const DoomedName& doomed, std::shared_ptr<const HeldDescriptor> folder,
                        const Path& folderPath) {
    lane_.settle();
    if (isEmpty()) return removeNow(doomed, {}, folderPath);
    const std::uint32_t index = folderOf(folder->get(), folderPath);
    folders_[index].held = std::move(folder);
    queue(doomed, index, none);
}

/// Whether nothing has to be looked at between what was written and the removal.
bool FlushBatch::isForLane(const DoomedName& doomed, const WrittenFile& file) {
    return hasNoBatch() && !doomed.mayBeSwapped && !file.opensToAll && !file.digest &&
           !needsFlush(file) && lane_.isFor();
}

void FlushBatch::removeNow(const DoomedName& doomed, const WrittenFile& file,
                           const Path& folderPath) {
    const auto path = [&] { return folderPath() + "/" + doomed.name; };
    File written = fileOf(file);
    readBack(written);
    const bool swapped = isSwapped(doomed, file.descriptor, written.identity);
    if (file.descriptor >= 0) {
        if (file.opensToAll && !isInDoubt(written)) system_.changeMode(file.descriptor, everybody);
        system_.close(file.descriptor);
    }
    if (written.found && !isInDoubt(written)) remover_.countVerified(doomed.item);
    if (isInDoubt(written)) {
        leaveInDoubt(doomed, written, path);
    } else if (swapped) {
        remover_.leave(doomed, "remove", ESTALE, path);
    } else {
        remover_.remove(doomed, path);
    }
}

FlushBatch::File FlushBatch::fileOf(const WrittenFile& file) {
    const State state = needsFlush(file) ? State::dirty : State::clean;
    return {file.descriptor,
            Identity::of(file.status),
            state,
            file.opensToAll,
            file.status.size,
            readBack_ == nullptr ? std::nullopt : file.digest};
}

std::uint32_t FlushBatch::add(const WrittenFile& file) {
    files_.push_back(fileOf(file));
    bytes_ += file.bytes;
    return static_cast<std::uint32_t>(files_.size() - 1);
}

std::uint32_t FlushBatch::folderOf(int descriptor, const Path& path) {
    const auto number = static_cast<std::size_t>(descriptor);
    if (number >= folderOfDescriptor_.size()) folderOfDescriptor_.resize(number + 1, none);
    std::uint32_t& index = folderOfDescriptor_[number];
    if (index == none) {
        folders_.push_back({descriptor, false, nullptr, path()});
        index = static_cast<std::uint32_t>(folders_.size() - 1);
    }
    return index;
}

void FlushBatch::queue(const DoomedName& doomed, std::uint32_t folder, std::uint32_t file) {
    const std::size_t offset = text_.size();
    text_.append(doomed.name);
    text_.push_back('\0');
    names_.push_back({offset, folder, file, doomed.item, doomed.kind, doomed.isCounted,
                      doomed.mayBeSwapped, false});
    flushIfFull(std::max(doomed.folder, file == none ? -1 : files_[file].descriptor));
}

/// `highest`: a descriptor that the batch has taken.
void FlushBatch::flushIfFull(int highest) {
    if (files_.size() >= maxFiles || bytes_ >= maxBytes || names_.size() >= maxNames ||
        highest >= highestDescriptor_) {
        flush();
    }
}

bool FlushBatch::takesOver(int folder) {
    if (lane_.takesOver(folder)) return true;
    const auto number = static_cast<std::size_t>(folder);
    if (number >= folderOfDescriptor_.size() || folderOfDescriptor_[number] == none) return false;
    folders_[folderOfDescriptor_[number]].isOwned = true;
    return true;
}

void FlushBatch::flush() {
    lane_.settle();
    if (isEmpty()) return;
    flushContents();
    if (readBack_ != nullptr) readAllBack();
    findSwapped();
    closeFiles();
    removeNames();
    clear();
}

bool FlushBatch::needsFlush(const WrittenFile& file) {
    return file.bytes > 0 && !livesInMemory(file);
}

bool FlushBatch::livesInMemory(const WrittenFile& file) {
    if (!known_ || knownDevice_ != file.status.device) {
        knownInMemory_ = system_.livesInMemory(file.descriptor) == 1;
        knownDevice_ = file.status.device;
        known_ = true;
    }
    return knownInMemory_;
}

DoomedName FlushBatch::doomedName(const Name& name) const {
    return {folders_[name.folder].descriptor,
            text_.data() + name.offset,
            name.kind,
            name.isCounted,
            name.mayBeSwapped,
            name.item};
}

/// Whether another file has come in the name's place. As long as `file` is held open no other has
/// its number; of what is not held only that it was no plain file is certain.
bool FlushBatch::isSwapped(const DoomedName& doomed, int file, const Identity& identity) {
    if (!doomed.mayBeSwapped || doomed.kind == EntryKind::folder) return false;
    if (file < 0 && doomed.kind == EntryKind::regular) return false;
    FileStatus now;
    const int result = system_.statusAt(doomed.folder, doomed.name, Links::stay, now);
    if (result < 0) return result != -ENOENT;
    if (now.kind != EntryKind::regular) return false;  // nothing of it could be lost
    if (file < 0) return true;
    if (Identity::of(now) == identity) return false;
    // Some file systems number their files anew from time to time: then both are asked now.
    FileStatus held;
    return system_.status(file, held) < 0 || !now.isSameAs(held);
}

void FlushBatch::readBack(File& file) {
    if (!file.digest || file.found || file.state == State::failed) return;
    file.found =
        readBack_->compare(file.descriptor, file.size, *file.digest, file.state == State::dirty);
}

/// A file that was overwritten more than once, by several names or links, holds what was written
/// last, and is read back once.
void FlushBatch::readAllBack() {
    beforeWaiting_(ui::WorkPhase::readingBack);
    for (File& file : files_) {
        if (laterWritten(file) == nullptr) readBack(file);
    }
    for (File& file : files_) {
        if (file.digest && !file.found && file.state != State::failed) {
            const File* later = laterWritten(file);
            const bool isKnown = later != nullptr && later->found;
            file.found = isKnown ? *later->found
                                 : ReadBack::Answer{ReadBack::Result::unreadable, failureCode_};
        }
        if (file.found && !file.path.empty()) tellKept(file, std::exchange(file.path, {}));
    }
}

/// The last one of the batch that is to be read back and is the same file.
const FlushBatch::File* FlushBatch::laterWritten(const File& file) const {
    for (const File* other = &files_.back(); other != &file; --other) {
        if (other->digest && other->identity == file.identity) return other;
    }
    return nullptr;
}

bool FlushBatch::isInDoubt(const File& file) {
    return file.found && file.found->result != ReadBack::Result::same;
}

void FlushBatch::leaveInDoubt(const DoomedName& doomed, const File& file, const Path& path) {
    if (file.found->result == ReadBack::Result::ended) {
        ++unread_;
        remover_.leave(doomed, "verify", ECANCELED, path);
    } else {
        remover_.leaveUnverified(doomed, file.found->code, path);
    }
}

void FlushBatch::tellKept(const File& file, std::string path) {
    switch (file.found->result) {
        case ReadBack::Result::same:
            return remover_.countVerified(ItemOutcomes::none);
        case ReadBack::Result::ended:
            return;
        default:
            return remover_.tellUnverified(file.found->code, std::move(path));
    }
}

void FlushBatch::findSwapped() {
    for (Name& name : names_) {
        if (!name.mayBeSwapped) continue;
        if (name.file == none) {
            name.isSwapped = isSwapped(doomedName(name), -1, {});
        } else if (const File& file = files_[name.file]; file.descriptor >= 0) {
            name.isSwapped = isSwapped(doomedName(name), file.descriptor, file.identity);
        }
    }
}

void FlushBatch::closeFiles() {
    for (File& file : files_) {
        if (file.descriptor < 0) continue;
        if (file.opensToAll && file.state != State::failed && !isInDoubt(file)) {
            system_.changeMode(file.descriptor, everybody);
        }
        system_.close(file.descriptor);
        file.descriptor = -1;
        if (file.state == State::dirty) file.state = State::clean;
    }
}

void FlushBatch::removeNames() {
    while (removed_ < names_.size()) {
        const Name& name = names_[removed_++];
        const DoomedName doomed = doomedName(name);
        const std::string& folder = folders_[name.folder].path;
        const auto path = [&] { return folder + "/" + doomed.name; };
        const File* file = name.file == none ? nullptr : &files_[name.file];
        if (file != nullptr && file->found && !isInDoubt(*file)) {
            remover_.countVerified(name.item);
        }
        if (file != nullptr && file->state == State::failed) {
            remover_.leave(doomed, "flush", failureCode_, path);
        } else if (file != nullptr && isInDoubt(*file)) {
            leaveInDoubt(doomed, *file, path);
        } else if (name.isSwapped) {
            remover_.leave(doomed, "remove", ESTALE, path);
        } else {
            remover_.remove(doomed, path);
        }
    }
}

void FlushBatch::clear() {
    for (const Folder& folder : folders_) {
        folderOfDescriptor_[static_cast<std::size_t>(folder.descriptor)] = none;
        if (folder.isOwned) system_.close(folder.descriptor);
    }
    files_.clear();
    folders_.clear();
    names_.clear();
    text_.clear();
    removed_ = 0;
    bytes_ = 0;
    remover_.settle();
}

void FlushBatch::flushContents() {
    std::vector<std::uint64_t> devices;
    for (const File& file : files_) {
        if (file.state == State::dirty &&
            std::find(devices.begin(), devices.end(), file.identity.device) == devices.end()) {
            devices.push_back(file.identity.device);
        }
    }
    if (!devices.empty()) beforeWaiting_(ui::WorkPhase::flushing);
    for (const std::uint64_t device : devices) flushDevice(device);
}

void FlushBatch::flushDevice(std::uint64_t device) {
    const auto waits = [device](const File& file) {
        return file.state == State::dirty && file.identity.device == device;
    };
    if (std::count_if(files_.begin(), files_.end(), waits) > fewFiles) {
        const auto any = std::find_if(files_.begin(), files_.end(), waits);
        if (system_.flushFileSystem(any->descriptor) >= 0) return;
    }
    flushEach(device);
}

void FlushBatch::flushEach(std::uint64_t device) {
    for (File& file : files_) {
        if (file.state != State::dirty || file.identity.device != device) continue;
        const int result = system_.flushFile(file.descriptor);
        if (result < 0) {
            ++failures_;
            failureCode_ = -result;
            file.state = State::failed;
        }
    }
}

}  // namespace dorvanel

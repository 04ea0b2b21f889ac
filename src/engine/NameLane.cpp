// SPDX-License-Identifier: MIT
#include "engine/NameLane.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace dorvanel {

using State = LaneCall::State;
using What = LaneCall::What;

namespace {

constexpr std::uint32_t none = ~std::uint32_t{0};

}  // namespace

NameLane::NameLane(platform::SystemCalls& system, NameRemover& remover, int highestDescriptor)
    : system_(system),
      remover_(remover),
      lane_(system),
      highestDescriptor_(highestDescriptor),
      hasNone_(!system.isForTwoThreads() || std::thread::hardware_concurrency() < 2) {}

NameLane::~NameLane() {
    lane_.end();
    const auto close = [this](LaneCalls& list) {
        for (const LaneCall& call : list.calls) {
            if (call.file >= 0) system_.close(call.file);
        }
    };
    for (; lane_.hasGiven(); lane_.drop()) close(lane_.take());
    close(lane_.filling());
    forgetFolders();
}

bool NameLane::isFor(std::size_t names) {
    names_ += names;
    if (lane_.isOpen()) return true;
    if (hasNone_ || names_ < worthwhile) return false;
    hasNone_ = !lane_.begin();
    return !hasNone_;
}

void NameLane::end() {
    endPhase();
    lane_.end();
    held_ = {};  // of a file in which memory ran out: what it would be of is handed out anew
}

WriteHolder* NameLane::holderFor(int file) {
    held_ = {};
    madeOfHeld_ = {};
    heldFile_ = file;
    return lane_.isOpen() && lane_.waiting() == 0 ? this : nullptr;
}

bool NameLane::hold(const void* bytes, std::size_t size, std::uint64_t offset, bool mayLackRoom) {
    return lane_.filling().hold(held_, bytes, size, offset, mayLackRoom);
}

BlockWritten NameLane::writeHeld(int file) {
    const BlockWritten now = lane_.filling().write(system_, file, held_);
    held_ = {};
    madeOfHeld_.bytes += now.bytes;
    if (madeOfHeld_.code == 0) madeOfHeld_.code = now.code;
    return madeOfHeld_;
}

/// Which of two folders has its turn first matters to nobody: a list is made by whichever thread is
/// free.
void NameLane::beginOneOf(int folder) {
    const LaneCalls& list = lane_.filling();
    const std::size_t count = list.calls.size();
    const bool isOfAnother = count > 0 && list.calls.back().folderDescriptor != folder;
    if (count >= (isOfAnother ? LaneCalls::manyCalls : LaneCalls::manyOfOne)) share();
}

void NameLane::look(int folder, const char* name, const platform::FileStatus& in,
                    const Path& folderPath, Looks& looks) {
    looks_ = &looks;
    beginOneOf(folder);
    LaneCall call;
    call.what = What::look;
    call.folderDescriptor = folder;
    call.folder = folderOf(folder, folderPath);
    folders_[call.folder].status = in;
    add(call, name);
    if (folder >= highestDescriptor_) settle();
}

void NameLane::rename(int folder, const char* name, const char* newName) {
    beginOneOf(folder);
    LaneCall call;
    call.what = What::rename;
    call.folderDescriptor = folder;
    call.newName = lane_.filling().addText(newName);
    call.folder = folderOf(folder, [] { return std::string(); });
    add(call, name);
    if (folder >= highestDescriptor_) settle();
}

void NameLane::share() {
    if (lane_.waiting() == 0 || isFollowUp()) return handOver();
    startList();
    make(lane_.filling());
    lane_.filling().clear();
}

/// Whether the filled list goes on with renamings in a folder of which a list was handed over. They
/// are made in their order, since some file systems list a folder by that from then on.
bool NameLane::isFollowUp() const {
    return std::ranges::any_of(lane_.filling().calls, [this](const LaneCall& call) {
        const Folder& folder = folders_[call.folder];
        return call.what == What::rename && folder.waiting > folder.filled;
    });
}

/// The filled list is no longer that.
void NameLane::startList() {
    for (const LaneCall& call : lane_.filling().calls) folders_[call.folder].filled = 0;
}

void NameLane::remove(const DoomedName& doomed, const File& file, const Path& folderPath) {
    LaneCall call;
    call.kind = doomed.kind;
    call.isCounted = doomed.isCounted;
    call.item = doomed.item;
    call.folderDescriptor = doomed.folder;
    call.folder = folderOf(doomed.folder, folderPath);
    call.file = file.descriptor;
    call.fileSize = file.size;
    call.isHeld = file.isHeld;
    if (file.isHeld) {
        call.held = std::exchange(held_, {});
        call.code = madeOfHeld_.code;
    }
    add(call, doomed.name);
    if (std::max(doomed.folder, file.descriptor) >= highestDescriptor_) return settle();
    if (lane_.filling().isFull()) handOver();
}

void NameLane::add(LaneCall& call, const char* name) {
    LaneCalls& list = lane_.filling();
    call.name = list.addText(name);
    list.calls.push_back(call);
    ++folders_[call.folder].waiting;
    ++folders_[call.folder].filled;
}

std::uint32_t NameLane::folderOf(int descriptor, const Path& path) {
    const auto number = static_cast<std::size_t>(descriptor);
    if (number >= folderOfDescriptor_.size()) folderOfDescriptor_.resize(number + 1, none);
    std::uint32_t& index = folderOfDescriptor_[number];
    if (index == none) {
        std::string text = path();
        if (free_.empty()) {
            free_.reserve(folders_.size() + 1);
            folders_.emplace_back();
            free_.push_back(static_cast<std::uint32_t>(folders_.size() - 1));
        }
        index = free_.back();
        free_.pop_back();
        folders_[index] = {descriptor, false, 0, 0, std::move(text), {}};
    }
    return index;
}

bool NameLane::takesOver(int folder) {
    const auto number = static_cast<std::size_t>(folder);
    if (number >= folderOfDescriptor_.size()) return false;
    const std::uint32_t index = folderOfDescriptor_[number];
    if (index == none) return false;
    folders_[index].isOwned = true;
    if (folders_[index].waiting == 0) letGo(index);
    return true;
}

/// Closes a folder that nothing waits in and that nobody else closes.
void NameLane::letGo(std::uint32_t folder) {
    Folder& place = folders_[folder];
    if (place.waiting > 0 || !place.isOwned) return;
    folderOfDescriptor_[static_cast<std::size_t>(place.descriptor)] = none;
    system_.close(place.descriptor);
    place.descriptor = -1;
    place.isOwned = false;
    free_.push_back(folder);
}

void NameLane::handOver() {
    while (!lane_.hasRoom()) takeOne();
    startList();
    lane_.give();
}

void NameLane::takeOne() {
    make(lane_.take());
    lane_.drop();
}

/// Tells what became of the calls of a list, and makes those that the second thread did not.
void NameLane::make(LaneCalls& list) {
    for (;;) {
        while (list.told < list.done) finish(list, list.calls[list.told++]);
        if (list.done == list.calls.size()) return;
        list.make(system_);
    }
}

void NameLane::finish(const LaneCalls& list, LaneCall& call) {
    Folder& folder = folders_[call.folder];
    --folder.waiting;
    if (call.what == What::remove) tellRemoval(list, call, folder.path);
    if (call.what == What::look && call.code == 0 && looks_ != nullptr) {
        looks_->looked(folder.status, call.status,
                       [&] { return folder.path + "/" + list.text(call.name); });
    }
    letGo(call.folder);
}

void NameLane::tellRemoval(const LaneCalls& list, LaneCall& call, const std::string& folder) {
    const DoomedName doomed{
        call.folderDescriptor, list.text(call.name), call.kind, call.isCounted, false, call.item};
    const auto path = [&] { return folder + "/" + doomed.name; };
    if (call.file >= 0) system_.close(std::exchange(call.file, -1));
    if (call.state == State::notWritten) {
        remover_.tellUnwritten(doomed, call.code, path);
        return remover_.remove(doomed, path);
    }
    if (call.isHeld) remover_.countOverwritten(call.fileSize);
    if (call.state == State::notRemoved) {
        remover_.fileManagerShouldProceedAfterError(doomed, call.code, path);
    } else {
        remover_.countGone(doomed);
    }
}

void NameLane::endPhase() {
    settle();
    names_ = 0;
}

void NameLane::settle() {
    if (isEmpty()) return;
    if (held_.count > 0) writeHeld(heldFile_);
    while (lane_.hasGiven()) takeOne();
    make(lane_.filling());
    lane_.filling().clear();
    forgetFolders();
}

/// Those that are left are closed by whoever has them open.
void NameLane::forgetFolders() {
    for (const Folder& folder : folders_) {
        if (folder.isOwned) system_.close(folder.descriptor);
    }
    folders_.clear();
    free_.clear();
    folderOfDescriptor_.clear();
}

}  // namespace dorvanel

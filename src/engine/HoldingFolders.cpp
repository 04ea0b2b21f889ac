// SPDX-License-Identifier: MIT
#include "engine/HoldingFolders.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include "engine/FolderRights.h"
#include "engine/HoldingFolderName.h"

namespace dorvanel {

using platform::EntryKind;
using platform::FileStatus;
using platform::SystemCalls;
using Links = platform::SystemCalls::Links;

namespace {

constexpr std::uint32_t ownerOnly = 0700;
constexpr std::uint32_t setGroup = 02000;  // inherited from the folder around it

}  // namespace

HoldingFolders::HoldingFolders(SystemCalls& system, const platform::Clock& clock, FlushBatch& batch,
                               UnfinishedRecord* record)
    : system_(system),
      clock_(clock),
      batch_(batch),
      record_(record),
      user_(system.effectiveUser()) {}

int HoldingFolders::enter(const HeldItem& item) {
    reason_.clear();
    former_.clear();
    std::string name = holdingFolderName(clock_.time());
    if (serves(item, name)) return 0;
    retire();
    if (mayHoldOurs(item)) batch_.flush();
    HoldingFolder holding;
    holding.folder = item.folder;
    holding.name = std::move(name);
    const int result = openParent(item, holding);
    if (result < 0) return result;
    begin(holding);
    const int made = make(item.name, holding);
    if (made < 0) {
        giveUp();
        return made;
    }
    if (holding.wasThere) former_ = holding.path();
    current_ = std::move(holding);
    return 0;
}

/// Has the folder written down before it is made.
void HoldingFolders::begin(const HoldingFolder& holding) {
    const bool isFull = record_ != nullptr && record_->isFull();
    if (isFull) batch_.flush();
    if (isFull || used_.size() >= mostUsed) dropGone();
    used_.push_back({holding.folder, holding.name});
    if (record_ != nullptr) record_->begins(holding.folder, holding.name, holding.parentStatus);
}

/// The folder that came last was not made, or is not ours.
void HoldingFolders::giveUp() {
    const Used last = std::move(used_.back());
    used_.pop_back();
    const bool isAnothersToo = std::ranges::find(used_, last) != used_.end();
    if (record_ != nullptr && !isAnothersToo) record_->ended(last.folder, last.name);
}

/// Whether what waits of an earlier item may lie in this one: that must have gone before it moves.
bool HoldingFolders::mayHoldOurs(const HeldItem& item) const {
    if (item.status.kind != EntryKind::folder) return false;
    const std::string inside = item.folder + "/" + item.name + "/";
    return std::ranges::any_of(used_,
                               [&](const Used& used) { return used.path().starts_with(inside); });
}

/// Whether the current folder lies beside the item and bears the name.
bool HoldingFolders::serves(const HeldItem& item, const std::string& name) const {
    return current_ && !current_->wasThere && current_->name == name && item.name != name &&
           current_->parentStatus.isSameAs(item.parentStatus) &&
           !current_->parentStatus.isBeyondMountOf(item.parentStatus);
}

int HoldingFolders::openParent(const HeldItem& item, HoldingFolder& holding) {
    holding.parentStatus = item.parentStatus;
    holding.parent = item.parent;
    if (holding.parent != nullptr) return 0;
    // One of too many to be held.
    const int opened = batch_.opened([&] {
        return system_.openReference(SystemCalls::workingFolder, item.folder.c_str(),
                                     Links::follow);
    });
    if (opened < 0) return opened;
    holding.parent = std::make_shared<const HeldDescriptor>(system_, opened);
    FileStatus found;
    const int result = system_.status(opened, found);
    if (result < 0) return result;
    return found.isSameAs(item.parentStatus) ? 0 : -ESTALE;
}

int HoldingFolders::make(const std::string& item, HoldingFolder& holding) {
    const bool isItself = item == holding.name;  // left by a run that ended in this very second
    const auto attempt = [&] {
        return system_.makeFolder(holding.parent->get(), holding.name.c_str(), ownerOnly);
    };
    int made = isItself ? -EEXIST : attempt();
    if (made == -EEXIST && !batch_.isEmpty()) {
        batch_.flush();  // one of ours may wait under this name
        if (!isItself) made = attempt();
    }
    if (made < 0 && made != -EEXIST) return made;
    holding.wasThere = made < 0;
    const int result = open(holding);
    if (result >= 0) return 0;
    if (!holding.wasThere) system_.removeFolder(holding.parent->get(), holding.name.c_str());
    return result;
}

int HoldingFolders::open(HoldingFolder& holding) {
    const int parent = holding.parent->get();
    const char* name = holding.name.c_str();
    int folder = batch_.opened([&] { return system_.openFolder(parent, name); });
    if (folder == -EACCES) {
        // The umask has taken our own bits.
        const int reference =
            batch_.opened([&] { return system_.openReference(parent, name, Links::stay); });
        if (reference < 0) return reference;
        int result = system_.status(reference, holding.status);
        if (result >= 0) result = isOurs(reference, holding) ? 0 : -EACCES;
        if (result >= 0) result = makePrivate(reference, holding);
        folder = result < 0 ? result : system_.openFolder(reference, ".");
        system_.close(reference);
    }
    if (folder == -ELOOP || folder == -ENOTDIR) {
        reason_ = "\"" + holding.name + "\" is in the way";
        return folder;
    }
    if (folder < 0) return folder;
    const int result = system_.status(folder, holding.status);
    if (result < 0 || !isOurs(folder, holding)) {
        system_.close(folder);
        if (result < 0) return result;
        reason_ = "\"" + holding.name + "\" may be written in by others";
        return -EPERM;
    }
    if ((holding.status.permissions & ~setGroup) != ownerOnly) {
        system_.changeMode(folder, ownerOnly);
    }
    holding.opened = folder;
    return 0;
}

/// Without /proc and on older kernels by name, where nobody else could have put a link.
int HoldingFolders::makePrivate(int reference, const HoldingFolder& holding) {
    const int result = system_.changeMode(reference, ownerOnly);
    if (result >= 0 || othersMayWriteIn(holding.parentStatus, user_)) return result;
    return system_.changeModeAt(holding.parent->get(), holding.name.c_str(), ownerOnly);
}

/// Whether nobody else can put something into the folder or take it out.
bool HoldingFolders::isOurs(int folder, const HoldingFolder& holding) {
    const FileStatus& found = holding.status;
    if (found.kind != EntryKind::folder || found.isBeyondMountOf(holding.parentStatus)) {
        return false;
    }
    if (found.owner == user_ && !othersMayWriteIn(found, user_)) return true;
    // Where a mount gives all its files one owner and one set of bits, nobody can be kept out.
    return !holding.wasThere && system_.keepsNoOwners(folder) == 1;
}

void HoldingFolders::retire() {
    if (!current_) return;
    HoldingFolder holding = std::move(*current_);
    current_.reset();
    close(holding.opened);
    batch_.remove({holding.parent->get(), holding.name.c_str(), EntryKind::folder, holding.isItem,
                   false, holding.item},
                  holding.parent, [&holding] { return holding.folder; });
}

void HoldingFolders::forget() {
    if (current_) close(current_->opened);
    current_.reset();
}

void HoldingFolders::close(int descriptor) {
    if (descriptor >= 0 && !batch_.takesOver(descriptor)) system_.close(descriptor);
}

void HoldingFolders::dropGone() {
    std::erase_if(used_, [this](const Used& used) {
        FileStatus found;
        const bool isGone = system_.statusAt(SystemCalls::workingFolder, used.path().c_str(),
                                             Links::stay, found) == -ENOENT;
        if (isGone && record_ != nullptr) record_->ended(used.folder, used.name);
        return isGone;
    });
}

std::vector<std::string> HoldingFolders::left() {
    dropGone();
    std::vector<std::string> paths;
    for (const Used& used : used_) {
        std::string path = used.path();
        if (std::ranges::find(paths, path) == paths.end()) paths.push_back(std::move(path));
    }
    return paths;
}

void HoldingFolders::clear() {
    if (record_ != nullptr) {
        dropGone();
        record_->requestEnds();
    }
    used_.clear();
}

}  // namespace dorvanel

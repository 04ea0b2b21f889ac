// SPDX-License-Identifier: MIT
#include "engine/FileAccess.h"

#include <algorithm>
#include <cerrno>
#include <new>
#include <optional>
#include <system_error>
#include <utility>

#include "engine/HoldingFolderName.h"
#include "engine/LeftFolders.h"
#include "engine/TakenItems.h"
#include "platform/FileManager.h"

namespace dorvanel {

using platform::EntryKind;
using platform::SystemCalls;

namespace {

/// The item beside which the holding folder lies, the first of several.
std::uint32_t itemBeside(const Outcome& outcome, const std::string& holding) {
    const std::string folder = holding.substr(0, holding.rfind('/') + 1);
    const auto isBeside = [&folder](const ItemOutcome& item) {
        return item.path.substr(0, item.path.rfind('/') + 1) == folder;
    };
    const auto found = std::ranges::find_if(outcome.perItem, isBeside);
    return found == outcome.perItem.end()
               ? ItemOutcomes::none
               : static_cast<std::uint32_t>(found - outcome.perItem.begin());
}

}  // namespace

FileAccess::FileAccess(EngineServices services, const PreferenceReader& preferencesInstance,
                       ui::ProgressIndicator& shreddingProgress, ui::TextField& fileName)
    : services_(services),
      progress_(shreddingProgress, fileName, services.clock, services.work),
      overwriter_(services.system, services.draws, preferencesInstance, progress_, stop_),
      items_(services.system, outcome_),
      remover_(services.system, outcome_, items_),
      batch_(services.system, remover_, [this](ui::WorkPhase phase) { progress_.enter(phase); }),
      targets_(services.system),
      shredder_({deletionParts(), services.clock, targets_, protected_, services.unfinished}) {}

void FileAccess::shredDroppedFile(std::vector<std::string>& paths) {
    Others none;
    shredDroppedFile(paths, none);
}

void FileAccess::shredDroppedFile(std::vector<std::string>& paths, Others& others) {
    begin();
    std::vector<HeldItem> items;
    std::size_t next = 0;
    const auto holdOthers = [&](const std::vector<std::string>& list, bool areLogged) {
        for (HeldItem& item : holdAll(services_.system, list, SystemCalls::Links::stay)) {
            item.isLogged = areLogged;
            items.push_back(std::move(item));
        }
    };
    const bool areHeld = guarded("hold the items", [&] {
        items = holdAll(services_.system, paths);
        holdOthers(others.paths, true);
        holdOthers(others.unlogged, false);
    });
    if (areHeld) {
        guarded("shred", [&] { shredInTurn(items, next); });
        guarded("tell what is left", [&] { leaveFrom(items, next); });
    } else {
        guarded("tell what is left", [&] {
            for (const auto* list : {&paths, &others.paths, &others.unlogged}) {
                for (const std::string& path : *list) {
                    HeldItem unknown;
                    unknown.path = path;
                    items_.begin(unknown);
                    leave(path);
                    outcome_.left.push_back(path);
                }
            }
        });
    }
    paths.clear();
    others = {};
    items.clear();
    end();
}

void FileAccess::shredItems(std::vector<HeldItem>& items) {
    begin();
    std::size_t next = 0;
    guarded("shred", [&] { shredInTurn(items, next); });
    guarded("tell what is left", [&] { leaveFrom(items, next); });
    items.clear();
    end();
}

void FileAccess::begin() {
    progress_.showNow(0.0);
    progress_.enter(ui::WorkPhase::measuring);
    notBegun_.clear();
    overwriter_.mDeepShreddedSize = 0;
    overwriter_.mDeepPathSize = 0;
    outcome_ = {};
    items_.clear();
    targets_.clear();
    grown_.clear();
    batch_.forgetDevices();
    shredder_.clear();
    failed_ = false;
    failure_ = 0;
    formerFailures_ = batch_.failures();
    formerUnread_ = batch_.unread();
}

/// Does the work; where memory or a thread is missing, that is told and false returned.
template <typename Work>
bool FileAccess::guarded(const std::string& what, Work work) {
    int code = ENOMEM;
    try {
        work();
        return true;
    } catch (const std::system_error& error) {
        code = error.code().value();
    } catch (const std::exception&) {
        code = ENOMEM;
    }
    failed_ = true;
    failure_ = code;
    ++outcome_.notRemoved;
    try {
        shredder_.walk().releaseMemory();
        outcome_.note({}, what, code);
    } catch (const std::exception&) {
        // The count alone has to tell it.
    }
    return false;
}

/// Measures all items, then shreds one after another from number `next` on, which is where it
/// stands when something ends it.
void FileAccess::shredInTurn(std::vector<HeldItem>& items, std::size_t& next) {
    std::vector<MeasuredItem> measured(items.size());
    std::size_t count = 0;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (items[i].code != 0) continue;
        ++count;
        measured[i] = shredder_.measure(items[i]);
        if (measured[i].refusal.empty()) overwriter_.mDeepPathSize += measured[i].bytes;
    }
    TakenItems taken(items.size());
    std::size_t turn = 0;
    while (next < items.size()) {
        HeldItem& item = items[next];
        if (batch_.isEmpty()) items_.settle();
        if (item.code == 0) progress_.setItem(++turn, count, item.path);
        if (item.code != 0) {
            passOver(item);
        } else if (stopRequested()) {
            return;
        } else if (!taken.holds(item)) {
            items_.begin(item, measured[next].manifest);
            ++outcome_.items;
            const std::size_t number = next++;
            if (shredder_.shred(item, measured[number], taken)) taken.add(item);
            const std::string& former = shredder_.holdings().former();
            if (!former.empty()) taken.addFolder(former);
            measured[number] = {};
            continue;
        } else {
            items_.begin(item);  // it went with the one that held it
        }
        ++next;
    }
}

void FileAccess::passOver(const HeldItem& item) {
    const bool isAbsent = item.code == ENOENT || item.code == ENOTDIR;
    if (isAbsent && !item.isThere()) return;
    // A link to nothing, or a thing that cannot be looked at: it stays.
    ++outcome_.notRemoved;
    outcome_.note(item.path, "look at", item.code);
    items_.begin(item);
    items_.addLeft(items_.current(), {item.path, "look at", item.code});
}

/// Says of the item at hand that it is left, since the request has ended.
void FileAccess::leave(const std::string& path) {
    items_.addLeft(items_.current(), {path, "shred", failed_ ? failure_ : ECANCELED});
}

/// Says of the items from number `next` on that they are left, and of the one before if it was not
/// moved before memory ran out.
void FileAccess::leaveFrom(const std::vector<HeldItem>& items, std::size_t next) {
    platform::FileStatus status;
    if (shredder_.isInWork() && next > 0 &&
        services_.system.statusAt(SystemCalls::workingFolder, items[next - 1].path.c_str(),
                                  SystemCalls::Links::stay, status) >= 0) {
        outcome_.left.push_back(items[next - 1].path);
        leave(items[next - 1].path);
    }
    for (; next < items.size(); ++next) {
        if (items[next].code == 0) {
            items_.begin(items[next]);
            leave(items[next].path);
            outcome_.left.push_back(items[next].path);
            notBegun_.push_back(items[next]);
            notBegun_.back().item.reset();
            notBegun_.back().parent.reset();
        } else {
            passOver(items[next]);
        }
    }
}

void FileAccess::end() {
    HoldingFolders& holdings = shredder_.holdings();
    const bool isUnfinished = shredder_.isInWork() || !outcome_.left.empty();
    ItemShredder::InWork inWork;
    guarded("tell what is left", [&] { inWork = shredder_.inWork(); });
    const auto finish = [&] {
        if (!shredder_.isInWork()) holdings.retire();
        batch_.flush();
        batch_.endLane();
    };
    if (!guarded("finish", finish)) guarded("finish", finish);
    holdings.forget();
    if (!inWork.path.empty()) guarded("tell what is left", [&] { leaveInWork(inWork); });
    if (isUnfinished || failed_ || batch_.unread() != formerUnread_) {
        guarded("tell what is left", [&] {
            std::vector<std::string> left = holdings.left();
            outcome_.left.insert(outcome_.left.begin(), left.begin(), left.end());
            for (const std::string& path : left) {
                if (items_.tellsOfLeftIn(ItemOutcomes::none, path)) continue;
                const int code = failed_ ? failure_ : ECANCELED;
                items_.addLeft(itemBeside(outcome_, path), {path, "remove", code});
            }
        });
    }
    guarded("write down what is left", [&] { holdings.clear(); });
    targets_.clear();
    items_.clear();
    outcome_.notFlushed = batch_.failures() - formerFailures_;
    outcome_.stopped = stopRequested();
    progress_.showNow(0.0);
    progress_.showNow(std::string_view());
    progress_.enter(ui::WorkPhase::none);
}

std::vector<HeldItem> FileAccess::takeLeft() {
    LeftFolders found;
    for (const std::string& path : outcome_.left) {
        const std::string name = path.substr(path.rfind('/') + 1);
        if (isHoldingFolderName(name)) findLeftFolders(services_.system, path, found);
    }
    std::vector<HeldItem> left;
    for (LeftFolder& folder : found.folders) {
        folder.item.item.reset();
        folder.item.parent.reset();
        left.push_back(std::move(folder.item));
    }
    left.insert(left.end(), notBegun_.begin(), notBegun_.end());
    notBegun_.clear();
    return left;
}

/// Says of the item in work that it is left, should something of it be where it was moved to.
void FileAccess::leaveInWork(const ItemShredder::InWork& item) {
    platform::FileStatus status;
    const int found = services_.system.statusAt(SystemCalls::workingFolder, item.path.c_str(),
                                                SystemCalls::Links::stay, status);
    if (found == -ENOENT || found == -ENOTDIR) return;
    const int code = failed_ ? failure_ : ECANCELED;
    items_.addLeft(item.item, {item.path, "shred", code, {}, item.was});
}

void FileAccess::setVerifies(bool verifies) {
    overwriter_.setDigests(verifies);
    readBack_ = verifies ? std::make_unique<ReadBack>(services_.system, stop_) : nullptr;
    batch_.setReadBack(readBack_.get());
}

void FileAccess::openDoc(ui::OpenPanel& panel,
                         const std::function<void(std::vector<std::string>)>& shred) {
    panel.setAllowsMultipleSelection(true);
    std::optional<std::vector<std::string>> picked =
        panel.runModalForDirectory(platform::homeDirectory());
    if (picked) shred(std::move(*picked));
}

void FileAccess::shredOneFile(const std::string& path) {
    const HeldItem item = hold(services_.system, path);
    if (item.code != 0 && item.code != ENOENT && item.code != ENOTDIR) {
        ++outcome_.notOverwritten;
        outcome_.note(path, "look at", item.code);
    }
    if (item.code != 0 || item.status.kind == EntryKind::folder) return;
    shredder_.measure(item);  // remembers what a link leads to
    DeletionHandler(deletionParts(), shredder_.walk(), item.folder, item.links)
        .shredOneFile(
            {item.parent->get(), item.name.c_str(), item.status.kind, &item.parentStatus});
    batch_.flush();
}

std::uint64_t FileAccess::sizeInBytes(const std::string& path) {
    const HeldItem item = hold(services_.system, path);
    const std::uint64_t bytes = item.code == 0 ? shredder_.measure(item).bytes : 0;
    batch_.endLane();
    return bytes;
}

std::string FileAccess::moveAndRename(const std::string& path) {
    std::string holding = shredder_.moveAndRename(hold(services_.system, path));
    batch_.endLane();
    return holding;
}

int FileAccess::safePlaceInPath(const std::string&) const {
    return 0;
}
int FileAccess::safePlaceBelowPath(const std::string&) const {
    return 0;
}

DeletionHandler::Parts FileAccess::deletionParts() {
    return {services_.system, overwriter_, batch_,
            targets_,         grown_,      stop_,
            outcome_,         items_,      services_.system.effectiveUser()};
}

}  // namespace dorvanel

// SPDX-License-Identifier: MIT
#include "targets/mentions/Mentions.h"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <system_error>
#include <utility>

#include "targets/UserFolders.h"
#include "targets/mentions/FileUri.h"
#include "targets/mentions/RecentList.h"
#include "targets/mentions/Thumbnails.h"
#include "targets/traces/HomeRoot.h"
#include "targets/traces/PathFinder.h"
#include "targets/trash/DirectorySizes.h"
#include "targets/trash/TrashFolders.h"

namespace dorvanel::mentions {
namespace {

using cleaning::Cleaned;
using cleaning::Fault;
using cleaning::PreparedFile;
using cleaning::TextRest;
using platform::EntryKind;
using platform::SystemCalls;

/// A list that other programs write again and again while it is read is left.
constexpr int triesToPrepare = 3;

/// A list that is a link to the null device: no list is wanted, and there is none.
bool isTheNullDevice(SystemCalls& system, const std::string& path) {
    platform::FileStatus status;
    return system.statusAt(SystemCalls::workingFolder, path.c_str(), SystemCalls::Links::follow,
                           status) >= 0 &&
           status.kind == EntryKind::device;
}

}  // namespace

/// A list that has entries of the items.
struct Mentions::List {
    enum class Kind { recent, sizes };
    Kind kind = Kind::recent;
    std::string path;
    std::uint64_t entries = 0;
    std::string files{};  ///< of sizes: the folder whose folders it names
    PathSet names{};      ///< of sizes: of what goes
    /// Of sizes: whether lines of what is not there at all go too.
    bool takesOrphans = false;
};

/// One search for mentions, place by place.
class Mentions::Search {
  public:
    Search(Mentions& mentions, const std::vector<std::string>& items, Where where,
           const std::function<bool()>& stop)
        : mentions_(mentions),
          system_(mentions.parts_.system),
          takesOrphans_(where == Where::inTheTrash),
          items_(items),
          stop_(stop),
          data_(userDataFolder()),
          cache_(userCacheFolder()),
          home_(traces::realHome()) {}

    void everywhere() {
        thumbnails();
        if (!data_.empty()) recentList(data_ + "/recently-used.xbel");
        if (!data_.empty()) linkEntries(data_, "RecentDocuments");
        if (!home_.empty()) linkEntries(home_, ".kde*/share/apps/RecentDocuments");
        inTheTrash();
    }

    void inTheTrash() {
        const std::uint32_t user = system_.effectiveUser();
        const std::string ofHome = data_.empty() ? std::string() : data_ + "/Trash";
        std::map<std::string, PathSet> names;  // of what goes, by trash folder
        for (const std::string& item : items_) {
            const std::size_t slash = item.rfind('/');
            if (const std::string trash = trash::trashFolderOf(item, ofHome, user);
                !trash.empty()) {
                names[trash].insert(item.substr(slash + 1));
            } else if (item.substr(slash) == "/files" &&
                       trash::isTrashFolder(item.substr(0, slash), ofHome, user)) {
                addAllNames(item, names[item.substr(0, slash)]);
            }
        }
        for (auto& [folder, its] : names) inTrash(folder, its, folder == ofHome);
    }

  private:
    void refuse(const std::string& path, Obstacle::Reason reason, std::string detail) {
        mentions_.obstacles_.push_back({path, reason, std::move(detail)});
    }

    void thumbnails() {
        Thumbnails thumbnails({system_, mentions_.parts_.cleaningCalls, mentions_.obstacles_});
        if (!cache_.empty()) thumbnails.addFolder(cache_ + "/thumbnails");
        if (!home_.empty()) thumbnails.addFolder(home_ + "/.thumbnails");
        if (thumbnails.areNone()) return;
        const auto found = [this](const std::string& path, std::uint64_t bytes,
                                  const std::string& subject) {
            mentions_.addFile(path, bytes, subject);
        };
        bool isAnyFolder = false;
        for (const std::string& item : items_) {
            if (stop_()) return;
            thumbnails.findOf(item, stop_, found);
            isAnyFolder = isAnyFolder || isFolder(item);
        }
        if (isAnyFolder) thumbnails.findByText(*mentions_.subjects_, stop_, found);
    }

    bool isFolder(const std::string& path) {
        platform::FileStatus status;
        return system_.statusAt(SystemCalls::workingFolder, path.c_str(), SystemCalls::Links::stay,
                                status) >= 0 &&
               status.kind == EntryKind::folder;
    }

    void recentList(const std::string& path) {
        if (mentions_.goesWithAnItem(path)) return;
        const auto list = mentions_.cleaner_.readText(path);
        if (!list) return meets(path, list.trouble());
        const auto entries = readRecentList(list.value());
        if (!entries) return refuse(path, Obstacle::Reason::corrupt, entries.error().detail);
        List found{.kind = List::Kind::recent, .path = path};
        for (const RecentEntry& entry : entries.value()) {
            const auto named = pathOfUri(entry.uri);
            if (named && mentions_.subjects_->subjectOf(*named)) ++found.entries;
        }
        mentions_.addList(std::move(found));
    }

    void meets(const std::string& path, const cleaning::Trouble& trouble) {
        const int code = trouble.error.code;
        if (code == ENOENT || code == ENOTDIR || isTheNullDevice(system_, path)) return;
        mentions_.addObstacle(path, trouble);
    }

    /// Files of which each mentions one.
    void linkEntries(const std::string& root, std::string_view folder) {
        std::vector<traces::Obstacle> met;
        traces::PathFinder finder(system_, met);
        for (const traces::FoundPath& entry :
             finder.find(root, traces::componentsOf(std::string(folder) + "/*.desktop", false))) {
            if (stop_()) return;
            if (mentions_.goesWithAnItem(entry.path)) continue;
            const auto text = mentions_.cleaner_.readText(entry.path);
            if (!text) {
                meets(entry.path, text.trouble());
                continue;
            }
            const auto named = pathOfLinkEntry(text.value(), home_);
            const auto subject = named ? mentions_.subjects_->subjectOf(*named) : std::nullopt;
            if (subject) mentions_.addFile(entry.path, text.value().size(), *subject);
        }
        for (traces::Obstacle& obstacle : met) {
            refuse(obstacle.path, Obstacle::Reason::insecure, std::move(obstacle.reason));
        }
    }

    void addAllNames(const std::string& folder, PathSet& names) {
        const int opened = system_.openFolder(SystemCalls::workingFolder, folder.c_str());
        if (opened < 0) return;
        platform::FolderListing listing;
        if (system_.readFolder(opened, listing) >= 0) {
            for (std::size_t i = 0; i < listing.size(); ++i) names.insert(listing.name(i));
        }
        system_.close(opened);
    }

    void inTrash(const std::string& path, PathSet& names, bool isOfHome) {
        trash::FoundTrash found;
        trash::addTrashFolder(system_, path, isOfHome, found);
        for (trash::Refusal& refusal : found.refused) {
            refuse(refusal.path,
                   refusal.isInsecure ? Obstacle::Reason::insecure : Obstacle::Reason::unreadable,
                   std::move(refusal.reason));
        }
        for (const trash::TrashFolder& folder : found.folders) {
            if (folder.info.kind == EntryKind::folder) {
                for (const std::string& name : names) infoOf(folder, name);
            }
            sizes(folder, names);
        }
    }

    void infoOf(const trash::TrashFolder& folder, const std::string& name) {
        const std::string path = folder.infoPathOf(name);
        platform::FileStatus status;
        const int looked = system_.statusAt(SystemCalls::workingFolder, path.c_str(),
                                            SystemCalls::Links::stay, status);
        if (looked == -ENOENT) return;
        if (looked < 0) {
            return refuse(path, Obstacle::Reason::unreadable,
                          std::generic_category().message(-looked));
        }
        if (status.kind != EntryKind::regular && status.kind != EntryKind::link) {
            return refuse(path, Obstacle::Reason::insecure, "is not a regular file");
        }
        // A link goes as a link: its name alone tells of the item.
        mentions_.addFile(path, status.kind == EntryKind::regular ? status.size : 0,
                          folder.filesPath() + "/" + name);
    }

    void sizes(const trash::TrashFolder& folder, PathSet& names) {
        const std::string path = folder.sizesPath();
        if (mentions_.goesWithAnItem(path)) return;
        const auto text = mentions_.cleaner_.readText(path);
        if (!text) return meets(path, text.trouble());
        List found{.kind = List::Kind::sizes, .path = path, .files = folder.filesPath()};
        for (const std::string& name : trash::namesInSizes(text.value())) {
            const std::string item = folder.filesPath() + "/" + name;
            const bool isOrphan = takesOrphans_ && !Remains({}).include(item);
            if (names.contains(name) || isOrphan) ++found.entries;
        }
        found.takesOrphans = takesOrphans_;
        found.names = std::move(names);
        mentions_.addList(std::move(found));
    }

    Mentions& mentions_;
    SystemCalls& system_;
    const bool takesOrphans_;
    const std::vector<std::string>& items_;
    const std::function<bool()>& stop_;
    const std::string data_;
    const std::string cache_;
    const std::string home_;
};

Mentions::Mentions(const Parts& parts)
    : parts_(parts), cleaner_(parts.cleaningCalls, parts.clock) {}

Mentions::~Mentions() = default;

void Mentions::find(const std::vector<std::string>& items, Where where,
                    const std::function<bool()>& stop) {
    subjects_ = std::make_unique<Subjects>(items);
    items_ = PathSet(items.begin(), items.end());
    known_.clear();
    found_.clear();
    lists_.clear();
    obstacles_.clear();
    if (items.empty()) return;
    Search search(*this, items, where, stop);
    where == Where::everywhere ? search.everywhere() : search.inTheTrash();
}

bool Mentions::goesWithAnItem(const std::string& path) const {
    return forEachAbove(path, [this](std::string_view part) { return items_.contains(part); });
}

void Mentions::addFile(const std::string& path, std::uint64_t bytes, const std::string& subject) {
    if (goesWithAnItem(path) || !known_.insert(path).second) return;
    found_.push_back({.path = path, .bytes = bytes, .entries = 0, .subject = subject});
}

void Mentions::addList(List list) {
    if (list.entries == 0) return;
    found_.push_back({.path = list.path, .bytes = 0, .entries = list.entries});
    lists_.emplace(found_.size() - 1, std::move(list));
}

void Mentions::addObstacle(const std::string& path, const cleaning::Trouble& trouble) {
    using Reason = Obstacle::Reason;
    Reason reason = Reason::insecure;
    if (trouble.fault == Fault::locked) reason = Reason::locked;
    if (trouble.fault == Fault::corrupt) reason = Reason::corrupt;
    if (trouble.fault == Fault::unreadable) reason = Reason::unreadable;
    const Error& error = trouble.error;
    obstacles_.push_back({path, reason,
                          error.detail.empty() && error.code != 0
                              ? std::generic_category().message(error.code)
                              : error.detail});
}

Cleaned<PreparedFile> Mentions::prepare(const List& list, const Remains& remains) {
    const auto recent = [&](const std::string& text) -> Result<TextRest> {
        const auto entries = readRecentList(text);
        if (!entries) return entries.error();
        std::vector<RecentEntry> gone;
        for (const RecentEntry& entry : entries.value()) {
            const auto named = pathOfUri(entry.uri);
            const auto subject = named ? subjects_->subjectOf(*named) : std::nullopt;
            if (subject && !remains.include(*subject)) gone.push_back(entry);
        }
        auto rest = withoutEntries(text, gone);
        if (!rest) return rest.error();
        return TextRest{std::move(rest.value()), gone.size()};
    };
    const auto sizes = [&](const std::string& text) -> Result<TextRest> {
        TextRest rest;
        const auto goes = [&](const std::string& name) {
            return (list.takesOrphans || list.names.contains(name)) &&
                   !remains.include(list.files + "/" + name);
        };
        rest.text = trash::withoutSizes(text, goes, rest.count);
        return rest;
    };
    const cleaning::TextEdit edit =
        list.kind == List::Kind::recent ? cleaning::TextEdit(recent) : cleaning::TextEdit(sizes);
    for (int i = 1;; ++i) {
        auto prepared = cleaner_.prepareText(list.path, edit);
        const bool isWritten = !prepared && prepared.trouble().fault == Fault::locked;
        if (!isWritten || i == triesToPrepare) return prepared;
    }
}

Departed Mentions::ofWhatIsGone(const std::vector<std::string>& left) {
    const Remains remains(left);
    Departed departed;
    for (std::size_t i = 0; i < found_.size(); ++i) {
        const Mention& mention = found_[i];
        if (!mention.isList()) {
            (remains.include(mention.subject) ? departed.kept : departed.files).push_back(i);
            continue;
        }
        const List& list = lists_.at(i);
        auto leftovers = cleaning::Cleaner::leftovers(list.path);
        auto prepared = prepare(list, remains);
        if (!prepared) {
            if (prepared.trouble().error.code != ENOENT) addObstacle(list.path, prepared.trouble());
            continue;
        }
        departed.leftovers.insert(departed.leftovers.end(), leftovers.begin(), leftovers.end());
        if (prepared.value() == nullptr) {
            departed.kept.push_back(i);
        } else {
            departed.lists.push_back({i, std::move(prepared.value())});
        }
    }
    return departed;
}

}  // namespace dorvanel::mentions

// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/CleaningCalls.h"
#include "platform/Clock.h"
#include "platform/SystemCalls.h"
#include "targets/cleaning/Cleaning.h"
#include "targets/mentions/Obstacle.h"
#include "targets/mentions/Subjects.h"

/// What the desktop remembers of files: thumbnails, lists of recently used files, and what is known
/// of the trash's items. It is found before the files go, and taken once they are gone; what is
/// still there keeps it.
namespace dorvanel::mentions {

/// One place that mentions something that is about to go.
struct Mention {
    std::string path;           ///< of a file that mentions one thing, or of a list
    std::uint64_t bytes = 0;    ///< of such a file
    std::uint64_t entries = 0;  ///< of a list, that would go; 0: it is no list
    std::string subject{};      ///< what a file mentions
    [[nodiscard]] bool isList() const { return entries > 0; }
};

/// What can be taken now.
struct Departed {
    /// A list without the entries of what is gone, ready to take its place, and which mention.
    struct List {
        std::size_t mention = 0;
        cleaning::PreparedFile prepared;
    };
    std::vector<std::size_t> files;  ///< by number of the mention: to be shredded
    std::vector<List> lists;
    std::vector<std::size_t> kept;         ///< by number: what they mention is still there
    std::vector<std::string> leftovers{};  ///< of runs that were killed, beside lists
};

/// The mentions of some items. One thread at a time.
class Mentions {
  public:
    /// All of them outlive the mentions, and all that these prepare.
    struct Parts {
        platform::SystemCalls& system;
        platform::CleaningCalls& cleaningCalls;
        platform::Clock& clock;
    };
    /// Where they are looked for.
    enum class Where {
        everywhere,
        inTheTrash,  ///< only what the trash knows of what lies in it
    };

    explicit Mentions(const Parts& parts);
    ~Mentions();
    Mentions(const Mentions&) = delete;
    Mentions& operator=(const Mentions&) = delete;

    /// Looks for the mentions of items, absolute paths whose folders are free of links, and of all
    /// that is in folders among them. Only the user's own plain files count, no link is followed,
    /// and nothing is touched. What lies in an item itself is left out: it goes with it. `stop` is
    /// asked now and then.
    void find(const std::vector<std::string>& items, Where where,
              const std::function<bool()>& stop);

    [[nodiscard]] const std::vector<Mention>& found() const { return found_; }
    /// What could not be looked into or taken, up to now.
    [[nodiscard]] const std::vector<Obstacle>& obstacles() const { return obstacles_; }

    /// What mentions things that are gone: that lie no longer where they were, and not in `left`,
    /// which says where that lay before which is still there under another name. Lists are read
    /// anew; new ones lie beside them, and go where they are not committed.
    Departed ofWhatIsGone(const std::vector<std::string>& left);

  private:
    struct List;
    class Search;

    void addFile(const std::string& path, std::uint64_t bytes, const std::string& subject);
    void addList(List list);
    void addObstacle(const std::string& path, const cleaning::Trouble& trouble);
    cleaning::Cleaned<cleaning::PreparedFile> prepare(const List& list, const Remains& remains);
    [[nodiscard]] bool goesWithAnItem(const std::string& path) const;

    Parts parts_;
    cleaning::Cleaner cleaner_;
    std::unique_ptr<Subjects> subjects_;
    PathSet items_;
    PathSet known_;  ///< files that have been found
    std::vector<Mention> found_;
    std::map<std::size_t, List> lists_;  ///< by number of the mention
    std::vector<Obstacle> obstacles_;
};

}  // namespace dorvanel::mentions

// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Md5.h"
#include "platform/CleaningCalls.h"
#include "platform/SystemCalls.h"
#include "targets/mentions/Obstacle.h"
#include "targets/mentions/Subjects.h"

namespace dorvanel::mentions {

/// The thumbnails that are there, of all sizes, those of what had none among them, by the MD5 of
/// the URI of what they show. Touches nothing. All that it is made of must outlive it.
class Thumbnails {
  public:
    struct Parts {
        platform::SystemCalls& system;
        platform::CleaningCalls& calls;
        std::vector<Obstacle>& obstacles;
    };
    /// Told of a thumbnail: its path, its size, and what it shows.
    using Found = std::function<void(const std::string& path, std::uint64_t bytes,
                                     const std::string& subject)>;

    explicit Thumbnails(Parts parts) : parts_(parts) {}

    /// Reads the names in the folder, and in those in it; `folder` is free of links but perhaps
    /// in its last component, and need not be there.
    void addFolder(const std::string& folder);
    [[nodiscard]] bool areNone() const { return names_.empty(); }

    /// Finds those of an item; of a folder also those of all that is in it, no link followed.
    /// `stop` is asked now and then.
    void findOf(const std::string& item, const std::function<bool()>& stop, const Found& found);
    /// Finds those that say themselves that they show something of the subjects.
    void findByText(Subjects& subjects, const std::function<bool()>& stop, const Found& found);

  private:
    struct Name {
        Md5Digest digest;
        std::uint32_t folder;  ///< by number
    };

    void addNames(int folder, const std::string& path, int depth);
    void sort();
    void lookUp(const std::string& path, std::string_view uri, const Found& found);
    void tell(int folder, const Name& name, const std::string& subject, const Found& found);
    void findBelow(const std::string& folder, const std::function<bool()>& stop,
                   const Found& found);

    Parts parts_;
    std::vector<std::string> folders_;
    std::vector<Name> names_;
    bool isSorted_ = true;
};

}  // namespace dorvanel::mentions

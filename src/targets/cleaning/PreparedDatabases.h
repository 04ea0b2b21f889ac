// SPDX-License-Identifier: MIT
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/CleaningCalls.h"
#include "targets/cleaning/Cleaning.h"

namespace dorvanel::cleaning {

/// A new file that has not taken its place yet: its name beside the old one, and what it is.
struct WaitingFile {
    std::string name;
    platform::CleaningStatus status;
};

/// The databases that have been prepared and not been committed yet, so that another that is
/// cleaned by what is in them sees them as they will be. Any thread.
class PreparedDatabases {
  public:
    void add(const Prepared& prepared, const platform::CleaningStatus& old, WaitingFile waiting) {
        const std::lock_guard lock(mutex_);
        entries_.push_back({&prepared, old, std::move(waiting)});
    }
    void remove(const Prepared& prepared) {
        const std::lock_guard lock(mutex_);
        std::erase_if(entries_, [&](const Entry& entry) { return entry.prepared == &prepared; });
    }
    /// What is to take the place of this file.
    [[nodiscard]] std::optional<WaitingFile> find(const platform::CleaningStatus& old) {
        const std::lock_guard lock(mutex_);
        for (const Entry& entry : entries_) {
            if (entry.old.isSameAs(old)) return entry.waiting;
        }
        return std::nullopt;
    }

  private:
    struct Entry {
        const Prepared* prepared;
        platform::CleaningStatus old;
        WaitingFile waiting;
    };
    std::mutex mutex_;
    std::vector<Entry> entries_;
};

}  // namespace dorvanel::cleaning

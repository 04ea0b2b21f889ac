// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "targets/cleaning/Cleaning.h"
#include "targets/cleaning/HeldDatabase.h"
#include "targets/cleaning/PreparedDatabases.h"
#include "targets/cleaning/RowRemoval.h"

namespace dorvanel::cleaning {

/// The cleaning of one database, all in memory but for the new file. One thread.
class DatabaseCleaning {
  public:
    /// Opens the database and those that are attached; `listed` tells which of them wait to be
    /// replaced.
    static Cleaned<std::unique_ptr<DatabaseCleaning>> open(
        platform::CleaningCalls& calls, platform::Clock& clock, PreparedDatabases& listed,
        const DatabaseRequest& request, const std::function<bool()>& stop, Holding holding);

    /// Removes the rows in memory.
    Cleaned<std::vector<std::uint64_t>> count();
    /// The same, with the compacted copy in a new file.
    Cleaned<PreparedFile> prepare(std::shared_ptr<PreparedDatabases> listed);
    /// Whether nobody has written what is read here since it was opened.
    [[nodiscard]] bool isUndisturbed() const;

  private:
    DatabaseCleaning(platform::CleaningCalls& calls, platform::Clock& clock,
                     const DatabaseRequest& request, const std::function<bool()>& stop);
    std::optional<Trouble> hold(PreparedDatabases& listed, Holding holding);
    Cleaned<std::unique_ptr<OldFile>> holdAttached(PreparedDatabases& listed,
                                                   const std::string& path, Holding holding);
    /// A connection to `image` and all that is attached.
    Cleaned<std::unique_ptr<Connection>> connect(ImageFiles& files, const std::string& image);
    /// Removes in memory what would go from an attached database first. Where that is not possible
    /// it stays as it is, as it would then.
    void removeBefore(ImageFiles& files, const std::string& image, const std::string& path);
    /// Removes the rows through a connection, which is left open.
    Cleaned<Remains> remove(Connection& database, const DatabaseRequest& request);
    std::optional<Trouble> compact(Connection& database, ImageFiles& files, const NewFile& copy);
    std::optional<Trouble> checkCopy(const NewFile& copy, const Remains& remains);

    platform::CleaningCalls& calls_;
    platform::Clock& clock_;
    const DatabaseRequest& request_;
    Patience patience_;
    std::unique_ptr<OldFile> old_;
    std::map<std::string, std::unique_ptr<OldFile>> attached_;  ///< by name
    bool keepsLog_ = false;  ///< it is one of those that are written by way of a log
};

}  // namespace dorvanel::cleaning

// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "targets/cleaning/Cleaning.h"
#include "targets/cleaning/NewFile.h"
#include "targets/cleaning/Place.h"
#include "targets/cleaning/PreparedDatabases.h"

namespace dorvanel::cleaning {

/// A file that belongs to another: the log of a database, for example. It may be missing.
struct Sidecar {
    std::string name;
    std::optional<HeldFile> held;
};

/// The old file as it is held: where it is, itself, and what belongs to it.
struct OldFile {
    Place place;
    HeldFile held;
    std::vector<Sidecar> sidecars;
    /// Whether other programs are kept from it by a lock; one that is not locked must not have been
    /// written meanwhile.
    bool isLocked = false;
};

/// An old file, and the new one that takes its place.
class Replacement final : public Prepared {
  public:
    /// Brings what waits in the old file's sidecars into the old file, in place.
    using TakeIn = std::function<std::optional<Trouble>(const OldFile& old)>;

    /// The new file is one that was created in the place of `old`, and finished. Where there is a
    /// list, this is in it until it has been committed.
    Replacement(std::unique_ptr<OldFile> old, NewFile replacing, std::vector<std::uint64_t> counts,
                TakeIn takeIn = {}, std::shared_ptr<PreparedDatabases> listed = {});
    ~Replacement() override;

    std::optional<Trouble> commit(const std::function<bool()>& stillMay,
                                  std::vector<std::string>& aside) override;

  private:
    [[nodiscard]] std::optional<Trouble> isAsBefore() const;
    std::optional<Trouble> takeAside(std::vector<std::string>& aside);
    std::optional<Trouble> exchange(std::vector<std::string>& aside);

    std::unique_ptr<OldFile> old_;  ///< the new file points into it
    NewFile replacing_;
    TakeIn takeIn_;
    std::shared_ptr<PreparedDatabases> listed_;  ///< may be null
};

}  // namespace dorvanel::cleaning

// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "targets/cleaning/Cleaning.h"
#include "targets/cleaning/Connection.h"

namespace dorvanel::cleaning {

/// Rows that refer to what is not there: how many, by where they are and what they refer to.
using DanglingRows = std::map<std::string, std::uint64_t>;

/// What a database is after rows were removed from it, to hold its copy to.
struct Remains {
    std::vector<std::uint64_t> counts;  ///< rows removed, by step
    std::vector<std::string> answers;   ///< to all queries for what must be kept
    std::vector<std::string> traits;    ///< its layout, and numbers that programs keep in it
    DanglingRows dangling;
};

/// Trouble where the database is damaged.
std::optional<Trouble> isWhole(Connection& database);

/// Runs the steps in one transaction, which is committed where all that must be kept is there
/// still, and the database is whole as before.
Cleaned<Remains> removeRows(Connection& database, const DatabaseRequest& request);

/// Trouble where a copy differs from `remains` in what must be kept, or is damaged.
std::optional<Trouble> isTrueCopy(Connection& copy, const DatabaseRequest& request,
                                  const Remains& remains);

}  // namespace dorvanel::cleaning

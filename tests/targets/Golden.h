// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace dorvanel::test {

/// What a collector must write and take in every state of its keys: a file of golden/.
struct Golden {
    struct Outcome {
        std::vector<std::string> lines;
        std::vector<std::string> list;
        friend bool operator==(const Outcome&, const Outcome&) = default;
    };

    std::vector<std::string> enableNames;
    std::vector<std::string> keys;
    /// What happens when an application that it needs is disabled.
    Outcome notEnabled;
    std::map<std::set<std::string>, Outcome> byKeysOn;

    /// Reads the table of a collector; "$HOME" stands for `home`.
    static Golden read(const std::string& collector, const std::string& home);
};

/// For the report of a failed test: as the table has it.
void PrintTo(const Golden::Outcome& outcome, std::ostream* stream);

}  // namespace dorvanel::test

// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace dorvanel {

/// What became of one item of a request.
struct ItemOutcome {
    /// Something that did not go as it should.
    struct Trouble {
        std::string path;       ///< bytes; where the thing is, or was, at that moment
        std::string operation;  ///< "open", "write", "remove" and the like
        int code = 0;           ///< errno
        std::string reason{};   ///< in words, where the errno has none; else empty
        std::string was{};  ///< where it lay before it was moved; "" where it was not, or unknown
    };

    std::string path;                   ///< of the item, as it was given
    std::uint64_t overwritten = 0;      ///< files wholly overwritten, empty ones too
    std::uint64_t bytes = 0;            ///< their sizes, passes and slack not counted
    std::uint64_t removed = 0;          ///< files, links and the like, and folders
    std::uint64_t verified = 0;         ///< files whose last pass was read back, empty ones too
    std::uint64_t rows = 0;             ///< rows or keys that a cleaned file has lost
    std::vector<Trouble> left{};        ///< what is still there
    std::vector<Trouble> unwritten{};   ///< what went without being wholly overwritten
    std::vector<Trouble> unverified{};  ///< what read back otherwise, or could not be read back
};

/// What a shredding request did, and what it could not do. The run itself goes on in silence; the
/// front ends show this.
struct Outcome {
    using Trouble = ItemOutcome::Trouble;
    /// Troubles that are kept word by word; beyond, they are only counted.
    static constexpr std::size_t keptTroubles = 1000;

    std::uint64_t items = 0;             ///< items of the list that existed
    std::uint64_t filesOverwritten = 0;  ///< wholly, every pass
    std::uint64_t bytesOverwritten = 0;  ///< their sizes, passes and slack not counted
    std::uint64_t filesRemoved = 0;      ///< files, links and the like
    std::uint64_t foldersRemoved = 0;    ///< without the holding folders
    std::uint64_t notOverwritten = 0;    ///< files whose contents are left in part or whole
    std::uint64_t notRemoved = 0;        ///< items, files and folders that are still there
    std::uint64_t filesVerified = 0;     ///< read back from the medium as they were written
    std::uint64_t notVerified = 0;       ///< read back otherwise, or not to be read back
    std::uint64_t notFlushed = 0;        ///< files that perhaps never reached the medium
    std::uint64_t vanished = 0;          ///< items and entries that went before their turn
    std::uint64_t filesCleaned = 0;      ///< databases and the like that lost their traces
    std::uint64_t rowsRemoved = 0;       ///< from databases
    std::uint64_t notCleaned = 0;        ///< what was to be cleaned, or looked at, and could not be
    bool stopped = false;                ///< ended early because somebody asked

    std::uint64_t allTroubles = 0;     ///< also those that are only counted
    std::vector<Trouble> troubles;     ///< in the order they were met
    std::vector<std::string> left;     ///< after a stop: holding folders and items not done
    std::vector<ItemOutcome> perItem;  ///< of each item of the request that existed, in its order

    void note(std::string path, std::string operation, int code, std::string reason = {}) {
        ++allTroubles;
        if (troubles.size() < keptTroubles) {
            troubles.push_back(
                {std::move(path), std::move(operation), code, std::move(reason), {}});
        }
    }
};

}  // namespace dorvanel

// SPDX-License-Identifier: MIT
#include "engine/LanedRun.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <thread>

#include "engine/HoldingFolderName.h"
#include "support/Disk.h"

namespace dorvanel::test {

namespace fs = std::filesystem;

bool hasLane() {
    return !quickPlace().empty() && std::thread::hardware_concurrency() > 1;
}

LanedRun::LanedRun(bool hasTwoThreads) : folder(quickPlace()), system(*real, hasTwoThreads) {
    clock.step = std::chrono::seconds(1);  // so that the outlets are told every value
    preferences.set("OverwritePattern", 0);
    preferences.set("NumberOfWrites", 2);
}

const Outcome& LanedRun::shred(const std::string& name) {
    std::vector<std::string> paths{folder / name};
    access.shredDroppedFile(paths);
    return access.outcome();
}

TreeCounts makeTree(const TemporaryFolder& folder, int filesEach) {
    const std::vector<std::string> folders{
        "tree",         "tree/a",     "tree/b",        "tree/b/c",        "tree/b/c/d",
        "tree/b/c/d/e", "tree/empty", "tree/readonly", "tree/\xff\xfe\n", "tree/b/second"};
    TreeCounts counts{.files = 0, .folders = folders.size()};
    unsigned salt = 0;
    for (const std::string& each : folders) {
        fs::create_directories(folder / each);
        if (each == "tree/empty") continue;
        for (int i = 0; i < filesEach; ++i) {
            const std::size_t size = i % 7 == 0 ? 0 : 1 + salt * 131 % 6000;
            writeFile(folder / (each + "/file " + std::to_string(i)), recognisable(size, salt++));
            ++counts.files;
        }
    }
    const std::string large = recognisable(300'001, 7);
    writeFile(folder / "tree/b/large", large);
    writeFile(folder / "tree/a/\xc3\x28 \x01", "odd");
    writeFile(folder / "outside/file", "leads here");
    hardLink(folder / "tree/a/file 1", folder / "tree/b/same");
    hardLink(folder / "tree/a/file 2", folder / "tree/same too");
    fs::create_symlink("a/file 3", folder / "tree/to file");
    fs::create_symlink("b/c", folder / "tree/to folder");
    fs::create_symlink(folder / "tree/b/file 1", folder / "tree/a/to file");
    fs::create_symlink(folder / "outside/file", folder / "tree/b/c/to outside");
    fs::create_symlink(folder / "outside", folder / "tree/b/c/to folder outside");
    fs::create_symlink("nowhere", folder / "tree/b/c/d/to nothing");
    if (mkfifo((folder / "tree/b/fifo").c_str(), 0600) != 0) throw std::runtime_error("mkfifo");
    counts.files += 11;
    setMode(folder / "tree/readonly/file 1", 0400);
    setMode(folder / "tree/readonly", 0500);
    return counts;
}

namespace {

std::string shortened(std::string text, const TemporaryFolder& folder) {
    const std::string path = folder.path();
    for (std::size_t at = text.find(path); at != std::string::npos; at = text.find(path)) {
        text.replace(at, path.size(), "@");
    }
    return text;
}

std::string textOf(const Outcome::Trouble& trouble) {
    return fmt::format("  {} {} {} {} {}\n", trouble.path, trouble.operation, trouble.code,
                       trouble.reason, trouble.was);
}

std::string textOf(const ItemOutcome& item) {
    std::string text = fmt::format("item {} {} {} {} {}\n", item.path, item.overwritten, item.bytes,
                                   item.removed, item.verified);
    for (const auto* list : {&item.left, &item.unwritten, &item.unverified}) {
        text += " troubles\n";
        for (const auto& trouble : *list) text += textOf(trouble);
    }
    return text;
}

}  // namespace

std::string textOf(const Outcome& outcome, const TemporaryFolder& folder) {
    std::string text = fmt::format(
        "items {} overwritten {} bytes {} files {} folders {} not overwritten {} not removed {} "
        "not flushed {} vanished {} stopped {} all troubles {}\n",
        outcome.items, outcome.filesOverwritten, outcome.bytesOverwritten, outcome.filesRemoved,
        outcome.foldersRemoved, outcome.notOverwritten, outcome.notRemoved, outcome.notFlushed,
        outcome.vanished, outcome.stopped, outcome.allTroubles);
    for (const auto& trouble : outcome.troubles) text += textOf(trouble);
    for (const auto& path : outcome.left) text += "left " + path + "\n";
    for (const auto& item : outcome.perItem) text += textOf(item);
    return shortened(std::move(text), folder);
}

std::map<std::string, Writes> writesOf(const LanedSystemCalls& system) {
    std::map<std::string, Writes> writes;
    for (const auto& call : system.callsOf("writeAt")) {
        writes[call.key.name].push_back(
            fmt::format("{}+{} #{:x} {}", call.offset, call.length, call.hash, call.result));
    }
    return writes;
}

std::vector<std::string> removalsOf(const LanedSystemCalls& system) {
    std::vector<std::string> removals;
    for (const auto& call : system.calls) {
        if (!call.key.what.starts_with("remove") || isHoldingFolderName(call.key.name)) continue;
        removals.push_back(fmt::format("{} {} {}", call.key.what, call.key.name, call.result));
    }
    return removals;
}

std::uint64_t removedOf(const LanedSystemCalls& system) {
    return static_cast<std::uint64_t>(std::ranges::count_if(system.calls, [](const auto& call) {
        return call.key.what.starts_with("remove") && call.result >= 0 &&
               !isHoldingFolderName(call.key.name);
    }));
}

std::uint64_t filesBelow(const std::string& path) {
    std::uint64_t count = 0;
    for (const auto& entry : fs::recursive_directory_iterator(path)) {
        if (entry.is_symlink() || !entry.is_directory()) ++count;
    }
    return count;
}

bool hadSecondThread(const LanedSystemCalls& system) {
    return std::ranges::any_of(system.calls, [](const auto& call) { return call.isOfSecond; });
}

}  // namespace dorvanel::test

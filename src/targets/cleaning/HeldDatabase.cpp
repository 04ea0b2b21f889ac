// SPDX-License-Identifier: MIT
#include "targets/cleaning/HeldDatabase.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <utility>

#include "targets/cleaning/Connection.h"

namespace dorvanel::cleaning {
namespace {

/// The bytes that SQLite's connections lock, of the database and of the index of its log: the
/// layout is part of its file format.
constexpr std::uint64_t firstLockByte = 0x40000000;
constexpr std::uint64_t lockBytes = 512;
constexpr std::uint64_t firstIndexLockByte = 120;
constexpr std::uint64_t indexLockBytes = 9;

constexpr std::chrono::milliseconds lockPatience{1000};
constexpr std::chrono::milliseconds lockPoll{50};
constexpr std::chrono::minutes takeInPatience{5};

const char* const journal = "-journal";
const char* const log = "-wal";
const char* const logIndex = "-shm";

/// The image's name, inside.
const std::string shownName = "main";

std::optional<Trouble> lock(const Place& place, const OpenFile& file, std::uint64_t offset,
                            std::uint64_t size, platform::Clock& clock) {
    for (std::chrono::milliseconds waited{0};; waited += lockPoll) {
        const int locked = place.calls().lock(file.get(), offset, size);
        if (locked >= 0) return std::nullopt;
        if (locked != -EAGAIN) return place.trouble(Fault::failed, -locked, "lock");
        if (waited >= lockPatience) {
            return place.trouble(Fault::locked, 0, "lock", "another program uses it");
        }
        clock.usleep(lockPoll);
    }
}

std::optional<Trouble> holdSidecar(OldFile& database, const char* suffix, Place::Purpose purpose) {
    const std::string name = database.place.name() + suffix;
    auto held = database.place.holdIfThere(name, purpose);
    if (!held) return held.trouble();
    database.sidecars.push_back({name, std::move(held.value())});
    return std::nullopt;
}

std::optional<Trouble> lockDatabase(OldFile& database, platform::Clock& clock) {
    const Place& place = database.place;
    HeldFile& held = database.held;
    if (auto bad = lock(place, held.file, firstLockByte, lockBytes, clock)) return bad;
    database.isLocked = true;
    // It may have been written, or replaced, until then.
    const int told = place.calls().status(held.file.get(), held.status);
    if (told < 0) return place.trouble(Fault::unreadable, -told, "stat");
    return place.leadsTo(place.name(), held.status);
}

std::shared_ptr<Image> imageOf(ImageFiles& files, const OldFile& database, const HeldFile& held) {
    return std::make_shared<MemoryImage>(files.memory(), database.place.calls(), held.file.get(),
                                         held.status.size);
}

void showLogs(ImageFiles& files, const std::string& name, const OldFile& database) {
    for (const Sidecar& sidecar : database.sidecars) {
        if (!sidecar.held || sidecar.name.ends_with(logIndex)) continue;
        const std::string suffix = sidecar.name.substr(database.place.name().size());
        files.show(name + suffix, imageOf(files, database, *sidecar.held));
    }
}

}  // namespace

Cleaned<std::unique_ptr<OldFile>> holdDatabase(platform::CleaningCalls& calls,
                                               platform::Clock& clock, const std::string& path,
                                               Holding holding) {
    auto place = Place::open(calls, path);
    if (!place) return place.trouble();
    const bool isExclusive = holding == Holding::exclusively;
    const auto purpose = isExclusive ? Place::Purpose::changing : Place::Purpose::reading;
    auto held = place.value().hold(place.value().name(), purpose);
    if (!held) return held.trouble();
    auto database = std::make_unique<OldFile>(
        OldFile{std::move(place.value()), std::move(held.value()), {}, false});
    if (isExclusive) {
        if (auto bad = lockDatabase(*database, clock)) return *bad;
    }
    for (const char* suffix : {log, journal}) {
        if (auto bad = holdSidecar(*database, suffix, Place::Purpose::reading)) return *bad;
    }
    if (!isExclusive) return database;
    if (auto bad = holdSidecar(*database, logIndex, Place::Purpose::changing)) return *bad;
    if (const auto& index = database->sidecars.back().held) {
        auto bad = lock(database->place, index->file, firstIndexLockByte, indexLockBytes, clock);
        if (bad) return *bad;
    }
    return database;
}

bool isAsOpened(const OldFile& database) {
    const Place& place = database.place;
    const auto isSame = [&](const std::string& name, const HeldFile* held) {
        platform::CleaningStatus now;
        const int looked = place.calls().statusAt(place.folder(), name.c_str(), now);
        if (held == nullptr) return looked == -ENOENT;
        return looked >= 0 && now.isSameAs(held->status) && now.size == held->status.size &&
               now.modified == held->status.modified && now.changed == held->status.changed;
    };
    return isSame(place.name(), &database.held) &&
           std::ranges::all_of(database.sidecars, [&](const Sidecar& sidecar) {
               return isSame(sidecar.name, sidecar.held ? &*sidecar.held : nullptr);
           });
}

void showDatabase(ImageFiles& files, const std::string& name, const OldFile& database) {
    files.show(name, imageOf(files, database, database.held));
    showLogs(files, name, database);
}

std::optional<Trouble> takeInLogs(const OldFile& database, platform::Clock& clock) {
    const bool isAnythingWaiting =
        std::ranges::any_of(database.sidecars, [](const Sidecar& sidecar) {
            return sidecar.held && sidecar.held->status.size > 0 &&
                   !sidecar.name.ends_with(logIndex);
        });
    if (!isAnythingWaiting) return std::nullopt;
    const Place& place = database.place;
    ImageFiles files(place.calls());
    const int file = database.held.file.get();
    files.show(shownName, std::make_shared<DirectImage>(files.memory(), place.calls(), file,
                                                        database.held.status.size));
    // What becomes of the logs stays in memory: they are needed until the file is on the medium,
    // and are shredded then.
    showLogs(files, shownName, database);
    auto opened =
        Connection::open(files, shownName, place.path(), {clock, clock.now() + takeInPatience, {}});
    if (!opened) return opened.trouble();
    // The first question has a journal rolled back, or a log be read.
    if (auto bad = opened.value()->run("PRAGMA main.user_version")) return bad;
    if (auto bad = opened.value()->takeInLog()) return bad;
    const int flushed = place.calls().flush(file);
    if (flushed < 0) return place.trouble(Fault::failed, -flushed, "fsync");
    return std::nullopt;
}

}  // namespace dorvanel::cleaning

// SPDX-License-Identifier: MIT
#include "targets/cleaning/DatabaseCleaning.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <string_view>
#include <utility>

namespace dorvanel::cleaning {
namespace {

constexpr std::chrono::minutes longestWork{5};

/// The images' names, inside.
const std::string mainImage = "main";
const std::string copyImage = "copy";
const std::string attachedImage = "attached-";

/// Of a database's header: how it begins, and where the versions of the format stand that are
/// needed to write and to read it. The second says that it is written by way of a log.
constexpr std::string_view headerStart("SQLite format 3\0", 16);
constexpr std::size_t versionsOffset = 18;
constexpr unsigned char newestVersion = 2;
constexpr std::array<unsigned char, 2> logVersions{2, 2};

/// The library would take a format that it does not know for damage.
std::optional<Trouble> isOfKnownFormat(const OldFile& database) {
    std::array<unsigned char, versionsOffset + 2> header{};
    const std::ptrdiff_t got = readWhole(database.place.calls(), database.held.file.get(),
                                         header.data(), header.size(), 0);
    if (got < 0) return database.place.trouble(Fault::unreadable, static_cast<int>(-got), "read");
    const std::string_view start(reinterpret_cast<const char*>(header.data()), headerStart.size());
    if (start == headerStart &&
        (header[versionsOffset] > newestVersion || header[versionsOffset + 1] > newestVersion)) {
        return database.place.trouble(Fault::failed, 0, "open", "was made by a newer SQLite");
    }
    return std::nullopt;
}

}  // namespace

DatabaseCleaning::DatabaseCleaning(platform::CleaningCalls& calls, platform::Clock& clock,
                                   const DatabaseRequest& request,
                                   const std::function<bool()>& stop)
    : calls_(calls),
      clock_(clock),
      request_(request),
      patience_{clock, clock.now() + longestWork, stop} {}

Cleaned<std::unique_ptr<DatabaseCleaning>> DatabaseCleaning::open(
    platform::CleaningCalls& calls, platform::Clock& clock, PreparedDatabases& listed,
    const DatabaseRequest& request, const std::function<bool()>& stop, Holding holding) {
    std::unique_ptr<DatabaseCleaning> cleaning(new DatabaseCleaning(calls, clock, request, stop));
    if (auto bad = cleaning->hold(listed, holding)) return *bad;
    return cleaning;
}

std::optional<Trouble> DatabaseCleaning::hold(PreparedDatabases& listed, Holding holding) {
    auto held = holdDatabase(calls_, clock_, request_.path, holding);
    if (!held) return held.trouble();
    old_ = std::move(held.value());
    if (auto bad = isOfKnownFormat(*old_)) return bad;
    for (const auto& [name, path] : request_.attach) {
        auto other = holdAttached(listed, path, holding);
        if (!other) {
            // It is this database that cannot be cleaned; the other is named in the reason.
            const Trouble& trouble = other.trouble();
            return Trouble{trouble.fault,
                           Error{0, "attach", request_.path, trouble.error.message()}};
        }
        attached_[name] = std::move(other.value());
    }
    return std::nullopt;
}

Cleaned<std::unique_ptr<OldFile>> DatabaseCleaning::holdAttached(PreparedDatabases& listed,
                                                                 const std::string& path,
                                                                 Holding holding) {
    auto place = Place::open(calls_, path);
    if (!place) return place.trouble();
    platform::CleaningStatus status;
    const int looked =
        calls_.statusAt(place.value().folder(), place.value().name().c_str(), status);
    if (looked < 0) return place.value().trouble(Fault::unreadable, -looked, "stat");
    const auto waiting = listed.find(status);
    if (!waiting) return holdDatabase(calls_, clock_, path, holding);
    // It needs no lock: nobody else knows the name.
    auto held = holdDatabase(calls_, clock_, place.value().pathOf(waiting->name), Holding::looking);
    if (held && held.value()->held.status.isSameAs(waiting->status)) return held;
    return holdDatabase(calls_, clock_, path, holding);
}

Cleaned<std::unique_ptr<Connection>> DatabaseCleaning::connect(ImageFiles& files,
                                                               const std::string& image) {
    auto opened = Connection::open(files, image, request_.path, patience_);
    if (!opened) return opened;
    for (const auto& [name, database] : attached_) {
        const std::string other = attachedImage + name;
        showDatabase(files, other, *database);
        removeBefore(files, other, request_.attach.at(name));
        if (auto bad = opened.value()->attach(other, name)) return *bad;
    }
    return opened;
}

void DatabaseCleaning::removeBefore(ImageFiles& files, const std::string& image,
                                    const std::string& path) {
    for (const DatabaseRequest& before : request_.before) {
        if (before.path != path) continue;
        auto opened = Connection::open(files, image, path, patience_);
        if (opened) static_cast<void>(remove(*opened.value(), before));
    }
}

Cleaned<Remains> DatabaseCleaning::remove(Connection& database, const DatabaseRequest& request) {
    // The first question takes in what waits in the logs, in memory.
    auto mode = database.askOne("PRAGMA main.journal_mode");
    if (!mode) return mode.trouble();
    keepsLog_ = mode.value() == "wal";
    auto set = database.askOne("PRAGMA main.journal_mode=MEMORY");
    if (!set) return set.trouble();
    if (set.value() != "memory") {
        return database.complaint(Fault::failed, "open", "cannot leave its log");
    }
    // Else what is removed would fill the memory with zeros.
    if (auto bad = database.run("PRAGMA main.secure_delete=OFF")) return *bad;
    return removeRows(database, request);
}

Cleaned<std::vector<std::uint64_t>> DatabaseCleaning::count() {
    ImageFiles files(calls_);
    showDatabase(files, mainImage, *old_);
    auto database = connect(files, mainImage);
    if (!database) return database.trouble();
    auto remains = remove(*database.value(), request_);
    if (!remains) return remains.trouble();
    return remains.value().counts;
}

Cleaned<PreparedFile> DatabaseCleaning::prepare(std::shared_ptr<PreparedDatabases> listed) {
    ImageFiles files(calls_);
    showDatabase(files, mainImage, *old_);
    auto database = connect(files, mainImage);
    if (!database) return database.trouble();
    auto remains = remove(*database.value(), request_);
    if (!remains) return remains.trouble();

    auto copy = NewFile::create(old_->place);
    if (!copy) return copy.trouble();
    if (auto bad = compact(*database.value(), files, copy.value())) return *bad;
    if (auto bad = checkCopy(copy.value(), remains.value())) return *bad;
    if (auto bad = copy.value().finish(old_->held.status)) return *bad;
    platform::Clock& clock = clock_;
    return PreparedFile(std::make_unique<Replacement>(
        std::move(old_), std::move(copy.value()), std::move(remains.value().counts),
        [&clock](const OldFile& old) { return takeInLogs(old, clock); }, std::move(listed)));
}

std::optional<Trouble> DatabaseCleaning::compact(Connection& database, ImageFiles& files,
                                                 const NewFile& copy) {
    // The copy takes this over: what is left of a page that is used again is cleared.
    if (auto bad = database.run("PRAGMA main.secure_delete=ON")) return bad;
    files.show(copyImage, std::make_shared<DirectImage>(files.memory(), calls_, copy.file(), 0));
    if (auto bad = database.run("VACUUM main INTO '" + copyImage + "'")) return bad;
    if (!keepsLog_) return std::nullopt;
    const int written =
        writeWhole(calls_, copy.file(), logVersions.data(), logVersions.size(), versionsOffset);
    if (written < 0) return old_->place.trouble(Fault::failed, -written, "write", copy.name());
    return std::nullopt;
}

std::optional<Trouble> DatabaseCleaning::checkCopy(const NewFile& copy, const Remains& remains) {
    platform::CleaningStatus status;
    const int told = calls_.status(copy.file(), status);
    if (told < 0) return old_->place.trouble(Fault::failed, -told, "stat", copy.name());
    ImageFiles files(calls_);
    files.show(mainImage,
               std::make_shared<MemoryImage>(files.memory(), calls_, copy.file(), status.size));
    auto opened = connect(files, mainImage);
    if (!opened) return opened.trouble();
    return isTrueCopy(*opened.value(), request_, remains);
}

bool DatabaseCleaning::isUndisturbed() const {
    if (!isAsOpened(*old_)) return false;
    for (const auto& [name, database] : attached_) {
        if (!isAsOpened(*database)) return false;
    }
    return true;
}

}  // namespace dorvanel::cleaning

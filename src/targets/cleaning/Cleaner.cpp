// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cerrno>
#include <numeric>
#include <utility>

#include "targets/cleaning/Cleaning.h"
#include "targets/cleaning/DatabaseCleaning.h"
#include "targets/cleaning/Image.h"
#include "targets/cleaning/JsonKeys.h"
#include "targets/cleaning/PreparedDatabases.h"
#include "targets/cleaning/Replacement.h"

namespace dorvanel::cleaning {
namespace {

/// A database that is written again and again while it is read is in use.
constexpr int triesToCount = 3;
constexpr std::uint64_t longestText = std::uint64_t{64} * 1024 * 1024;

Cleaned<std::unique_ptr<OldFile>> holdFile(platform::CleaningCalls& calls, const std::string& path,
                                           Place::Purpose purpose) {
    auto place = Place::open(calls, path);
    if (!place) return place.trouble();
    auto held = place.value().hold(place.value().name(), purpose);
    if (!held) return held.trouble();
    return std::make_unique<OldFile>(
        OldFile{std::move(place.value()), std::move(held.value()), {}, false});
}

Cleaned<std::string> readAll(const OldFile& old) {
    const Place& place = old.place;
    const std::uint64_t size = old.held.status.size;
    if (size > longestText) return place.trouble(Fault::failed, 0, "read", "is too large");
    std::string text(static_cast<std::size_t>(size), '\0');
    const std::ptrdiff_t got =
        readWhole(place.calls(), old.held.file.get(), text.data(), text.size(), 0);
    if (got < 0) return place.trouble(Fault::unreadable, static_cast<int>(-got), "read");
    if (static_cast<std::size_t>(got) < text.size()) {
        return place.trouble(Fault::locked, 0, "read", "was written meanwhile");
    }
    return text;
}

Trouble damaged(const OldFile& old, const Error& error) {
    return old.place.trouble(Fault::corrupt, 0, error.operation, error.detail);
}

Cleaned<JsonRest> readRest(const OldFile& old, const std::vector<JsonStep>& steps) {
    auto text = readAll(old);
    if (!text) return text.trouble();
    auto rest = removeKeys(text.value(), steps);
    if (!rest) return damaged(old, rest.error());
    return rest.value();
}

/// A new file of these bytes, which waits for the place of the old one.
Cleaned<PreparedFile> replacedBy(std::unique_ptr<OldFile> old, std::string_view bytes,
                                 std::vector<std::uint64_t> counts) {
    auto replacing = NewFile::create(old->place);
    if (!replacing) return replacing.trouble();
    if (auto bad = replacing.value().fill(bytes)) return *bad;
    if (auto bad = replacing.value().finish(old->held.status)) return *bad;
    return PreparedFile(std::make_unique<Replacement>(std::move(old), std::move(replacing.value()),
                                                      std::move(counts)));
}

}  // namespace

Cleaner::Cleaner(platform::CleaningCalls& calls, platform::Clock& clock)
    : calls_(calls), clock_(clock), prepared_(std::make_shared<PreparedDatabases>()) {}

Cleaner::~Cleaner() = default;

Cleaned<PreparedFile> Cleaner::prepareDatabase(const DatabaseRequest& request,
                                               const std::function<bool()>& stop) {
    auto cleaning =
        DatabaseCleaning::open(calls_, clock_, *prepared_, request, stop, Holding::exclusively);
    if (!cleaning) return cleaning.trouble();
    return cleaning.value()->prepare(prepared_);
}

Cleaned<std::vector<std::uint64_t>> Cleaner::countRows(const DatabaseRequest& request,
                                                       const std::function<bool()>& stop) {
    for (int i = 0; i < triesToCount; ++i) {
        auto cleaning =
            DatabaseCleaning::open(calls_, clock_, *prepared_, request, stop, Holding::looking);
        if (!cleaning) return cleaning.trouble();
        auto counts = cleaning.value()->count();
        if (cleaning.value()->isUndisturbed()) return counts;
    }
    return Trouble{Fault::locked, Error{0, "read", request.path, "is being written"}};
}

Cleaned<PreparedFile> Cleaner::prepareJson(const std::string& path,
                                           const std::vector<JsonStep>& steps) {
    auto old = holdFile(calls_, path, Place::Purpose::changing);
    if (!old) return old.trouble();
    auto rest = readRest(*old.value(), steps);
    if (!rest) return rest.trouble();
    auto& counts = rest.value().counts;
    if (std::ranges::all_of(counts, [](std::uint64_t count) { return count == 0; })) {
        return PreparedFile();
    }
    return replacedBy(std::move(old.value()), rest.value().text, std::move(counts));
}

Cleaned<std::vector<std::uint64_t>> Cleaner::countKeys(const std::string& path,
                                                       const std::vector<JsonStep>& steps) {
    auto old = holdFile(calls_, path, Place::Purpose::reading);
    if (!old) return old.trouble();
    auto rest = readRest(*old.value(), steps);
    if (!rest) return rest.trouble();
    return rest.value().counts;
}

Cleaned<PreparedFile> Cleaner::prepareEmpty(const std::string& path) {
    auto old = holdFile(calls_, path, Place::Purpose::changing);
    if (!old) return old.trouble();
    if (old.value()->held.status.size == 0) return PreparedFile();
    return replacedBy(std::move(old.value()), {}, {});
}

Cleaned<PreparedFile> Cleaner::prepareText(const std::string& path, const TextEdit& edit) {
    auto old = holdFile(calls_, path, Place::Purpose::changing);
    if (!old) return old.trouble();
    auto text = readAll(*old.value());
    if (!text) return text.trouble();
    auto rest = edit(text.value());
    if (!rest) return damaged(*old.value(), rest.error());
    if (rest.value().count == 0) return PreparedFile();
    return replacedBy(std::move(old.value()), rest.value().text, {rest.value().count});
}

Cleaned<std::string> Cleaner::readText(const std::string& path) {
    auto old = holdFile(calls_, path, Place::Purpose::reading);
    if (!old) return old.trouble();
    return readAll(*old.value());
}

Cleaned<std::uint64_t> Cleaner::sizeToEmpty(const std::string& path) {
    auto old = holdFile(calls_, path, Place::Purpose::reading);
    if (!old) return old.trouble();
    return old.value()->held.status.size;
}

namespace {

std::vector<std::string> leftoversIn(const Place& place) {
    platform::CleaningCalls& calls = place.calls();
    std::vector<std::string> left;
    std::vector<std::string> names;
    if (calls.readFolder(place.folder(), names) < 0) return left;
    for (const std::string& name : names) {
        const auto isMadeFrom = [&](const char* suffix) {
            return hasSuffixOf(name, place.name() + suffix);
        };
        const auto suffixes = {"", "-wal", "-journal", "-shm"};
        platform::CleaningStatus status;
        if (std::ranges::none_of(suffixes, isMadeFrom) ||
            calls.statusAt(place.folder(), name.c_str(), status) < 0 ||
            status.kind != platform::EntryKind::regular || status.owner != calls.effectiveUser()) {
            continue;
        }
        left.push_back(place.pathOf(name));
    }
    std::ranges::sort(left);
    return left;
}

}  // namespace

std::vector<std::string> Cleaner::leftovers(const std::string& path) {
    const auto calls = platform::makeCleaningCalls();
    auto place = Place::open(*calls, path);
    if (!place) return {};
    std::vector<std::string> left = leftoversIn(place.value());
    // The names may have changed a moment ago: what is shredded must not be what the medium, after
    // a power cut, still has under the name of the file itself.
    if (!left.empty() && place.value().flush()) return {};
    return left;
}

std::vector<std::string> Cleaner::seenLeftovers(const std::string& path) {
    const auto calls = platform::makeCleaningCalls();
    auto place = Place::open(*calls, path);
    return place ? leftoversIn(place.value()) : std::vector<std::string>();
}

}  // namespace dorvanel::cleaning

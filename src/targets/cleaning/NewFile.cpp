// SPDX-License-Identifier: MIT
#include "targets/cleaning/NewFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include "targets/cleaning/Image.h"

namespace dorvanel::cleaning {
namespace {

constexpr std::string_view mark = ".dorvanel-";
constexpr std::size_t drawn = 6;
constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz234567";
/// Names that are tried before one is free.
constexpr int tries = 16;

}  // namespace

Cleaned<std::string> drawSuffix(const Place& place) {
    std::array<unsigned char, drawn> random{};
    const int result = place.calls().randomBytes(random.data(), random.size());
    if (result < 0) return place.trouble(Fault::failed, -result, "draw a name");
    std::string suffix(mark);
    for (const unsigned char byte : random) suffix += letters[byte % letters.size()];
    return suffix;
}

bool hasSuffixOf(std::string_view name, std::string_view of) {
    if (name.size() != of.size() + mark.size() + drawn || !name.starts_with(of)) return false;
    name.remove_prefix(of.size());
    if (!name.starts_with(mark)) return false;
    name.remove_prefix(mark.size());
    return std::ranges::all_of(name,
                               [](char c) { return letters.find(c) != std::string_view::npos; });
}

NewFile::NewFile(NewFile&& other) noexcept
    : place_(other.place_),
      name_(std::move(other.name_)),
      file_(std::move(other.file_)),
      status_(other.status_) {}

Trouble NewFile::trouble(int result, const std::string& operation) const {
    return place_.trouble(Fault::failed, -result, operation, name_);
}

Cleaned<NewFile> NewFile::create(const Place& place) {
    for (int i = 0;; ++i) {
        auto suffix = drawSuffix(place);
        if (!suffix) return suffix.trouble();
        std::string name = place.name() + suffix.value();
        const int file = place.calls().createFile(place.folder(), name.c_str());
        if (file == -EEXIST && i < tries) continue;
        if (file < 0) return place.trouble(Fault::failed, -file, "create", name);
        return NewFile(place, std::move(name), OpenFile(place.calls(), file));
    }
}

std::optional<Trouble> NewFile::fill(std::string_view bytes) {
    const int written = writeWhole(place_.calls(), file(), bytes.data(), bytes.size(), 0);
    if (written < 0) return trouble(written, "write");
    return std::nullopt;
}

std::optional<Trouble> NewFile::finish(const platform::CleaningStatus& old) {
    platform::CleaningCalls& calls = place_.calls();
    int result = calls.status(file(), status_);
    if (result < 0) return trouble(result, "stat");
    // The owner is this user, as the old one's. The mode is set last: a new group takes from it.
    if (status_.group != old.group && (result = calls.changeGroup(file(), old.group)) < 0) {
        return trouble(result, "chown");
    }
    if ((result = calls.changeMode(file(), old.permissions)) < 0) return trouble(result, "chmod");
    if ((result = calls.flush(file())) < 0) return trouble(result, "fsync");
    if ((result = calls.status(file(), status_)) < 0) return trouble(result, "stat");
    if (status_.owner != old.owner || status_.group != old.group ||
        status_.permissions != old.permissions) {
        return place_.trouble(Fault::failed, 0, "chmod",
                              "the file system does not keep the owner and mode of " + name_);
    }
    return place_.flush();
}

void NewFile::discard() {
    if (!file_.isOpen()) return;
    platform::CleaningCalls& calls = place_.calls();
    platform::CleaningStatus now;
    platform::CleaningStatus named;
    // What cannot be overwritten or removed here is found as a leftover later.
    if (calls.status(file(), now) < 0 || overwriteWithZeros(calls, file(), 0, now.size) < 0) return;
    if (calls.statusAt(place_.folder(), name_.c_str(), named) < 0 || !named.isSameAs(now)) return;
    calls.removeFile(place_.folder(), name_.c_str());
    file_ = OpenFile();
}

}  // namespace dorvanel::cleaning

// SPDX-License-Identifier: MIT
#include "targets/cleaning/Place.h"

#include <cerrno>

namespace dorvanel::cleaning {
namespace {

constexpr std::uint32_t ownerMayWrite = 0200;

}  // namespace

Place::Place(platform::CleaningCalls& calls, const std::string& path)
    : calls_(&calls),
      path_(path),
      folderPath_(path, 0, path.rfind('/') + 1),
      name_(path, path.rfind('/') + 1) {}

Cleaned<Place> Place::open(platform::CleaningCalls& calls, const std::string& path) {
    Place place(calls, path);
    const std::string folder = place.folderPath_.empty() ? "." : place.folderPath_;
    const int descriptor = calls.openFolder(folder.c_str());
    if (descriptor < 0) return place.trouble(Fault::unreadable, -descriptor, "open");
    place.folder_ = OpenFile(calls, descriptor);
    return place;
}

Trouble Place::trouble(Fault fault, int code, const std::string& operation,
                       const std::string& detail) const {
    return Trouble{fault, Error{code, operation, path_, detail}};
}

std::string Place::inWords(const std::string& name, const std::string& reason) const {
    if (name == name_) return reason;
    return reason.empty() ? name : name + ": " + reason;
}

std::optional<Trouble> Place::refusal(const std::string& name,
                                      const platform::CleaningStatus& status,
                                      Purpose purpose) const {
    const auto refused = [&](Fault fault, const std::string& reason) {
        return trouble(fault, 0, "open", inWords(name, reason));
    };
    if (status.kind == platform::EntryKind::link) return refused(Fault::failed, "is a link");
    if (status.kind != platform::EntryKind::regular) {
        return refused(Fault::failed, "is not a regular file");
    }
    // Under the other name what was removed would still be there, or what is kept be lost.
    if (status.links != 1) return refused(Fault::failed, "has other names too");
    if (status.owner != calls_->effectiveUser()) {
        return refused(Fault::failed, "belongs to another user");
    }
    if (purpose == Purpose::changing && (status.permissions & ownerMayWrite) == 0) {
        return refused(Fault::unreadable, "is protected from writing");
    }
    return std::nullopt;
}

Cleaned<HeldFile> Place::hold(const std::string& name, Purpose purpose) const {
    auto held = holdIfThere(name, purpose);
    if (!held) return held.trouble();
    if (!held.value()) return trouble(Fault::unreadable, ENOENT, "open", inWords(name, ""));
    return std::move(*held.value());
}

Cleaned<std::optional<HeldFile>> Place::holdIfThere(const std::string& name,
                                                    Purpose purpose) const {
    platform::CleaningStatus seen;
    const int looked = calls_->statusAt(folder(), name.c_str(), seen);
    if (looked == -ENOENT) return std::optional<HeldFile>();
    if (looked < 0) return trouble(Fault::unreadable, -looked, "stat", inWords(name, ""));
    // Before it is opened: of a device, opening may be heard.
    if (auto refused = refusal(name, seen, purpose)) return *refused;

    const int descriptor = purpose == Purpose::changing
                               ? calls_->openForChanging(folder(), name.c_str())
                               : calls_->openForReading(folder(), name.c_str());
    if (descriptor < 0) return trouble(Fault::unreadable, -descriptor, "open", inWords(name, ""));
    HeldFile held{OpenFile(*calls_, descriptor), {}};
    const int told = calls_->status(descriptor, held.status);
    if (told < 0) return trouble(Fault::unreadable, -told, "stat", inWords(name, ""));
    if (auto refused = refusal(name, held.status, purpose)) return *refused;
    return std::optional<HeldFile>(std::move(held));
}

std::optional<Trouble> Place::leadsTo(const std::string& name,
                                      const platform::CleaningStatus& file) const {
    platform::CleaningStatus now;
    const int looked = calls_->statusAt(folder(), name.c_str(), now);
    if (looked < 0) return trouble(Fault::failed, -looked, "stat", inWords(name, ""));
    if (!now.isSameAs(file)) {
        return trouble(Fault::failed, 0, "stat", inWords(name, "another file is there now"));
    }
    return refusal(name, now, Purpose::changing);
}

std::optional<Trouble> Place::isFree(const std::string& name) const {
    platform::CleaningStatus now;
    const int looked = calls_->statusAt(folder(), name.c_str(), now);
    if (looked == -ENOENT) return std::nullopt;
    if (looked < 0) return trouble(Fault::failed, -looked, "stat", inWords(name, ""));
    return trouble(Fault::failed, 0, "stat", inWords(name, "was not there before"));
}

std::optional<Trouble> Place::flush() const {
    const int flushed = calls_->flush(folder());
    if (flushed < 0) return trouble(Fault::failed, -flushed, "fsync");
    return std::nullopt;
}

}  // namespace dorvanel::cleaning

// SPDX-License-Identifier: MIT
#include "targets/cleaning/Replacement.h"

#include <cerrno>
#include <utility>

namespace dorvanel::cleaning {

Replacement::Replacement(std::unique_ptr<OldFile> old, NewFile replacing,
                         std::vector<std::uint64_t> counts, TakeIn takeIn,
                         std::shared_ptr<PreparedDatabases> listed)
    : Prepared(old->place.path(), std::move(counts)),
      old_(std::move(old)),
      replacing_(std::move(replacing)),
      takeIn_(std::move(takeIn)),
      listed_(std::move(listed)) {
    if (listed_) listed_->add(*this, old_->held.status, {replacing_.name(), replacing_.status()});
}

Replacement::~Replacement() {
    if (listed_) listed_->remove(*this);
}

std::optional<Trouble> Replacement::isAsBefore() const {
    const Place& place = old_->place;
    if (auto bad = place.leadsTo(place.name(), old_->held.status)) return bad;
    if (auto bad = place.leadsTo(replacing_.name(), replacing_.status())) return bad;
    for (const Sidecar& sidecar : old_->sidecars) {
        auto bad = sidecar.held ? place.leadsTo(sidecar.name, sidecar.held->status)
                                : place.isFree(sidecar.name);
        if (bad) return bad;
    }
    if (old_->isLocked) return std::nullopt;
    platform::CleaningStatus now;
    const int told = place.calls().status(old_->held.file.get(), now);
    if (told < 0) return place.trouble(Fault::failed, -told, "stat");
    if (now.size != old_->held.status.size || now.modified != old_->held.status.modified) {
        return place.trouble(Fault::locked, 0, "stat", "was written meanwhile");
    }
    return std::nullopt;
}

std::optional<Trouble> Replacement::commit(const std::function<bool()>& stillMay,
                                           std::vector<std::string>& aside) {
    if (auto bad = isAsBefore()) return bad;
    if (stillMay && !stillMay()) {
        return old_->place.trouble(Fault::locked, 0, "replace", "its program runs again");
    }
    // First what waits in the log is brought home: from then on the log can be done without.
    if (takeIn_) {
        if (auto bad = takeIn_(*old_)) return bad;
    }
    if (auto bad = takeAside(aside)) return bad;
    return exchange(aside);
}

std::optional<Trouble> Replacement::takeAside(std::vector<std::string>& aside) {
    // A log that stayed beside the new file would be played into it.
    const Place& place = old_->place;
    bool isAnyTaken = false;
    for (const Sidecar& sidecar : old_->sidecars) {
        if (!sidecar.held) continue;
        auto suffix = drawSuffix(place);
        if (!suffix) return suffix.trouble();
        const std::string name = sidecar.name + suffix.value();
        const int renamed =
            place.calls().rename(place.folder(), sidecar.name.c_str(), name.c_str());
        if (renamed < 0) return place.trouble(Fault::failed, -renamed, "rename", sidecar.name);
        aside.push_back(place.pathOf(name));
        isAnyTaken = true;
    }
    return isAnyTaken ? place.flush() : std::nullopt;
}

std::optional<Trouble> Replacement::exchange(std::vector<std::string>& aside) {
    const Place& place = old_->place;
    platform::CleaningCalls& calls = place.calls();
    const char* own = place.name().c_str();
    const char* temporary = replacing_.name().c_str();
    const int exchanged = calls.exchange(place.folder(), own, temporary);
    if (exchanged < 0) return place.trouble(Fault::failed, -exchanged, "exchange");
    if (auto bad = place.flush()) {
        // The medium may say either now. The old file must not be shredded then, and the new one
        // not be overwritten until the medium is known to have the old one again.
        if (calls.exchange(place.folder(), own, temporary) < 0 || place.flush()) {
            replacing_.letGo();
        }
        return bad;
    }
    if (listed_) listed_->remove(*this);
    aside.push_back(place.pathOf(replacing_.name()));
    replacing_.letGo();
    return std::nullopt;
}

}  // namespace dorvanel::cleaning

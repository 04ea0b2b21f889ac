// SPDX-License-Identifier: MIT
#include "engine/LinkTargets.h"

#include <algorithm>

namespace dorvanel {

using platform::EntryKind;
using platform::FileStatus;
using Links = platform::SystemCalls::Links;

namespace {

/// A small part of the descriptors that a process is given.
constexpr int mostTargets = 128;
constexpr int shareOfLimit = 16;

}  // namespace

LinkTargets::LinkTargets(platform::SystemCalls& system)
    : system_(system),
      mostHeld_(static_cast<std::size_t>(
          std::clamp(system.descriptorLimit() / shareOfLimit, 0, mostTargets))) {}

void LinkTargets::add(int folder, const char* link, const FileStatus& target) {
    if (has(target)) return;
    files_[Identity::of(target)] = {target, hold(folder, link, target)};
}

void LinkTargets::release(const FileStatus& target) {
    if (files_.empty()) return;
    const auto found = files_.find(Identity::of(target));
    if (found != files_.end()) found->second.held.reset();
}

bool LinkTargets::has(const FileStatus& target) const {
    const auto found = files_.find(Identity::of(target));
    if (found == files_.end()) return false;
    if (found->second.held != nullptr || target.kind != EntryKind::regular) return true;
    return target.born != 0 && target.born == found->second.status.born;
}

std::shared_ptr<const HeldDescriptor> LinkTargets::hold(int folder, const char* link,
                                                        const FileStatus& target) {
    if (target.kind != EntryKind::regular || files_.size() >= mostHeld_) return nullptr;
    const int reference = system_.openReference(folder, link, Links::follow);
    if (reference < 0) return nullptr;
    auto held = std::make_shared<const HeldDescriptor>(system_, reference);
    FileStatus now;
    const bool isTarget = system_.status(reference, now) >= 0 && now.isSameAs(target);
    return isTarget ? held : nullptr;
}

}  // namespace dorvanel

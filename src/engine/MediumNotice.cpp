// SPDX-License-Identifier: MIT
#include "engine/MediumNotice.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <map>

namespace dorvanel {
namespace {

using platform::Medium;

/// Whoever waits for the notice waits for so many items; of more, those of one folder are taken to
/// lie on one medium.
constexpr std::size_t askedOneByOne = 4096;

/// Of each reason the first item, and how many there are.
class Findings {
  public:
    void add(const std::string& reason, const std::string& item) {
        if (reason.empty()) return;
        auto finding = std::ranges::find(findings_, reason, &Finding::reason);
        if (finding == findings_.end()) finding = findings_.insert(finding, {reason, item, 0});
        ++finding->items;
    }

    [[nodiscard]] std::string notice(const PathText& pathText) const {
        std::string notice;
        for (const Finding& finding : findings_) {
            notice +=
                notice.empty() ? "overwriting in place may not reach the old contents of " : "; ";
            notice += pathText(finding.firstItem);
            if (finding.items > 1) notice += fmt::format(" and {} more", finding.items - 1);
            notice += " (" + finding.reason + ")";
        }
        return notice;
    }

  private:
    struct Finding {
        std::string reason;
        std::string firstItem;
        std::size_t items = 0;
    };
    std::vector<Finding> findings_;
};

}  // namespace

std::string mediumReason(const platform::Medium& medium) {
    switch (medium.kind) {
        case Medium::Kind::overwritable:
            break;
        case Medium::Kind::copyOnWrite:
            return medium.fileSystem + " writes to other blocks";
        case Medium::Kind::overlay:
            return medium.fileSystem + " mount";
        case Medium::Kind::network:
            return medium.fileSystem + " network mount";
        case Medium::Kind::userSpace:
            return medium.fileSystem + " mount";
        case Medium::Kind::solidState:
            return "solid-state drive";
    }
    return {};
}

std::string mediumNotice(const std::vector<std::string>& items, platform::MediumInspector& medium,
                         const PathText& pathText) {
    medium.forgetDisks();
    Findings findings;
    std::map<std::string, std::string> reasons;  // of each folder, once the items are many
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (i < askedOneByOne) {
            findings.add(mediumReason(medium.mediumAt(items[i])), items[i]);
            continue;
        }
        const std::string folder = items[i].substr(0, items[i].find_last_of('/') + 1);
        const auto [known, isNew] = reasons.try_emplace(folder);
        if (isNew) known->second = mediumReason(medium.mediumAt(items[i]));
        findings.add(known->second, items[i]);
    }
    return findings.notice(pathText);
}

std::string mediumNotice(const std::vector<HeldItem>& items, platform::MediumInspector& medium,
                         const PathText& pathText) {
    medium.forgetDisks();
    Findings findings;
    std::map<std::uint64_t, std::string> reasons;  // of each device; a link leads anywhere
    for (const HeldItem& item : items) {
        if (item.status.kind == platform::EntryKind::link) {
            findings.add(mediumReason(medium.mediumAt(item.path)), item.path);
            continue;
        }
        const auto [known, isNew] = reasons.try_emplace(item.status.device);
        if (isNew) known->second = mediumReason(medium.mediumAt(item.path));
        findings.add(known->second, item.path);
    }
    return findings.notice(pathText);
}

}  // namespace dorvanel

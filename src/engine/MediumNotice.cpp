#include "engine/MediumNotice.h"

#include <fmt/format.h>

#include <algorithm>

namespace dorvanel {
namespace {

using platform::Medium;

std::string reasonOf(const Medium& medium) {
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

struct Finding {
    std::string reason;
    std::string firstItem;
    std::size_t items = 0;
};

}  // namespace

std::string mediumNotice(const std::vector<std::string>& items, platform::MediumInspector& medium,
                         const PathText& pathText) {
    medium.forgetDisks();
    std::vector<Finding> findings;
    for (const std::string& item : items) {
        const std::string reason = reasonOf(medium.mediumAt(item));
        if (reason.empty()) continue;
        auto finding = std::ranges::find(findings, reason, &Finding::reason);
        if (finding == findings.end()) finding = findings.insert(finding, {reason, item, 0});
        ++finding->items;
    }
    std::string notice;
    for (const Finding& finding : findings) {
        notice += notice.empty() ? "overwriting in place may not reach the old contents of " : "; ";
        notice += pathText(finding.firstItem);
        if (finding.items > 1) notice += fmt::format(" and {} more", finding.items - 1);
        notice += " (" + finding.reason + ")";
    }
    return notice;
}

}  // namespace dorvanel

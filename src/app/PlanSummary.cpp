// SPDX-License-Identifier: MIT
#include "app/PlanSummary.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

#include "app/SizeText.h"

namespace dorvanel {
namespace {

/// What is taken out of files that stay: "120 rows and 3 keys".
std::string amountCleaned(const Totals& totals) {
    if (totals.keys == 0) return counted(totals.rows, "row");
    if (totals.rows == 0) return counted(totals.keys, "key");
    return counted(totals.rows, "row") + " and " + counted(totals.keys, "key");
}

}  // namespace

std::string summaryLine(const Plan& plan) {
    const auto goesAsAWhole = [](const PlanItem& item) {
        return item.action != PlanItem::Action::clean && !item.isOfList();
    };
    const auto isCleaned = [](const PlanItem& item) {
        return item.action == PlanItem::Action::clean;
    };
    const Totals totals = totalsOf(plan);
    const auto whole = std::ranges::count_if(plan.items, goesAsAWhole);

    struct Part {
        std::string what;
        const char* fate;
    };
    std::vector<Part> parts;
    if (whole > 0) {
        parts.push_back(
            {fmt::format("{}, {}, {}", counted(static_cast<std::uint64_t>(whole), "item"),
                         counted(totals.files, "file"), sizeText(totals.bytes)),
             "shredded"});
    }
    if (std::ranges::any_of(plan.items, isCleaned)) {
        parts.push_back({amountCleaned(totals), "cleaned"});
    }
    if (totals.entries > 0) parts.push_back({counted(totals.entries, "mention"), "removed"});
    if (parts.empty()) return "nothing would be shredded";

    std::string line;
    for (const Part& part : parts) {
        line += fmt::format("{}{} {}{}", line.empty() ? "" : "; ", part.what,
                            line.empty() ? "would be " : "", part.fate);
    }
    return line;
}

}  // namespace dorvanel

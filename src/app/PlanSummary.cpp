// SPDX-License-Identifier: MIT
#include "app/PlanSummary.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

#include "app/SizeText.h"
#include "app/Texts.h"

namespace dorvanel {
namespace {

/// What is taken out of files that stay: "120 rows and 3 keys".
std::string amountCleaned(const Totals& totals) {
    std::string rows = trn("{} row", "{} rows", totals.rows);
    if (totals.keys == 0) return rows;
    std::string keys = trn("{} key", "{} keys", totals.keys);
    return totals.rows == 0 ? keys : tr("{} and {}", rows, keys);
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
        const char* first;  ///< what is said of it where nothing is said before it
        const char* later;
    };
    std::vector<Part> parts;
    if (whole > 0) {
        parts.push_back(
            {fmt::format("{}, {}, {}",
                         trn("{} item", "{} items", static_cast<std::uint64_t>(whole)),
                         trn("{} file", "{} files", totals.files), sizeText(totals.bytes)),
             marked("{} would be shredded"), marked("{} shredded")});
    }
    if (std::ranges::any_of(plan.items, isCleaned)) {
        parts.push_back(
            {amountCleaned(totals), marked("{} would be cleaned"), marked("{} cleaned")});
    }
    if (totals.entries > 0) {
        parts.push_back({trn("{} mention", "{} mentions", totals.entries),
                         marked("{} would be removed"), marked("{} removed")});
    }
    if (parts.empty()) return tr("nothing would be shredded");

    std::string line;
    for (const Part& part : parts) {
        line += line.empty() ? tr(part.first, part.what) : "; " + tr(part.later, part.what);
    }
    return line;
}

}  // namespace dorvanel

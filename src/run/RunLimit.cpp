// SPDX-License-Identifier: MIT
#include "run/RunLimit.h"

namespace dorvanel {

RunLimit::RunLimit(const Plan& shown) {
    for (const PlanItem& item : shown.items) {
        items_.emplace(item.path, item.trace);
        named_.insert(item.path);
        const bool goesWhole = item.action == PlanItem::Action::shred;
        if (goesWhole && item.folders > 0) folders_.insert(item.path);
    }
    for (const PlanSkip& skip : shown.skipped) named_.insert(skip.path);
}

bool RunLimit::allows(const std::string& path, const std::string& trace) const {
    return items_.contains({path, trace}) || liesInFolder(path);
}

bool RunLimit::isKnown(const std::string& path) const {
    return named_.contains(path) || liesInFolder(path);
}

bool RunLimit::liesInFolder(const std::string& path) const {
    for (std::size_t end = path.rfind('/'); end != std::string::npos && end > 0;
         end = path.rfind('/', end - 1)) {
        if (folders_.contains(path.substr(0, end))) return true;
    }
    return false;
}

}  // namespace dorvanel

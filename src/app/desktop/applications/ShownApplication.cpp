// SPDX-License-Identifier: MIT
#include "app/desktop/applications/ShownApplication.h"

#include <algorithm>
#include <iterator>

#include "app/desktop/Bytes.h"

namespace dorvanel::desktop {

using catalogue::Entry;
using catalogue::Trace;

namespace {

/// What stands for an application whose own icon no theme has, by what it is for.
QIcon iconOf(const Entry& entry) {
    const char* general = entry.kind == "browser" ? "web-browser"
                          : entry.kind == "mail"  ? "internet-mail"
                                                  : "user-desktop";
    const QIcon plain = QIcon::fromTheme(QStringLiteral("application-x-executable"));
    const QIcon fallback = QIcon::fromTheme(QLatin1String(general), plain);
    return QIcon::fromTheme(displayText(entry.icon), fallback);
}

TraceAmount amountOf(const TraceSize& size) {
    return {size.files, size.bytes, size.rows, size.keys, size.isWhole};
}

}  // namespace

void ShownApplication::describe(const Entry& entry) {
    name = displayText(entry.name);
    icon = iconOf(entry);
    kinds = kindsOf(entry);
}

bool ShownApplication::take(const TraceSizes& sizes) {
    if (sizes.traces.size() != kinds.size()) return false;
    isFound = sizes.isFound;
    amounts.clear();
    std::ranges::transform(sizes.traces, std::back_inserter(amounts), amountOf);
    unseen.clear();
    for (const std::string& line : sizes.unseen) unseen << displayText(line);
    return true;
}

std::vector<ShownApplication::Kind> ShownApplication::kindsOf(const Entry& entry) {
    std::vector<Kind> kinds;
    for (const Trace& trace : entry.traces) {
        kinds.push_back({trace.kind, trace.recommended, displayText(trace.why)});
    }
    return kinds;
}

TraceChoice::Kinds ShownApplication::recommended() const {
    TraceChoice::Kinds names;
    for (const Kind& kind : kinds) {
        if (kind.recommended) names.push_back(kind.kind);
    }
    return names;
}

TraceAmount ShownApplication::total() const {
    TraceAmount total;
    for (const TraceAmount& amount : amounts) total.add(amount);
    return total;
}

}  // namespace dorvanel::desktop

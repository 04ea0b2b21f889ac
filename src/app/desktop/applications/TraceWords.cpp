// SPDX-License-Identifier: MIT
#include "app/desktop/applications/TraceWords.h"

#include <algorithm>
#include <array>
#include <utility>

#include "app/desktop/Bytes.h"
#include "app/desktop/Words.h"

namespace dorvanel::desktop {
namespace {

/// A list of names says so many; the rest is counted.
constexpr qsizetype namesTold = 3;

}  // namespace

void TraceAmount::add(const TraceAmount& other) {
    files += other.files;
    bytes += other.bytes;
    rows += other.rows;
    keys += other.keys;
    isWhole = isWhole && other.isWhole;
}

QString nameOfKind(const std::string& kind) {
    if (kind == "cache") return Words::tr("Cache");
    if (kind == "history") return Words::tr("History");
    if (kind == "downloads") return Words::tr("List of downloads");
    if (kind == "cookies") return Words::tr("Cookies");
    if (kind == "forms") return Words::tr("Typed into forms");
    if (kind == "sessions") return Words::tr("Open and closed tabs");
    if (kind == "sitedata") return Words::tr("Data stored by sites");
    if (kind == "icons") return Words::tr("Icons of pages");
    if (kind == "permissions") return Words::tr("Settings for single sites");
    if (kind == "thumbnails") return Words::tr("Preview pictures");
    if (kind == "logs") return Words::tr("Logs and statistics");
    if (kind == "crashes") return Words::tr("Crash reports");
    if (kind == "mailindex") return Words::tr("Search index of mails");
    if (kind == "mailcache") return Words::tr("Copies of mails from servers");
    if (kind == "collected") return Words::tr("Collected addresses");
    if (kind == "expunged") return Words::tr("Remains of deleted mails");
    if (kind == "trash") return Words::tr("Mails in the trash");
    if (kind == "junk") return Words::tr("Junk mails");
    if (kind == "recent") return Words::tr("Recently used documents");
    return displayText(kind);
}

QString textOfAmount(const TraceAmount& amount) {
    if (amount.isNothing()) return amount.isWhole ? Words::tr("nothing") : Words::tr("unknown");
    QStringList parts;
    if (amount.files > 0) {
        parts << Words::tr("%n file(s)", nullptr, asNumber(amount.files))
              << sizeWords(amount.bytes, 1);
    }
    // What a person sees go is entries, whatever holds them.
    const std::uint64_t entries = amount.rows + amount.keys;
    if (entries > 0) {
        parts << Words::tr("%n (entry|entries)", nullptr, asNumber(entries));
    }
    const QString text = parts.join(Words::tr(", ", "between two amounts"));
    return amount.isWhole ? text : Words::tr("at least %1").arg(text);
}

QString textOfState(bool isFound, Runs runs, bool isChosen, bool isWatching) {
    if (!isFound && runs == Runs::no) return Words::tr("not found");
    if (runs == Runs::yes) {
        if (!isChosen) return Words::tr("running, not chosen");
        return isWatching ? Words::tr("running, watched") : Words::tr("running, not watched");
    }
    if (runs == Runs::unknown) {
        if (!isChosen) return Words::tr("unknown if running, not chosen");
        return isWatching ? Words::tr("unknown if running, watched")
                          : Words::tr("unknown if running, not watched");
    }
    if (!isChosen) return Words::tr("not chosen");
    return isWatching ? Words::tr("watched") : Words::tr("not watched");
}

QString listOfNames(const QStringList& names) {
    const QString comma = Words::tr(", ", "between two names");
    const qsizetype others = names.size() - namesTold;
    if (others > 1) {
        return Words::tr("%1 and %n other(s)", nullptr, static_cast<int>(others))
            .arg(names.mid(0, namesTold).join(comma));
    }
    if (names.size() < 2) return names.join(comma);
    return Words::tr("%1 and %2", "the last two of several names")
        .arg(names.mid(0, names.size() - 1).join(comma), names.last());
}

}  // namespace dorvanel::desktop

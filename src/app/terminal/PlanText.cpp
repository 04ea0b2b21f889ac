// SPDX-License-Identifier: MIT
#include "app/terminal/PlanText.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <ostream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "app/PlanSummary.h"
#include "app/SizeText.h"
#include "app/Texts.h"
#include "app/terminal/EscapedText.h"
#include "app/terminal/WrappedText.h"
#include "targets/traces/HomeRoot.h"

namespace dorvanel::terminal {
namespace {

using Action = PlanItem::Action;

constexpr int usualColumns = 80;
constexpr int fewestColumns = 20;
constexpr int margin = 2;              ///< before what stands below a heading
constexpr int gap = 2;                 ///< between two columns
constexpr int roomForAPath = 24;       ///< fewer columns would not tell one path from another
constexpr std::size_t mostNoted = 20;  ///< notes of a kind that are shown

/// How many files an item is; "" where its size says it all.
std::string countCell(const PlanItem& item) {
    if (item.action == Action::clean || item.isOfList()) return {};
    if (item.files == 0 && item.folders > 0) return trn("{} folder", "{} folders", item.folders);
    return trn("{} file", "{} files", item.files);
}

std::string sizeCell(const PlanItem& item) {
    if (item.isOfList()) return trn("{} mention", "{} mentions", item.entries);
    if (item.action != Action::clean) return sizeText(item.bytes);
    std::string rows = trn("{} row", "{} rows", item.rows);
    if (item.keys == 0) return rows;
    std::string keys = trn("{} key", "{} keys", item.keys);
    return item.rows == 0 ? keys : rows + ", " + keys;
}

std::string reasonOf(const PlanSkip& skip) {
    const char* reason = marked("others can write there");
    switch (skip.reason) {
        case PlanSkip::Reason::running:
            reason = marked("is running");
            break;
        case PlanSkip::Reason::mount:
            reason = marked("another file system is mounted there");
            break;
        case PlanSkip::Reason::unreadable:
            reason = marked("cannot be looked into");
            break;
        case PlanSkip::Reason::locked:
            reason = marked("another program has locked it");
            break;
        case PlanSkip::Reason::corrupt:
            reason = marked("is damaged");
            break;
        case PlanSkip::Reason::insecure:
            break;
    }
    return skip.detail.empty() ? tr(reason) : fmt::format("{}: {}", tr(reason), skip.detail);
}

/// The kinds of notes in the order in which they are told: what else would go, what would remain,
/// what would be in the way.
struct NoteKind {
    PlanNote::Kind kind;
    const char* meaning;
};
constexpr NoteKind noteKinds[] = {
    {PlanNote::Kind::link, marked("Links that lead to what would be overwritten too:")},
    {PlanNote::Kind::hardLink,
     marked("Files with several names, all of which would show what is written:")},
    {PlanNote::Kind::medium, marked("Old contents may survive on the medium:")},
    {PlanNote::Kind::shared,
     marked("Shared with a snapshot or a copy, which keeps the old contents:")},
    {PlanNote::Kind::unreadable, marked("Cannot be looked into, or not be overwritten:")},
    {PlanNote::Kind::open, marked("Open in another program:")}};

std::string remarkOf(const PlanNote& note) {
    if (note.kind != PlanNote::Kind::hardLink) return note.detail;
    const std::string names =
        trn("{} name, {} of them here", "{} names, {} of them here", note.links, note.names.size());
    return note.detail.empty() ? names : names + "; " + note.detail;
}

/// The items of a plan, those that belong together beside one another, otherwise in their order.
class Order {
  public:
    explicit Order(const Plan& plan) {
        for (const PlanItem& item : plan.items) {
            applications_.try_emplace(item.application, applications_.size() + 1);
            traces_.try_emplace(item.trace, traces_.size() + 1);
            items_.push_back(&item);
        }
        applications_[""] = 0;
        std::ranges::stable_sort(items_, {}, [this](const PlanItem* item) { return keyOf(*item); });
    }

    /// Calls `tell` with the items of each group.
    template <typename Tell>
    void forEachGroup(const Tell& tell) const {
        for (auto first = items_.begin(); first != items_.end();) {
            const auto last = std::find_if(first, items_.end(), [&](const PlanItem* item) {
                return keyOf(*item) != keyOf(**first);
            });
            tell(std::vector<const PlanItem*>(first, last));
            first = last;
        }
    }

  private:
    using Key = std::tuple<bool, std::size_t, std::size_t, Action>;

    /// What the desktop remembers comes last, whatever it remembers it of.
    [[nodiscard]] Key keyOf(const PlanItem& item) const {
        if (item.action == Action::mention) return {true, 0, 0, item.action};
        return {false, applications_.at(item.application), traces_.at(item.trace), item.action};
    }

    std::map<std::string, std::size_t> applications_;  ///< and the place of each
    std::map<std::string, std::size_t> traces_;
    std::vector<const PlanItem*> items_;
};

/// Prints the parts of a plan.
class Telling {
  public:
    Telling(const Plan& plan, Terminal& terminal, int columns)
        : plan_(plan), terminal_(terminal), columns_(columns) {
        for (const PlanItem& item : plan.items) {
            countColumns_ = std::max(countColumns_, displayWidth(countCell(item)));
            sizeColumns_ = std::max(sizeColumns_, displayWidth(sizeCell(item)));
        }
        const int room = columns_ - margin - gap - sizeColumns_;
        // Where both have no room the sizes say more.
        hasCounts_ = countColumns_ > 0 && room - gap - countColumns_ >= roomForAPath;
        pathColumns_ = room - (hasCounts_ ? gap + countColumns_ : 0);
    }

    void tellItems() {
        Order(plan_).forEachGroup([this](const std::vector<const PlanItem*>& group) {
            tellLine(headingOf(*group.front()), 0);
            for (const PlanItem* item : group) tellItem(*item);
            terminal_.out << '\n';
        });
    }

    void tellSkipped() {
        if (plan_.skipped.empty()) return;
        tellLine(tr("Passed over"), 0);
        for (const PlanSkip& skip : plan_.skipped) {
            const bool isAnApplication = skip.path.empty();
            tellNamed(isAnApplication ? shown(skip.application) : shownPath(skip.path),
                      reasonOf(skip));
        }
        terminal_.out << '\n';
    }

    void tellTotals() { tellText(summaryLine(plan_), 0); }

    void tellNotes() {
        for (const NoteKind& kind : noteKinds) tellNotesOf(kind);
        std::uint64_t more = 0;
        for (const PlanItem& item : plan_.items) more += item.moreNotes;
        if (more == 0) return;
        terminal_.out << '\n';
        tellText(trn("{} more note not shown", "{} more notes not shown", more), 0);
    }

  private:
    [[nodiscard]] std::string shown(const std::string& text) const {
        return terminal_.forOut(text);
    }

    [[nodiscard]] std::string shownPath(const std::string& path) const {
        const std::string below = traces::pathBelow(path, home_);
        return shown(below.empty() ? path : "~/" + below);
    }

    /// A text that is not worth a second line, as it has room.
    [[nodiscard]] std::string fitting(const std::string& text, int columns) const {
        return terminal_.outIsTerminal ? shortenedInMiddle(text, columns) : text;
    }

    [[nodiscard]] std::string headingOf(const PlanItem& item) const {
        if (item.action == Action::mention) return tr("Remembered by the desktop");
        const bool isCleaned = item.action == Action::clean;
        std::string heading = isCleaned ? tr("Clean") : tr("Shred");
        if (!item.application.empty()) {
            heading =
                isCleaned ? tr("Clean {}", item.application) : tr("Shred {}", item.application);
        }
        if (!item.trace.empty()) heading += ": " + item.trace;
        return shown(heading);
    }

    void tellLine(const std::string& text, int indent) {
        terminal_.out << std::string(static_cast<std::size_t>(indent), ' ')
                      << fitting(text, columns_ - indent) << '\n';
    }

    void tellText(const std::string& text, int indent) {
        for (const std::string& line : wrappedLines(text, columns_ - indent)) {
            tellLine(line, indent);
        }
    }

    /// The path last: its length is nobody's concern then.
    void tellItem(const PlanItem& item) {
        std::string line = fmt::format("{:>{}}", sizeCell(item), sizeColumns_);
        if (hasCounts_) line += fmt::format("  {:>{}}", countCell(item), countColumns_);
        line += "  " + fitting(shownPath(item.path), pathColumns_);
        tellLine(line, margin);
    }

    /// "NAME: REMARK", the remark below the name where a line has no room for both. Takes the name
    /// as it is shown.
    void tellNamed(const std::string& name, const std::string& remark) {
        const std::string both = remark.empty() ? name : name + ": " + shown(remark);
        if (remark.empty() || margin + displayWidth(both) <= columns_) {
            tellLine(both, margin);
        } else {
            tellLine(name, margin);
            tellText(shown(remark), 2 * margin);
        }
    }

    void tellLink(const PlanNote& note) {
        const std::string path = shownPath(note.path);
        const std::string target = shownPath(note.target);
        if (margin + displayWidth(path + " -> " + target) <= columns_) {
            tellLine(path + " -> " + target, margin);
        } else {
            tellLine(path, margin);
            tellLine("-> " + target, 2 * margin);
        }
    }

    void tellNotesOf(const NoteKind& kind) {
        std::uint64_t met = 0;
        for (const PlanItem& item : plan_.items) {
            for (const PlanNote& note : item.notes) {
                if (note.kind != kind.kind || ++met > mostNoted) continue;
                if (met == 1) {
                    terminal_.out << '\n';
                    tellText(tr(kind.meaning), 0);
                }
                if (kind.kind == PlanNote::Kind::link) {
                    tellLink(note);
                } else {
                    tellNamed(shownPath(note.path), remarkOf(note));
                }
            }
        }
        if (met > mostNoted) tellLine(trn("and {} more", "and {} more", met - mostNoted), margin);
    }

    const Plan& plan_;
    Terminal& terminal_;
    const std::string home_ = traces::realHome();
    int columns_;
    int countColumns_ = 0;
    int sizeColumns_ = 0;
    int pathColumns_ = 0;
    bool hasCounts_ = false;
};

}  // namespace

void tellPlan(const Plan& plan, Terminal& terminal, int columns) {
    const bool isKnown = terminal.outIsTerminal && columns > 0;
    Telling telling(plan, terminal, isKnown ? std::max(columns, fewestColumns) : usualColumns);
    telling.tellItems();
    telling.tellSkipped();
    telling.tellTotals();
    telling.tellNotes();
    terminal.out << std::flush;
}

}  // namespace dorvanel::terminal

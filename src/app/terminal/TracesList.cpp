// SPDX-License-Identifier: MIT
#include "app/terminal/TracesList.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "app/SizeText.h"
#include "app/Texts.h"
#include "app/terminal/OpenedPreferences.h"
#include "apps/TraceChoice.h"
#include "platform/CleaningCalls.h"
#include "platform/Clock.h"
#include "platform/FileManager.h"
#include "platform/LockProbe.h"
#include "platform/ProgramListing.h"
#include "platform/SystemCalls.h"
#include "run/TraceSizes.h"
#include "targets/traces/FoundTraces.h"
#include "watch/RunningApplications.h"

namespace dorvanel::terminal {
namespace {

using catalogue::Catalogue;
using catalogue::Entry;

/// An application, as it is listed.
struct Listed {
    const Entry* entry;
    bool runs = false;
    TraceSizes sizes;
};

using Choice = std::map<std::string, TraceChoice::Kinds>;

bool isChosen(const Choice& choice, const Entry& entry, const std::string& kind) {
    const auto found = choice.find(entry.id);
    return found != choice.end() && std::ranges::find(found->second, kind) != found->second.end();
}

/// What there is of one kind: "812 files, 1.2 GiB, 12 rows, 1 key".
std::string amountOf(const TraceSize& size) {
    std::string text;
    const auto add = [&](std::uint64_t count, const std::string& amount) {
        if (count > 0) text += (text.empty() ? "" : ", ") + amount;
    };
    add(size.files, trn("{} file", "{} files", size.files));
    add(size.files, sizeText(size.bytes));
    add(size.rows, trn("{} row", "{} rows", size.rows));
    add(size.keys, trn("{} key", "{} keys", size.keys));
    return text.empty() ? "-" : text;
}

void print(const Listed& listed, const Choice& choice, bool all, Terminal& terminal) {
    const Entry& entry = *listed.entry;
    const auto isShown = [&](const TraceSize& size) {
        return all || isChosen(choice, entry, size.trace->kind) || !size.isNothing();
    };
    if (std::ranges::none_of(listed.sizes.traces, isShown)) return;
    const char* heading = listed.runs            ? marked("{} ({}), running")
                          : listed.sizes.isFound ? "{} ({})"
                                                 : marked("{} ({}), not found");
    terminal.out << terminal.forOut(tr(heading, entry.name, entry.id)) << '\n';
    for (const TraceSize& size : listed.sizes.traces) {
        if (!isShown(size)) continue;
        const bool chosen = isChosen(choice, entry, size.trace->kind);
        const std::string line =
            fmt::format("  [{}] {:<12} {:<44} {}", chosen ? 'x' : ' ', size.trace->kind,
                        amountOf(size), size.trace->recommended ? tr("recommended") : "");
        terminal.out << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
    }
}

nlohmann::ordered_json documentOf(const std::vector<Listed>& all, const Choice& choice) {
    nlohmann::ordered_json applications = nlohmann::ordered_json::array();
    for (const Listed& listed : all) {
        nlohmann::ordered_json traces = nlohmann::ordered_json::array();
        for (const TraceSize& size : listed.sizes.traces) {
            traces.push_back({{"kind", size.trace->kind},
                              {"selected", isChosen(choice, *listed.entry, size.trace->kind)},
                              {"recommended", size.trace->recommended},
                              {"files", size.files},
                              {"bytes", size.bytes},
                              {"rows", size.rows}});
        }
        applications.push_back({{"id", listed.entry->id},
                                {"name", listed.entry->name},
                                {"found", listed.sizes.isFound},
                                {"running", listed.runs},
                                {"traces", std::move(traces)}});
    }
    return {{"applications", std::move(applications)}};
}

/// What is looked at, and by what.
class Survey {
  public:
    explicit Survey(const Catalogue& applications) : applications_(applications) {}

    std::vector<Listed> listed(bool all, Terminal& terminal) {
        RunningApplications::Entries entries;
        for (const Entry& entry : applications_.entries()) entries.push_back(&entry);
        const RunningApplications::Entries running = running_.running(entries);
        std::vector<Listed> list;
        for (const Entry* entry : entries) {
            Listed one{.entry = entry,
                       .runs = std::ranges::find(running, entry) != running.end(),
                       .sizes = countTraces(*entry, *system_, cleaner_, [] { return false; })};
            if (!all && !one.sizes.isFound) continue;
            for (const std::string& unseen : one.sizes.unseen) {
                terminal.complain(unseen);
                isWhole = isWhole && one.runs;
            }
            list.push_back(std::move(one));
        }
        return list;
    }

    bool isWhole = true;  ///< nothing of an application that does not run was out of sight

  private:
    const Catalogue& applications_;
    std::unique_ptr<platform::SystemCalls> system_ = platform::makeSystemCalls();
    std::unique_ptr<platform::CleaningCalls> calls_ = platform::makeCleaningCalls();
    std::unique_ptr<platform::ProgramListing> listing_ = platform::makeProgramListing();
    std::unique_ptr<platform::LockProbe> locks_ = platform::makeLockProbe();
    cleaning::Cleaner cleaner_{*calls_, platform::systemClock()};
    RunningApplications running_{*listing_, *locks_, [this](const Entry& entry) {
                                     return traces::findLocks(entry, *system_);
                                 }};
};

}  // namespace

Catalogue loadedCatalogue(Terminal& terminal) {
    Catalogue loaded =
        Catalogue::load(catalogue::catalogueFolders(), platform::defaultFileManager());
    for (const Catalogue::Fault& fault : loaded.faults()) {
        terminal.complain(catalogue::textOf(fault.file, fault.problem));
    }
    return loaded;
}

ExitStatus listTraces(Terminal& terminal, const TracesListOptions& options) {
    OpenedPreferences opened(terminal);
    if (!opened.areKnown()) return ExitStatus::incomplete;
    const Catalogue applications = loadedCatalogue(terminal);
    const Choice choice = TraceChoice(opened.defaults()).chosen();
    Survey survey(applications);
    const std::vector<Listed> list = survey.listed(options.all, terminal);
    bool isWhole = survey.isWhole;
    for (const auto& [id, kinds] : choice) {
        if (applications.find(id) != nullptr) continue;
        terminal.complain(tr("{}: is chosen, but nothing describes it", id));
        isWhole = false;
    }
    if (options.json) {
        using Json = nlohmann::ordered_json;
        terminal.out << documentOf(list, choice).dump(2, ' ', false, Json::error_handler_t::replace)
                     << '\n';
    } else {
        for (const Listed& listed : list) print(listed, choice, options.all, terminal);
        if (list.empty())
            terminal.out << tr("no application that is described has left anything") << '\n';
    }
    return isWhole ? ExitStatus::done : ExitStatus::incomplete;
}

}  // namespace dorvanel::terminal

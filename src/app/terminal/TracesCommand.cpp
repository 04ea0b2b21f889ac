// SPDX-License-Identifier: MIT
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "app/Texts.h"
#include "app/terminal/Commands.h"
#include "app/terminal/OpenedPreferences.h"
#include "app/terminal/TracesList.h"
#include "apps/TraceChoice.h"
#include "apps/catalogue/Catalogue.h"
#include "platform/FileManager.h"

namespace dorvanel::terminal {
namespace {

using catalogue::Catalogue;
using catalogue::Problem;

struct Options {
    TracesListOptions list;
    std::string file;
    std::string application;
    std::vector<std::string> kinds;
};

std::string summaryOf(const catalogue::Entry& entry) {
    std::string kinds;
    for (const catalogue::Trace& trace : entry.traces) {
        kinds += (kinds.empty() ? "" : ", ") + trace.kind;
    }
    return fmt::format("{}: {}", entry.name, kinds);
}

ExitStatus check(Terminal& terminal, const std::string& file) {
    const Catalogue others =
        Catalogue::load(catalogue::catalogueFolders(), platform::defaultFileManager());
    const catalogue::ReadEntry read = catalogue::readFile(file, others);
    for (const Problem& problem : read.problems) {
        terminal.complain(catalogue::textOf(file, problem));
    }
    if (!read.entry) return ExitStatus::incomplete;
    terminal.out << terminal.forOut(summaryOf(*read.entry)) << '\n';
    return ExitStatus::done;
}

const catalogue::Trace* traceOf(const catalogue::Entry& entry, const std::string& kind) {
    const auto found = std::ranges::find(entry.traces, kind, &catalogue::Trace::kind);
    return found == entry.traces.end() ? nullptr : &*found;
}

/// The kinds that somebody means who names none.
std::vector<std::string> recommendedKinds(const catalogue::Entry& entry) {
    std::vector<std::string> kinds;
    for (const catalogue::Trace& trace : entry.traces) {
        if (trace.recommended) kinds.push_back(trace.kind);
    }
    return kinds;
}

/// Says what will be missed, where something will.
void tellWhatIsLost(const catalogue::Entry& entry, const std::vector<std::string>& kinds,
                    Terminal& terminal) {
    for (const std::string& kind : kinds) {
        const catalogue::Trace* trace = traceOf(entry, kind);
        if (trace->why.empty()) continue;
        terminal.out << terminal.forOut(fmt::format("{}: {}", kind, trace->why)) << '\n';
    }
}

std::string noSuchApplication(const std::string& id) {
    return tr("there is no application \"{}\"; \"dorvanel traces --all\" lists them", id);
}

ExitStatus select(Terminal& terminal, const Options& options) {
    const Catalogue applications = loadedCatalogue(terminal);
    const catalogue::Entry* entry = applications.find(options.application);
    if (entry == nullptr) {
        terminal.complain(noSuchApplication(options.application));
        return ExitStatus::usage;
    }
    for (const std::string& kind : options.kinds) {
        if (traceOf(*entry, kind) != nullptr) continue;
        terminal.complain(tr("{} has no traces of the kind \"{}\"", entry->name, kind));
        return ExitStatus::usage;
    }
    const auto kinds = options.kinds.empty() ? recommendedKinds(*entry) : options.kinds;
    if (kinds.empty()) {
        terminal.complain(
            tr("{} has no kinds that are recommended: say which you mean", entry->name));
        return ExitStatus::usage;
    }
    OpenedPreferences opened(terminal);
    if (!opened.areKnown()) return ExitStatus::incomplete;
    const ExitStatus status =
        opened.statusOf(TraceChoice(opened.defaults()).select(entry->id, kinds));
    if (status == ExitStatus::done) tellWhatIsLost(*entry, kinds, terminal);
    return status;
}

ExitStatus deselect(Terminal& terminal, const Options& options) {
    OpenedPreferences opened(terminal);
    if (!opened.areKnown()) return ExitStatus::incomplete;
    TraceChoice choice(opened.defaults());
    // What was chosen once can always be taken back, whoever describes it today.
    if (!choice.chosen().contains(options.application) &&
        loadedCatalogue(terminal).find(options.application) == nullptr) {
        terminal.complain(noSuchApplication(options.application));
        return ExitStatus::usage;
    }
    for (const std::string& kind : options.kinds) {
        if (std::ranges::find(catalogue::traceKinds, kind) == catalogue::traceKinds.end() &&
            !choice.isChosen(options.application, kind)) {
            terminal.complain(tr("there is no kind of traces \"{}\"", kind));
            return ExitStatus::usage;
        }
    }
    return opened.statusOf(choice.deselect(options.application, options.kinds));
}

}  // namespace

void addTracesCommand(CLI::App& program, Action& chosen) {
    auto options = std::make_shared<Options>();
    const auto acts = [&chosen, options](auto function) {
        return [&chosen, options, function] {
            if (!chosen) {
                chosen = [options, function](Terminal& terminal) {
                    return function(terminal, *options);
                };
            }
        };
    };
    const auto addListOptions = [&](CLI::App* command) {
        command->add_flag("--all", options->list.all, tr("Also what is not found in this home"));
        command->add_flag("--json", options->list.json, tr("Print one JSON document"));
        command->callback(acts([](Terminal& terminal, const Options& chosenOptions) {
            return listTraces(terminal, chosenOptions.list);
        }));
    };
    CLI::App* traces = program.add_subcommand(
        "traces", tr("List and choose the traces that applications have left"));
    traces->require_subcommand(0, 1)->fallthrough();
    addListOptions(traces);
    CLI::App* list = traces->add_subcommand(
        "list", tr("Print what is found, with sizes, [x] where chosen (also without a word)"));
    addListOptions(list->fallthrough());

    const auto addChoice = [&](const char* word, const std::string& description, auto function) {
        CLI::App* command = traces->add_subcommand(word, description);
        command->fallthrough()
            ->add_option("APP", options->application, tr("The application's ID"))
            ->required();
        command->add_option("KIND", options->kinds, tr("Kinds of traces: cache, history, ..."));
        command->callback(acts(function));
    };
    addChoice("select", tr("Have runs take these kinds too; without KIND the recommended ones"),
              select);
    addChoice("deselect", tr("Have runs leave these kinds; without KIND all of them"), deselect);

    CLI::App* checker = traces->add_subcommand("check", tr("Say what is wrong with a description"));
    checker->fallthrough()
        ->add_option("FILE", options->file, tr("The description, ID.toml"))
        ->required();
    checker->callback(acts([](Terminal& terminal, const Options& chosenOptions) {
        return check(terminal, chosenOptions.file);
    }));
}

}  // namespace dorvanel::terminal

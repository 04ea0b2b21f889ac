// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <algorithm>
#include <atomic>
#include <memory>
#include <optional>
#include <ostream>

#include "app/MachinesPlanning.h"
#include "app/ShredArguments.h"
#include "app/Texts.h"
#include "app/terminal/Commands.h"
#include "app/terminal/MediumText.h"
#include "app/terminal/OpenedPreferences.h"
#include "app/terminal/OutcomeText.h"
#include "app/terminal/Report.h"
#include "app/terminal/TerminalEngine.h"
#include "platform/CleaningCalls.h"
#include "platform/QuitSignals.h"
#include "run/MentionsOfItems.h"

namespace dorvanel::terminal {
namespace {

using Paths = std::vector<std::string>;
using Links = platform::SystemCalls::Links;
using Inside = ShredArguments::Inside;

struct Options {
    Paths paths;
    bool mentions = false;    ///< also what the desktop remembers of the files
    bool noMentions = false;  ///< not that, whatever the preferences say
    bool noFollow = false;    ///< what links lead to stays
    ReportOptions report;
};

/// Whether the plan tells of something for which a check of the folders may refuse an item.
bool tellsTrouble(const Plan& plan) {
    return !plan.skipped.empty() || std::ranges::any_of(plan.items, [](const PlanItem& item) {
        return item.moreNotes > 0 || std::ranges::any_of(item.notes, [](const PlanNote& note) {
                   return note.kind == PlanNote::Kind::unreadable;
               });
    });
}

/// One call of the command.
class Shred {
  public:
    Shred(Terminal& terminal, const Options& options)
        : options_(options), report_(terminal, options.report) {}

    ExitStatus run();

  private:
    bool check(Inside inside = Inside::checked);
    [[nodiscard]] bool wantsMentions(const PreferenceReader& preferences) const;
    void findMentions();
    Plan planOfItems();
    void planMentions(Plan& plan);
    ExitStatus preview();
    ExitStatus shred(const PreferenceReader& preferences);
    [[nodiscard]] bool isStopped() const { return stop_; }

    const Options& options_;
    Report report_;
    std::unique_ptr<platform::SystemCalls> system_ = platform::makeSystemCalls();
    std::unique_ptr<platform::CleaningCalls> cleaningCalls_ = platform::makeCleaningCalls();
    MachinesPlanning planning_;
    MentionsOfItems mentions_{{*system_, *cleaningCalls_, platform::systemClock()}};
    bool takesMentions_ = false;
    ShredArguments checked_;
    std::atomic<bool> stop_ = false;
};

ExitStatus Shred::run() {
    if (options_.report.preview) return preview();
    if (!check()) return ExitStatus::usage;
    OpenedPreferences opened(report_.words(), OpenedPreferences::Unreadable::stopsIt,
                             Saving::allowed);
    if (!opened.areKnown()) return ExitStatus::usage;
    takesMentions_ = wantsMentions(opened.preferences());
    return shred(opened.preferences());
}

/// Holds what is to be shredded. False, and every reason told, when some of it must not be touched.
bool Shred::check(Inside inside) {
    Terminal& words = report_.words();
    Result<ShredArguments> items = checkShredArguments(
        options_.paths, *system_, options_.noFollow ? Links::stay : Links::follow,
        [this] { return isStopped(); }, inside);
    // All that is wrong is told at once.
    if (items && inside == Inside::left && !items.value().complaints.empty()) return check();
    if (!items) {
        words.complain(items.error().message());
        return false;
    }
    for (const ShredArguments::Complaint& complaint : items.value().complaints) {
        words.complain(tr("\"{}\" {}", complaint.argument, complaint.reason));
    }
    checked_ = std::move(items.value());
    return checked_.complaints.empty();
}

bool Shred::wantsMentions(const PreferenceReader& preferences) const {
    return !options_.noMentions && (options_.mentions || preferences.boolForKey("ShredMentions"));
}

void Shred::findMentions() {
    if (!takesMentions_) return;
    mentions_.find(checked_.items, MentionsOfItems::Where::everywhere,
                   [this] { return isStopped(); });
}

Plan Shred::planOfItems() {
    return planOf(checked_.items,
                  planning_.parts(
                      *system_, [this] { return isStopped(); }, checked_.protectedFolders));
}

void Shred::planMentions(Plan& plan) {
    if (!takesMentions_) return;
    for (PlanItem& item : mentions_.planItems()) plan.items.push_back(std::move(item));
    for (PlanSkip& skip : mentions_.planSkips()) plan.skipped.push_back(std::move(skip));
}

ExitStatus Shred::preview() {
    // Where signals cannot be caught one ends this at once, which does no harm.
    const auto signals = platform::catchQuitSignals([this] { stop_ = true; });
    // The plan walks through all folders as the check would, which a large tree shows: they are
    // checked only where the plan met something.
    if (!check(Inside::left)) return ExitStatus::usage;
    Plan planned = planOfItems();
    if (!stop_ && tellsTrouble(planned) && !check()) return ExitStatus::usage;
    OpenedPreferences opened(report_.words(), OpenedPreferences::Unreadable::stopsIt,
                             Saving::never);
    if (!opened.areKnown()) return ExitStatus::usage;
    takesMentions_ = wantsMentions(opened.preferences());
    findMentions();
    planMentions(planned);
    return report_.preview(planned, stop_);
}

ExitStatus Shred::shred(const PreferenceReader& preferences) {
    Terminal& words = report_.words();
    MachinesUnfinished unfinished;
    TerminalEngine engine(words, *system_, preferences, unfinished);
    engine.access().setVerifies(options_.report.verifies);
    engine.access().protect(checked_.protectedFolders);
    const std::unique_ptr<platform::FreeSpace> freeSpace = platform::makeFreeSpace();
    Discarding discarding(*freeSpace);
    Plan planned;
    Outcome outcome;
    tellMedium(checked_.items, words);
    {
        const auto signals = platform::catchQuitSignals([this, &engine] {
            stop_ = true;
            engine.access().requestStop();
        });
        if (!signals) words.complain(tr("signals cannot be caught: one would end this midway"));
        findMentions();
        if (options_.report.json || options_.report.discards) {
            planned = planOfItems();
            planMentions(planned);
        }
        if (options_.report.discards) discarding.add(planned);
        engine.access().shredItems(checked_.items);
        outcome = engine.access().outcome();
        if (takesMentions_) mentions_.shred(engine.access(), outcome);
        engine.clearProgress();
        tellOutcome(outcome, words);
        if (options_.report.discards && !stop_) report_.tellDiscarded(discarding.discard());
    }
    if (options_.report.json) addOutcome(planned, outcome);
    return report_.end(planned, statusOf(outcome));
}

}  // namespace

void addShredCommand(CLI::App& program, Action& chosen) {
    auto options = std::make_shared<Options>();
    CLI::App* command = program.add_subcommand("shred", tr("Shred files and folders now"));
    command->fallthrough()
        ->add_option("PATH", options->paths,
                     tr("A file or a folder; after \"--\" it may begin with a dash"))
        ->required();
    addReportOptions(*command, options->report);
    addVerifyOption(*command, options->report);
    addDiscardOption(*command, options->report);
    command->add_flag("--no-follow", options->noFollow,
                      tr("Links go, and what they lead to stays as it is"));
    CLI::Option* mentions = command->add_flag(
        "--mentions", options->mentions,
        tr("Also thumbnails of the files, and their entries in lists of recent documents"));
    command
        ->add_flag("--no-mentions", options->noMentions,
                   tr("Not those, whatever ShredMentions says"))
        ->excludes(mentions);
    command->callback([&chosen, options] {
        chosen = [options](Terminal& terminal) { return Shred(terminal, *options).run(); };
    });
}

}  // namespace dorvanel::terminal

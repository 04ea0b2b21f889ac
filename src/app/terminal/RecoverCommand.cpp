// SPDX-License-Identifier: MIT
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <system_error>
#include <vector>

#include "app/MachinesUnfinished.h"
#include "app/ShredArguments.h"
#include "app/SizeText.h"
#include "app/Texts.h"
#include "app/terminal/Commands.h"
#include "app/terminal/MediumText.h"
#include "app/terminal/OpenedPreferences.h"
#include "app/terminal/OutcomeText.h"
#include "app/terminal/Report.h"
#include "app/terminal/TerminalAlertPanel.h"
#include "app/terminal/TerminalEngine.h"
#include "base/PathComponents.h"
#include "engine/ItemCount.h"
#include "platform/FolderLock.h"
#include "platform/QuitSignals.h"

namespace dorvanel::terminal {
namespace {

struct Options {
    std::vector<std::string> folders;
    bool yes = false;
    ReportOptions report;
};

constexpr const char* isAbsent = marked("the folder that holds it is not there now");

/// One call of the command.
class Recovery {
  public:
    Recovery(Terminal& terminal, const Options& options)
        : terminal_(terminal), options_(options), report_(terminal, options.report) {}

    ExitStatus run();

  private:
    bool resolveFolders();
    LeftFolders look();
    LeftFolders lookInFolders();
    Plan planOf(const LeftFolders& found);
    void tellPlan();
    void tellPassedOver(const LeftFolders& found);
    bool agreed(std::size_t count);
    ExitStatus finish(OpenedPreferences& opened, const std::vector<std::string>& paths);
    std::optional<platform::FolderLock> waitForOthers();
    void shred(LeftFolders& found, FileAccess& engine);
    void forgetFinished(LeftFolders& found);
    [[nodiscard]] static ExitStatus statusOf(const LeftFolders& found);

    Terminal& terminal_;
    const Options& options_;
    Report report_;
    std::unique_ptr<platform::SystemCalls> system_ = platform::makeSystemCalls();
    Plan plan_;                         ///< what was found
    std::vector<std::string> folders_;  ///< as absolute paths
    std::vector<Identity> protected_;
    MachinesUnfinished unfinished_;
    std::atomic<bool> isStopped_ = false;
};

ExitStatus Recovery::run() {
    const bool onlyLooks = options_.report.preview;
    if (!resolveFolders()) return ExitStatus::usage;
    OpenedPreferences opened(report_.words(), OpenedPreferences::Unreadable::stopsIt,
                             onlyLooks ? Saving::never : Saving::allowed);
    if (!opened.areKnown()) return ExitStatus::usage;
    Result<ShredArguments> checked = checkShredArguments({}, *system_);
    if (!checked) {
        terminal_.complain(checked.error().message());
        return ExitStatus::usage;
    }
    protected_ = std::move(checked.value().protectedFolders);

    std::vector<std::string> paths;
    {
        // Not locked while somebody thinks about it.
        const LeftFolders found = look();
        plan_ = planOf(found);
        tellPlan();
        tellPassedOver(found);
        for (const LeftFolder& left : found.folders) paths.push_back(left.item.path);
        if (onlyLooks) return report_.looked(plan_, statusOf(found));
        if (paths.empty() && found.spent.empty()) {
            return report_.end(plan_, statusOf(found));
        }
    }
    const ExitStatus status = finish(opened, paths);
    return report_.end(plan_, status);
}

bool Recovery::resolveFolders() {
    for (const std::string& argument : options_.folders) {
        const std::string trimmed(withoutTrailingSlashes(argument));
        std::error_code error;
        // A link is taken at its word only on the way.
        const std::filesystem::path absolute = std::filesystem::absolute(trimmed, error);
        const std::filesystem::path name = absolute.filename();
        const bool isDots = name == "." || name == "..";
        std::filesystem::path real;
        if (!error && (isDots || absolute == absolute.root_path())) {
            real = std::filesystem::canonical(absolute, error);
        } else if (!error) {
            real = std::filesystem::canonical(absolute.parent_path(), error) / name;
        }
        platform::FileStatus status;
        int code = error.value();
        if (argument.empty()) code = ENOENT;
        if (code == 0) {
            code = -system_->statusAt(platform::SystemCalls::workingFolder, real.c_str(),
                                      platform::SystemCalls::Links::stay, status);
        }
        if (code == 0 && status.kind != platform::EntryKind::folder) code = ENOTDIR;
        if (code != 0) {
            const std::string why = std::generic_category().message(code);
            terminal_.complain(code == ENOENT
                                   ? tr("\"{}\" does not exist", argument)
                                   : tr("\"{}\" cannot be looked through: {}", argument, why));
            return false;
        }
        folders_.push_back(real);
    }
    return true;
}

LeftFolders Recovery::look() {
    if (!folders_.empty()) return lookInFolders();
    LeftFolders found;
    if (const Result<Done> listed = unfinished_.find(found); !listed) {
        const Error& error = listed.error();
        found.skipped.push_back(
            {error.path,
             {},
             PlanSkip::Reason::unreadable,
             error.detail.empty() ? std::generic_category().message(error.code) : error.detail});
    }
    return found;
}

LeftFolders Recovery::lookInFolders() {
    LeftFolders found;
    for (const std::string& folder : folders_) findLeftFolders(*system_, folder, found);
    // Afterwards: whoever makes a holding folder has written it down by then. A list that cannot be
    // read keeps nobody from what is asked for by its place.
    LeftFolders listed;
    static_cast<void>(unfinished_.find(listed));
    std::vector<LeftFolder> met = std::move(found.folders);
    found.folders.clear();
    for (LeftFolder& left : met) {
        const auto isIt = [&](const LeftFolder& other) {
            return other.item.status.isSameAs(left.item.status);
        };
        if (std::ranges::any_of(found.folders, isIt)) continue;  // it lies in two of the folders
        if (std::ranges::find(listed.inWork, Identity::of(left.item.status)) !=
            listed.inWork.end()) {
            found.skipped.push_back({left.item.path, {}, PlanSkip::Reason::running, {}});
            continue;
        }
        const auto written = std::ranges::find_if(listed.folders, isIt);
        if (written != listed.folders.end()) left.files = std::move(written->files);
        found.folders.push_back(std::move(left));
    }
    return found;
}

Plan Recovery::planOf(const LeftFolders& found) {
    Plan plan;
    for (const LeftFolder& left : found.folders) {
        const ItemCount count = countItem(*system_, left.item.path);
        PlanItem& item = plan.items.emplace_back();
        item.path = left.item.path;
        item.files = count.files;
        item.folders = count.folders;
        item.bytes = count.bytes;
        for (const ItemCount::Unread& unread : count.unread) {
            if (item.notes.size() == Plan::mostNotes) {
                ++item.moreNotes;
                continue;
            }
            PlanNote& note = item.notes.emplace_back();
            note.kind = PlanNote::Kind::unreadable;
            note.path = unread.path;
            note.detail = std::generic_category().message(unread.code);
        }
    }
    plan.skipped = found.skipped;
    for (const std::string& path : found.absent) {
        plan.skipped.push_back({path, {}, PlanSkip::Reason::unreadable, tr(isAbsent)});
    }
    return plan;
}

void Recovery::tellPlan() {
    for (const PlanItem& item : plan_.items) {
        report_.words().out << report_.words().forOut(
                                   fmt::format("{}: {}, {}, {}", item.path,
                                               trn("{} file", "{} files", item.files),
                                               trn("{} folder", "{} folders", item.folders),
                                               sizeText(item.bytes)))
                            << '\n';
    }
    if (plan_.items.empty()) report_.words().out << tr("No holding folders are left.") << '\n';
    report_.words().out << std::flush;
}

void Recovery::tellPassedOver(const LeftFolders& found) {
    for (const PlanSkip& skip : found.skipped) {
        const bool isRunning = skip.reason == PlanSkip::Reason::running;
        terminal_.complain(tr("{}: passed over: {}", skip.path,
                              isRunning ? tr("another process works on it") : skip.detail));
    }
    for (const std::string& path : found.absent) {
        terminal_.complain(tr("{}: kept for later: {}", path, tr(isAbsent)));
    }
}

ExitStatus Recovery::statusOf(const LeftFolders& found) {
    const bool leavesSomething = std::ranges::any_of(found.skipped, [](const PlanSkip& skip) {
        return skip.reason != PlanSkip::Reason::running;
    });
    return leavesSomething || !found.absent.empty() ? ExitStatus::incomplete : ExitStatus::done;
}

bool Recovery::agreed(std::size_t count) {
    if (count == 0) return true;  // nothing but files of holding folders that are gone
    TerminalAlertPanel alerts(
        terminal_.in, terminal_.err,
        options_.yes ? TerminalAlertPanel::Answers::assumed : TerminalAlertPanel::Answers::asked);
    const std::string message =
        "Are you sure you want to shred what is in " + counted(count, "holding folder") + " ?";
    return alerts.runAlertPanel("Dorvanel Recovery", message, "No", "Yes", "") !=
           ui::AlertButton::defaultButton;
}

/// `paths`: what was shown.
ExitStatus Recovery::finish(OpenedPreferences& opened, const std::vector<std::string>& paths) {
    TerminalEngine engine(report_.words(), *system_, opened.preferences(), unfinished_);
    engine.access().protect(protected_);
    LeftFolders found;
    {
        const auto signals = platform::catchQuitSignals([this, &engine] {
            isStopped_ = true;
            engine.access().requestStop();
            terminal_.in.interrupt();
        });
        if (!signals) {
            terminal_.complain(tr("signals cannot be caught: one would end this midway"));
        }
        const bool isAgreed = agreed(paths.size());
        if (isStopped_) return ExitStatus::interrupted;
        if (!isAgreed) return ExitStatus::cancelled;
        const std::optional<platform::FolderLock> lock = waitForOthers();
        if (isStopped_) return ExitStatus::interrupted;
        // What was shown may have been finished meanwhile, and only what was shown was agreed to.
        found = look();
        std::erase_if(found.folders, [&](const LeftFolder& left) {
            return std::ranges::find(paths, left.item.path) == paths.end();
        });
        shred(found, engine.access());
    }
    engine.clearProgress();
    if (paths.empty()) return statusOf(found);
    const Outcome& outcome = engine.access().outcome();
    addOutcome(plan_, outcome);
    tellOutcome(outcome, report_.words());
    const ExitStatus status = terminal::statusOf(outcome);
    return status == ExitStatus::done ? statusOf(found) : status;
}

/// One recovery at a time: a second one goes on with what the first has left. None where nothing
/// can be written down: then nothing is locked either.
std::optional<platform::FolderLock> Recovery::waitForOthers() {
    constexpr std::chrono::milliseconds pause(50);
    if (!unfinished_.folder().openOrMake()) return std::nullopt;
    while (!isStopped_) {
        auto lock = platform::FolderLock::takeIfFree(unfinished_.folder().path());
        if (!lock) return std::nullopt;
        if (lock.value()) return std::move(lock.value());
        platform::systemClock().usleep(pause);
    }
    return std::nullopt;
}

void Recovery::shred(LeftFolders& found, FileAccess& engine) {
    std::vector<HeldItem> items;
    for (LeftFolder& left : found.folders) {
        items.push_back(left.item);
        // On some file systems a folder that is held stays busy once it is gone.
        left.item.item.reset();
        left.item.parent.reset();
    }
    if (!items.empty()) {
        tellMedium(items, report_.words());
        engine.shredItems(items);
    }
    forgetFinished(found);
}

/// Shreds the files of those holding folders that are gone.
void Recovery::forgetFinished(LeftFolders& found) {
    for (LeftFolder& left : found.folders) {
        platform::FileStatus status;
        const int result =
            system_->statusAt(platform::SystemCalls::workingFolder, left.item.path.c_str(),
                              platform::SystemCalls::Links::stay, status);
        const bool isGone =
            result == -ENOENT || (result >= 0 && !status.isSameAs(left.item.status));
        if (isGone) std::ranges::move(left.files, std::back_inserter(found.spent));
    }
    unfinished_.folder().shred(found.spent);
}

}  // namespace

void addRecoverCommand(CLI::App& program, Action& chosen) {
    auto options = std::make_shared<Options>();
    CLI::App* command = program.add_subcommand(
        "recover", tr("Finish what a shredding that was cut off has left: its holding folders"));
    command->fallthrough();
    command->add_option("FOLDER", options->folders,
                        tr("Look for holding folders in here, in place of those that are known"));
    addReportOptions(*command, options->report);
    command->add_flag("--yes", options->yes, tr("Answer \"Yes\" without asking"));
    command->callback([&chosen, options] {
        chosen = [options](Terminal& terminal) { return Recovery(terminal, *options).run(); };
    });
}

}  // namespace dorvanel::terminal

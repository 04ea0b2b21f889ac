// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <atomic>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/MachinesPlanning.h"
#include "app/Texts.h"
#include "app/terminal/Commands.h"
#include "app/terminal/MachineServices.h"
#include "app/terminal/Report.h"
#include "app/terminal/RunReportText.h"
#include "engine/FileAccess.h"
#include "platform/QuitSignals.h"
#include "run/RunPlan.h"
#include "run/ShreddingRun.h"

namespace dorvanel::terminal {
namespace {

struct Options {
    std::string then;
    bool yes = false;
    ReportOptions report;
};

const std::map<std::string, void (Controller::*)()>& endings() {
    static const std::map<std::string, void (Controller::*)()> actions = {
        {"", &Controller::shredAndNothing},
        {"logout", &Controller::shredAndLogout},
        {"shutdown", &Controller::shredAndShutdown},
        {"restart", &Controller::shredAndRestart},
    };
    return actions;
}

/// One call of the command.
class Run {
  public:
    Run(Terminal& terminal, const Options& options)
        : options_(options), report_(terminal, options.report) {}

    ExitStatus run();

  private:
    [[nodiscard]] TerminalAlertPanel::Answers answers() const;
    ExitStatus end(ExitStatus status) { return report_.end({}, status); }
    ExitStatus preview(TerminalSession& session, SessionServices services);
    ExitStatus shred(TerminalSession& session, SessionServices services, OpenedPreferences& opened);
    void prepare(Controller& controller, platform::SystemCalls& system);

    const Options& options_;
    Report report_;
    MachinesPlanning planning_;
    std::unique_ptr<platform::FreeSpace> freeSpace_ = platform::makeFreeSpace();
    Discarding discarding_{*freeSpace_};
    std::vector<DiscardedSpace> discarded_;
};

TerminalAlertPanel::Answers Run::answers() const {
    using Answers = TerminalAlertPanel::Answers;
    if (options_.report.preview) return Answers::silent;
    return options_.yes ? Answers::assumed : Answers::asked;
}

ExitStatus Run::run() {
    const bool onlyLooks = options_.report.preview;
    OpenedPreferences opened(report_.words(), OpenedPreferences::Unreadable::stopsIt,
                             onlyLooks ? Saving::never : Saving::allowed);
    if (!opened.preferences().areKnown()) return end(ExitStatus::notInitiated);
    // Its loop is never entered: no timer.
    const auto machine = MachineServices::make(report_.words());
    if (machine == nullptr) return end(ExitStatus::notInitiated);
    UnseenLabel status;
    TerminalSession session(report_.words(), opened, machine->services(), answers(), status);
    return onlyLooks ? preview(session, machine->services())
                     : shred(session, machine->services(), opened);
}

ExitStatus Run::preview(TerminalSession& session, SessionServices services) {
    std::atomic<bool> stop = false;
    const auto signals = platform::catchQuitSignals([&stop] { stop = true; });
    const auto plan = session.controller().previewRun(
        !options_.then.empty(), planning_.parts(services.system, [&] { return stop.load(); }));
    return report_.preview(plan.value_or(Plan()), stop);
}

/// Has the run keep its plan where somebody will ask for it.
void Run::prepare(Controller& controller, platform::SystemCalls& system) {
    FileAccess& engine = controller.fileAccessInstance();
    engine.setVerifies(options_.report.verifies);
    if (!options_.report.json && !options_.report.discards) return;
    controller.run().keepPlans([this, &engine, &system](const std::vector<RunItem>& items) {
        Plan plan =
            planOfRun(items, planning_.parts(system, [&engine] { return engine.stopRequested(); }));
        if (options_.report.discards) discarding_.add(plan);
        return plan;
    });
    if (!options_.report.discards) return;
    controller.run().onceShredded([this] { discarded_ = discarding_.discard(); });
}

ExitStatus Run::shred(TerminalSession& session, SessionServices services,
                      OpenedPreferences& opened) {
    Terminal& words = report_.words();
    Controller& controller = session.controller();
    prepare(controller, services.system);
    RunReport report;
    report.result = RunResult::givenUp;  // where a signal comes before the run begins
    session.onRunEnded = [&report](const RunReport& ended) { report = ended; };
    {
        const auto signals = platform::catchQuitSignals([&session, &controller] {
            controller.fileAccessInstance().requestStop();
            session.requestQuit();
        });
        if (!signals) {
            words.complain(tr("signals cannot be caught: out of threads or descriptors"));
            return end(ExitStatus::notInitiated);
        }
        controller.applicationDidFinishLaunching();
        if (!controller.isQuitting()) (controller.*endings().at(options_.then))();
        controller.run().waitForWorker();
    }
    session.clearProgress();
    session.tellPendingReports();
    controller.applicationShouldTerminate();
    const ExitStatus saved = opened.statusOf(controller.applicationWillTerminate());

    tellReport(report, opened.preferences().boolForKey("ActivityLog"), words);
    report_.tellDiscarded(discarded_);
    const ExitStatus result = statusOf(report);
    return report_.end(report.plan, result == ExitStatus::done ? saved : result);
}

}  // namespace

void addRunCommand(CLI::App& program, Action& chosen) {
    auto options = std::make_shared<Options>();
    CLI::App* command =
        program.add_subcommand("run", tr("Shred the traces that the preferences select"));
    command->fallthrough();
    command->add_option("--then", options->then, tr("End with this"))
        ->type_name("logout|shutdown|restart")
        ->check(CLI::IsMember({"logout", "shutdown", "restart"}));
    command->add_flag("--yes", options->yes, tr("Answer \"Yes\" and \"OK\" without asking"));
    addReportOptions(*command, options->report);
    addVerifyOption(*command, options->report);
    addDiscardOption(*command, options->report);
    command->callback([&chosen, options] {
        chosen = [options](Terminal& terminal) { return Run(terminal, *options).run(); };
    });
}

}  // namespace dorvanel::terminal

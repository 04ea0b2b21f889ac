// SPDX-License-Identifier: MIT
#include "app/RunLook.h"

#include "apps/Applications.h"
#include "log/ActivityLog.h"
#include "run/RunPreview.h"
#include "run/TraceCollection.h"
#include "targets/traces/FoundTraces.h"
#include "watch/BrowserWatch.h"
#include "watch/RunningApplications.h"

namespace dorvanel {
namespace {

class UnseenLabel final : public ui::TextField {
    void setStringValue(std::string_view) override {}
    void setTextColor(ui::Color) override {}
    void display() override {}
};

class NoLoop final : public ui::RunLoop {
    std::shared_ptr<ui::Timer> scheduleRepeatingTimer(std::chrono::milliseconds, Fire) override {
        return nullptr;
    }
    void run() override {}
    void stop() override {}
    void performOnMainThread(std::function<void()>) override {}
};

class NoSound final : public platform::SystemSound {
    void beep() override {}
};

class NoRun final : public BrowserWatchOwner {
    void shredAndNothing() override {}
};

/// A watch that only says what runs: nobody sees its labels, and no timer drives it.
class UnseenWatch {
  public:
    UnseenWatch(PreferenceReader& preferences, platform::ProcessListing& listing)
        : watch_({.preferencesInstance = preferences,
                  .listing = listing,
                  .runLoop = loop_,
                  .sound = sound_},
                 outlets(), run_) {}
    BrowserWatch& watch() { return watch_; }

  private:
    BrowserWatchOutlets outlets() {
        BrowserWatchOutlets outlets;
        outlets.browserWatchStatusTextbox = &label_;
        for (const SupportedApplication& application : applications) {
            outlets.*application.label = &label_;
        }
        return outlets;
    }

    UnseenLabel label_;
    NoLoop loop_;
    NoSound sound_;
    NoRun run_;
    BrowserWatch watch_;
};

std::map<std::string, std::string> namesIn(const Plan& plan, const LookServices& services) {
    std::map<std::string, std::string> names;
    for (const PlanItem& item : plan.items) names.try_emplace(item.application);
    for (const PlanSkip& skip : plan.skipped) names.try_emplace(skip.application);
    names.erase("");
    if (names.empty()) return names;
    const auto catalogue = catalogue::Catalogue::load(services.folders(), services.files);
    for (auto& [id, name] : names) {
        const SupportedApplication* application = applicationNamed(id);
        const catalogue::Entry* entry = catalogue.find(id);
        name = application != nullptr ? std::string(application->shownName())
               : entry != nullptr     ? entry->name
                                      : id;
    }
    return names;
}

}  // namespace

LookedAtRun lookAtRun(const RunChoice& choice, LookServices& services, LookDepth depth,
                      const std::function<bool()>& stop) {
    const LogSilence silence;
    ChosenPreferences preferences(choice);
    ChosenDefaults defaults(choice);
    UnseenWatch watch(preferences, *services.listing);
    RunningApplications running(*services.programs, *services.locks,
                                [&services](const catalogue::Entry& entry) {
                                    return traces::findLocks(entry, *services.system);
                                });
    TraceCollection traces({.system = *services.system,
                            .cleaningCalls = *services.cleaningCalls,
                            .clock = services.clock,
                            .files = services.files,
                            .defaults = defaults,
                            .running = running,
                            .folders = services.folders});
    RunPreview preview({.preferencesInstance = preferences,
                        .browserWatch = watch.watch(),
                        .files = services.files,
                        .defaults = defaults,
                        .clock = services.clock,
                        .traces = traces});
    LookedAtRun looked;
    looked.plan = preview.plan(choice.withQuicktime,
                               depth == LookDepth::notes
                                   ? services.planning.parts(*services.system, stop)
                                   : ItemPlanner::Parts{.system = *services.system, .stop = stop});
    looked.names = namesIn(looked.plan, services);
    return looked;
}

}  // namespace dorvanel

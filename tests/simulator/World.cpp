// SPDX-License-Identifier: MIT
#include "simulator/World.h"

#include <filesystem>

#include "log/ActivityLog.h"
#include "prefs/PropertyListDefaults.h"
#include "support/LogCapture.h"

namespace dorvanel::simulator {

using test::writeFile;
using ui::AlertButton;

namespace {

constexpr const char* safariCommand = "/Applications/Safari.app/Contents/MacOS/Safari";
constexpr std::array<BoolKey, 4> switches = {"BrowserWatch", "ConfirmShredding", "ShredCache",
                                             "ShredHistory"};

void set(Preferences& preferences, BoolKey key, bool on) {
    preferences.displayedValues.insert_or_assign(key, Number::fromBool(on));
    static_cast<void>(preferences.commitDisplayedValues());
}

}  // namespace

World::World(const Sequence& sequence) : sequence_(sequence) {
    judge_.safariTraces = home_ / "Library/Caches/Safari";
    setUpHome();
    clock_.step = std::chrono::microseconds(1);
    system_.inMemory = 0;  // flushes are asked for, wherever the home lies
    worker_.onStart = [this] {
        judge_.workerStarts(worker_.isWorking(), threadIsThere_);
        return threadIsThere_;
    };
    worker_.onEnd = [this] { workerEnded(); };
    system_.before = [this](const std::string& operation, const std::string&) {
        judge_.touchesDisk(operation, worker_.isCaller());
        if (worker_.isCaller()) worker_.pause();
    };
    makeProgram();
}

World::~World() {
    worker_.wait();
    // The worker reports to the program as long as it lives.
    controller_.reset();
    session_.reset();
    kalvet_logger_close();
}

void World::setUpHome() {
    writeFile(home_ / "Documents/kept", "kept");
    writeFile(home_ / "Library/Caches/Safari/page", "secret");
    writeFile(home_ / "handed over", "secret");
    if (sequence_.scene.severalProfiles) {
        writeFile(home_ / "Library/Mozilla/Profiles/one/x");
        writeFile(home_ / "Library/Mozilla/Profiles/two/x");
    }
    const Scene& scene = sequence_.scene;
    if (!scene.preferencesKnown) {
        writeFile(userDefaultsPath(), "damaged");
    }
    opened_ = std::make_unique<terminal::OpenedPreferences>(terminal_);
    if (!scene.preferencesKnown) return;
    set(opened_->preferences(), "BrowserWatch", scene.watches);
    set(opened_->preferences(), "ConfirmShredding", scene.asks);
    set(opened_->preferences(), "ActivityLog", scene.logs);
}

void World::makeProgram() {
    if (!isWindow()) {
        session_ = std::make_unique<terminal::TerminalSession>(
            terminal_, *opened_,
            terminal::SessionServices{.system = system_,
                                      .clock = clock_,
                                      .runLoop = loop_,
                                      .listing = *this,
                                      .processes = processes_,
                                      .events = *this,
                                      .quitWait = *this,
                                      .worker = worker_,
                                      .today = today_.services()},
            terminal::TerminalAlertPanel::Answers::asked, status_);
        session_->onRunEnded = [this](const RunReport& report) { judge_.runEnded(report); };
        return;
    }
    mainMenu_.addItemWithTitle("Profiles", {}, "").makeSubmenu();
    controller_ = std::make_unique<Controller>(ControllerParts{
        .system = system_,
        .clock = clock_,
        .draws = *draws_,
        .files = platform::defaultFileManager(),
        .defaults = opened_->defaults(),
        .preferencesInstance = opened_->preferences(),
        .runLoop = loop_,
        .listing = *this,
        .processes = processes_,
        .events = *this,
        .quitWait = *this,
        .worker = worker_,
        .sound = sound_,
        .today = today_.services(),
        .bundle = bundle_,
        .alertPanel = *this,
        .application = *this,
        .workspace = workspace_,
        .myWindow = window_,
        .mainMenu = mainMenu_,
        .shreddingProgress = progress_,
        .fileName = fileName_,
        .watchOutlets = outlets(),
        .observer = *this,
    });
}

BrowserWatchOutlets World::outlets() {
    BrowserWatchOutlets outlets;
    outlets.browserWatchStatusTextbox = &status_;
    for (std::size_t i = 0; i < applicationCount; ++i) outlets.*applications[i].label = &labels_[i];
    return outlets;
}

Findings World::live() {
    judge_.launched(sequence_.scene.preferencesKnown);
    controller().applicationDidFinishLaunching();
    do {
        judge_.mainLoopRests();
        if (!hasEnded()) loop_.advance({});
    } while (!hasEnded() && happen(Moment::mainLoop));
    drain();
    const bool kept = test::readFile(home_ / "Documents/kept") == "kept";
    judge_.lifeOver(controller().run(), hasEnded(), kept);
    return judge_.findings;
}

/// Nothing more happens but what is under way: the worker ends, the loop comes round.
void World::drain() {
    at_ = sequence_.events.size();
    loop_.advance({});
    worker_.wait();
    loop_.advance({});
    if (session_ != nullptr) session_->tellPendingReports();
}

std::optional<Event> World::next() {
    if (at_ == sequence_.events.size()) return std::nullopt;
    return sequence_.events[at_++];
}

bool World::happen(Moment moment) {
    const std::optional<Event> event = next();
    if (!event) return false;
    ++depth_;
    perform(*event, moment);
    --depth_;
    return true;
}

void World::perform(const Event& event, Moment moment) {
    // In a terminal nobody can ask for anything while the main thread waits.
    const bool canRequest = moment == Moment::mainLoop || (isWindow() && moment != Moment::blocked);
    switch (event.kind) {
        case Kind::shredAndNothing:
        case Kind::shredAndLogout:
        case Kind::shredAndShutdown:
        case Kind::shredAndRestart:
        case Kind::shredFiles:
            if (canRequest && depth_ < 6 && !hasEnded()) request(event);
            break;
        case Kind::quit:
            if (!canRequest || !isWindow()) break;
            judge_.quitAsked();
            terminate();
            break;
        case Kind::signal:
            signal();
            break;
        case Kind::workerSteps:
            for (int i = event.argument % 16; i >= 0; --i) worker_.step();
            if (canRequest && moment != Moment::mainLoop) loop_.performPosted();
            break;
        case Kind::time:
            pass(std::chrono::seconds(event.argument % 12), moment);
            break;
        case Kind::safariStarts:
            if (!safariRuns_) processes_.add("Safari", "APPL", "sfri");
            safariRuns_ = true;
            break;
        case Kind::safariEnds:
            processes_.processes.clear();
            safariRuns_ = false;
            break;
        case Kind::safariRefuses:
            safariRefuses_ = event.argument % 2 != 0;
            break;
        case Kind::listing:
            listing_.fails = event.argument % 4 == 0;
            listing_.isCutOff = event.argument % 4 == 1;
            break;
        case Kind::preference:
            if (canRequest) turn(event.argument);
            break;
        case Kind::diskFails: {
            const auto& operations = test::FaultySystemCalls::operations();
            system_.failOnce(operations[event.argument % operations.size()], 1, 5 /* EIO */);
            break;
        }
        case Kind::noThread:
            threadIsThere_ = event.argument % 2 != 0;
            break;
        case Kind::cacheComesBack:
            writeFile(home_ / "Library/Caches/Safari/page", "secret");
            writeFile(home_ / "handed over", "secret");
            break;
        case Kind::startAfresh:
            if (!canRequest || opened_->areKnown()) break;
            if (opened_->preferences().startAfresh()) judge_.preferencesStartedAfresh();
            break;
        case Kind::answer:
            break;  // no question is open
    }
}

void World::request(const Event& event) {
    // What comes while something is at work has to be refused, and asks for nothing.
    const bool isFree = !controller().isBusy();
    if (isFree) judge_.mainLoopRests();  // also behind an alert that is no run's
    const auto ask = [&](std::int16_t ending, void (Controller::*action)()) {
        if (isFree) judge_.requested(ending);
        (controller().*action)();
    };
    switch (event.kind) {
        case Kind::shredAndLogout:
            return ask(ShreddingRun::logout, &Controller::shredAndLogout);
        case Kind::shredAndShutdown:
            return ask(ShreddingRun::shutdown, &Controller::shredAndShutdown);
        case Kind::shredAndRestart:
            return ask(ShreddingRun::restart, &Controller::shredAndRestart);
        case Kind::shredFiles:
            if (isFree) judge_.requested(std::nullopt);
            controller().shredFiles(holdAll(system_, {home_ / "handed over"}));
            return;
        default:
            return ask(ShreddingRun::nothing, &Controller::shredAndNothing);
    }
}

void World::pass(std::chrono::seconds time, Moment moment) {
    if (moment == Moment::mainLoop) {
        loop_.advance(time);
    } else {
        clock_.advance(time);
    }
}

void World::turn(std::uint8_t which) {
    Preferences& preferences = opened_->preferences();
    const BoolKey key = switches[which % switches.size()];
    set(preferences, key, !preferences.boolForKey(key));
}

/// As the handler's thread does it in each program: at once, whatever the main thread is at.
void World::signal() {
    judge_.quitAsked();
    if (!isWindow()) {
        if (++signals_ > 1) {
            judge_.stopAsked();
            controller().fileAccessInstance().requestStop();
        }
        return session_->requestQuit();
    }
    controller().giveUp();
    loop_.performOnMainThread([this] { terminate(); });
}

AlertButton World::runAlertPanel(const std::string&, const std::string&, const std::string&,
                                 const std::string& alternateButton, const std::string&) {
    while (!hasEnded()) {
        const std::optional<Event> event = next();
        if (!event) break;
        if (event->kind == Kind::answer) {
            const bool agrees = event->argument % 2 != 0 && !alternateButton.empty();
            judge_.answered(agrees);
            return agrees ? AlertButton::alternateButton : AlertButton::defaultButton;
        }
        ++depth_;
        perform(*event, Moment::alert);
        --depth_;
        loop_.performPosted();
    }
    judge_.answered(false);
    return AlertButton::defaultButton;
}

platform::AnswerInput::Read World::readLine(std::string& line) {
    line.clear();
    while (!interrupted_) {
        const std::optional<Event> event = next();
        if (!event) {
            judge_.answered(false);
            return Read::end;
        }
        if (event->kind == Kind::answer) {
            judge_.goesOnWaiting("a question waits for its answer");
            const bool agrees = event->argument % 2 != 0;
            judge_.answered(agrees);
            const bool isAboutQuitting = err_.view().ends_with("[Cancel] OK: ");
            line = isAboutQuitting ? (agrees ? "ok" : "cancel") : (agrees ? "yes" : "no");
            return Read::line;
        }
        perform(*event, Moment::blocked);
    }
    return Read::interrupted;
}

bool World::wait(std::chrono::microseconds time) {
    if (!safariRefuses_ && !processes_.quits.empty()) {
        processes_.processes.clear();
        safariRuns_ = false;
    }
    if (!waitCancelled_) {
        happen(isWindow() ? Moment::waiting : Moment::blocked);
        if (isWindow()) loop_.performPosted();
    }
    if (!waitCancelled_) judge_.goesOnWaiting("applications are waited for");
    clock_.advance(time);
    return !waitCancelled_;
}

std::unique_ptr<platform::CommandOutput> World::open(const std::string& command) {
    happen(Moment::blocked);
    listing_.show(safariRuns_ ? std::vector<std::string>{safariCommand}
                              : std::vector<std::string>{});
    judge_.listed(!listing_.fails && !listing_.isCutOff, safariRuns_);
    return listing_.open(command);
}

void World::terminate() {
    if (ended_ || deferred_) return;
    if (controller().applicationShouldTerminate() == ui::TerminateReply::now) return end();
    deferred_ = true;
}

void World::replyToApplicationShouldTerminate(bool shouldTerminate) {
    if (!shouldTerminate) return;
    if (!worker_.isCaller()) return end();
    loop_.performOnMainThread([this] { end(); });
}

void World::end() {
    if (ended_) return;
    ended_ = true;
    static_cast<void>(controller().applicationWillTerminate());
}

OSErr World::send(FourCharCode event) {
    judge_.sends(event, worker_.isCaller());
    return noErr;
}

void World::workerEnded() {
    std::optional<std::string> lastLine;
    if (opened_->preferences().boolForKey("ActivityLog")) {
        const std::vector<std::string> log = test::LogCapture::linesNow();
        lastLine = log.empty() ? std::string() : log.back();
    }
    judge_.workerEnded(controller().fileAccessInstance().outcome().stopped, lastLine);
}

}  // namespace dorvanel::simulator

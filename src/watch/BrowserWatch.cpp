// SPDX-License-Identifier: MIT
#include "watch/BrowserWatch.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>

#include "log/ActivityLog.h"
#include "watch/ListedApplication.h"

namespace dorvanel {
namespace {

using ui::Color;

constexpr std::string_view kWaiting = "Enabled and waiting for the first timer event to occur...";
constexpr std::string_view kNotEnabled = "Not enabled. Use preferences to enable...";
constexpr std::string_view kRunning = "A supported browser or email application is running...";
constexpr std::string_view kHaveQuit = "All supported browser or email application have quit...";
constexpr std::string_view kNoneRunning = "No supported applications are running...";

}  // namespace

BrowserWatch::BrowserWatch(BrowserWatchServices services, const BrowserWatchOutlets& outlets,
                           BrowserWatchOwner& owner)
    : services_(services), outlets_(outlets), owner_(owner) {}

BrowserWatch::~BrowserWatch() {
    if (mTimer != nullptr) mTimer->invalidate();
    invalidateTimer();
}

void BrowserWatch::scheduleTimer() {
    mTimer = services_.runLoop.scheduleRepeatingTimer(
        kPollInterval, [this](ui::Timer& timer) { HandleTimer(&timer); });
}

void BrowserWatch::setInitialState() {
    browserWatchWasRunning = 0;
    if (services_.preferencesInstance.boolForKey("BrowserWatch")) {
        startWatching();
    } else {
        invalidateTimer();
        showNotEnabled();
        disableProcessDisplay();
    }
}

void BrowserWatch::resetRunningRecords() {
    mIsRunning = {};
    // By bytes: each flag becomes 0x01010101, which is not 1, and so counts as not set.
    static_assert(std::is_trivially_copyable_v<bw_typedef>);
    std::memset(static_cast<void*>(&mWasRunning), 1, sizeof mWasRunning);
}

void BrowserWatch::HandleTimer(ui::Timer*) {
    const bool wanted = services_.preferencesInstance.boolForKey("BrowserWatch");
    if (wanted && !isWatching()) {
        startWatching();
    } else if (!wanted && isWatching()) {
        invalidateTimer();
        showNotEnabled();
        disableProcessDisplay();
    }
}

void BrowserWatch::HandleBrowserWatchTimer(ui::Timer* sender) {
    const std::string command =
        fmt::format("ps -w -w -o command -U {}", services_.listing.userName());
    const std::int16_t found = CheckStatus(command, testStrings());
    checkEnabled();
    if (!known_) return;  // the texts say what the latest look found, and there was none
    if (found == 1) {
        showStatus(kRunning);
        browserWatchWasRunning = 1;
    } else if (browserWatchWasRunning != 1) {
        showStatus(kNoneRunning);
    } else {
        showStatus(kHaveQuit);
        browserWatchWasRunning = 0;
    }
    if (!haveQuit().empty() && sender != nullptr) owner_.shredAndNothing();
}

std::int16_t BrowserWatch::CheckStatus(const std::string& command,
                                       const std::vector<std::string_view>& aTestStrings) {
    kalvet_debugger_open();
    const std::optional<bw_typedef> found = listed(command, aTestStrings);
    kalvet_debugger_close();
    known_ = found.has_value();
    if (!found) return 0;
    mWasRunning = mIsRunning;
    mIsRunning = *found;
    std::int16_t result = 0;
    for (const SupportedApplication& application : applications) {
        const bool runs = mIsRunning.*application.flag != 0;
        setColor(application, runs ? Color::red : Color::green);
        if (runs) result = 1;
    }
    return result;
}

/// The applications that the listing names; nothing where it is not whole.
std::optional<bw_typedef> BrowserWatch::listed(const std::string& command,
                                               const std::vector<std::string_view>& aTestStrings) {
    kalvet_debugger(command);
    std::unique_ptr<platform::CommandOutput> output = services_.listing.open(command);
    if (output == nullptr) {
        services_.sound.beep();
        return std::nullopt;
    }
    const std::string header = output->readLine();
    kalvet_debugger(header);
    bw_typedef found{};
    while (!output->atEnd()) {
        const std::string line = output->readLine();
        kalvet_debugger(line);
        const std::size_t index = applicationNamedIn(line, aTestStrings);
        if (index >= std::min(aTestStrings.size(), applicationCount)) continue;
        found.*applications[index].flag = 1;
    }
    if (!output->close()) return std::nullopt;
    return found;
}

void BrowserWatch::checkEnabled() {
    for (const SupportedApplication* application : displayOrder) {
        const bool enabled = services_.preferencesInstance.browserIsEnabled(application->name);
        mIsEnabled.*application->flag = enabled ? 1 : 0;
        if (!enabled) setColor(*application, Color::lightGray);
    }
}

void BrowserWatch::invalidateTimer() {
    if (browserWatchTimer != nullptr) browserWatchTimer->invalidate();
    browserWatchTimer = nullptr;
    watching_ = false;
}

void BrowserWatch::showNotEnabled() {
    showStatus(kNotEnabled);
}

void BrowserWatch::disableProcessDisplay() {
    for (const SupportedApplication* application : displayOrder) {
        setColor(*application, Color::lightGray);
    }
}

void BrowserWatch::startWatching() {
    showStatus(kWaiting);
    browserWatchTimer = services_.runLoop.scheduleRepeatingTimer(
        kPassInterval, [this](ui::Timer& timer) { HandleBrowserWatchTimer(&timer); });
    watching_ = true;
}

void BrowserWatch::showStatus(std::string_view text) {
    outlets_.browserWatchStatusTextbox->setStringValue(text);
    outlets_.browserWatchStatusTextbox->display();
}

void BrowserWatch::setColor(const SupportedApplication& application, Color color) {
    (outlets_.*application.label)->setTextColor(color);
}

std::vector<std::string> BrowserWatch::haveQuit() const {
    std::vector<std::string> names;
    for (const SupportedApplication& application : applications) {
        if (mWasRunning.*application.flag == 1 && mIsRunning.*application.flag == 0 &&
            mIsEnabled.*application.flag != 0) {
            names.emplace_back(application.name);
        }
    }
    return names;
}

}  // namespace dorvanel

// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "apps/BrowserWatchOutlets.h"
#include "apps/bw_typedef.h"
#include "platform/ProcessListing.h"
#include "platform/SystemSound.h"
#include "prefs/PreferenceReader.h"
#include "ui/RunLoop.h"

namespace dorvanel {

struct SupportedApplication;

/// What Browser Watch needs of its owner.
class BrowserWatchOwner {
  public:
    virtual ~BrowserWatchOwner() = default;
    /// An enabled application has quit: starts a run that ends with nothing further.
    virtual void shredAndNothing() = 0;
};

/// What Browser Watch stands on; all outlive it.
struct BrowserWatchServices {
    PreferenceReader& preferencesInstance;
    platform::ProcessListing& listing;
    ui::RunLoop& runLoop;
    platform::SystemSound& sound;
};

/// Lists the user's processes every ten seconds, shows which of the supported applications run,
/// and has a run started when an enabled one has quit. Main thread only.
class BrowserWatch {
  public:
    static constexpr std::chrono::milliseconds kPollInterval = std::chrono::seconds(2);
    static constexpr std::chrono::milliseconds kPassInterval = std::chrono::seconds(10);

    BrowserWatch(BrowserWatchServices services, const BrowserWatchOutlets& outlets,
                 BrowserWatchOwner& owner);
    /// Both timers end with it; a poll timer that a later one replaced does not, and must not
    /// outlive it in a loop that runs.
    ~BrowserWatch();
    BrowserWatch(const BrowserWatch&) = delete;
    BrowserWatch& operator=(const BrowserWatch&) = delete;

    // Launching, in this order, with what else there is to launch in between.

    /// Starts the poll of the preference. Twice makes two polls, which changes nothing.
    void scheduleTimer();
    /// Watching or off, as the preference has it, and shown.
    void setInitialState();
    /// The flags as no pass has seen anything yet.
    void resetRunningRecords();

    // The timers' handlers. The sender of a pass is null where a run asks for a look: such a pass
    // never starts a run.

    void HandleTimer(ui::Timer* sender);
    void HandleBrowserWatchTimer(ui::Timer* sender);

    // Steps of a pass.

    /// Runs the listing and sets mIsRunning, and the labels to red and green. 1 if a line matched
    /// any test string, else 0; the strings stand in the order of the flags. Where the listing
    /// cannot be had, or not whole, nobody knows what runs: flags and labels stay as they were.
    std::int16_t CheckStatus(const std::string& command,
                             const std::vector<std::string_view>& aTestStrings);
    /// Sets mIsEnabled, and the labels of the applications that are not enabled to light grey.
    void checkEnabled();

    // What runs and quitting do with the watch.

    /// Whether the watch timer runs. Any thread: the worker of a run asks too.
    [[nodiscard]] bool isWatching() const { return watching_; }
    [[nodiscard]] const bw_typedef& isRunning() const { return mIsRunning; }
    /// Whether the latest pass could tell what runs.
    [[nodiscard]] bool isKnown() const { return known_; }
    [[nodiscard]] const bw_typedef& wasRunning() const { return mWasRunning; }
    /// The enabled applications that ran at the pass before and run no longer, by name.
    [[nodiscard]] std::vector<std::string> haveQuit() const;
    /// Ends the watch and shows nothing of it; the poll starts it again.
    void invalidateTimer();
    void showNotEnabled();
    /// All twelve labels light grey; the flags stay. Any thread.
    void disableProcessDisplay();

  private:
    [[nodiscard]] std::optional<bw_typedef> listed(
        const std::string& command, const std::vector<std::string_view>& aTestStrings);
    void startWatching();
    void showStatus(std::string_view text);
    void setColor(const SupportedApplication& application, ui::Color color);

    BrowserWatchServices services_;
    BrowserWatchOutlets outlets_;
    BrowserWatchOwner& owner_;

    std::shared_ptr<ui::Timer> mTimer;
    std::shared_ptr<ui::Timer> browserWatchTimer;  ///< null: Browser Watch is off
    std::atomic<bool> watching_ = false;           ///< whether it is set
    std::int16_t browserWatchWasRunning = 0;       ///< the status line's memory
    bw_typedef mWasRunning;                        ///< as the known pass before found it
    bw_typedef mIsRunning;                         ///< as the latest known pass found it
    bw_typedef mIsEnabled;                         ///< as of the latest pass
    bool known_ = false;                           ///< whether the latest pass found it out
};

}  // namespace dorvanel

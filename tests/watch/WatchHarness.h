// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <memory>

#include "support/FakeClock.h"
#include "support/FakeOutlets.h"
#include "support/FakePreferences.h"
#include "support/FakeProcessListing.h"
#include "support/FakeRunLoop.h"
#include "watch/BrowserWatch.h"

namespace dorvanel::test {

struct CountingOwner final : BrowserWatchOwner {
    void shredAndNothing() override { ++runs; }

    int runs = 0;
};

/// The labels of a window, each by its name.
struct FakeWatchWindow {
    FakeTextField browserWatchStatusTextbox, mBWSafari, mBWExplorer, mBWMozilla, mBWNetscape,
        mBWiCab, mBWOmniweb, mBWOpera, mBWMail, mBWEudora, mBWMailsmith, mBWCamino, mBWFirefox;

    BrowserWatchOutlets outlets() {
        return {.browserWatchStatusTextbox = &browserWatchStatusTextbox,
                .mBWSafari = &mBWSafari,
                .mBWExplorer = &mBWExplorer,
                .mBWMozilla = &mBWMozilla,
                .mBWNetscape = &mBWNetscape,
                .mBWiCab = &mBWiCab,
                .mBWOpera = &mBWOpera,
                .mBWOmniweb = &mBWOmniweb,
                .mBWMail = &mBWMail,
                .mBWEudora = &mBWEudora,
                .mBWMailsmith = &mBWMailsmith,
                .mBWCamino = &mBWCamino,
                .mBWFirefox = &mBWFirefox};
    }
    std::array<FakeTextField*, 12> labels() {
        return {&mBWSafari, &mBWExplorer, &mBWMozilla, &mBWNetscape,  &mBWiCab,   &mBWOmniweb,
                &mBWOpera,  &mBWMail,     &mBWEudora,  &mBWMailsmith, &mBWCamino, &mBWFirefox};
    }
    [[nodiscard]] const std::string& status() const {
        return browserWatchStatusTextbox.texts.back();
    }
};

/// Browser Watch with everything around it in the test's hand.
struct WatchHarness {
    explicit WatchHarness(platform::ProcessListing* realListing = nullptr)
        : watch({preferences, realListing != nullptr ? *realListing : listing, loop, sound},
                window.outlets(), owner) {
        preferences.set("BrowserWatch", true);
    }

    void launch() {
        watch.scheduleTimer();
        watch.setInitialState();
        watch.resetRunningRecords();
    }
    /// Lets one watch pass come.
    void pass() { loop.advance(BrowserWatch::kPassInterval); }
    void pass(const std::vector<std::string>& commandLines) {
        listing.show(commandLines);
        pass();
    }

    FakeClock clock;
    FakeRunLoop loop{clock};
    FakePreferences preferences;
    FakeProcessListing listing;
    FakeSystemSound sound;
    FakeWatchWindow window;
    CountingOwner owner;
    BrowserWatch watch;
};

inline const std::string kWaitingText = "Enabled and waiting for the first timer event to occur...";
inline const std::string kNotEnabledText = "Not enabled. Use preferences to enable...";
inline const std::string kRunningText = "A supported browser or email application is running...";
inline const std::string kHaveQuitText = "All supported browser or email application have quit...";
inline const std::string kNoneRunningText = "No supported applications are running...";

}  // namespace dorvanel::test

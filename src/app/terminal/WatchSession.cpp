#include "app/terminal/WatchSession.h"

namespace dorvanel::terminal {
namespace {

BrowserWatchOutlets outletsOf(platform::TextField& status, platform::TextField& label) {
    BrowserWatchOutlets outlets{};
    outlets.browserWatchStatusTextbox = &status;
    for (const auto field : {&BrowserWatchOutlets::mBWSafari, &BrowserWatchOutlets::mBWExplorer,
                             &BrowserWatchOutlets::mBWMozilla, &BrowserWatchOutlets::mBWNetscape,
                             &BrowserWatchOutlets::mBWiCab, &BrowserWatchOutlets::mBWOmniweb,
                             &BrowserWatchOutlets::mBWOpera, &BrowserWatchOutlets::mBWMail,
                             &BrowserWatchOutlets::mBWEudora, &BrowserWatchOutlets::mBWMailsmith,
                             &BrowserWatchOutlets::mBWCamino, &BrowserWatchOutlets::mBWFirefox}) {
        outlets.*field = &label;
    }
    return outlets;
}

}  // namespace

WatchSession::WatchSession(BrowserWatchServices services, BrowserWatchOwner& runs,
                           Terminal& terminal)
    : runLoop_(services.runLoop),
      runs_(runs),
      status_(terminal),
      watch_(services, outletsOf(status_, label_), *this) {}

void WatchSession::run() {
    watch_.scheduleTimer();
    watch_.setInitialState();
    watch_.resetRunningRecords();
    if (!quitRequested_) runLoop_.run();
    watch_.invalidateTimer();
}

void WatchSession::requestQuit() {
    quitRequested_ = true;
    runLoop_.stop();
}

void WatchSession::shredAndNothing() {
    // A signal sent to a whole group of processes ends the applications too, and whoever sends one
    // wants things to stop.
    if (!quitRequested_) runs_.shredAndNothing();
}

}  // namespace dorvanel::terminal

#pragma once

#include "ui/Outlets.h"

namespace dorvanel {

/// The status line and the twelve labels of Browser Watch. All are connected, and live as long as
/// the watch.
struct BrowserWatchOutlets {
    platform::TextField* browserWatchStatusTextbox;
    platform::TextField* mBWSafari;
    platform::TextField* mBWExplorer;
    platform::TextField* mBWMozilla;
    platform::TextField* mBWNetscape;
    platform::TextField* mBWiCab;
    platform::TextField* mBWOmniweb;
    platform::TextField* mBWOpera;
    platform::TextField* mBWMail;
    platform::TextField* mBWEudora;
    platform::TextField* mBWMailsmith;
    platform::TextField* mBWCamino;
    platform::TextField* mBWFirefox;
};

}  // namespace dorvanel

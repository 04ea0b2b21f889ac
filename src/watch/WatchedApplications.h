#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "watch/BrowserWatchOutlets.h"
#include "watch/bw_typedef.h"

namespace dorvanel {

struct WatchedApplication {
    std::uint32_t bw_typedef::*flag;
    platform::TextField* BrowserWatchOutlets::*label;
    std::string_view name;        ///< in the list of enabled applications
    std::string_view testString;  ///< what a line of the process listing is searched for
};

/// The twelve applications in the order of their flags. iCab goes without ".app" on purpose: any
/// command line with "iCab" in it counts.
inline constexpr std::array<WatchedApplication, 12> kWatchedApplications{{
    {&bw_typedef::safari, &BrowserWatchOutlets::mBWSafari, "Safari", "Safari.app"},
    {&bw_typedef::ie, &BrowserWatchOutlets::mBWExplorer, "Internet Explorer",
     "Internet Explorer.app"},
    {&bw_typedef::mozilla, &BrowserWatchOutlets::mBWMozilla, "Mozilla", "Mozilla.app"},
    {&bw_typedef::netscape, &BrowserWatchOutlets::mBWNetscape, "Netscape", "Netscape.app"},
    {&bw_typedef::icab, &BrowserWatchOutlets::mBWiCab, "iCab", "iCab"},
    {&bw_typedef::opera, &BrowserWatchOutlets::mBWOpera, "Opera", "Opera.app"},
    {&bw_typedef::omniweb, &BrowserWatchOutlets::mBWOmniweb, "Omniweb", "OmniWeb.app"},
    {&bw_typedef::mail, &BrowserWatchOutlets::mBWMail, "Apple Mail", "Mail.app"},
    {&bw_typedef::eudora, &BrowserWatchOutlets::mBWEudora, "Eudora", "Eudora.app"},
    {&bw_typedef::mailsmith, &BrowserWatchOutlets::mBWMailsmith, "Mailsmith", "Mailsmith.app"},
    {&bw_typedef::camino, &BrowserWatchOutlets::mBWCamino, "Camino", "Camino.app"},
    {&bw_typedef::firefox, &BrowserWatchOutlets::mBWFirefox, "Firefox", "Firefox.app"},
}};

/// The same twelve as the window and the list of enabled applications have them: OmniWeb before
/// Opera. Indices of kWatchedApplications.
inline constexpr std::array<std::size_t, 12> kDisplayOrder{0, 1, 2, 3, 4, 6, 5, 7, 8, 9, 10, 11};

/// The test strings in the order of the flags.
std::vector<std::string_view> testStrings();

/// The index of the application that a line of the listing speaks for: the first whose test string
/// it contains; `strings.size()` for none. A disk image being mounted speaks for nobody.
std::size_t applicationNamedIn(std::string_view line, const std::vector<std::string_view>& strings);

}  // namespace dorvanel

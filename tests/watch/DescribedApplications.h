// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "apps/catalogue/Entry.h"

namespace dorvanel::test {

/// A description with what the watch reads of it.
inline catalogue::Entry describedApplication(const std::string& id,
                                             const std::vector<std::string>& processes,
                                             const std::vector<catalogue::Install>& installs = {}) {
    catalogue::Entry entry;
    entry.id = id;
    entry.processes = processes;
    entry.installs = installs;
    return entry;
}

inline catalogue::Entry describedFirefox() {
    return describedApplication(
        "firefox", {"firefox", "firefox-bin"},
        {{"native", {{"config", "~/.mozilla/firefox"}}},
         {"flatpak", {{"config", "~/.var/app/org.mozilla.firefox/.mozilla/firefox"}}},
         {"snap", {{"config", "~/snap/firefox/common/.mozilla/firefox"}}}});
}

inline catalogue::Entry describedChrome() {
    return describedApplication("google-chrome", {"chrome"});
}

}  // namespace dorvanel::test

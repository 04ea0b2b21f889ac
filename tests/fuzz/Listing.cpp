// SPDX-License-Identifier: MIT
#include <string_view>

#include "fuzz/FuzzInput.h"
#include "watch/ListedApplication.h"
#include "watch/WatchHarness.h"

// What the listing command says is made by programs that name themselves as they like.

using namespace dorvanel;
using dorvanel::test::insist;

namespace {

/// The lines as a listing gives them: up to 2047 bytes, cut at a NUL.
std::vector<std::string> linesOf(std::string_view bytes) {
    constexpr std::size_t longest = 2047;
    std::vector<std::string> lines;
    while (!bytes.empty()) {
        const std::size_t newline = bytes.substr(0, longest).find('\n');
        const std::string_view line = bytes.substr(
            0, newline == std::string_view::npos ? std::min(longest, bytes.size()) : newline + 1);
        lines.emplace_back(line.substr(0, line.find('\0')));
        bytes.remove_prefix(line.size());
    }
    return lines;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    test::WatchHarness harness;
    harness.listing.lines = linesOf(dorvanel::test::bytesOf(data, size));
    harness.launch();
    harness.pass();

    // Once more, the plain way: the first application that a line names, unless it is a disk image.
    bw_typedef expected{};
    for (std::size_t i = 1; i < harness.listing.lines.size(); ++i) {
        const std::string& line = harness.listing.lines[i];
        if (line.find("/usr/bin/hdid") != std::string::npos) continue;
        for (const SupportedApplication& application : applications) {
            if (line.find(application.processText) == std::string::npos) continue;
            expected.*application.flag = 1;
            break;
        }
    }
    bool any = false;
    for (const SupportedApplication& application : applications) {
        insist(harness.watch.isRunning().*application.flag == expected.*application.flag,
               "an application runs where a line names it");
        any = any || expected.*application.flag != 0;
    }
    insist(harness.window.status() == (any ? test::kRunningText : test::kNoneRunningText),
           "the status tells of it");
    insist(harness.owner.runs == 0, "the first pass starts no run");

    harness.pass({});
    insist((harness.owner.runs > 0) == any, "an application that has quit starts a run");
    return 0;
}

// SPDX-License-Identifier: MIT

// What one watch pass costs beside the `ps` that it runs, and what an idle hour of watching costs
// beside the `ps` runs of that hour. Passes and plain runs of `ps` take turns, so that whatever
// else the machine does falls on both alike; medians are compared.

#include <stdio.h>
#include <sys/resource.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <memory>
#include <vector>

#include "platform/PollLoop.h"
#include "watch/BrowserWatch.h"

namespace {

using namespace dorvanel;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int kWarmUp = 3;
constexpr int kRounds = 31;
constexpr int kPollsAnHour = 1800;
constexpr int kPassesAnHour = 360;

struct Cost {
    double wall;  // ms
    double cpu;   // ms, of this program and of those it started
};

double cpuOf(int who) {
    rusage usage{};
    getrusage(who, &usage);
    const auto ms = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return ms(usage.ru_utime) + ms(usage.ru_stime);
}

double cpu() {
    return cpuOf(RUSAGE_SELF) + cpuOf(RUSAGE_CHILDREN);
}

Cost costOf(const std::function<void()>& work) {
    const double cpuBefore = cpu();
    const auto start = std::chrono::steady_clock::now();
    work();
    return {Milliseconds(std::chrono::steady_clock::now() - start).count(), cpu() - cpuBefore};
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

struct Series {
    std::vector<double> wall;
    std::vector<double> cpu;

    void add(Cost cost) {
        wall.push_back(cost.wall);
        cpu.push_back(cost.cpu);
    }
};

void runPlainPs(const std::string& command) {
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) std::abort();
    std::array<char, 2048> buffer;
    while (fgets(buffer.data(), static_cast<int>(buffer.size()), pipe) != nullptr) {
    }
    pclose(pipe);
}

struct AllEnabled final : PreferenceReader {
    Number objectForKey(Key) const override { return Number::fromBool(true); }
    std::uint64_t changeCount() const override { return 0; }
    bool browserIsEnabled(std::string_view) override { return true; }
};

struct NoField final : ui::TextField {
    void setStringValue(std::string_view) override {}
    void setTextColor(ui::Color) override {}
    void display() override {}
};

struct NoRun final : BrowserWatchOwner {
    void shredAndNothing() override {}
};

}  // namespace

int main() {
    AllEnabled preferences;
    NoField field;
    NoRun owner;
    const auto listing = platform::makeProcessListing();
    const auto loop = std::move(platform::makeRunLoop().value());
    if (loop == nullptr) return 1;
    BrowserWatch watch({preferences, *listing, *loop, platform::terminalSound()},
                       {&field, &field, &field, &field, &field, &field, &field, &field, &field,
                        &field, &field, &field, &field},
                       owner);
    watch.setInitialState();
    const std::string command = "ps -w -w -o command -U " + listing->userName();

    Series ps;
    Series pass;
    for (int round = -kWarmUp; round < kRounds; ++round) {
        const Cost ofPs = costOf([&] { runPlainPs(command); });
        const Cost ofPass = costOf([&] { watch.HandleBrowserWatchTimer(nullptr); });
        if (round < 0) continue;
        ps.add(ofPs);
        pass.add(ofPass);
    }
    const Cost polls = costOf([&] {
        for (int i = 0; i < kPollsAnHour; ++i) watch.HandleTimer(nullptr);
    });

    const double psHour = kPassesAnHour * median(ps.cpu);
    const double watchHour = kPassesAnHour * median(pass.cpu) + polls.cpu;
    printf("one ps       %8.3f ms  %8.3f ms of processor time  (median of %d)\n", median(ps.wall),
           median(ps.cpu), kRounds);
    printf("one pass     %8.3f ms  %8.3f ms of processor time\n", median(pass.wall),
           median(pass.cpu));
    printf("ratio        %8.3f     %8.3f\n", median(pass.wall) / median(ps.wall),
           median(pass.cpu) / median(ps.cpu));
    printf(
        "idle hour    %8.1f ms of processor time in %d passes and %d polls; its ps runs %.1f ms"
        "; ratio %.3f\n",
        watchHour, kPassesAnHour, kPollsAnHour, psHour, watchHour / psHour);
    return 0;
}

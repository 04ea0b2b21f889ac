// SPDX-License-Identifier: MIT
#include "run/ProcessControl.h"

#include <algorithm>
#include <ostream>

#include "apps/Applications.h"

namespace dorvanel {
namespace {

using platform::kNoProcess;
using platform::ProcessInfoRec;
using platform::ProcessSerialNumber;

constexpr std::chrono::microseconds kWait{500'000};
constexpr int kMostWaits = 50;

bool isWatched(const ProcessInfoRec& information) {
    return information.processType == fourCharCode("APPL") &&
           std::ranges::any_of(applications, [&](const SupportedApplication& application) {
               return !application.creator.empty() &&
                      information.processSignature == fourCharCode(application.creator);
           });
}

}  // namespace

OSErr SendQuitAppleEventToApplication(platform::ProcessManager& processes,
                                      ProcessSerialNumber target) {
    return processes.SendQuit(target);
}

std::int16_t Killer(platform::ProcessManager& processes, std::int16_t doQuit) {
    const ProcessSerialNumber self = processes.GetCurrentProcess();
    ProcessSerialNumber process = kNoProcess;
    std::int16_t count = 0;
    while (processes.GetNextProcess(process) == noErr) {
        if (processes.SameProcess(process, self)) continue;
        ProcessInfoRec information;
        if (processes.GetProcessInformation(process, information) != noErr) continue;
        if (!isWatched(information)) continue;
        if (doQuit != 0) SendQuitAppleEventToApplication(processes, process);
        ++count;
    }
    return count;
}

std::int16_t KillEveryone(platform::ProcessManager& processes, OtherApplications& others,
                          platform::QuitWait& quitWait) {
    const auto sum = [](int one, int other) { return static_cast<std::int16_t>(one + other); };
    std::int16_t left = sum(Killer(processes, 1), others.askToQuit());
    bool goesOn = quitWait.wait(kWait);
    for (int i = 0; i < kMostWaits && goesOn; ++i) {
        left = sum(Killer(processes, 0), others.stillRunning());
        if (left == 0) break;
        goesOn = quitWait.wait(kWait);
    }
    return left;
}

OSErr SendAppleEventToSystemProcess(platform::SystemEvents& events, FourCharCode eventID) {
    return events.send(eventID);
}

OSErr GetProcesses(platform::ProcessManager& processes, std::ostream& output) {
    ProcessSerialNumber process = kNoProcess;
    while (true) {
        ProcessInfoRec information;
        OSErr error = processes.GetNextProcess(process);
        if (error == noErr) error = processes.GetProcessInformation(process, information);
        if (error != noErr) return error;
        if (information.processName.empty()) continue;
        output << information.processName << '-';
        for (int shift = 24; shift >= 0; shift -= 8) {
            output << static_cast<char>(information.processSignature >> shift & 0xFF);
        }
        output << '\n';
    }
}

}  // namespace dorvanel

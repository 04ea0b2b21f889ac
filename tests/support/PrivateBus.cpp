// SPDX-License-Identifier: MIT
#include "support/PrivateBus.h"

#include <sdbus-c++/sdbus-c++.h>

#include <chrono>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <vector>

namespace dorvanel::test {
namespace {

const std::string kLoginManager = "org.freedesktop.login1";

/// Ends with the test, also when that crashes.
std::vector<std::string> bound(const std::vector<std::string>& command) {
    std::vector<std::string> words{"setpriv", "--pdeathsig", "KILL"};
    words.insert(words.end(), command.begin(), command.end());
    return words;
}

bool isOnBus(const std::string& name) {
    bool owned = false;
    sdbus::createProxy(sdbus::createSystemBusConnection(), "org.freedesktop.DBus",
                       "/org/freedesktop/DBus")
        ->callMethod("NameHasOwner")
        .onInterface("org.freedesktop.DBus")
        .withArguments(name)
        .storeResultsTo(owned);
    return owned;
}

}  // namespace

PrivateBus::PrivateBus()
    : daemon_(bound({"dbus-daemon", "--session", "--nofork", "--print-address", "--nopidfile",
                     "--address=unix:path=" + folder_ / "bus"})),
      address_("DBUS_SYSTEM_BUS_ADDRESS", daemon_.readLine()) {}

void PrivateBus::startLoginManager() {
    loginManager_ = std::make_unique<ChildProcess>(
        bound({"/usr/bin/python3", "-m", "dbusmock", "--system", "--template", "logind",
               "--logfile", folder_ / "calls"}));
    while (!isOnBus(kLoginManager)) {
        if (!loginManager_->isRunning()) throw std::runtime_error("python3-dbusmock is missing");
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

void PrivateBus::setMethod(const std::string& method, const std::string& signature,
                           const std::string& code) {
    sdbus::createProxy(sdbus::createSystemBusConnection(), kLoginManager, "/org/freedesktop/login1")
        ->callMethod("AddMethod")
        .onInterface("org.freedesktop.DBus.Mock")
        .withArguments(kLoginManager + ".Manager", method, signature, std::string(), code);
}

std::string PrivateBus::calls() const {
    std::istringstream log(readFile(folder_ / "calls"));
    std::string calls;
    for (std::string line; std::getline(log, line);) {
        if (line.find(" raised: ") != std::string::npos) continue;
        calls += line.substr(line.find(' ') + 1) + "\n";  // a time stands before the first blank
    }
    return calls;
}

}  // namespace dorvanel::test

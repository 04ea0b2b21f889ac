// SPDX-License-Identifier: MIT
#include "platform/SystemEvents.h"

#include <sdbus-c++/sdbus-c++.h>

#include <string>

namespace dorvanel::platform {
namespace {

const std::string kService = "org.freedesktop.login1";
const std::string kObject = "/org/freedesktop/login1";
const std::string kInterface = "org.freedesktop.login1.Manager";

/// The login manager's word for the session of the caller, or for the one of its user that is on
/// the screen when the caller is a service and in no session.
const std::string kOwnSession = "auto";

/// No password dialog: the run is over, and there may be nobody to answer.
constexpr bool kInteractive = false;

OSErr codeOf(const std::string& error) {
    const std::string prefix = "org.freedesktop.DBus.Error.";
    if (error == prefix + "NoReply" || error == prefix + "Timeout" ||
        error == prefix + "TimedOut") {
        return errAETimeout;
    }
    if (error == prefix + "ServiceUnknown" || error == prefix + "NameHasNoOwner") {
        return connectionInvalid;
    }
    return errAEEventNotHandled;
}

class LoginManager final : public SystemEvents {
  public:
    explicit LoginManager(std::chrono::milliseconds timeout) : timeout_(timeout) {}

    OSErr send(FourCharCode eventID) override {
        switch (eventID) {
            case kAEReallyLogOut:
                return call("TerminateSession", kOwnSession);
            case kAEShutDown:
                return call("PowerOff", kInteractive);
            case kAERestart:
                return call("Reboot", kInteractive);
            default:
                return errAEEventNotHandled;
        }
    }

  private:
    template <typename Argument>
    OSErr call(const std::string& method, const Argument& argument) {
        std::unique_ptr<sdbus::IConnection> bus;
        try {
            bus = sdbus::createSystemBusConnection();
        } catch (const sdbus::Error&) {
            return connectionInvalid;
        }
        try {
            const auto manager = sdbus::createProxy(std::move(bus), kService, kObject);
            manager->callMethod(method)
                .onInterface(kInterface)
                .withTimeout(timeout_)
                .withArguments(argument);
        } catch (const sdbus::Error& error) {
            return codeOf(error.getName());
        }
        return noErr;
    }

    std::chrono::milliseconds timeout_;
};

}  // namespace

std::unique_ptr<SystemEvents> makeSystemEvents(std::chrono::milliseconds timeout) {
    return std::make_unique<LoginManager>(timeout);
}

}  // namespace dorvanel::platform

// SPDX-License-Identifier: MIT
#include "app/desktop/background/AutostartEntry.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "app/desktop/Words.h"
#include "platform/FileManager.h"
#include "platform/FolderLock.h"
#include "platform/ReplaceFile.h"

namespace dorvanel::desktop {
namespace {

constexpr std::size_t largest = 65536;

/// Desktops may note in the file that it is turned off; it is then no longer this one.
constexpr const char* contents =
    "[Desktop Entry]\n"
    "Type=Application\n"
    "Name=Dorvanel X\n"
    "Comment=Browser Watch, hidden behind its icon\n"
    "Exec=dorvanel-x --hidden\n"
    "Icon=dorvanel-x\n"
    "Terminal=false\n"
    "X-GNOME-Autostart-enabled=true\n";

Error foreignFile(const std::string& path) {
    return {.operation = "change",
            .path = path,
            .detail = Words::tr("somebody else has written it").toStdString()};
}

}  // namespace

AutostartEntry::AutostartEntry(const std::string& folder)
    : folder_(folder), path_(folder + "/com.dorvanel.DorvanelX.desktop") {}

std::string AutostartEntry::usersFolder() {
    const char* configuration = std::getenv("XDG_CONFIG_HOME");
    // One that is no absolute path is to be ignored.
    if (configuration != nullptr && *configuration == '/') {
        return std::string(configuration) + "/autostart";
    }
    return platform::homeDirectory() + "/.config/autostart";
}

AutostartEntry::State AutostartEntry::state() const {
    std::error_code error;
    const auto type = std::filesystem::symlink_status(path_, error).type();
    if (type == std::filesystem::file_type::not_found) return State::off;
    if (type != std::filesystem::file_type::regular) return State::foreign;
    const auto found = platform::readWholeFile(path_, largest);
    if (found && !found.value()) return State::off;
    return found && *found.value() == contents ? State::on : State::foreign;
}

Result<Done> AutostartEntry::set(bool on) {
    const State now = state();
    if (now == State::foreign) return foreignFile(path_);
    if (on == (now == State::on)) return Done{};
    std::error_code error;
    if (!on) {
        std::filesystem::remove(path_, error);
        if (error) return Error{error.value(), "remove", path_, {}};
        return Done{};
    }
    std::filesystem::create_directories(folder_, error);
    if (error) return Error{error.value(), "create", folder_, {}};
    const auto lock = platform::FolderLock::takeIfFree(folder_);
    if (!lock) return lock.error();
    if (!lock.value()) {
        return Error{.operation = "lock",
                     .path = folder_,
                     .detail = Words::tr("another program has it").toStdString()};
    }
    return platform::replaceFile(path_, contents, *lock.value());
}

}  // namespace dorvanel::desktop

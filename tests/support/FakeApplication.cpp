// SPDX-License-Identifier: MIT
#include "support/FakeApplication.h"

#include <csignal>
#include <stdexcept>

#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> commandOf(const std::vector<std::string>& launcher,
                                   const std::string& program, const std::string& argument) {
    std::vector<std::string> command = launcher;
    command.push_back(program);
    if (!argument.empty()) command.push_back(argument);
    return command;
}

}  // namespace

fs::path makeBundle(const fs::path& folder, const std::string& name, const std::string& pkgInfo) {
    const fs::path bundle = folder / (name + ".app");
    const fs::path executable = bundle / "Contents/MacOS" / name;
    fs::create_directories(executable.parent_path());
    fs::copy_file(DORVANEL_FAKE_APPLICATION, executable);
    if (!pkgInfo.empty()) writeFile(bundle / "Contents/PkgInfo", pkgInfo);
    return executable;
}

FakeApplication::FakeApplication(const fs::path& folder, const std::string& name,
                                 const std::string& pkgInfo, const std::string& argument,
                                 const std::vector<std::string>& launcher)
    : executable_(makeBundle(folder, name, pkgInfo)),
      process_(commandOf(launcher, executable_, argument)) {
    waitUntilReady();
}

void FakeApplication::becomeOther() {
    process_.signal(SIGUSR1);
    waitUntilReady();
}

void FakeApplication::waitUntilReady() {
    if (process_.readLine() != "ready")
        throw std::runtime_error("no start: " + executable_.string());
}

}  // namespace dorvanel::test

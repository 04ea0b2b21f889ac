// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "support/ChildProcess.h"

namespace dorvanel::test {

/// A real process in a real application bundle that the test makes.
class FakeApplication {
  public:
    /// Makes FOLDER/NAME.app with `pkgInfo` (no such file when it is empty), starts its program
    /// with `argument`, by the command `launcher` if there is one, and returns when it is set up.
    FakeApplication(const std::filesystem::path& folder, const std::string& name,
                    const std::string& pkgInfo, const std::string& argument = {},
                    const std::vector<std::string>& launcher = {});

    [[nodiscard]] ChildProcess& process() { return process_; }
    [[nodiscard]] pid_t pid() const { return process_.pid(); }
    [[nodiscard]] bool isRunning() const { return process_.isRunning(); }
    [[nodiscard]] const std::filesystem::path& executable() const { return executable_; }

    /// Has it become the program that was its argument, and waits until that is set up.
    void becomeOther();

  private:
    void waitUntilReady();

    std::filesystem::path executable_;
    ChildProcess process_;
};

/// Makes the bundle's folders and files but starts nothing; returns the program's path.
std::filesystem::path makeBundle(const std::filesystem::path& folder, const std::string& name,
                                 const std::string& pkgInfo);

}  // namespace dorvanel::test

#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>

namespace dorvanel::test {

/// A real process in a real application bundle that the test makes; killed, by its number and
/// nothing else, at the end.
class FakeApplication {
  public:
    /// Makes FOLDER/NAME.app with `pkgInfo` (no such file when it is empty), starts its program
    /// with `argument`, and returns when that is set up.
    FakeApplication(const std::filesystem::path& folder, const std::string& name,
                    const std::string& pkgInfo, const std::string& argument = {});
    ~FakeApplication();
    FakeApplication(const FakeApplication&) = delete;
    FakeApplication& operator=(const FakeApplication&) = delete;

    [[nodiscard]] pid_t pid() const { return pid_; }
    [[nodiscard]] const std::filesystem::path& bundle() const { return bundle_; }
    [[nodiscard]] std::filesystem::path executable() const;

    /// Has it become the program that was its argument, and waits until that is set up.
    void becomeOther();
    /// Whether it has not ended; one that nobody has waited for has ended.
    [[nodiscard]] bool isRunning() const;
    /// Kills it and leaves it a zombie.
    void killWithoutWaiting();
    /// Waits for its end and returns the signal that ended it, 0 for none.
    int waitForEnd();

  private:
    void waitUntilReady() const;

    std::filesystem::path bundle_;
    std::string name_;
    pid_t pid_ = -1;
    int output_ = -1;
};

/// Makes the bundle's folders and files but starts nothing; returns the program's path.
std::filesystem::path makeBundle(const std::filesystem::path& folder, const std::string& name,
                                 const std::string& pkgInfo);

}  // namespace dorvanel::test

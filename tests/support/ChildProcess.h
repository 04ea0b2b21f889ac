// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace dorvanel::test {

/// A program that a test starts; killed, by its number and nothing else, at the end.
class ChildProcess {
  public:
    /// `command` is found on PATH; its environment is the test's own. Throws when it cannot be
    /// started.
    explicit ChildProcess(const std::vector<std::string>& command);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    [[nodiscard]] pid_t pid() const { return pid_; }

    /// The next line of its standard output without the newline; "" at the end. Blocks.
    std::string readLine();
    void signal(int number) const;
    /// Whether it has not ended; one that nobody has waited for has ended.
    [[nodiscard]] bool isRunning() const;
    /// Kills it and leaves it a zombie.
    void killWithoutWaiting() const;
    /// Waits for its end and returns the status as a shell has it: 128 and the signal's number for
    /// one that a signal ended.
    int waitForEnd();

  private:
    pid_t pid_ = -1;
    int output_ = -1;
};

}  // namespace dorvanel::test

// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "support/ChildProcess.h"
#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {

/// A message bus of the test's own that stands for the system bus, at first with nobody on it.
class PrivateBus {
  public:
    PrivateBus();

    /// Puts a mock login manager on the bus and waits until it is there. Throws, and so fails the
    /// test, where the machine has no python3-dbusmock.
    void startLoginManager();
    /// Has `method` of the login manager, which takes one argument of type `signature`, do as the
    /// Python `code` says.
    void setMethod(const std::string& method, const std::string& signature,
                   const std::string& code);
    /// The calls that the login manager was sent, one "METHOD ARGUMENT" a line.
    [[nodiscard]] std::string calls() const;

  private:
    TemporaryFolder folder_;
    ChildProcess daemon_;
    EnvironmentVariable address_;
    std::unique_ptr<ChildProcess> loginManager_;
};

}  // namespace dorvanel::test

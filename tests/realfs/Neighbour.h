// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <functional>

namespace dorvanel::test {

/// The users of these tests: one whose files are shredded, and another one.
constexpr uid_t victim = 65533;
constexpr uid_t nobody = 65534;

/// Another process that does the same again and again, as some user, until the object goes.
class Neighbour {
  public:
    Neighbour(uid_t user, const std::function<void()>& step);
    ~Neighbour();
    Neighbour(const Neighbour&) = delete;
    Neighbour& operator=(const Neighbour&) = delete;

    /// Whether it has done its first step.
    [[nodiscard]] bool works() const { return works_; }

  private:
    pid_t child_ = -1;
    bool works_ = false;
};

/// Becomes the user for good; ends the process where that is not allowed. To be done in a child.
void become(uid_t user);

}  // namespace dorvanel::test

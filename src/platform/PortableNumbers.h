// SPDX-License-Identifier: MIT
#pragma once

namespace dorvanel::platform {

/// As long as it lives, the C library reads and writes the numbers of the calling thread with a
/// full stop, whatever the locale of the program; for libraries that print and scan numbers in
/// files.
class PortableNumbers {
  public:
    PortableNumbers();
    ~PortableNumbers();
    PortableNumbers(const PortableNumbers&) = delete;
    PortableNumbers& operator=(const PortableNumbers&) = delete;

  private:
    void* former_;  ///< the thread's locale before
};

}  // namespace dorvanel::platform

// SPDX-License-Identifier: MIT
#pragma once

#include <locale.h>

#include <cstdlib>
#include <string>

#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {

/// The locale of the process is one that writes numbers with a comma, as long as it lives; made for
/// the purpose, since few machines have one.
class CommaLocale {
  public:
    CommaLocale() {
        const std::string command =
            "localedef -i de_DE -f UTF-8 '" + folder_ / "de_DE.UTF-8" + "' >/dev/null 2>&1";
        static_cast<void>(std::system(command.c_str()));
        isSet_ = setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
    }
    ~CommaLocale() { setlocale(LC_ALL, "C"); }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

    /// False where the machine cannot make it.
    [[nodiscard]] bool isSet() const { return isSet_; }

  private:
    TemporaryFolder folder_;
    EnvironmentVariable path_{"LOCPATH", folder_.path()};
    bool isSet_ = false;
};

}  // namespace dorvanel::test

// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <vector>

#include "base/Result.h"
#include "platform/UserDefaults.h"

namespace dorvanel {

/// Which kinds of traces of which applications of today a person has chosen, kept under the
/// preference `Traces`: application ID to kinds. Where nothing is stored nothing is chosen; the
/// same where something else than a dictionary is. IDs and kinds that nobody describes any more are
/// kept. Main thread.
class TraceChoice {
  public:
    using Kinds = std::vector<std::string>;

    /// `defaults` must outlive the choice.
    explicit TraceChoice(platform::UserDefaults& defaults) : defaults_(defaults) {}

    /// By ID; an ID without kinds is not among them.
    [[nodiscard]] std::map<std::string, Kinds> chosen() const;
    [[nodiscard]] bool isChosen(const std::string& application, const std::string& kind) const;

    /// Adds kinds, and stores the choice. On failure it is as it was in the file.
    Result<Done> select(const std::string& application, const Kinds& kinds);
    /// The same for several applications, all or none of them.
    Result<Done> select(const std::map<std::string, Kinds>& kinds);
    /// Takes kinds away, all of the application's where `kinds` is empty, and stores the choice.
    Result<Done> deselect(const std::string& application, const Kinds& kinds);

  private:
    Result<Done> store(const std::map<std::string, Kinds>& choice);
    void set(const std::map<std::string, Kinds>& choice);

    platform::UserDefaults& defaults_;
};

}  // namespace dorvanel

// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <string>

#include "apps/TraceChoice.h"
#include "base/Result.h"
#include "platform/UserDefaults.h"

namespace dorvanel::desktop {

/// The choice of traces as it was read or stored last. A terminal may change it at any time, and
/// what it has chosen stays. Main thread.
class KnownChoice {
  public:
    using Chosen = std::map<std::string, TraceChoice::Kinds>;

    /// `defaults` must outlive this.
    explicit KnownChoice(platform::UserDefaults& defaults)
        : defaults_(defaults), chosen_(TraceChoice(defaults).chosen()) {}

    /// Reads it again; what cannot be read now leaves it as it was known. Whether it is another.
    bool read();
    /// Stores what `change` makes of the choice as it is by now. On failure it is as in the file.
    Result<Done> store(const std::function<Result<Done>(TraceChoice&)>& change);

    /// Whether the preferences could be read at all.
    [[nodiscard]] bool isKnown() const { return defaults_.isKnown(); }
    [[nodiscard]] const Chosen& chosen() const { return chosen_; }
    /// Whether anything of the application is chosen.
    [[nodiscard]] bool has(const std::string& application) const {
        return chosen_.contains(application);
    }
    [[nodiscard]] bool has(const std::string& application, const std::string& kind) const;

  private:
    platform::UserDefaults& defaults_;
    Chosen chosen_;
};

}  // namespace dorvanel::desktop

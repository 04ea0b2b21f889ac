// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "app/BundleInformation.h"

namespace dorvanel::desktop {

/// The program's bundle as one whose windows are put away at the launch, where that is asked for.
class HiddenStart final : public BundleInformation {
  public:
    /// `bundle` outlives this.
    HiddenStart(const BundleInformation& bundle, bool isAsked)
        : bundle_(bundle), isAsked_(isAsked) {}
    [[nodiscard]] std::string objectForInfoDictionaryKey(const std::string& key) const override {
        if (isAsked_ && key == "NSUIElement") return "1";
        return bundle_.objectForInfoDictionaryKey(key);
    }

  private:
    const BundleInformation& bundle_;
    bool isAsked_;
};

}  // namespace dorvanel::desktop

// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "prefs/PropertyList.h"

namespace dorvanel {

/// What the program's bundle says about the program: the property list "Info.plist" among its
/// resources.
class BundleInformation {
  public:
    virtual ~BundleInformation() = default;
    /// The string stored under the key; "" where there is none, or something that is no string.
    [[nodiscard]] virtual std::string objectForInfoDictionaryKey(const std::string& key) const = 0;
};

/// The bundle information of a property list, read once.
class BundleInformationFile final : public BundleInformation {
  public:
    /// A file that is missing or is no property list holds nothing.
    explicit BundleInformationFile(const std::string& path);
    [[nodiscard]] std::string objectForInfoDictionaryKey(const std::string& key) const override;

  private:
    PropertyList list_;
};

}  // namespace dorvanel

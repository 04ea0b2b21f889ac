#pragma once

#include <string>

namespace dorvanel::platform {

/// What the program's bundle says about the program: the property list "Info.plist" among its
/// resources.
class BundleInformation {
  public:
    virtual ~BundleInformation() = default;
    /// The string stored under the key; "" where there is none, or something that is no string.
    [[nodiscard]] virtual std::string objectForInfoDictionaryKey(const std::string& key) const = 0;
};

}  // namespace dorvanel::platform

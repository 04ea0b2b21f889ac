#pragma once

#include <string>

#include "app/BundleInformation.h"
#include "prefs/PropertyList.h"

namespace dorvanel::platform {

/// Where the interface files, the icons and "Info.plist" lie: in ../share/dorvanel-x as seen from
/// the program's own folder, in the build tree as when installed. "" when it cannot be told.
std::string resourcesFolder();

/// The bundle information of a property list, read once.
class BundleInformationFile final : public BundleInformation {
  public:
    /// A file that is missing or is no property list holds nothing.
    explicit BundleInformationFile(const std::string& path);
    [[nodiscard]] std::string objectForInfoDictionaryKey(const std::string& key) const override;

  private:
    PropertyList list_;
};

}  // namespace dorvanel::platform

// SPDX-License-Identifier: MIT
#include "app/BundleInformation.h"

#include <fstream>
#include <iterator>

namespace dorvanel {

BundleInformationFile::BundleInformationFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), {});
    // A list that is missing or damaged says nothing, as an empty one does.
    if (auto list = PropertyList::parse(bytes)) list_ = std::move(list.value());
}

std::string BundleInformationFile::objectForInfoDictionaryKey(const std::string& key) const {
    return list_.asString(key).value_or(std::string());
}

}  // namespace dorvanel

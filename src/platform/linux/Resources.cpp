#include "platform/Resources.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <system_error>

#include "prefs/PropertyList.h"

namespace dorvanel::platform {

std::string resourcesFolder() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) return {};
    return (program.parent_path().parent_path() / "share" / "dorvanel-x").native();
}

BundleInformationFile::BundleInformationFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), {});
    std::string reason;  // a list that is missing or damaged says nothing, as an empty one does
    if (auto list = PropertyList::parse(bytes, reason)) list_ = std::move(*list);
}

std::string BundleInformationFile::objectForInfoDictionaryKey(const std::string& key) const {
    return list_.asString(key).value_or(std::string());
}

}  // namespace dorvanel::platform

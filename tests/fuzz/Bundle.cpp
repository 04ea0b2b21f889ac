// SPDX-License-Identifier: MIT
#include <algorithm>

#include "app/BundleInformation.h"
#include "fuzz/FuzzInput.h"
#include "platform/linux/ApplicationBundle.h"
#include "support/TemporaryFolder.h"

// An application bundle is a folder that anybody may have made: the path of its program, its
// PkgInfo and its Info.plist. The input is each of them in turn.

using namespace dorvanel;
using dorvanel::test::insist;

namespace {

void checkPath(const std::string& executable) {
    const std::string bundle = platform::applicationBundleOf(executable);
    if (bundle.empty()) return;
    insist(bundle.ends_with(".app"), "a bundle is named so");
    insist(executable.starts_with(bundle + "/Contents/"), "the program lies in its bundle");
    insist(executable.find(".app/Contents/", bundle.size()) == std::string::npos ||
               executable.find("/.app/Contents/", bundle.size()) != std::string::npos,
           "the innermost bundle counts");
    const std::string name = platform::bundleName(bundle);
    insist(!name.empty() && name.find('/') == std::string::npos, "a bundle's name is one name");
}

void checkPkgInfo(const test::TemporaryFolder& folder, const std::string& bytes) {
    const std::string bundle = folder / "Made Up.app";
    test::writeFile(bundle + "/Contents/PkgInfo", bytes);
    const platform::BundleKind kind = platform::kindOfBundle(bundle);
    const bool isWhole = bytes.size() >= 8;
    const std::string said = isWhole ? bytes.substr(0, 8) : "????????";
    const std::uint32_t codes[] = {kind.type, kind.creator};
    for (std::size_t i = 0; i < said.size(); ++i) {
        const auto byte = static_cast<unsigned char>(codes[i / 4] >> (8 * (3 - i % 4)) & 0xFF);
        insist(byte == static_cast<unsigned char>(said[i]), "the codes are the eight bytes");
    }
}

void checkInformation(const test::TemporaryFolder& folder, const std::string& bytes) {
    const std::string path = folder / "Info.plist";
    test::writeFile(path, bytes);
    const BundleInformationFile information(path);
    for (const char* key : {"CFBundleName", "CFBundleVersion", "CFBundleIdentifier", ""}) {
        insist(information.objectForInfoDictionaryKey(key).size() <= 4 * bytes.size(),
               "a text comes from the file");
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TemporaryFolder folder;
    const std::string bytes = dorvanel::test::bytesOf(data, size);
    checkPath(bytes);
    checkPkgInfo(folder, bytes);
    checkInformation(folder, bytes);
    return 0;
}

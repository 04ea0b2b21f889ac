// SPDX-License-Identifier: MIT
#include "platform/linux/ApplicationBundle.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>

#include "platform/linux/FileDescriptor.h"

namespace dorvanel::platform {
namespace {

constexpr std::string_view kSuffix = ".app";
constexpr std::string_view kContents = ".app/Contents/";

FourCharCode codeAt(const std::array<unsigned char, 8>& bytes, std::size_t at) {
    FourCharCode code = 0;
    for (std::size_t i = at; i < at + 4; ++i) code = code << 8 | bytes[i];
    return code;
}

}  // namespace

std::string applicationBundleOf(std::string_view executable) {
    for (std::size_t at = executable.rfind(kContents); at != std::string_view::npos && at > 0;
         at = executable.rfind(kContents, at - 1)) {
        if (executable[at - 1] != '/') return std::string(executable.substr(0, at)) + ".app";
    }
    return {};
}

std::string bundleName(std::string_view bundle) {
    const std::size_t slash = bundle.rfind('/');
    if (slash != std::string_view::npos) bundle.remove_prefix(slash + 1);
    if (bundle.ends_with(kSuffix)) bundle.remove_suffix(kSuffix.size());
    return std::string(bundle);
}

BundleKind kindOfBundle(const std::string& bundle) {
    // Anybody may have made the folder: a FIFO in the file's place must not hold the program up.
    const FileDescriptor file(::open((bundle + "/Contents/PkgInfo").c_str(),
                                     O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
    std::array<unsigned char, 8> bytes{};
    if (::pread(file.get(), bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
        return {};
    }
    return {codeAt(bytes, 0), codeAt(bytes, 4)};
}

}  // namespace dorvanel::platform

// SPDX-License-Identifier: MIT
#include "engine/GrownFiles.h"

namespace dorvanel {

std::uint64_t GrownFiles::sizeBefore(const platform::FileStatus& file) const {
    if (files_.empty()) return file.size;
    const auto found = files_.find(Identity::of(file));
    // Another size: somebody has written to it, or its number is another file's by now.
    const bool isKnown = found != files_.end() && found->second.now == file.size;
    return isKnown ? found->second.before : file.size;
}

void GrownFiles::add(const platform::FileStatus& file, std::uint64_t before, std::uint64_t now) {
    files_[Identity::of(file)] = {before, now};
}

}  // namespace dorvanel

// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "base/FourCharCode.h"

namespace dorvanel::platform {

/// The application bundle "FOLDERS/NAME.app" that an executable lies in, at any depth below its
/// "Contents"; the innermost one of several. "" when it lies in none.
std::string applicationBundleOf(std::string_view executable);

/// The NAME of a bundle.
std::string bundleName(std::string_view bundle);

/// What a bundle says of itself in "Contents/PkgInfo".
struct BundleKind {
    FourCharCode type = fourCharCode("\?\?\?\?");  ///< as a bundle that says nothing has it
    FourCharCode creator = fourCharCode("\?\?\?\?");
};

/// Reads the first 8 bytes of PkgInfo, where it is a file that has as many; waits for nothing.
BundleKind kindOfBundle(const std::string& bundle);

}  // namespace dorvanel::platform

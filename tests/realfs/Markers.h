// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <set>
#include <string>

namespace dorvanel::test {

/// Contents of which every sector of 512 bytes can be told from every other, wherever it is found.
/// A marker is the number of a file and of the sector in it.
using Markers = std::set<std::uint32_t>;

/// `sectors` sectors of the file with this number.
std::string markedContents(unsigned file, unsigned sectors);

/// The markers that stand anywhere in a file: in one of the files, or in the image of a disk.
Markers markersIn(const std::string& path);
/// Those of all regular files below a folder.
Markers markersBelow(const std::string& folder);

/// Those of `all` that are not among `allowed`, as a text for people; "" for none.
std::string without(const Markers& all, const Markers& allowed);

}  // namespace dorvanel::test

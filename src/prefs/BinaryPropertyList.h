// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

namespace dorvanel {

/// Whether a binary property list holds no NUL in its texts, which the library that parses lists
/// cuts there or ends the program for, is whole enough to be walked, nested no deeper than
/// `levels`, and stands for no more than about `limit` bytes of XML, in which every reference is a
/// copy. A list of two hundred bytes whose objects share one another can stand for more than any
/// memory holds, and the library makes the copies.
bool binaryPropertyListIsWithin(std::string_view bytes, std::size_t limit, int levels);

}  // namespace dorvanel

// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace dorvanel::test {

/// What the preferences say in a comparison with the plain program.
struct PlainSettings {
    int pattern = 0;
    int numberOfWrites = 2;
    bool doD = false;
    bool nsa = false;
};

/// The lines that the plain program prints for each request (see plain_overwrite.cpp).
std::vector<std::vector<std::string>> plainOverwrite(const PlainSettings& settings,
                                                     const std::vector<std::string>& requests);

/// The lines of a request that begin with this word, without it.
std::vector<std::string> linesOf(const std::vector<std::string>& request, const std::string& word);

}  // namespace dorvanel::test

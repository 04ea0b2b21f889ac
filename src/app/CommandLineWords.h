// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <vector>

namespace dorvanel {

/// Words that are names of files, or options before a "--", as the parser leaves them alone. It
/// takes a word in brackets for a list of words, so that a file named "[a,b]" would become the
/// files "a" and "b"; "++" for the end of a subcommand, which is passed over; and "--" only where
/// no file stands before it. With "./" before it, each names the same file.
inline std::vector<std::string> plainFileNames(std::span<const std::string> words) {
    std::vector<std::string> plain;
    bool namesOnly = false;
    for (const std::string& word : words) {
        if (!namesOnly && word == "--") {
            namesOnly = true;
            continue;
        }
        const bool isList = word.starts_with('[') && word.ends_with(']');
        const bool isNoOption = namesOnly && word.starts_with('-');
        plain.push_back(isList || isNoOption || word == "++" ? "./" + word : word);
    }
    return plain;
}

/// Whether a word for help or for the version stands beside names of files: "*" stands for a file
/// of that name too, which must not turn an order to shred into a page of help. `words` are those
/// behind the command.
inline bool asksAmongFileNames(std::span<const std::string> words) {
    bool asks = false;
    bool names = false;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (word == "--") {
            names = names || i + 1 < words.size();
            break;
        }
        const bool isShort = word.starts_with("-h");
        const bool isLong = word.starts_with("--help") || word.starts_with("--version");
        asks = asks || isShort || isLong;
        if (word == "--home") ++i;  // its folder
        names = names || !word.starts_with('-');
    }
    return asks && names;
}

}  // namespace dorvanel

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

}  // namespace dorvanel

#pragma once

#include <string>
#include <vector>

namespace dorvanel {

/// The words of a command line, as the parser may have them. It takes a word in brackets for a list
/// of words, so that a file named "[a,b]" would become the files "a" and "b", and "++" for the end
/// of a subcommand, which is passed over. With "./" before it, each names the same file and is left
/// alone.
inline std::vector<std::string> plainWords(std::vector<std::string> words) {
    for (std::string& word : words) {
        const bool isList = word.starts_with('[') && word.ends_with(']');
        if (isList || word == "++") word.insert(0, "./");
    }
    return words;
}

}  // namespace dorvanel

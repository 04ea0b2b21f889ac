#pragma once

#include <span>
#include <string>

namespace dorvanel {

/// Makes words that are names of files such as the parser leaves alone. It takes a word in brackets
/// for a list of words, so that a file named "[a,b]" would become the files "a" and "b", and "++"
/// for the end of a subcommand, which is passed over. With "./" before it, each names the same
/// file.
inline void makePlainFileNames(std::span<std::string> words) {
    for (std::string& word : words) {
        const bool isList = word.starts_with('[') && word.ends_with(']');
        if (isList || word == "++") word.insert(0, "./");
    }
}

}  // namespace dorvanel

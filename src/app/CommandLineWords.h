#pragma once

#include <string>
#include <vector>

namespace dorvanel {

/// The words of a command line, as the parser may have them. It takes a word in brackets for a list
/// of words: a file named "[a,b]" would become the files "a" and "b". With "./" before it, it names
/// the same file and is left alone.
inline std::vector<std::string> withoutLists(std::vector<std::string> words) {
    for (std::string& word : words) {
        if (word.starts_with('[') && word.ends_with(']')) word.insert(0, "./");
    }
    return words;
}

}  // namespace dorvanel

// SPDX-License-Identifier: MIT
#include "packaging/Shell.h"

#include <gtest/gtest.h>
#include <stdio.h>

#include <iostream>
#include <regex>
#include <sstream>

namespace dorvanel::test {
namespace {

std::string quoted(const std::string& word) {
    return "'" + std::regex_replace(word, std::regex("'"), "'\\''") + "'";
}

/// The commands and options of one help text, in its sections.
Help parsedHelp(const std::string& text) {
    Help help;
    std::string section;
    static const std::regex entry("  (?:-[a-zA-Z],)?([-a-z]+) .*");
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        std::smatch match;
        if (line.ends_with(':')) section = line;
        if (!std::regex_match(line, match, entry)) continue;
        if (section == "Subcommands:") help.commands.insert(match[1]);
        if (section == "Options:") help.options.insert(match[1]);
    }
    return help;
}

}  // namespace

std::string outputOf(const std::vector<std::string>& command) {
    std::string line;
    for (const std::string& word : command) line += quoted(word) + " ";
    FILE* output = popen((line + "2>&1").c_str(), "r");
    if (output == nullptr) {
        ADD_FAILURE() << line << "cannot be started";
        return {};
    }
    std::string text;
    for (int c = fgetc(output); c != EOF; c = fgetc(output)) text += static_cast<char>(c);
    EXPECT_EQ(pclose(output), 0) << line << '\n' << text;
    return text;
}

std::set<std::string> linesOf(const std::string& text) {
    std::set<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty()) lines.insert(line);
    }
    return lines;
}

bool isInstalled(const std::string& program) {
    const bool found = !outputOf({"sh", "-c", "command -v \"$0\" || true", program}).empty();
    if (!found) std::cout << "not run: " << program << " is not installed\n";
    return found;
}

Help helpOf(const std::string& command) {
    std::vector<std::string> words = {DORVANEL_PROGRAM};
    std::istringstream stream(command);
    for (std::string word; stream >> word;) words.push_back(word);
    words.emplace_back("--help");
    return parsedHelp(outputOf(words));
}

}  // namespace dorvanel::test

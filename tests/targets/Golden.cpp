// SPDX-License-Identifier: MIT
#include "targets/Golden.h"

#include <fstream>
#include <ostream>
#include <stdexcept>

namespace dorvanel::test {
namespace {

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
    return text;
}

/// The names of "a, b, c".
std::vector<std::string> names(const std::string& text) {
    std::vector<std::string> names;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(", ", start), text.size());
        names.push_back(text.substr(start, end - start));
        start = end + 2;
    }
    return names;
}

/// What follows "start" in a line; an empty text when the line ends with it.
std::string after(const std::string& line, std::size_t start) {
    return line.size() > start ? line.substr(start) : std::string();
}

}  // namespace

Golden Golden::read(const std::string& collector, const std::string& home) {
    const std::string path = std::string(GOLDEN_FOLDER) + "/" + collector + ".txt";
    std::ifstream file(path);
    if (!file) throw std::runtime_error("no table " + path);
    Golden golden;
    Outcome* outcome = nullptr;
    for (std::string line; std::getline(file, line);) {
        line = replaced(replaced(line, "$HOME", home), "\\xC4", "\xC4");
        if (line.empty() || line.starts_with("#")) continue;
        if (line.starts_with("enable:")) {
            golden.enableNames = names(after(line, 8));
        } else if (line.starts_with("keys:")) {
            golden.keys = names(after(line, 6));
        } else if (line == "[not enabled]") {
            outcome = &golden.notEnabled;
        } else if (line == "[all off]") {
            outcome = &golden.byKeysOn[{}];
        } else if (line.starts_with("[on: ")) {
            const std::vector<std::string> on = names(line.substr(5, line.size() - 6));
            outcome = &golden.byKeysOn[{on.begin(), on.end()}];
        } else if (outcome != nullptr && line.starts_with("|")) {
            outcome->lines.push_back(after(line, 2));
        } else if (outcome != nullptr && line.starts_with("+ ")) {
            outcome->list.push_back(after(line, 2));
        } else {
            throw std::runtime_error(path + ": " + line);
        }
    }
    return golden;
}

void PrintTo(const Golden::Outcome& outcome, std::ostream* stream) {
    for (const std::string& line : outcome.lines) *stream << "\n| " << line;
    for (const std::string& path : outcome.list) *stream << "\n+ " << path;
}

}  // namespace dorvanel::test

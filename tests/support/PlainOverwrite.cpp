// SPDX-License-Identifier: MIT
#include "support/PlainOverwrite.h"

#include <fmt/format.h>

#include <cstdio>
#include <stdexcept>

namespace dorvanel::test {

std::vector<std::vector<std::string>> plainOverwrite(const PlainSettings& settings,
                                                     const std::vector<std::string>& requests) {
    std::string command = fmt::format("'{}' {} {} {:d} {:d}", PLAIN_OVERWRITE, settings.pattern,
                                      settings.numberOfWrites, settings.doD, settings.nsa);
    for (const std::string& request : requests) command += " " + request;
    std::FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) throw std::runtime_error("popen " + command);
    std::vector<std::vector<std::string>> answers;
    char buffer[256];
    while (std::fgets(buffer, sizeof buffer, pipe) != nullptr) {
        std::string line = buffer;
        line.pop_back();
        if (line == "request") {
            answers.emplace_back();
        } else {
            answers.back().push_back(line);
        }
    }
    if (pclose(pipe) != 0 || answers.size() != requests.size()) {
        throw std::runtime_error("failed: " + command);
    }
    return answers;
}

std::vector<std::string> linesOf(const std::vector<std::string>& request, const std::string& word) {
    std::vector<std::string> found;
    for (const std::string& line : request) {
        if (line.starts_with(word + " ")) found.push_back(line.substr(word.size() + 1));
    }
    return found;
}

}  // namespace dorvanel::test

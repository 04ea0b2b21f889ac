// SPDX-License-Identifier: MIT
#include <algorithm>
#include <sstream>

#include "app/ShredArguments.h"
#include "app/terminal/CommandLine.h"
#include "app/terminal/EscapedText.h"
#include "fuzz/FuzzInput.h"
#include "support/FakeAnswers.h"

// The words of a command line, a NUL between them. They are read and checked; nothing that they ask
// for is done.

using namespace dorvanel;
using dorvanel::test::insist;

namespace {

std::vector<std::string> wordsOf(const std::string& bytes) {
    std::vector<std::string> words;
    std::istringstream stream(bytes);
    for (std::string word; std::getline(stream, word, '\0');) words.push_back(word);
    return words;
}

void checkReading(const std::vector<std::string>& words) {
    std::ostringstream out;
    std::ostringstream err;
    test::FakeAnswers in;
    terminal::Terminal terminal{out, err, in, true, true, [] { return 80; }};
    terminal::ExitStatus ended = terminal::ExitStatus::done;
    const auto command = terminal::readCommandLine(words, terminal, ended);
    insist(!command || command->action, "a command that is read does something");
    insist(command || ended == terminal::ExitStatus::done || ended == terminal::ExitStatus::usage,
           "a command line that is no command ends well or is refused");
    insist(command || !(out.str() + err.str()).empty(), "what is not done is told");
    for (const char c : err.str()) {
        insist(c == '\n' || static_cast<unsigned char>(c) >= 0x20, "nothing moves the cursor");
    }
}

void checkPaths(const std::vector<std::string>& words) {
    const auto system = platform::makeSystemCalls();
    const ShredArguments checked =
        checkShredArguments(words, "/home/somebody", {"/", "/proc"}, *system);
    insist(words.empty() || !checked.items.empty() || !checked.complaints.empty(),
           "every word is taken or complained about");
    for (const std::string& path : checked.paths()) {
        insist(path.starts_with('/') && path != "/" && path != "/home", "no path is too high");
        insist(!path.ends_with("/.") && !path.ends_with("/.."), "no path ends in dots");
    }
}

void checkText(const std::string& bytes) {
    const std::string text = terminal::escapedForTerminal(bytes);
    for (const char c : text) {
        insist(static_cast<unsigned char>(c) >= 0x20 && c != 0x7F, "a text has no controls");
    }
    for (const int columns : {0, 1, 3, 10, 79}) {
        const std::string shorter = terminal::shortenedInMiddle(text, columns);
        insist(terminal::displayWidth(shorter) <= columns, "a shortened text has room");
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes = dorvanel::test::bytesOf(data, size);
    const std::vector<std::string> words = wordsOf(bytes);
    checkReading(words);
    checkPaths(words);
    checkText(bytes);
    return 0;
}

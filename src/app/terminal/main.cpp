#include <iostream>
#include <string>
#include <vector>

#include "app/terminal/CommandLine.h"
#include "platform/StandardStreams.h"

int main(int argc, char** argv) {
    using namespace dorvanel;
    using platform::StandardStream;

    std::ios::sync_with_stdio(false);
    const auto medium = platform::makeMediumInspector();
    const auto answers = platform::makeAnswerInput();
    if (answers == nullptr) {
        std::cerr << "dorvanel: no descriptor is left to read answers with\n";
        return static_cast<int>(terminal::ExitStatus::notInitiated);
    }
    terminal::Terminal terminal{
        std::cout,
        std::cerr,
        *answers,
        platform::isTerminal(StandardStream::out),
        platform::isTerminal(StandardStream::error),
        [] { return platform::columnsOfTerminal(StandardStream::error); },
        medium.get(),
    };
    terminal::ExitStatus status = terminal::runCommandLine(
        std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc), terminal);
    if (!std::cout.flush()) {
        terminal.complain("the output could not be written");
        if (status == terminal::ExitStatus::done) status = terminal::ExitStatus::incomplete;
    }
    return static_cast<int>(status);
}

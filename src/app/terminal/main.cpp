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
    terminal::Terminal terminal{
        std::cout,
        std::cerr,
        std::cin,
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

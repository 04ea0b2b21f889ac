// SPDX-License-Identifier: MIT
#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <vector>

#include "app/Texts.h"
#include "app/terminal/CommandLine.h"
#include "platform/ProcessStart.h"
#include "platform/Resources.h"
#include "platform/StandardStreams.h"

namespace {

using namespace dorvanel;
using platform::StandardStream;

terminal::ExitStatus run(int argc, char** argv) {
    const auto medium = platform::makeMediumInspector();
    auto answers = platform::makeAnswerInput();
    if (!answers) {
        std::cerr << "dorvanel: " + tr("no descriptor is left to read answers with") + "\n";
        return terminal::ExitStatus::notInitiated;
    }
    terminal::Terminal terminal{
        .out = std::cout,
        .err = std::cerr,
        .in = *answers.value(),
        .outIsTerminal = platform::isTerminal(StandardStream::out),
        .errIsTerminal = platform::isTerminal(StandardStream::error),
        .columns = [] { return platform::columnsOfTerminal(StandardStream::error); },
        .medium = medium.get(),
    };
    const terminal::ExitStatus status = terminal::runCommandLine(
        std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc), terminal);
    if (std::cout.flush()) return status;
    terminal.complain(tr("the output could not be written"));
    return status == terminal::ExitStatus::done ? terminal::ExitStatus::incomplete : status;
}

constexpr const char* outOfMemory = "dorvanel: out of memory\n";

void tell(const std::exception& failure) {
    try {
        std::cerr << "dorvanel: " + terminal::Terminal::forErr(failure.what()) + "\n";
    } catch (const std::bad_alloc&) {
        std::cerr << outOfMemory;
    }
}

}  // namespace

int main(int argc, char** argv) {
    platform::prepareProcess();
    try {
        platform::speakLanguageOfEnvironment(platform::translationsFolder());
        std::ios::sync_with_stdio(false);
        return static_cast<int>(run(argc, argv));
    } catch (const std::bad_alloc&) {
        std::cerr << outOfMemory;
    } catch (const std::exception& failure) {
        tell(failure);
    }
    return static_cast<int>(terminal::ExitStatus::incomplete);
}

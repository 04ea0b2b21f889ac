// SPDX-License-Identifier: MIT
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "app/terminal/CommandLine.h"
#include "app/terminal/Terminal.h"
#include "support/FakeAnswers.h"

namespace dorvanel::test {

/// A terminal in memory: pipes at first, or a person's terminal of some width.
class TestTerminal {
  public:
    TestTerminal() = default;
    explicit TestTerminal(int columns) {
        terminal.outIsTerminal = true;
        terminal.errIsTerminal = true;
        terminal.columns = [columns] { return columns; };
    }

    /// The exit status of the command line, as the shell sees it.
    int run(const std::vector<std::string>& arguments) {
        out.str({});
        err.str({});
        return static_cast<int>(terminal::runCommandLine(arguments, terminal));
    }

    std::ostringstream out;
    std::ostringstream err;
    FakeAnswers in;
    terminal::Terminal terminal{out, err, in, false, false, {}};
};

}  // namespace dorvanel::test

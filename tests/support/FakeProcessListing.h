// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/ProcessListing.h"
#include "platform/SystemSound.h"

namespace dorvanel::test {

/// A listing that says what a test has it say, and remembers the commands. As with a real one, the
/// end shows only when a read meets it, and a last line without newline meets it.
class FakeProcessListing final : public platform::ProcessListing {
  public:
    std::unique_ptr<platform::CommandOutput> open(const std::string& command) override {
        commands.push_back(command);
        if (onOpen) onOpen();
        if (fails) return nullptr;
        auto output = std::make_unique<Output>();
        output->lines.assign(lines.begin(), lines.end());
        output->whole = !isCutOff;
        return output;
    }
    std::string userName() const override { return user; }

    /// What runs: the header and one line for each command line.
    void show(const std::vector<std::string>& commandLines) {
        lines = {"COMMAND\n"};
        for (const std::string& line : commandLines) lines.push_back(line + "\n");
    }

    std::string user = "alice";
    std::vector<std::string> lines{"COMMAND\n"};
    bool fails = false;     ///< it cannot be started
    bool isCutOff = false;  ///< it takes too long, is killed, or ends badly
    std::function<void()> onOpen;
    std::vector<std::string> commands;

  private:
    struct Output final : platform::CommandOutput {
        bool atEnd() const override { return ended; }
        std::string readLine() override {
            if (lines.empty()) {
                ended = true;
                return {};
            }
            std::string line = lines.front();
            lines.pop_front();
            if (line.empty() || line.back() != '\n') ended = lines.empty();
            return line;
        }

        bool close() override { return whole && ended; }

        std::deque<std::string> lines;
        bool ended = false;
        bool whole = true;
    };
};

class FakeSystemSound final : public platform::SystemSound {
  public:
    void beep() override { ++beeps; }

    int beeps = 0;
};

}  // namespace dorvanel::test

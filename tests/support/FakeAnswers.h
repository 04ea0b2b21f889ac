// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <functional>
#include <sstream>
#include <string>

#include "platform/AnswerInput.h"

namespace dorvanel::test {

/// Answers that a test has given before they are asked for, as in a pipe; remembers how often what
/// was pending was to be discarded.
class FakeAnswers final : public platform::AnswerInput {
  public:
    FakeAnswers() = default;
    explicit FakeAnswers(const std::string& lines) { str(lines); }
    void str(const std::string& lines) {
        lines_.clear();
        lines_.str(lines);
    }

    void discardPending() override { ++discards; }
    Read readLine(std::string& line) override {
        if (onRead) onRead();
        line.clear();
        if (interrupted) return Read::interrupted;
        return std::getline(lines_, line) ? Read::line : Read::end;
    }
    void interrupt() override { interrupted = true; }

    int discards = 0;
    std::atomic<bool> interrupted = false;
    std::function<void()> onRead;  ///< before each read, when the question is there

  private:
    std::istringstream lines_;
};

}  // namespace dorvanel::test

// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "base/Result.h"

namespace dorvanel::platform {

/// Where a person's answers come from: a terminal, or whatever stands in its place. Main thread,
/// but for what says otherwise.
class AnswerInput {
  public:
    enum class Read {
        line,
        end,          ///< the input has ended; on a terminal this once, until it is read again
        interrupted,  ///< nobody waits for the answer any more
    };

    virtual ~AnswerInput() = default;
    /// Forgets what was typed on a terminal up to now; a pipe keeps what it holds.
    virtual void discardPending() = 0;
    /// Waits for a line and stores it without its end. `line` is empty unless there was one.
    virtual Read readLine(std::string& line) = 0;
    /// Ends a read that waits, and every later one. Any thread.
    virtual void interrupt() = 0;
};

/// The standard input, not buffered by anything else. An error where the system has nothing to make
/// it of.
Result<std::unique_ptr<AnswerInput>> makeAnswerInput();

}  // namespace dorvanel::platform
